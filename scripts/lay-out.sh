#!/usr/bin/env bash
# Lays out a program folder for trying the program out, also over an older one: the executables and the
# manual lie in it, and a sample pharmacy where there is no database yet. The rest the program does itself (sorvanto --lay-out).
#   scripts/lay-out.sh <folder of the built executables> <program folder>
set -euo pipefail
built=$(cd "$1" && pwd)
mkdir -p "$2"
program=$(cd "$2" && pwd)

# Written beside and renamed over, so that a program that runs keeps its own file.
for name in sorvanto sorvanto-db sorvanto-report sorvanto-mixersim sorvanto-tour; do
  [ -f "$built/$name" ] || continue
  install -m 755 "$built/$name" "$program/$name.new"
  mv -f "$program/$name.new" "$program/$name"
done

# The manual is the program's own: an older one is replaced whole.
rm -rf "$program/manual.new" "$program/manual"
cp -r "$(dirname "$0")/../docs/manual" "$program/manual.new"
mv "$program/manual.new" "$program/manual"

if [ ! -e "$program/sorvanto.mdb" ]; then
  rm -f "$program/sorvanto.mdb.new"
  "$program/sorvanto-db" sample "$program/sorvanto.mdb.new"
  mv -n "$program/sorvanto.mdb.new" "$program/sorvanto.mdb"
fi

"$built/sorvanto" --lay-out --folder "$program"
