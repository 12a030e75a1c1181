#!/usr/bin/env bash
# Builds the Debian package quillo3_<version>_amd64.deb with CPack from the
# program in build/ (configured as scripts/build.sh does, building only what
# the package holds), checks it with lintian, and leaves it in the folder
# given, build/ by default. Installs what is missing first
# (scripts/install-deps.sh --with-packaging).
# Exits non-zero when the package cannot be built or lintian finds an error.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
case "${1:-}" in
-*)
  echo "usage: $0 [output folder]" >&2
  exit 2
  ;;
esac
output=$(mkdir -p "${1:-$root/build}" && cd "${1:-$root/build}" && pwd)
"$root/scripts/install-deps.sh" --with-packaging
cmake -S "$root" -B "$root/build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$root/build" -j "$(nproc)" --target quillo3_package_contents
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
(cd "$root/build" && cpack -B "$work" >/dev/null)
package=$(find "$work" -maxdepth 1 -name 'quillo3_*.deb')
mv "$package" "$output/"
package="$output/$(basename "$package")"
report=$(lintian "$package" 2>/dev/null) || true
[ -z "$report" ] || echo "$report"
if grep -q '^E: ' <<<"$report"; then
  echo "lintian: errors in $package" >&2
  exit 1
fi
echo "$package"
