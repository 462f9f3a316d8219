# Sourced by run.sh and test.sh: installs the Debian packages that are missing.

# packages_of SECTION...: the names under those headings of packages.txt.
packages_of() {
  local wanted=" $* " section="" line
  while IFS= read -r line; do
    case "$line" in
      ''|'#'*) ;;
      '['*']') section=${line#[}; section=${section%]} ;;
      *) case "$wanted" in *" $section "*) printf '%s\n' "$line" ;; esac ;;
    esac
  done < packages.txt
}

# ensure_packages SECTION...: installs what is missing; says plainly when it cannot.
ensure_packages() {
  local missing=() name
  if ! command -v dpkg-query >/dev/null 2>&1; then
    echo "This script prepares Debian 12; on another system install what packages.txt lists by hand." >&2
    return 0
  fi
  while IFS= read -r name; do
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$name" 2>/dev/null)" = installed ] || missing+=("$name")
  done < <(packages_of "$@")
  [ ${#missing[@]} -eq 0 ] && return 0

  echo "Installing: ${missing[*]}"
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null 2>&1; then
      echo "Cannot install packages: neither root nor sudo here. Ask an administrator for: apt-get install ${missing[*]}" >&2
      return 1
    fi
    as_root=(sudo)
  fi
  # Only the database's engine and its server program are wanted, not a server that starts by itself.
  local policy=/usr/sbin/policy-rc.d ours=no failed=no
  if [ ! -e "$policy" ]; then
    ours=yes
    printf '#!/bin/sh\nexit 101\n' | "${as_root[@]}" tee "$policy" >/dev/null
    "${as_root[@]}" chmod 755 "$policy"
  fi
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -qq &&
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" \
      >/dev/null || failed=yes
  [ "$ours" = no ] || "${as_root[@]}" rm -f "$policy"
  if [ "$failed" = yes ]; then
    echo "Cannot install packages: apt-get failed; see its message above." >&2
    return 1
  fi
}
