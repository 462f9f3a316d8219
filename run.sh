#!/usr/bin/env bash
# From a fresh clone to a mill's day: installs what is missing, builds, creates the demonstration mill where there is none.
# With a display it then opens the windows (user ADMIN, password demo); without one, or with --road, it walks one order
# from yarn to stock and verifies the books. Usage: ./run.sh [--road] [DATABASE]
set -euo pipefail
cd "$(dirname "$0")"
. scripts/packages.sh

road=no
if [ "${1:-}" = --road ]; then
  road=yes
  shift
fi
if [ $# -gt 1 ] || [[ "${1:-}" == -* ]]; then
  echo "usage: ./run.sh [--road] [DATABASE]" >&2
  exit 2
fi
[ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ] || road=yes
database=${1:-${XDG_DATA_HOME:-${HOME:?"HOME is not set: name a database, ./run.sh FILE"}/.local/share}/tecelagem/demo.fdb}

ensure_packages run
cmake --preset release >/dev/null
cmake --build --preset release --target tecelagem

tecelagem=build/release/tecelagem
if [ ! -e "$database" ]; then
  mkdir -p "$(dirname "$database")"
  "$tecelagem" demo --database "$database"
fi
if [ "$road" = no ]; then
  TECELAGEM_PASSWORD=demo exec "$tecelagem" desktop --ask --user ADMIN --database "$database"
fi
"$tecelagem" script demo/road-of-one-roll.js --database "$database"
echo
"$tecelagem" check --database "$database"
