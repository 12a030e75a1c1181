#!/usr/bin/env bash
# Configures and builds everything in build/ (Release with debug info).
# With --sanitize it builds in build-asan/ instead, with AddressSanitizer and
# UndefinedBehaviorSanitizer, leaving build/ as it is.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
folder=build
options=()
case "${1:-}" in
"") ;;
--sanitize)
  folder=build-asan
  options=(-DQ3_SANITIZE=ON)
  ;;
*)
  echo "usage: $0 [--sanitize]" >&2
  exit 2
  ;;
esac
cmake -S "$root" -B "$root/$folder" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo "${options[@]}" >/dev/null
cmake --build "$root/$folder" -j "$(nproc)"
