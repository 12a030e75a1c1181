#!/usr/bin/env bash
# Installs the Debian packages that building, running and testing need, when missing.
# --with-server adds the Firebird server (the server tests); --with-packaging adds
# the tools that build and check the Debian package (scripts/package.sh).
set -euo pipefail
packages=(
  cmake ninja-build g++ pkg-config
  qt6-base-dev qt6-base-dev-tools qt6-charts-dev libqt6opengl6-dev libqt6openglwidgets6 libqt6sql6-ibase qt6-translations-l10n libgl-dev
  firebird3.0-server-core firebird3.0-utils libfbclient2 firebird-dev
  libsodium-dev
  libxml2-dev libxml2-utils  # the electronic invoices' schema validation, in the module and in its tests
  libzip-dev  # the electronic invoices exported together into one ZIP file
  xvfb xauth poppler-utils fonts-dejavu-core tango-icon-theme
  python3-xlrd  # the spreadsheet tests read their workbooks back with it
  clang-format clang-tidy  # the format check (scripts/format-check.sh) and the static analysis (.clang-tidy)
)
for option in "$@"; do
  case "$option" in
  --with-server) packages+=(firebird3.0-server) ;;
  --with-packaging)
    # dpkg-shlibdeps computes the package's dependencies; lintian, appstreamcli
    # and desktop-file-validate check the package, its metadata and its menu entry.
    packages+=(dpkg-dev fakeroot file lintian appstream desktop-file-utils)
    ;;
  *)
    echo "usage: $0 [--with-server] [--with-packaging]" >&2
    exit 2
    ;;
  esac
done
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0
sudo_cmd=""
[ "$(id -u)" -ne 0 ] && sudo_cmd="sudo"
export DEBIAN_FRONTEND=noninteractive
$sudo_cmd apt-get update
# The server package must not start its own service: the tests start one of their own.
if [ -d /usr/sbin ] && [ ! -e /usr/sbin/policy-rc.d ]; then
  printf '#!/bin/sh\nexit 101\n' | $sudo_cmd tee /usr/sbin/policy-rc.d >/dev/null
  $sudo_cmd chmod +x /usr/sbin/policy-rc.d
  trap '$sudo_cmd rm -f /usr/sbin/policy-rc.d' EXIT
fi
$sudo_cmd apt-get install -y --no-install-recommends "${missing[@]}"
