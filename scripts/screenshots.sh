#!/usr/bin/env bash
# Takes the pictures of the manual anew, while the program walks through it by keyboard on a fresh demonstration mill, and
# fails when a step of the manual no longer leads where it says.
#
#   scripts/screenshots.sh [--build FOLDER]               writes docs/manual/imagens
#   scripts/screenshots.sh [--build FOLDER] --all FOLDER  writes every screen of the menu to FOLDER, in light and dark,
#                                                         at 100 % and 150 % of a display of 1280 x 720
#
# --build names a configured build folder; without it the release preset is used.
set -euo pipefail
cd "$(dirname "$0")/.."

usage() {
  echo "usage: scripts/screenshots.sh [--build FOLDER] [--all FOLDER]" >&2
  exit 2
}

build=
all=
while [ $# -gt 0 ]; do
  [ $# -ge 2 ] || usage
  case $1 in
    --build) build=$2 ;;
    --all) all=$2 ;;
    *) usage ;;
  esac
  shift 2
done

if [ -z "$build" ]; then
  build=build/release
  cmake --preset release >/dev/null
fi
cmake --build "$build" --target tour

runtime=$(mktemp -d)
trap 'rm -rf "$runtime"' EXIT
export XDG_RUNTIME_DIR=$runtime
export QT_QPA_PLATFORM=offscreen
export QT_LOGGING_RULES="qt.qpa.*=false"

if [ -z "$all" ]; then
  "$build/tour" manual docs/manual/imagens
  echo "docs/manual/imagens: $(ls docs/manual/imagens | wc -l) pictures"
  exit 0
fi
for scale in 1 1.5; do
  for theme in light dark; do
    QT_SCALE_FACTOR=$scale "$build/tour" screens "$all/$theme-$scale" "$theme"
  done
done
echo "$all: $(find "$all" -name '*.png' | wc -l) pictures"
