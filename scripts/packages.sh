# The list in scripts/packages.txt; source it from bash after lib.sh.
package_list=${TESSALINE_PACKAGES:-$ROOT/scripts/packages.txt}

packages_for() { # USE...: their names; a use that the list does not have is a failure
  local use names
  for use in "$@"; do
    names=$(awk -v use="$use" '$1 == use { print $2 }' "$package_list")
    [ -n "$names" ] || fail "scripts/packages.txt has nothing for $use"
    echo "$names"
  done
}

# Whether what is installed is what the list has: a version that begins otherwise is a failure, one that
# goes on otherwise is told. What is not installed is not looked at.
check_versions() { # USE [ADMINDIR]: of the machine, or of the system with that list of packages
  local use package begins tried version others=() wrong=()
  local -A installed
  while read -r package version; do installed[$package]=$version; done < <(
    dpkg-query ${2:+--admindir="$2"} -W -f='${db:Status-Status} ${Package} ${Version}\n' | sed -n 's/^installed //p')
  while read -r use package begins tried; do
    [ "$use" = "$1" ] || continue
    version=${installed[$package]:-}
    [ -n "$version" ] && [ "$version" != "$tried" ] || continue
    others+=("$package $version ($tried)")
    # Debian's own numbers before the colon are not the program's.
    case ${version#*:} in
      "$begins" | "$begins"[!0-9]*) ;;
      *) [ "$begins" = - ] || wrong+=("$package $version, where $begins is needed") ;;
    esac
  done <"$package_list"
  [ ${#others[@]} -eq 0 ] || printf 'another version than the one tried last: %s\n' "${others[@]}"
  [ ${#wrong[@]} -eq 0 ] || { printf 'error: the wrong version: %s\n' "${wrong[@]}" >&2; return 1; }
}
