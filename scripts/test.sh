#!/usr/bin/env bash
# Installs what is missing (the Firebird server package included), builds,
# starts a private Firebird server on a free loopback port for the server
# tests (scripts/firebird-test-server.sh), runs every test, stops the server.
# The server suites must find their server here: a missing one fails them.
# With --sanitize it builds and runs everything in build-asan/ under
# AddressSanitizer and UndefinedBehaviorSanitizer (scripts/build.sh --sanitize).
# Exits non-zero when any test fails.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
folder=build
build_options=()
case "${1:-}" in
"") ;;
--sanitize)
  folder=build-asan
  build_options=(--sanitize)
  export Q3_TEST_SERVER_STATE="$root/build-asan/firebird-test-server"
  ;;
*)
  echo "usage: $0 [--sanitize]" >&2
  exit 2
  ;;
esac
"$root/scripts/install-deps.sh" --with-server
"$root/scripts/build.sh" "${build_options[@]}"
trap '"$root/scripts/firebird-test-server.sh" stop' EXIT
eval "$("$root/scripts/firebird-test-server.sh" start)"
export Q3_TEST_SERVER_REQUIRED=1
cd "$root/$folder"
QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j "$(nproc)"
