# shellcheck shell=bash
# Shared by ./run and ./test; to be sourced. Builds a preset, and starts a virtual display.

# build_preset <preset> [targets...]: configures and builds below build/<preset>.
build_preset() {
  local preset=$1
  shift
  mkdir -p build
  cmake --preset "$preset" >"build/configure-$preset.log" 2>&1 || { cat "build/configure-$preset.log"; return 1; }
  cmake --build "build/$preset" --parallel "$(nproc)" ${1:+--target "$@"}
}

# start_display [size]: a virtual screen of 1366x768, or that size, with a small window manager, on a free display number.
# Sets DISPLAY; the processes' ids go to display_pids, to be ended by stop_display.
display_pids=""
start_display() {
  local number
  number=$(mktemp)
  Xvfb -displayfd 3 -screen 0 "${1:-1366x768}x24" -nolisten tcp 3>"$number" 2>/dev/null &
  display_pids="$!"
  for _ in $(seq 100); do
    [ -s "$number" ] && break
    sleep 0.1
  done
  if [ ! -s "$number" ]; then
    rm -f "$number"
    echo "The virtual display did not start." >&2
    return 1
  fi
  DISPLAY=":$(tr -d '[:space:]' <"$number")"
  export DISPLAY
  rm -f "$number"
  if command -v openbox >/dev/null; then
    openbox >/dev/null 2>&1 &
    display_pids="$! $display_pids"
  fi
}

stop_display() {
  local pid
  for pid in $display_pids; do
    kill "$pid" 2>/dev/null || true
    wait "$pid" 2>/dev/null || true
  done
  display_pids=""
}
