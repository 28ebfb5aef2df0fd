@echo off
rem Builds the program on a Windows with MSYS2 and runs the unit, contract and desktop tests there. NOT RUN YET.
rem Usage: tools\windows-tests.cmd [32^|64]     MSYS2 is expected in C:\msys64, or where MSYS2_ROOT says.
rem The desktop tests drive the program with a mouse and keys of their own: leave both alone until they are done.
setlocal
set BITS=%1
if "%BITS%"=="" set BITS=64
if "%BITS%"=="64" (set MSYSTEM=UCRT64) else (set MSYSTEM=MINGW32)
if "%MSYS2_ROOT%"=="" set MSYS2_ROOT=C:\msys64
if not exist "%MSYS2_ROOT%\usr\bin\bash.exe" (
  echo MSYS2 is not in %MSYS2_ROOT%: install it from its site, or set MSYS2_ROOT.
  exit /b 2
)
set CHERE_INVOKING=1
pushd "%~dp0.."
rem The first brings the system itself up to date, which may end it; the packages follow in the second.
"%MSYS2_ROOT%\usr\bin\bash.exe" -lc "pacman -Syu --noconfirm"
"%MSYS2_ROOT%\usr\bin\bash.exe" -lc "pacman -Su --noconfirm && tools/windows-tests.sh %BITS% build/windows%BITS%"
set CODE=%ERRORLEVEL%
popd
exit /b %CODE%
