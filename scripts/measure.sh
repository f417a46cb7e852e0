#!/usr/bin/env bash
# Builds the release preset and runs all benchmarks; the tables belong in docs/performance.md.
#   scripts/measure.sh                all of them
#   scripts/measure.sh start screens  these alone
# BUILD names another build folder. Figures in figures/ of it as well, one file a benchmark.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/common.sh

build=${BUILD:-build/release}
names=("$@")
[ ${#names[@]} -gt 0 ] || names=(start screens records batch_reports report data config mixer list blocks)

scripts/install-packages.sh build display
cmake --preset release -B "$build" >/dev/null
cmake --build "$build" --parallel "$(nproc)" --target "${names[@]/#/bench_}"
mkdir -p "$build/figures"

# The rounds of all figures of a program are mixed, so that a busy moment does not fall on one alone.
medians() {
  printf '| | by the clock | processor |\n|---|---|---|\n'
  "$build/bin/bench_$1" --benchmark_repetitions=5 --benchmark_enable_random_interleaving=true \
    --benchmark_min_time=0.2 --benchmark_report_aggregates_only=true 2>/dev/null \
    | awk '$1 ~ /_median$/ { sub(/_median$/, "", $1); print "| " $1 " | " $2 " " $3 " | " $4 " " $5 " |" }'
}

trap stop_display EXIT
start_display
echo "$(date +%F), $(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -1), $(nproc) processors, load $(cut -d' ' -f1 /proc/loadavg)"
for name in "${names[@]}"; do
  echo
  echo "== $name"
  case "$name" in
    start) "$build/bin/bench_start" 15 2>/dev/null ;;
    blocks)
      "$build/bin/bench_blocks" 2>/dev/null
      echo
      "$build/bin/bench_blocks" processor 2>/dev/null
      ;;
    *) medians "$name" ;;
  esac | tee "$build/figures/$name.txt"
done
