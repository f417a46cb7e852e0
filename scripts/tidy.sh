#!/usr/bin/env bash
# Runs clang-tidy by .clang-tidy over the program's sources. By hand: it takes long over the whole tree.
#   scripts/tidy.sh             what has changed since the last commit
#   scripts/tidy.sh --since REV what has changed since REV
#   scripts/tidy.sh --all       everything below src, app and tools
# It uses a build folder of its own, since clang can't read GCC's precompiled headers.
set -euo pipefail
cd "$(dirname "$0")/.."

case "${1:-}" in
  "") sources=$(git diff --name-only HEAD -- 'src/*.cpp' 'app/*.cpp' 'tools/*.cpp') ;;
  --since) sources=$(git diff --name-only "$2" -- 'src/*.cpp' 'app/*.cpp' 'tools/*.cpp') ;;
  --all) sources=$(git ls-files 'src/*.cpp' 'app/*.cpp' 'tools/*.cpp') ;;
  *) echo "usage: $0 [--all | --since REV]" >&2; exit 2 ;;
esac
[ -n "$sources" ] || { echo "Nothing has changed."; exit 0; }

scripts/install-packages.sh build lint
cmake --preset tidy >/dev/null
# The headers that Qt's generators write must be there before anything is read; their build targets would
# compile the libraries as well.
find build/tidy -name AutogenInfo.json -exec cmake -E cmake_autogen {} Debug \; >/dev/null
echo "$sources" | xargs -P "$(nproc)" -n 4 clang-tidy --extra-arg=-Wno-unknown-warning-option -p build/tidy --quiet
