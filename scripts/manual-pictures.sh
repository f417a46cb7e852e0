#!/usr/bin/env bash
# Makes all of the manual's pictures anew, in all eight languages, in few colors. Windows of the sample pharmacy come
# from the tests that look at every window; those of a mix, of a start and of what is done at the desk come from the
# tour, with a simulated mixer. Ends with 1 and their names when pictures that the pages show are missing.
#   scripts/manual-pictures.sh [--no-build] [language...]
set -euo pipefail
cd "$(dirname "$0")/.."
# The pictures tell of a pharmacy's computer, its user and its folder, not of this one: these bear their names for all that is
# started from here on, and for nothing else.
if [ "${1:-}" != --at-the-desk ]; then
  exec unshare --map-root-user --mount --uts scripts/manual-pictures.sh --at-the-desk "$@"
fi
shift
. scripts/common.sh
command -v convert >/dev/null || { echo "convert (package imagemagick) is needed." >&2; exit 1; }
built=build/dev/bin
if [ "${1:-}" = --no-build ]; then
  shift
else
  build_preset dev sorvanto sorvanto-db sorvanto-mixersim sorvanto-tour test_languages >&2
fi

languages=(english spanish german french russian portuguese italian swiss)  # by number
wanted=("$@")
formula="Magic Mouthwash"
scratch=$(mktemp -d)
place=/srv/pharmacy  # the folder that pictures name
hostname counter-1
sed 's/^[^:]*:\([^:]*\):0:/mreid:\1:0:/' /etc/passwd >"$scratch/passwd"
mount --bind "$scratch/passwd" /etc/passwd
mount -t tmpfs pharmacy "$(dirname "$place")"
mkdir "$place"
simulator="" locker=""
clean_up() {
  [ -z "$locker" ] || kill "$locker" 2>/dev/null || true
  [ -z "$simulator" ] || kill "$simulator" 2>/dev/null || true
  stop_display
  rm -rf "$scratch" "$place"
}
trap clean_up EXIT
export LC_ALL=C.UTF-8 TZ=UTC HOME=$place

is_wanted() {
  [ ${#wanted[@]} -eq 0 ] || [[ " ${wanted[*]} " == *" $1 "* ]]
}

# All windows: $scratch/<language>/<window>.png
keep_windows() {
  local name=${1^}
  printf '{"screens": [{"name": "desk", "x": 0, "y": 0, "width": 1366, "height": 768, "logicalDpi": 96,
    "logicalBaseDpi": 96, "dpr": 1}]}' >"$scratch/screen.json"
  QT_QPA_PLATFORM="offscreen:configfile=$scratch/screen.json" SORVANTO_PICTURES=$scratch \
    $built/test_languages --gtest_filter="*FitTest.*/$name:-*OnAWideScreen*" --gtest_brief=1 >&2 ||
    echo "Not all windows were looked at to their end; what there is of them is taken." >&2
}

start_simulator() {
  "$1/sorvanto-mixersim" --speed "$2" --link "$1/ports/COM1" --state "$1/ports/state" --parent-pid $$ >/dev/null &
  simulator=$!
  until [ -e "$1/ports/COM1" ]; do
    kill -0 "$simulator"
    sleep 0.1
  done
}

stop_simulator() {
  kill "$simulator" 2>/dev/null || true
  wait "$simulator" 2>/dev/null || true
  simulator=""
}

# As another program does, until unlock_database.
lock_database() {
  python3 - "$1/sorvanto.mdb" "$scratch/locked" <<'END' &
import sqlite3
import sys
import time

database = sqlite3.connect(sys.argv[1], isolation_level=None)
database.execute("BEGIN EXCLUSIVE")
open(sys.argv[2], "w").close()
while True:
    time.sleep(60)
END
  locker=$!
  until [ -e "$scratch/locked" ]; do
    kill -0 "$locker"
    sleep 0.1
  done
}

unlock_database() {
  kill "$locker" 2>/dev/null || true
  wait "$locker" 2>/dev/null || true
  locker=""
  rm -f "$scratch/locked"
}

# keep_desk <number>: starts, lists, windows, problems, and a mix that is stopped, in that language.
keep_desk() {
  local name=${languages[$1]} program=$place/sorvanto start
  mkdir -p "$scratch/$name"
  rm -rf "$program"
  scripts/lay-out.sh $built "$program" >/dev/null
  rm "$program/sorvanto.mdb"
  start_simulator "$program" 10
  "$program/sorvanto-tour" "$program" --manual --language "$1" --pictures "$scratch/$name" >&2
  "$program/sorvanto-tour" "$program" --stopped "$formula" --language "$1" --pictures "$scratch/$name" \
    --prefix mix- >"$scratch/$name/stopped.txt"
  stop_simulator
  for start in damaged missing folder options; do
    "$program/sorvanto-tour" "$program" --broken-start "start-$start" --pictures "$scratch/$name" >&2
  done
  lock_database "$program"
  "$program/sorvanto-tour" "$program" --broken-start start-locked --pictures "$scratch/$name" >&2
  unlock_database
}

# name on the pages   name of the window's picture
pictures='
  align-labels           labelOffset
  chemicals              chemicals
  formula-general        formulas-1
  formula-ingredients    formulas-2
  formula-mix-options    formula-mix-options
  health                 health
  history                history
  initials               mix-sign-stopped
  initials-same          mix-sign-same
  label-position         frmSelPrint
  language-wizard        language-wizard
  log-general            logs-1
  log-interrupted        mix-log-interrupted
  mix-waits              mix-stopped-window
  mixer-offer            panel-offer
  mixing                 mix-mixing-window
  mixing-stopped         mix-stopped-panel
  new-lot                new-lot
  patients-prescriptions patients-2
  preview-worksheet      preview-worksheet
  prices                 PriceWindow
  problems               problems
  quantity               mix-quantity
  quit-while-mixing      mix-quit-while-mixing
  recalculate            recalculate
  record-list            record-list
  report-dates           frmReportDate
  search-list            search-list
  start-damaged          start-damaged
  start-first            start-first
  start-folder           start-folder
  start-locked           start-locked
  start-missing          start-missing
  start-options          start-options
  unsaved-text           unsaved-text
  where-did-it-go        where-did-it-go
'

# take <language>: those that the pages show.
missing=""
take() {
  local folder=docs/manual/pictures name window
  [ "$1" = english ] || folder=$folder/$1
  mkdir -p "$folder"
  for window in "$scratch/$1"/mix-[0-9]*.png; do
    [ -f "$window" ] && mv "$window" "$scratch/$1/mix-$(basename "$window" | cut -d- -f3-)"
  done
  while read -r name window; do
    if [ -z "$name" ]; then
      continue
    elif [ -f "$scratch/$1/$window.png" ]; then
      convert "$scratch/$1/$window.png" -strip +dither -colors 64 -define png:compression-level=9 \
        "PNG8:$folder/$name.png"
    else
      missing="$missing $1/$name"
    fi
  done <<<"$pictures"
}

# The page tells of the picture: takes the numbers in the sentence below the ring over from it. Only digits change.
tell_stop() {
  local told=$scratch/$1/stopped.txt page=docs/manual/${1^}/stopped-mix.md
  [ "$1" != english ] || page=docs/manual/stopped-mix.md
  python3 - "$page" "$told" <<'END'
import re
import sys

page, told = (open(name, encoding="utf-8").read() for name in sys.argv[1:])
told = told.strip()
sentence = r"\s+".join(re.sub(r"[0-9]+", "[0-9]+", re.escape(word)) for word in told.split())
page, count = re.subn(sentence, lambda found: told, page)
if count != 1:
    sys.exit(f"{sys.argv[1]} does not say: {told}")
open(sys.argv[1], "w", encoding="utf-8").write(page)
END
}

start_display 1920x1080
for number in "${!languages[@]}"; do
  is_wanted "${languages[$number]}" || continue
  keep_windows "${languages[$number]}"
  keep_desk "$number" || echo "The tour in ${languages[$number]} was not followed to its end." >&2
  take "${languages[$number]}"
  tell_stop "${languages[$number]}"
done
du -sh docs/manual/pictures
[ -z "$missing" ] || { echo "Missing:$missing" >&2; exit 1; }
