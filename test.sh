#!/usr/bin/env bash
# Builds everything and runs what a contributor must pass. Usage: ./test.sh [--asan] [--no-lint] [--tidy-all] [--soak]
#   --asan     builds and runs the suite with the address and undefined-behaviour sanitizers instead
#   --no-lint  leaves out clang-format, clang-tidy and the release build of what changed
#   --tidy-all clang-tidy reads all files, not only what changed since the commit in .ci/tidied
#   --soak     adds the slow tests
set -euo pipefail
cd "$(dirname "$0")"
. scripts/packages.sh

preset=dev lint=yes tidy_what=tidy
for argument in "$@"; do
  case "$argument" in
    --asan) preset=asan ;;
    --no-lint) lint=no ;;
    --tidy-all) tidy_what=tidy-all ;;
    --soak) export TECELAGEM_SOAK=1 ;;
    *) echo "usage: ./test.sh [--asan] [--no-lint] [--tidy-all] [--soak]" >&2; exit 2 ;;
  esac
done

ensure_packages run test
[ "$lint" = yes ] && scripts/lint.sh format
# TECELAGEM_PCH=ON: for a build from nothing that no compiler cache helps.
cmake --preset "$preset" -DTECELAGEM_PCH="${TECELAGEM_PCH:-OFF}" >/dev/null
cmake --build --preset "$preset"
# The tests wait for disks and windows much of the time; meanwhile clang-tidy reads, and what changed is compiled as the
# release preset does.
tidy= tidy_log=build/$preset/tidy.log
if [ "$lint" = yes ]; then
  { scripts/lint.sh "$tidy_what" "build/$preset" && scripts/lint.sh release; } >"$tidy_log" 2>&1 &
  tidy=$!
fi
tests=passed
ctest --preset "$preset" -j $(($(nproc) + 1)) || tests=failed
if [ -n "$tidy" ] && ! wait "$tidy"; then
  cat "$tidy_log"
  echo "clang-tidy or the release build found something; see above." >&2
  exit 1
fi
[ "$tests" = passed ]
