#!/bin/bash
# Inside MSYS2, in the shell MINGW32 for 32 bits or UCRT64 for 64: sets up what is missing, builds, and runs all tests
# of the Windows program. Called by windows-tests.cmd and by the workflow.
# Usage: tools/windows-tests.sh 32|64 <build directory>
set -euo pipefail
bits=$1
build=$2
googletest=build/googletest

case $bits in
32) compiler=mingw-w64-i686-gcc ;;
64) compiler=mingw-w64-ucrt-x86_64-gcc ;;
*) echo "usage: $0 32|64 <build directory>" >&2 && exit 2 ;;
esac
# What only builds is the same for both; for 32 bits MSYS2 has the compiler and little else.
tools=mingw-w64-ucrt-x86_64
pacman -S --needed --noconfirm git "$compiler" "$tools"-{cmake,ninja,librsvg,imagemagick}
# Behind everything else: nothing of it may get into a 32-bit program.
export PATH=$PATH:/ucrt64/bin
# MSYS2's own is a DLL with a C++ runtime of its own.
[ -d $googletest ] ||
    git clone -q --depth 1 --branch v1.17.0 https://github.com/google/googletest.git $googletest

cmd //c ver
echo "MSYS2 $MSYSTEM, $(gcc --version | head -1), $(cmake --version | head -1)"
cmake -G Ninja -B "$build" -D CMAKE_BUILD_TYPE=Release -D CMAKE_C_COMPILER=gcc -D CMAKE_CXX_COMPILER=g++ \
    -D NXCLIP_GOOGLETEST="$PWD/$googletest"
cmake --build "$build"

# Both run even when the first one fails: who tries the program wants to see everything.
code=0
(cd "$build" && ./nxclip_tests.exe --gtest_brief=1) || code=1
(cd "$build" && ./desktop/nxclip_desktop_tests.exe --gtest_brief=1) || code=1
exit $code
