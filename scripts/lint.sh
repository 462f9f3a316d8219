#!/usr/bin/env bash
# lint.sh format: every source file is as clang-format writes it.
# lint.sh tidy BUILD: clang-tidy finds nothing in our own code, as far as it changed since it was last read whole.
# lint.sh tidy-all BUILD: the same, all of it.
# lint.sh release: what changed since then compiles without warnings as the release preset compiles it; the optimizer of g++
# finds what a debug build does not. All of it: cmake --build --preset release.
# A commit that passed tidy-all and a whole release build may be named in .ci/tidied.
set -euo pipefail
cd "$(dirname "$0")/.."

sources() { git ls-files '*.cpp' '*.h'; }
read_by_tidy() {
  git ls-files 'host/*.cpp' 'weaving/*.cpp' 'orders/*.cpp' 'writeoff/*.cpp' 'yarn/*.cpp' 'composition/*.cpp' 'module/*.cpp' 'app/*.cpp'
}

# changed FILES...: those of the files on its input that differ from the commit in .ci/tidied, or include a header that
# does. All of them where that commit is not at hand or one of FILES changed.
changed() {
  local files base headers
  files=$(cat)
  base=$(cat .ci/tidied)
  if ! git cat-file -e "$base^{commit}" 2>/dev/null || ! git diff --quiet "$base" -- "$@"; then
    printf '%s\n' "$files"
    return
  fi
  headers=$(git diff --name-only "$base" -- '*.h')
  {
    git diff --name-only "$base" -- '*.cpp'
    for header in $headers; do git grep -lF "#include \"$header\"" -- '*.cpp' || true; done
  } | sort -u | comm -12 - <(printf '%s\n' "$files" | sort)
}

# The objects that the build in folder $1 makes of the sources on its input.
objects_of() {
  awk -v root="$PWD/" '
    NR == FNR { wanted[root $0]; next }
    /"command":/ { match($0, / -o [^ ]+/); object = substr($0, RSTART + 4, RLENGTH - 4) }
    /"file":/ { sub(/^.*"file": "/, ""); sub(/".*$/, ""); if ($0 in wanted) print object }
  ' - "$1/compile_commands.json"
}

case "${1:-}" in
  format)
    sources | xargs clang-format-14 --dry-run --Werror
    ;;
  tidy | tidy-all)
    # clang cannot read the headers that g++ parsed ahead.
    mkdir -p "$2/tidy"
    sed -E 's/ -Winvalid-pch -include [^ ]+cmake_pch\.hxx//' "$2/compile_commands.json" >"$2/tidy/compile_commands.json"
    if [ "$1" = tidy ]; then read_by_tidy | changed .clang-tidy; else read_by_tidy; fi |
      xargs -r -P "$(nproc)" -n 4 clang-tidy-14 -p "$2/tidy" --quiet --warnings-as-errors='*' 2>/dev/null
    ;;
  release)
    cmake --preset release >/dev/null
    git ls-files '*.cpp' | changed cmake/options.cmake CMakePresets.json | objects_of build/release |
      xargs -r ninja -C build/release
    ;;
  *)
    echo "usage: lint.sh format | tidy BUILD | tidy-all BUILD | release" >&2
    exit 2
    ;;
esac
