#!/usr/bin/env bash
# Lays out a program folder: the executables are replaced, everything else is only added where it is missing.
#   scripts/lay-out.sh <folder of the built executables> <program folder>
set -euo pipefail
built=$(cd "$1" && pwd)
mkdir -p "$2/ports"
program=$(cd "$2" && pwd)
cd "$(dirname "$0")/.."

# Written beside and renamed over, so that a program that runs keeps its own file.
for name in sorvanto sorvanto-db sorvanto-report sorvanto-mixersim sorvanto-tour; do
  [ -f "$built/$name" ] || continue
  install -m 755 "$built/$name" "$program/$name.new"
  mv -f "$program/$name.new" "$program/$name"
done

for file in languages/*.xml data/dbupdate.xml; do
  [ -f "$file" ] || continue
  target="$program/$(basename "$file")"
  if [ ! -e "$target" ]; then
    cp "$file" "$target"
  elif [ "$file" = data/dbupdate.xml ] && ! cmp -s "$file" "$target"; then
    echo "Kept as it is, though another one is delivered: $target"
  fi
done

if [ ! -e "$program/sorvanto.mdb" ]; then
  rm -f "$program/sorvanto.mdb.new"
  "$program/sorvanto-db" sample "$program/sorvanto.mdb.new"
  mv -n "$program/sorvanto.mdb.new" "$program/sorvanto.mdb"
fi
