#!/usr/bin/env bash
# Builds the Debian package below build/package and has it looked over; its path is the last line.
#   scripts/make-package.sh
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/common.sh

scripts/install-packages.sh build package
build_preset release delivery
rm -rf build/package
(cd build/release && cpack -G DEB -B "$PWD/../package" >"$PWD/../package.log") || { cat build/package.log; exit 1; }
rm -rf build/package/_CPack_Packages
package=$(echo "$PWD"/build/package/*.deb)
lintian --allow-root --fail-on error,warning "$package"
echo "$package"
