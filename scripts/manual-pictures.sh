#!/usr/bin/env bash
# Makes most of the manual's pictures anew, in all eight languages, in few colors; those of the start, the health page,
# problems and search lists are taken by hand. Most are windows of the sample pharmacy as
# the tests that look at every window keep them; those of a mix come from the tour, with a simulated mixer.
# Only on a computer that has nothing else to do: a simulated mixer that waits too long is shown as lost.
#   scripts/manual-pictures.sh [--no-build]
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/common.sh
command -v convert >/dev/null || { echo "convert (package imagemagick) is needed." >&2; exit 1; }
built=build/dev/bin
[ "${1:-}" = --no-build ] ||
  build_preset dev sorvanto sorvanto-db sorvanto-mixersim sorvanto-tour test_languages >&2

languages=(english spanish german french russian portuguese italian swiss)  # by number
formula="Hydrocortisone 1% Cream"
scratch=$(mktemp -d)
simulator=""
clean_up() {
  [ -z "$simulator" ] || kill "$simulator" 2>/dev/null || true
  stop_display
  rm -rf "$scratch"
}
trap clean_up EXIT

# All windows: $scratch/<language>/<window>.png
keep_windows() {
  QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 TZ=UTC SORVANTO_PICTURES=$scratch \
    $built/test_languages --gtest_filter='*FitTest*' --gtest_brief=1 >&2 ||
    echo "Not all windows were looked at to their end; what there is of them is taken." >&2
}

# keep_mix <number>: a mix that is stopped, in that language.
keep_mix() {
  local name=${languages[$1]} program=$scratch/program-$1
  scripts/lay-out.sh $built "$program" >/dev/null
  "$program/sorvanto-mixersim" --speed 30 --link "$program/ports/COM1" --state "$program/ports/state" \
    --parent-pid $$ >/dev/null &
  simulator=$!
  for _ in $(seq 100); do [ -e "$program/ports/COM1" ] && break; sleep 0.1; done
  mkdir -p "$scratch/$name"
  LC_ALL=C.UTF-8 TZ=UTC "$program/sorvanto-tour" "$program" --stopped "$formula" --language "$1" \
    --pictures "$scratch/$name" --prefix mix- >&2 || echo "The mix in $name was not followed to its end." >&2
  kill "$simulator" 2>/dev/null || true
  wait "$simulator" 2>/dev/null || true
  simulator=""
  rm -rf "$program"
}

# name on the pages   name of the window's picture
pictures='
  align-labels           labelOffset
  chemicals              chemicals
  formula-general        formulas-1
  formula-ingredients    formulas-2
  initials               mix-sign
  initials-same          mix-sign-same
  label-position         frmSelPrint
  log-general            logs-1
  log-interrupted        mix-log-interrupted
  mix-waits              mix-stopped-window
  mixer-offer            panel-offer
  mixing                 mix-mixing-window
  mixing-stopped         mix-stopped-panel
  patients-prescriptions patients-2
  preview-worksheet      preview-worksheet
  quantity               mix-quantity
  report-dates           frmReportDate
'

# take <language>: those that the pages show.
take() {
  local folder=docs/manual/pictures name window
  [ "$1" = english ] || folder=$folder/$1
  mkdir -p "$folder"
  while read -r name window; do
    if [ -f "$scratch/$1/$window.png" ]; then
      convert "$scratch/$1/$window.png" -strip +dither -colors 64 -define png:compression-level=9 \
        "PNG8:$folder/$name.png"
    fi
  done <<<"$pictures"
}

keep_windows
start_display
for number in "${!languages[@]}"; do
  keep_mix "$number"
  take "${languages[$number]}"
done
du -sh docs/manual/pictures
