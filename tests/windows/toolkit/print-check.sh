#!/usr/bin/env bash
# Prints through the toolkit's GDI printer, and on one chosen in the window for that, and reads the
# PDFs back.  print-check.sh FOLDER-OF-THE-BINARIES
# Runs a print server of its own, on a socket of its own; ends with "N passed, N failed".
set -uo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/../../../scripts/printers.sh"
bin=$1
work=$(mktemp -d)
passed=0
failed=0

finish() {
  stop_printers
  rm -rf "$work"
}
trap finish EXIT

check() {
  local what=$1
  shift
  if "$@" >/dev/null 2>&1; then passed=$((passed + 1)); else
    echo "FAILED: $what"
    failed=$((failed + 1))
  fi
}

# The PDF that has come, once it is complete.
find_pdf() {
  local tries
  for tries in $(seq 100); do
    pdf=$(newest_pdfs | head -1)
    [ -n "$pdf" ] && pdftotext -layout "$pdf" "$work/text" 2>/dev/null && return 0
    sleep 0.2
  done
  return 1
}

# The point at which a word starts on the page, in points.
word_at() {
  pdftotext -bbox "$pdf" - 2>/dev/null |
    sed -nE "s/.*xMin=\"([0-9.]+)\" yMin=\"([0-9.]+)\".*>$1<.*/\1 \2/p" | head -1
}
near() { awk -v a="$1" -v b="$2" 'BEGIN { d = a - b; exit !(d < 4 && d > -4) }'; }

start_printers "$work" "$work/pdf" PDF_A4 MATRICIELLE
timeout 120 wine "$bin/toolkit_probe.exe" print PDF_A4 2>/dev/null | tr -d '\r' >"$work/said"
check "both printers are listed" grep -q '^printer MATRICIELLE on ' "$work/said"
check "the default printer is the current one" grep -qE '^current [0-9]+$' "$work/said"
check "the job is taken" grep -q '^printed$' "$work/said"
# Ten characters of 12 points, 0.6 of the size each: 1440 twips.
width=$(sed -nE 's/^width of ten characters ([0-9]+),.*/\1/p' "$work/said")
check "text is measured in twips (${width:-none})" test "${width:-0}" -gt 1380 -a "${width:-0}" -lt 1500
if find_pdf; then
  check "two pages" grep -q '^Pages: *2$' <(pdfinfo "$pdf")
  check "the first page's text" grep -q 'Première page' "$work/text"
  check "bold and underlined on one line" grep -qE 'gras +souligné' "$work/text"
  check "the second page's text" grep -q 'Deuxième page' "$work/text"
  read -r x y < <(word_at Première)
  # 2880 and 1440 twips are 144 and 72 points from the corner of what can be printed.
  echo "the first word stands at ${x:-?} ${y:-?} points"
  check "it stands where it was put, across" near "${x:-0}" 144
  check "it stands where it was put, down" near "${y:-0}" 72
  rm -f "$pdf"
else
  check "a PDF comes out" false
  tail -20 "$work/log/error"
fi

timeout 120 wine "$bin/forms_probe.exe" print 2>/dev/null | tr -d '\r' >"$work/said"
check "the page printer is offered" grep -q '^offered PDF_A4$' "$work/said"
check "nothing else is" test "$(grep -c '^offered ' "$work/said")" = 1
check "a refusal keeps the current printer" grep -q '^refused -1, current kept$' "$work/said"
check "the page printer is chosen" grep -q '^chosen PDF_A4$' "$work/said"
if find_pdf; then
  check "it prints" grep -q 'Imprimante choisie' "$work/text"
  check "in a fixed-pitch font" grep -qE 'Mono|Courier' <(pdffonts "$pdf")
  rm -f "$pdf"
else
  check "a PDF comes out of the chosen printer" false
fi
echo "$passed passed, $failed failed"
