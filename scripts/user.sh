# A user of the demo host's windows, on a display: keys, clicks and what the windows show; and the
# store, read by its own command line. Source it from bash after lib.sh, with Wine's prefix and a
# display. Whoever sources it says what happens when something is not as it should be: wrong TEXT...
: "${WINEPREFIX:?no Windows environment}" "${DISPLAY:?no display}"

bin=${TESSALINE_BIN:-build/windows-x64/bin}
desktop=TessalineTour$$ # of its own: nothing that still runs elsewhere takes its input
size=${TESSALINE_TOUR_SIZE:-1024x768}
patience=60 # seconds for one answer

# A store on a server has no path.
windows_path() {
  case $1 in
    odbc:*) printf '%s' "$1" ;;
    *) winepath -w "$1" 2>/dev/null | tr -d '\r' ;;
  esac
}

# --- The helper that works on the windows: one command, one answer in `answer`.

ask() {
  local reply
  printf '%s\n' "$*" >&"${helper_in}"
  IFS= read -r -t "$patience" reply <&"${helper_out}" || { answer="no answer"; return 1; }
  reply=${reply%$'\r'}
  answer=${reply#* }
  [[ $reply == ok || $reply == ok\ * ]] || return 1
  [ "$reply" != ok ] || answer=
}

must() { ask "$@" || wrong "$*: $answer"; }

# The mouse is the display's own, so that Windows and the display agree on its buttons.
press_mouse() { xdotool mousemove ${answer} sleep 0.05 click 1; }

click() { # NAME
  must at "$1"
  press_mouse
}

double_click() { # NAME LINE
  must line "$1" "$2"
  xdotool mousemove ${answer} sleep 0.05 click --repeat 2 --delay 60 1
}

click_line() { # NAME LINE
  must line "$1" "$2"
  press_mouse
}

# A list takes what is sent to it a moment later.
has_lines() { # NAME COUNT
  local tries=50
  must lines "$1"
  until [ "$answer" = "$2" ] || [ $((tries -= 1)) -eq 0 ]; do
    sleep 0.1
    must lines "$1"
  done
  expect "lines of $1" "$2" "$answer"
}

some_text() { # NAME: its text, once there is one
  local tries=50
  must read "$1"
  until [ -n "$answer" ] || [ $((tries -= 1)) -eq 0 ]; do
    sleep 0.1
    must read "$1"
  done
  [ -n "$answer" ] || wrong "$1 shows nothing"
}

answer_box() { # CAPTION
  must button "$1"
  press_mouse
  must closed
}

expect() { # WHAT WANTED GOT
  [ "$2" = "$3" ] || wrong "$1: \"$3\" instead of \"$2\""
}

shows() { # NAME TEXT
  must await "$1" "$2"
}

clear_field() {
  click "$1"
  local key
  for key in Home Shift+End Delete; do must key "$key"; done
  shows "$1" ""
}

fill() { # NAME TEXT
  clear_field "$1"
  must type "$2"
  shows "$1" "$2"
}

box() { # TEXT: the box that must be open says so
  must box
  local title text buttons
  IFS='|' read -r title text buttons <<<"$answer"
  expect "title of the box" "Message VALDRIS" "$title"
  expect "text of the box" "$1" "$text"
}

# --- The store, read by its own command line.

store_command() { wine "$bin/tessaline-store.exe" "$@" 2>/dev/null | tr -d '\r'; }
attribute() { # FILE ID ATTRIBUTE
  store_command show "$(windows_path "$store")" "$1" "$2" | sed -nE "s/^ *$3(\s[^:]*)?: ?//p"
}
values() { # FILE ID ATTRIBUTE: how many the attribute has
  store_command show "$(windows_path "$store")" "$1" "$2" | grep -c -E "^ *$3\.[0-9]+" || true
}
exists() { [ -n "$(store_command query "$(windows_path "$store")" "SSELECT $1 AVEC @ID = \"$2\"")" ]; }
count() { store_command query "$(windows_path "$store")" "$1" | grep -c . || true; }

# start_host STORE [OPTION...]: the host on that store, and the helper that works on its windows.
start_host() {
  local opened=$1
  shift
  wine explorer "/desktop=$desktop,$size" "$bin/TessalineHost.exe" --store "$(windows_path "$opened")" \
    "$@" </dev/null >build/tour-host.log 2>&1 &
  started+=($!)
  local pipes
  pipes=$(mktemp -d)
  mkfifo "$pipes/in" "$pipes/out"
  wine "$bin/TessalineTour.exe" "$desktop" <"$pipes/in" >"$pipes/out" 2>/dev/null &
  started+=($!)
  exec {helper_in}>"$pipes/in" {helper_out}<"$pipes/out"
  rm -rf "$pipes"
}

choose_printer() { # [PICTURE]: whoever sources this has a function `picture NAME WINDOW`
  must wait Cbo_Imprimante
  must lines Cbo_Imprimante
  expect "printers offered" 1 "$answer" # the dot-matrix printer is not
  shows Cbo_Imprimante PDF_A4
  [ $# -eq 0 ] || picture "$1" form
  must key Enter
}

printed() { # NAME POSITION: the document that came out in that place, kept under that name
  local tries=150 pdf=
  until [ "$(newest_pdfs | wc -l)" -ge "$2" ] || [ $((tries -= 1)) -eq 0 ]; do sleep 0.2; done
  pdf=$(newest_pdfs | sed -n "$2p")
  [ -n "$pdf" ] || wrong "$1 has not been printed"
  tries=50
  until pdfinfo "$pdf" >/dev/null 2>&1 || [ $((tries -= 1)) -eq 0 ]; do sleep 0.2; done
  cp "$pdf" "$out/$1.pdf"
}
