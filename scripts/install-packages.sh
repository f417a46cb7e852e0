#!/usr/bin/env bash
# Installs what is missing on Debian 12, and nothing else: "build" (to build and run the program),
# "display" (a virtual display for a machine without one), "test" (tools that the tests read results with),
# "server" (a server for several benches), "package" (to make the package and look it over), "lint" (the linter, by
# hand), "fuzz" (a compiler with a fuzzer; nothing else needs it).
#   scripts/install-packages.sh SET...           installs what is missing (root or sudo)
#   scripts/install-packages.sh --check SET...   only lists what is missing; 1 if anything is
set -euo pipefail

build="g++ cmake ninja-build ccache mold pkg-config python3
  qt6-base-dev qt6-svg-dev qt6-serialport-dev qt6-translations-l10n libgl-dev
  libsqlite3-dev libpq-dev libpugixml-dev libgsf-1-dev libzint-dev libgtest-dev libgmock-dev libbenchmark-dev
  fonts-inter fonts-dejavu-core fonts-liberation2"
display="xvfb openbox xauth"
test="clang-format xdotool sqlite3 poppler-utils zbar-tools imagemagick libreoffice-calc-nogui python3-xlrd
  desktop-file-utils appstream librsvg2-bin cups-daemon cups-client cups-filters printer-driver-cups-pdf
  at-spi2-core dbus-daemon python3-gi gir1.2-atspi-2.0"
lint="clang-tidy"
package="dpkg-dev lintian desktop-file-utils appstream librsvg2-bin"
server="postgresql openssl"
fuzz="clang-14 libclang-rt-14-dev"

check=no
wanted=""
for argument in "$@"; do
  case "$argument" in
    --check) check=yes ;;
    build) wanted+=" $build" ;;
    display) wanted+=" $display" ;;
    test) wanted+=" $test" ;;
    package) wanted+=" $package" ;;
    lint) wanted+=" $lint" ;;
    server) wanted+=" $server" ;;
    fuzz) wanted+=" $fuzz" ;;
    *) echo "usage: $0 [--check] build [display] [test] [package] [lint] [server] [fuzz]" >&2; exit 2 ;;
  esac
done

missing=""
for package in $wanted; do
  state=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)
  [ "$state" = installed ] || missing+=" $package"
done
[ -n "$missing" ] || exit 0

if [ "$check" = yes ]; then
  echo "missing:$missing"
  exit 1
fi

as_root=""
if [ "$(id -u)" != 0 ]; then
  command -v sudo >/dev/null || { echo "Needs root or sudo to install:$missing" >&2; exit 1; }
  as_root="sudo"
fi
echo "Installing:$missing"
export DEBIAN_FRONTEND=noninteractive
# The server's package makes and starts a database of its own unless it is told not to.
clusters=/etc/postgresql-common/createcluster.conf
case "$missing" in
  *\ postgresql*) [ -e "$clusters" ] || { $as_root mkdir -p "${clusters%/*}" && echo "create_main_cluster = false" |
    $as_root tee "$clusters" >/dev/null; } ;;
esac
$as_root apt-get update -q
# shellcheck disable=SC2086  # a list of words
$as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends $missing
