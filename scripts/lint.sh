#!/usr/bin/env bash
# lint.sh format: every source file is as clang-format writes it.
# lint.sh tidy BUILD: clang-tidy finds nothing in our own code, as far as it changed since it was last read whole.
# lint.sh tidy-all BUILD: the same, all of it; then the commit may be named in .ci/tidied.
set -euo pipefail
cd "$(dirname "$0")/.."

sources() { git ls-files '*.cpp' '*.h'; }
read_by_tidy() {
  git ls-files 'host/*.cpp' 'weaving/*.cpp' 'orders/*.cpp' 'writeoff/*.cpp' 'yarn/*.cpp' 'composition/*.cpp' 'module/*.cpp' 'app/*.cpp'
}

# The files of read_by_tidy that differ from the commit in .ci/tidied, or include a header that does. All of them where
# that commit is not at hand or the checks themselves changed.
changed() {
  local base headers
  base=$(cat .ci/tidied)
  if ! git cat-file -e "$base^{commit}" 2>/dev/null || ! git diff --quiet "$base" -- .clang-tidy; then
    read_by_tidy
    return
  fi
  headers=$(git diff --name-only "$base" -- '*.h')
  {
    git diff --name-only "$base" -- '*.cpp'
    for header in $headers; do git grep -lF "#include \"$header\"" -- '*.cpp' || true; done
  } | sort -u | comm -12 - <(read_by_tidy | sort)
}

case "${1:-}" in
  format)
    sources | xargs clang-format-14 --dry-run --Werror
    ;;
  tidy | tidy-all)
    # clang cannot read the headers that g++ parsed ahead.
    mkdir -p "$2/tidy"
    sed -E 's/ -Winvalid-pch -include [^ ]+cmake_pch\.hxx//' "$2/compile_commands.json" >"$2/tidy/compile_commands.json"
    if [ "$1" = tidy ]; then changed; else read_by_tidy; fi |
      xargs -r -P "$(nproc)" -n 4 clang-tidy-14 -p "$2/tidy" --quiet --warnings-as-errors='*' 2>/dev/null
    ;;
  *)
    echo "usage: lint.sh format | tidy BUILD | tidy-all BUILD" >&2
    exit 2
    ;;
esac
