# What the scripts at the root share; source it from bash. Sets ROOT and goes there.
set -euo pipefail
ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$ROOT"

JOBS=$(nproc)
started=()  # process ids of the servers to end

say() { printf '%s  %s\n' "$(date +%H:%M:%S)" "$*"; }
fail() { printf 'error: %s\n' "$*" >&2; exit 1; }

end_servers() {
  local pid
  for pid in "${started[@]:-}"; do
    # What was killed has no status that matters.
    if [ -n "$pid" ] && kill "$pid" 2>/dev/null; then wait "$pid" 2>/dev/null || true; fi
  done
  started=()
}
trap end_servers EXIT

# Tells how long what follows the last phase has taken: phase NAME, at its end.
phase_started=$SECONDS
phase() {
  say "$1: $((SECONDS - phase_started)) s"
  phase_started=$SECONDS
}

# pool MOST: runs the commands of the standard input, a line each, so many at a time.
pool() {
  local line
  local running=()
  while IFS= read -r line; do
    if [ "${#running[@]}" -ge "$1" ]; then
      wait "${running[0]}" || true
      running=("${running[@]:1}")
    fi
    ${line} </dev/null &
    running+=($!)
  done
  wait "${running[@]}" || true
}

# build PRESET [TARGET...]
build() {
  local preset=$1
  shift
  say "building $preset"
  mkdir -p build
  cmake --preset "$preset" >"build/$preset.log" 2>&1 || { cat "build/$preset.log"; fail "configuring $preset"; }
  if ! cmake --build --preset "$preset" -j "$JOBS" ${1:+--target "$@"} >"build/$preset.log" 2>&1; then
    grep -E -A8 'error|FAILED' "build/$preset.log" | head -80
    fail "building $preset: see build/$preset.log"
  fi
}

# An X server of our own; sets DISPLAY. Several of one project have a name each.
start_display() {
  local report=build/display${1:+-$1} number_fd tries=100
  mkdir -p build
  : >"$report"
  exec {number_fd}>"$report"
  Xvfb -displayfd "$number_fd" -screen 0 1280x1024x24 -nolisten tcp >"$report.log" 2>&1 &
  started+=($!)
  exec {number_fd}>&-
  until [ -s "$report" ]; do
    tries=$((tries - 1))
    [ "$tries" -gt 0 ] || fail "Xvfb did not start: see $report.log"
    sleep 0.1
  done
  DISPLAY=:$(tr -d '[:space:]' <"$report")
  export DISPLAY
}

# Wine in a prefix of the project's own. start_wine DIR makes it when it is not there yet.
start_wine() {
  export WINEPREFIX=$1 WINEDEBUG=-all LC_ALL=fr_FR.UTF-8 WINEDLLOVERRIDES="mscoree,mshtml="
  if [ ! -f "$WINEPREFIX/.ready" ]; then
    say "making a Windows environment in ${WINEPREFIX#"$ROOT"/}"
    mkdir -p "$WINEPREFIX"
    timeout 180 wineboot -i >"$WINEPREFIX.log" 2>&1 || fail "wineboot: see $WINEPREFIX.log"
    # A crash ends the program instead of waiting for somebody to read it.
    wine reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f >>"$WINEPREFIX.log" 2>&1
    wine reg add 'HKCU\Software\Wine\Fonts\Replacements' /v 'Courier New' /d 'Liberation Mono' /f \
      >>"$WINEPREFIX.log" 2>&1
    timeout 60 wineserver -w || true
    touch "$WINEPREFIX/.ready"
  fi
}

# On a display of our own there is no window manager; Wine would wait two seconds for its answer
# whenever a window goes.
without_window_manager() {
  wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >>"$WINEPREFIX.log" 2>&1
}

stop_wine() { timeout 20 wineserver -k 2>/dev/null || true; }
