#!/usr/bin/env python3
"""What is handed out: unpacks the ZIP and runs the installer, starts the program from there, removes it again.

Runs in a desktop session (tools/desktop-session); its prefix is fresh. The installer is a 32-bit program and needs
the 32-bit Wine.
"""

import hashlib
import os
import shutil
import subprocess
import sys
import time
import traceback
import zipfile
from contextlib import closing
from pathlib import Path

REPO = Path(__file__).resolve().parents[2]
sys.dont_write_bytecode = True
sys.path.insert(0, str(REPO / "tools/desktop"))
from driving import Drive, Failure, wait_for  # noqa: E402

BITS = os.environ["NXCLIP_BITS"]
PLATFORM = f"win{BITS}"
SCRATCH = Path(os.environ["NXCLIP_SCRATCH"])
SHOTS = Path(os.environ["NXCLIP_SHOTS"])
DRIVE_C = Path(os.environ["WINEPREFIX"]) / "drive_c"
UNINSTALL_KEY = r"HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\NXClip"
SETTINGS_KEY = r"HKCU\Software\NXClip\Settings"
BOUND = 60  # seconds for anything that must happen
PROGRAM_FILES = ["NXClip.exe", "nxclip-files.exe", "Nxclip.hlp", "LIESMICH.txt", "Hilfe/inhalt.html", "Hilfe/hilfe.css",
                 "Templates/Develop.nxp", "Templates/Office.nxp", "Templates/Medien.nxp", "Templates/Handbuch.nxp"]


def check(truth, text):
    if not truth:
        raise Failure(text)


def sees(drive, text):
    return text in drive("outline")


def wine(*arguments, **options):
    return subprocess.run(["wine", *map(str, arguments)], capture_output=True, timeout=BOUND, **options)


def windows_path(path):
    return "C:\\" + str(path.relative_to(DRIVE_C)).replace("/", "\\")


def registry_has(key):
    return wine("reg", "query", key).returncode == 0


def files_below(directory):
    return sorted(str(path.relative_to(directory)) for path in directory.rglob("*") if path.is_file())


def content_of(path):
    return path.read_bytes() if path.is_file() else None


def run_and_quit(directory, shot):
    """Starts the program from a directory as a user would, waits for its window, closes it."""
    with closing(Drive()) as drive:
        drive("setting", "Settings", "ShowSplash", "0")
        drive("setting", "Settings", "Dialog", "1")
        drive("setting", "Settings", "ShowInTray", "0")
        drive("run", windows_path(directory / "NXClip.exe"))
        wait_for("the main window", lambda: sees(drive, "NXClipMain "), BOUND)
        subprocess.run(["import", "-window", "root", str(SHOTS / f"{shot}.png")], check=False)
        wine("taskkill", "/IM", "NXClip.exe")
        # The format sets are written last, beside the program: it went down in order, and may write there. Their
        # journal stands before them and goes when they are on the disk.
        wait_for("the format-set file", (directory / "NXClip.nxf").exists, BOUND)
        wait_for("its save to be done", lambda: not (directory / "NXClip.nxf.jnl").exists(), BOUND)
        wait_for("the main window to go", lambda: not sees(drive, "NXClipMain "), BOUND)


# ---- The cases ---------------------------------------------------------------------------------------------------

def package(name):
    """Runs the one command and returns the directory with what it made."""
    output = SCRATCH / name
    run = subprocess.run([REPO / "tools/package", "--no-build", "--output", output, PLATFORM], capture_output=True,
                         text=True, timeout=4 * BOUND)
    check(run.returncode == 0, run.stdout + run.stderr)
    return output


def one(directory, pattern):
    found = list(directory.glob(pattern))
    check(len(found) == 1, f"{pattern}: {found}")
    return found[0]


def same_sources_give_the_same_bytes():
    first = one(package("dist"), "*.sha256").read_text()
    second = one(package("again"), "*.sha256").read_text()
    check(first == second, f"{first}\n{second}")
    for line in first.splitlines():
        digest, name = line.split()
        check(hashlib.sha256((SCRATCH / "dist" / name).read_bytes()).hexdigest() == digest, f"{name} is another file")
    shutil.rmtree(SCRATCH / "again")


def zip_unpacks_and_runs():
    target = DRIVE_C / "Ausgepackt"
    with zipfile.ZipFile(one(SCRATCH / "dist", f"*-{PLATFORM}.zip")) as archive:
        check(all(name.startswith("NXClip/") for name in archive.namelist()), "something lies outside of NXClip/")
        archive.extractall(target)
    for name in PROGRAM_FILES:
        check((target / "NXClip" / name).is_file(), f"{name} is missing in the ZIP")
    readme = (target / "NXClip/LIESMICH.txt").read_bytes()
    check("für die Zwischenablage\r\n".encode() in readme and b"@" not in readme, "LIESMICH.txt is not ready to read")
    run_and_quit(target / "NXClip", "zip")


def start_menu_links():
    return [path for path in DRIVE_C.rglob("NXClip.lnk") if "Start Menu" in str(path) or "Startmen" in str(path)]


def install():
    setup = DRIVE_C / "setup.exe"
    shutil.copy(one(SCRATCH / "dist", f"*-{PLATFORM}-setup.exe"), setup)
    run = wine(windows_path(setup), "/S")
    check(run.returncode == 0, f"the installer ends with {run.returncode}: {run.stderr!r}")
    return one(DRIVE_C, "users/*/AppData/Local/Programs/NXClip")


def uninstall(directory):
    run = wine(windows_path(directory / "Deinstallieren.exe"), "/S")
    check(run.returncode == 0, f"the uninstaller ends with {run.returncode}")
    # It goes on in a copy of itself.
    wait_for("the program to go", lambda: not (directory / "Deinstallieren.exe").exists() and
             not registry_has(UNINSTALL_KEY), BOUND)


def user_files(directory):
    return {"NXClip.nxf": b"format sets of the user's own", "Daten/Büro/nxclip.nxp": (directory / "Templates/Office.nxp").read_bytes(),
            "Daten/Büro/C1.nxc": b"a clip", "Templates/Eigene.nxp": b"a template of the user's own"}


def installation_update_and_removal_keep_what_the_user_made():
    directory = install()
    for name in [*PROGRAM_FILES, "Deinstallieren.exe"]:
        check((directory / name).is_file(), f"{name} was not installed")
    check(len(start_menu_links()) == 1, f"start menu: {start_menu_links()}")
    check(registry_has(UNINSTALL_KEY), "Windows does not know of the installation")
    check(not registry_has(UNINSTALL_KEY.replace("HKCU", "HKLM")), "the installation reaches beyond the user")
    run_and_quit(directory, "installed")
    made = user_files(directory)
    for name, content in made.items():
        path = directory / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)
    (directory / "Hilfe/alt.html").write_text("a page of an older version that the user keeps")
    (directory / "protokol.txt").write_text("a log")

    link = start_menu_links()[0]
    os.utime(link, (1, 1))
    install()
    check(link.stat().st_mtime == 1, "the update made another link, and what the user had made of it is gone")
    for name, content in made.items():
        check(content_of(directory / name) == content, f"the update changed {name}")

    uninstall(directory)
    expected = sorted([*made, "Hilfe/alt.html"])
    check(files_below(directory) == expected, f"what remains: {files_below(directory)}")
    for name, content in made.items():
        check(content_of(directory / name) == content, f"the removal changed {name}")
    check(not start_menu_links(), f"still in the start menu: {start_menu_links()}")
    check(registry_has(SETTINGS_KEY), "the settings are gone, and with them the list of profiles")
    shutil.rmtree(directory)


def running_program_is_closed_first():
    # The second time the dialog of a first start stands in the way of closing.
    for asked, window in ("1", "NXClipMain "), ("0", "Norvale - Der Manger"):
        directory = install()
        with closing(Drive()) as drive:
            drive("setting", "Settings", "Dialog", asked)
            drive("run", windows_path(directory / "NXClip.exe"))
            wait_for("the window", lambda: sees(drive, window), BOUND)
            uninstall(directory)
            check(not sees(drive, "NXClipMain "), "the program still runs")
        check(files_below(directory) == ["NXClip.nxf"], f"not saved, or left behind: {files_below(directory)}")
        shutil.rmtree(directory)


def main():
    cases = [same_sources_give_the_same_bytes, zip_unpacks_and_runs]
    installer = [installation_update_and_removal_keep_what_the_user_made,
                 running_program_is_closed_first]
    skipped = 0
    if BITS == "32":
        cases += installer
    else:
        skipped = len(installer)
    failed = 0
    for case in cases:
        began = time.monotonic()
        try:
            case()
            print(f"ok      {case.__name__} ({time.monotonic() - began:.1f} s)", flush=True)
        except Exception as error:
            failed += 1
            print(f"FAILED  {case.__name__}: {error}", flush=True)
            if not isinstance(error, Failure):
                traceback.print_exc(file=sys.stdout)
    print(f"{len(cases) - failed} passed, {failed} failed, {skipped} skipped", flush=True)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
