# Certificates for servers of tests; source it from bash.
#   make_certificates FOLDER   authority.crt, and of a server on 127.0.0.1, each with its key: good.crt
#                              and expired.crt, signed by it, and foreign.crt, by another authority;
#                              elsewhere.crt, signed by it too, of another server

make_certificates() {
  (
    set -e
    cd "$1"
    umask 077
    key=(-newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes)
    for authority in authority stranger; do
      openssl req -x509 "${key[@]}" -days 2 -subj "/CN=$authority" -keyout "$authority.key" -out "$authority.crt"
    done
    sign() { # NAME AUTHORITY DAYS ADDRESS
      openssl req "${key[@]}" -subj "/CN=$4" -keyout "$1.key" -out "$1.csr"
      openssl x509 -req -in "$1.csr" -CA "$2.crt" -CAkey "$2.key" -CAcreateserial -days "$3" \
        -extfile <(echo "subjectAltName=IP:$4") -out "$1.crt"
    }
    sign good authority 2 127.0.0.1
    sign expired authority -1 127.0.0.1
    sign foreign stranger 2 127.0.0.1
    sign elsewhere authority 2 127.0.0.9
  )
}
