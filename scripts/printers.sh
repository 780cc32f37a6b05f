# A print server of one's own, on a socket of its own; source it from bash, as root.
#   start_printers DIR OUT NAME...   the first one is the default; every job becomes a PDF in OUT;
#                                    NAME=MM prints no nearer to the edges of A4 than that
#   stop_printers
#   newest_pdfs                      the PDFs that came so far, oldest first

printers_pid=
printers_out=
printers_config=

start_printers() {
  local work=$1 out=$2
  shift 2
  mkdir -p "$out"
  printers_out=$(cd "$out" && pwd)
  # Jobs of one title get a file each: its number stands before the title.
  printers_config=/etc/cups/cups-pdf-tessaline$$.conf
  printf 'Out %s\nLabel 1\n' "$printers_out" >"$printers_config"
  mkdir -p "$work"/{root/ppd,spool/tmp,cache,state,log}
  cat >"$work/root/cups-files.conf" <<CONF
SystemGroup root lpadmin
ServerRoot $work/root
RequestRoot $work/spool
TempDir $work/spool/tmp
CacheDir $work/cache
StateDir $work/state
ErrorLog $work/log/error
AccessLog $work/log/access
PageLog $work/log/page
CONF
  cat >"$work/root/cupsd.conf" <<CONF
LogLevel warn
Listen $work/socket
Browsing Off
DefaultAuthType None
<Location />
  Order allow,deny
  Allow all
</Location>
<Location /admin>
  Order allow,deny
  Allow all
</Location>
<Policy default>
  <Limit All>
    Order allow,deny
    Allow all
  </Limit>
</Policy>
CONF
  chmod 755 "$work"
  rm -f "$work/socket"
  /usr/sbin/cupsd -f -c "$work/root/cupsd.conf" -s "$work/root/cups-files.conf" \
    >"$work/log/out" 2>&1 &
  printers_pid=$!
  export CUPS_SERVER=$work/socket
  local tries printer name
  for tries in $(seq 50); do [ -S "$work/socket" ] && break; sleep 0.1; done
  [ -S "$work/socket" ] || { cat "$work/log/out" >&2; return 1; }
  for printer in "$@"; do
    name=${printer%=*}
    describe_printer "${printer#"$name"}" >"$work/$name.ppd"
    lpadmin -p "$name" -E -v "cups-pdf:/tessaline$$" -P "$work/$name.ppd" 2>/dev/null
  done
  lpadmin -d "${1%=*}" 2>/dev/null
}

# In whole points of a printer, 72 to the inch: Wine reads no fractions where they have a comma.
describe_printer() { # [=MILLIMETRES]
  awk -v millimetres="${1#=}" '
    /^\*ImageableArea A4\// && millimetres != "" {
      edge = int(millimetres * 72 / 25.4 + 0.5)
      printf "*ImageableArea A4/A4: \"%d %d %d %d\"\n", edge, edge, 595 - edge, 842 - edge
      next
    }
    { print }' /usr/share/ppd/cups-pdf/CUPS-PDF_noopt.ppd
}

stop_printers() {
  [ -n "$printers_pid" ] || return 0
  kill "$printers_pid" 2>/dev/null || true
  wait "$printers_pid" 2>/dev/null || true
  rm -f "$printers_config"
  printers_pid=
}

newest_pdfs() {
  find "$printers_out" -name '*.pdf' -printf '%T@ %p\n' 2>/dev/null | sort -n | cut -d' ' -f2-
}
