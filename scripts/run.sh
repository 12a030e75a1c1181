#!/usr/bin/env bash
# Installs what is missing, builds, and starts Quillo 3 on the embedded
# database in the user's data folder (created on the first start). Any
# argument is passed on to quillo3 (for example --database host:/path/file.fdb).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/install-deps.sh"
"$root/scripts/build.sh"
exec "$root/build/bin/quillo3" "$@"
