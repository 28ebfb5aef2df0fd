#!/bin/bash
# Called by windows-tests.cmd inside MSYS2: sets up what is missing, builds, and runs all tests of the Windows program.
# Usage: tools/windows-tests.sh <package prefix> <build directory>
set -euo pipefail
package=$1
build=$2

pacman -S --needed --noconfirm "$package"-{gcc,cmake,ninja,gtest,librsvg,imagemagick}
cmake -G Ninja -B "$build" -D CMAKE_BUILD_TYPE=Release
cmake --build "$build"

# Both run even when the first one fails: who tries the program wants to see everything.
code=0
(cd "$build" && ./nxclip_tests.exe --gtest_brief=1) || code=1
(cd "$build" && ./desktop/nxclip_desktop_tests.exe --gtest_brief=1) || code=1
exit $code
