#!/usr/bin/env bash
# Installs what is missing, builds, and starts Quillo 3 on the embedded
# database in the user's data folder (created on the first start). Any
# argument is passed on to quillo3 (for example --database host:/path/file.fdb).
# With --demo first, it starts on a demo firm instead: one year of generated
# invoices in demo.fdb of the same folder, created once.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
demo=
if [[ "${1:-}" == "--demo" ]]; then
  demo=1
  shift
fi
"$root/scripts/install-deps.sh"
"$root/scripts/build.sh"
if [[ -n "$demo" ]]; then
  database="${XDG_DATA_HOME:-$HOME/.local/share}/Quillo3/demo.fdb"
  if [[ ! -e "$database" ]]; then
    "$root/build/bin/quillo3-genera-azienda" --database "$database" --dimensione demo
  fi
  exec "$root/build/bin/quillo3" --database "$database" "$@"
fi
exec "$root/build/bin/quillo3" "$@"
