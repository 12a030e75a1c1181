#!/usr/bin/env bash
# Runs the comparison benchmarks on a generated firm and writes their table to
# docs/performance.md. The firm (default size: stress) is generated once into
# build/bench-data/<size>.fdb. Usage: scripts/bench.sh [size] [runs]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
size=${1:-stress}
runs=${2:-15}
"$root/scripts/build.sh"
cd "$root"
database="build/bench-data/$size.fdb"
mkdir -p build/bench-data
if [[ ! -e "$database" ]]; then
  "$root/build/bin/quillo3-genera-azienda" --database "$database" --dimensione "$size" --seme 1 --anno-finale 2025
fi
table=$(mktemp)
kept=$(mktemp)
trap 'rm -f "$table" "$kept"' EXIT
# The sections below the table (from the first "## " heading on) are kept.
if [[ -e "$root/docs/performance.md" ]]; then
  sed -n '/^## /,$p' "$root/docs/performance.md" > "$kept"
fi
QT_QPA_PLATFORM=offscreen "$root/build/bin/bench_confronti" --database "$database" --ripetizioni "$runs" --tabella "$table"
{
  echo "# Performance"
  echo
  echo "Written by \`scripts/bench.sh $size $runs\` on $(date -u +%Y-%m-%d): the module's own path against the same"
  echo "statements run raw through the Firebird client library, on the generated \`$size\` firm"
  echo "(\`quillo3-genera-azienda --dimensione $size --seme 1 --anno-finale 2025\`). Absolute times are this"
  echo "machine's; the ratios are what the targets speak of. The plans behind the module's indexes are in"
  echo "[indexes.md](indexes.md)."
  echo
  echo "Start-up is the host's connection, its schema check and the module's schema check on an"
  echo "up-to-date database (the login's password hash and loading the libraries are not in it); the"
  echo "rows below it are its parts. Each list row is the window's own fill, grid included; the"
  echo "customer list's row also gives the process's resident memory with its rows open. Each print is"
  echo "measured twice against its statements alone: \"in PDF\", a whole run to a PDF file (statements,"
  echo "layout, writing every page), and \"a video\", a run to the preview window until it shows the first"
  echo "page with the page count (statements, layout, drawing that page). Each statistics window row is"
  echo "its refresh against its statements."
  echo
  cat "$table"
  if [[ -s "$kept" ]]; then
    echo
    cat "$kept"
  fi
} > "$root/docs/performance.md"
echo "Written $root/docs/performance.md"
