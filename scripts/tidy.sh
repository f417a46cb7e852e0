#!/usr/bin/env bash
# Runs clang-tidy by .clang-tidy over the program's sources.
#   scripts/tidy.sh             what has changed since the last commit
#   scripts/tidy.sh --since REV what has changed since REV
#   scripts/tidy.sh --all       everything below src, app and tools, the sources of a library as one
# It uses build folders of its own, since clang can't read GCC's precompiled headers.
set -euo pipefail
cd "$(dirname "$0")/.."

all=no
case "${1:-}" in
  "") since=HEAD ;;
  --since) since=$2 ;;
  --all) all=yes ;;
  *) echo "usage: $0 [--all | --since REV]" >&2; exit 2 ;;
esac

# configure <build folder> <settings...>. The headers that Qt's generators write must be there before anything is read;
# their build targets would compile the libraries as well.
configure() {
  scripts/install-packages.sh build lint
  cmake --preset tidy -B "$@" >/dev/null
  find "$1" -name AutogenInfo.json -exec cmake -E cmake_autogen {} Debug \; >/dev/null
}

# tidy <commands' folder> <at once> <options...>: reads the names of sources.
tidy() {
  local folder=$1 at_once=$2
  shift 2
  xargs -P "$(nproc)" -n "$at_once" clang-tidy --quiet --extra-arg=-Wno-unknown-warning-option "$@" -p "$folder"
}

if [ "$all" = no ]; then
  sources=$(git diff --name-only --diff-filter=d "$since" -- 'src/*.cpp' 'app/*.cpp' 'tools/*.cpp')
  [ -n "$sources" ] || { echo "Nothing has changed."; exit 0; }
  configure build/tidy
  echo "$sources" | tidy build/tidy 4
  exit
fi

# Each source by itself takes most of its time for its headers. Here those of a library are one, under the name by which
# the analyzer knows such a source and follows the paths through what it includes. The longest first, so that all
# processors end at about the same time; none that a generator wrote.
configure build/tidy-all -DSORVANTO_UNITY=ON
mkdir -p build/tidy-all/united
python3 - build/tidy-all <<'END' | tidy build/tidy-all/united 1 --checks=-bugprone-suspicious-include
import json, pathlib, re, sys
build = pathlib.Path(sys.argv[1]).resolve()
commands = []
for entry in json.loads((build / "compile_commands.json").read_text()):
    source = pathlib.Path(entry["file"])
    if source.parent.name == "Unity":
        united = source.with_name("UnifiedSource.cxx")
        united.write_text(source.read_text())
        commands.append({**entry, "file": str(united), "command": entry["command"].replace(str(source), str(united))})
    elif build not in source.parents:
        commands.append(entry)
(build / "united/compile_commands.json").write_text(json.dumps(commands, indent=1))

def length(source):
    included = re.findall(r'#include "(/.*[.]cpp)"', source.read_text())
    return sum(len(pathlib.Path(file).read_text()) for file in included or [source])

print(*sorted((pathlib.Path(entry["file"]) for entry in commands), key=length, reverse=True), sep="\n")
END
