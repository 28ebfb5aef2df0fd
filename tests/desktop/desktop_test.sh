#!/bin/bash
# Runs the desktop tests in a desktop session and ends in a line of counts.
# By hand: tools/desktop-session tests/desktop/desktop_test.sh build/win64/NXClip.exe --gtest_filter='Restore*'
set -u
NXCLIP_EXE=$(realpath "$1")
export NXCLIP_EXE
shift
tools=${NXCLIP_TOOLS:-${NXCLIP_EXE%/*}/desktop}
output=$NXCLIP_SCRATCH/output
cd "$tools" || exit 1
wine nxclip_desktop_tests.exe "$@" 2>&1 | tee "$output"
code=${PIPESTATUS[0]}

count() { grep -c "$1" "$output"; }
passed=$(count '^\[       OK \] ')
skipped=$(count '^\[  SKIPPED \] .* ms)')
failed=$(count '^\[  FAILED  \] .* ms)')
# A test program that ends early has failed, whatever its tests said before.
if [ "$code" != 0 ] && [ "$failed" = 0 ]; then failed=1; fi
if [ "$((passed + failed + skipped))" = 0 ]; then failed=1; fi
echo "$passed passed, $failed failed, $skipped skipped"
[ "$failed" = 0 ]
