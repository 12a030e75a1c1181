#!/usr/bin/env bash
# Checks that every tracked C++ file (*.cpp, *.h) is formatted as .clang-format
# says, with Debian's clang-format (scripts/install-deps.sh installs it).
# Names each file that clang-format would change and exits 1 when there is
# any, 0 when there is none. With --diff it also shows each change.
# To format the files it names: clang-format -i FILE...
set -euo pipefail
cd "$(dirname "$0")/.."
show_diff=0
case "${1:-}" in
"") ;;
--diff) show_diff=1 ;;
*)
  echo "usage: $0 [--diff]" >&2
  exit 2
  ;;
esac
if ! command -v clang-format >/dev/null; then
  echo "format-check: clang-format is missing (scripts/install-deps.sh installs it)" >&2
  exit 2
fi
mapfile -t files < <(git ls-files -- '*.cpp' '*.h')
if [ ${#files[@]} -eq 0 ]; then
  echo "format-check: no C++ file found" >&2
  exit 2
fi
report=$(clang-format --style=file --dry-run -Werror --ferror-limit=1 "${files[@]}" 2>&1) && status=0 || status=$?
differing=$(printf '%s\n' "$report" | sed -n 's/^\(.*\):[0-9]*:[0-9]*: error: code should be clang-formatted.*/\1/p' | sort -u)
if [ "$status" -ne 0 ] && [ -z "$differing" ]; then
  # clang-format failed for another reason (a bad configuration, an unreadable file).
  printf '%s\n' "$report" | head -n 5 >&2
  exit 2
fi
if [ -z "$differing" ]; then
  echo "format-check: ${#files[@]} files, all formatted ($(clang-format --version))"
  exit 0
fi
while read -r file; do
  echo "not formatted: $file"
  if [ "$show_diff" -eq 1 ]; then
    clang-format --style=file "$file" | diff -u --label "$file" --label "$file (formatted)" "$file" - || true
  fi
done <<<"$differing"
echo "format-check: $(wc -l <<<"$differing") of ${#files[@]} files would change ($(clang-format --version))" >&2
exit 1
