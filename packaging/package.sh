# The parts of ./package; source it from bash after lib.sh. `certificate` is a file, or empty; then `password`
# is its password, and `timestamps` the address of a server of them, or empty.
#   make_package WIDTH      x64 or x86: its files under out/package. Needs wine with a prefix
version=$(sed -nE 's/^project\(Tessaline VERSION ([0-9.]+).*/\1/p' CMakeLists.txt)
shipped_targets=(Tessaline TessalineStore TessalineHost tessaline-store)
shipped_binaries=(Tessaline.ocx TessalineStore.dll TessalineHost.exe tessaline-store.exe)

# When the commit was made: what packages are given as the time of their files. An archive of the sources has it
# in a file; a copy that is no archive is as old as the first version.
commit_time() {
  if [ -e .git ]; then git log -1 --format=%ct; else
    grep -xE '[0-9]+' packaging/commit-time || echo 1767225600
  fi
}

tool() { # WIDTH NAME
  case $1 in
    x64) echo "x86_64-w64-mingw32-$2" ;;
    x86) echo "i686-w64-mingw32-$2" ;;
  esac
}

# The password is read from a pipe: no command line has it, nor what is logged.
sign() { # FILE
  [ -n "$certificate" ] || return 0
  osslsigncode sign -pkcs12 "$certificate" -readpass <(printf '%s' "$password") -n Tessaline -h sha256 \
    ${timestamps:+-ts "$timestamps"} -in "$1" -out "$1.signed" >>build/sign.log 2>&1 ||
    { tail -5 build/sign.log; fail "signing $1"; }
  mv "$1.signed" "$1"
}

# The binaries without their symbols, which go beside.
stage_binaries() { # WIDTH STAGE
  local -x SOURCE_DATE_EPOCH=$(commit_time)
  local bin=build/windows-$1/bin name
  mkdir -p "out/package/symbols-$1"
  for name in "${shipped_binaries[@]}"; do
    "$(tool "$1" objcopy)" --only-keep-debug "$bin/$name" "out/package/symbols-$1/$name.debug"
    "$(tool "$1" strip)" --strip-all -o "$2/$name" "$bin/$name"
    sign "$2/$name"
  done
  cp "$bin/Tessaline.manifest" "$bin/TessalineStore.manifest" "$2"
}

# For those who write hosts: what is to be compiled against, and examples.
stage_development() { # WIDTH STAGE
  local made=build/windows-$1
  mkdir -p "$2/developpement"
  cp "$made/ocx/generated/Tessaline.tlb" "$made/ocx/generated/Tessaline.idl" \
    "$made/ocx/generated/ocx/TessalineTypes.h" "$made/storecom/TessalineStore.tlb" \
    "$made/storecom/TessalineStore.idl" "$2/developpement"
  cp -r examples "$2/exemples"
  rm -f "$2/exemples/cpp/CMakeLists.txt"
  cp -r tests/windows/examples/store "$2/exemples/donnees"
}

stage_documents() { # STAGE
  cp LICENSE "$1/LICENSE.txt"
  packaging/pages.py "$1" "$version"
  packaging/check-pages.py "$1" >build/pages.log || { cat build/pages.log; fail "the pages of the documents"; }
  mkdir -p "$1/modele"
  wine build/windows-x64/bin/tessaline-store.exe create "$(winepath -w "$1/modele" | tr -d '\r')\\vide.store" 2>/dev/null
  [ -s "$1/modele/vide.store" ] || fail "no empty store"
}

# Times are the commit's, and who may read is the same everywhere.
even_out() { # STAGE
  find "$1" -type f -exec chmod 644 {} + -exec touch -d "@$(commit_time)" {} +
  find "$1" -type d -exec chmod 755 {} + -exec touch -d "@$(commit_time)" {} +
}

# What the files are, so that a damaged or changed one is found.
sums() { # STAGE
  (cd "$1" && find . -type f ! -name SHA256SUMS | sed 's#^\./##' | LC_ALL=C sort | xargs -d '\n' sha256sum >SHA256SUMS)
  even_out "$1"
}

make_msi() { # STAGE ROWS WIDTH SCOPE TARGET [VERSION]
  local description=build/package-$3-$4.wxs
  packaging/wxs.py "$1" "$2" "${6:-$version}" "$3" "$4" >"$description"
  # A cabinet has its files' times as a clock on the wall shows them.
  (cd "$1" && TZ=UTC wixl -a "$3" -o "$ROOT/$5" "$ROOT/$description") >"build/package-$3-$4.log" 2>&1 || { tail -5 "build/package-$3-$4.log"; fail "making $5"; }
  packaging/even-msi.py "$5" "$(commit_time)"
}

stage() { # WIDTH STAGE: all files as they are to stand on a machine
  rm -rf "$2"
  mkdir -p "$2"
  stage_binaries "$1" "$2"
  stage_development "$1" "$2"
  stage_documents "$2"
  sums "$2"
}

make_package() { # WIDTH
  local name=tessaline-$version-$1 files rows=build/package-$1.rows scope
  files=build/package-$1/$name
  say "packaging $name"
  mkdir -p out/package
  wine build/windows-x64/bin/registry_rows.exe "$1" 2>/dev/null | tr -d '\r' >"$rows"
  [ -s "$rows" ] || fail "no registry rows of $1"
  stage "$1" "$files"
  packaging/zip.py "out/package/$name.zip" "$files"
  for scope in machine user; do
    make_msi "$files" "$rows" "$1" "$scope" "out/package/$name-$scope.msi"
    sign "out/package/$name-$scope.msi"
  done
}
