# Counts what test programs say of themselves; source it from bash after lib.sh. A program counts by
# its own final line alone, never by its exit status.
passed=0
failed=0

count() { passed=$((passed + $1)); failed=$((failed + $2)); }

show_failures() { tr -d '\r' <"$1" | grep -E -B12 '^\[  FAILED  \]|^FAILED' | head -200 || true; }

# A check that either holds or does not.
check() {
  local name=$1
  shift
  say "checking $name"
  if "$@" >"build/$name.log" 2>&1; then count 1 0; else
    tail -60 "build/$name.log"
    say "FAILED: $name"
    count 0 1
  fi
}

# final_line LOG: "PASSED FAILED" of a Windows test, nothing when it did not come to its end.
final_line() {
  tr -d '\r' <"$1" 2>/dev/null | sed -nE 's/^([0-9]+) passed, ([0-9]+) failed$/\1 \2/p' | tail -1
}

# A Windows test, by its log.
count_windows() {
  local name=$1 log=$2 line
  line=$(final_line "$log")
  if [ -n "$line" ]; then
    count ${line}
    say "  $name: ${line% *} passed, ${line#* } failed"
    [ "${line#* }" -eq 0 ] || show_failures "$log"
  else
    tail -40 "$log" || true
    say "FAILED: $name did not come to its end"
    count 0 1
  fi
}

# A native GoogleTest program, by the log and the exit status that test-native has left; one that
# dies counts as one failure more.
count_native() {
  local name=$1 log=$2 status ok bad
  status=$(cat "$log.status" 2>/dev/null || echo unknown)
  ok=$(sed -nE 's/^\[  PASSED  \] ([0-9]+) tests?\.$/\1/p' "$log" | tail -1)
  bad=$(sed -nE 's/^ ?([0-9]+) FAILED TESTS?$/\1/p' "$log" | tail -1)
  if [ -z "$ok" ] || { [ "$status" != 0 ] && [ -z "$bad" ]; }; then
    tail -60 "$log"
    say "FAILED: $name ended with status $status"
    bad=$((${bad:-0} + 1))
  fi
  count "${ok:-0}" "${bad:-0}"
  say "  $name: ${ok:-0} passed, ${bad:-0} failed"
  [ "${bad:-0}" -eq 0 ] || show_failures "$log"
}

# A fuzzer, by what scripts/fuzz has left: one that found nothing, after at least one input.
count_fuzzer() {
  local name=$1 folder=build/fuzz/$1 status runs
  status=$(cat "$folder/status" 2>/dev/null || echo unknown)
  runs=$(sed -nE 's/^stat::number_of_executed_units: ([0-9]+)$/\1/p' "$folder/log" | tail -1)
  if [ "$status" = 0 ] && [ "${runs:-0}" -gt 0 ]; then
    count 1 0
    say "  $name: $runs inputs, nothing found"
  else
    grep -E -A12 '^BROKEN|ERROR|runtime error|^Test unit written' "$folder/log" | head -60 || tail -40 "$folder/log"
    say "FAILED: $name ended with status $status: see $folder/log"
    count 0 1
  fi
}
