#!/usr/bin/env bash
# Lays out a program folder, also over an older one: the executables and the steps of database updates are replaced,
# language files get new texts and keep their users' own, everything else is only added where it is missing.
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

# The steps of an update belong to the executables. Steps of one's own are kept beside them.
if [ -e "$program/dbupdate.xml" ] && ! cmp -s data/dbupdate.xml "$program/dbupdate.xml"; then
  mv "$program/dbupdate.xml" "$program/dbupdate.xml.before"
fi
cp data/dbupdate.xml "$program/dbupdate.xml"

for file in languages/*.xml; do
  target="$program/$(basename "$file")"
  if [ -e "$target" ]; then
    scripts/merge-language.py "$file" "$target"
  else
    cp "$file" "$target"
  fi
done

if [ ! -e "$program/sorvanto.mdb" ]; then
  rm -f "$program/sorvanto.mdb.new"
  "$program/sorvanto-db" sample "$program/sorvanto.mdb.new"
  mv -n "$program/sorvanto.mdb.new" "$program/sorvanto.mdb"
fi
