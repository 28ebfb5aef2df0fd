#!/usr/bin/env python3
"""Takes a picture of every window of the program, for docs/pictures. Runs in a desktop session; see tools/take-pictures.

Usage: take_pictures.py DIRECTORY      the files are named <form>-<dpi>.png
"""

import importlib.machinery
import importlib.util
import os
import re
import subprocess
import sys
import time
from pathlib import Path

HERE = Path(__file__).parent
DPI = os.environ["NXCLIP_DPI"]


def load(name, path):
    loader = importlib.machinery.SourceFileLoader(name, str(path))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader(name, loader))
    loader.exec_module(module)
    return module


target = Path(sys.argv.pop(1)).resolve()
demo = load("demo", HERE / "demo")
numbers = {name: int(value) for name, value in
           re.findall(r"^#define (\w+) (\d+)$", (HERE / "../../src/resources/controls.rh").read_text(), re.M)}


def shoot(name, place):
    time.sleep(0.4)  # the last paint; a picture has no condition to wait for
    left, top, width, height = map(int, place.split())
    left, top = max(left, 0), max(top, 0)
    subprocess.run(["import", "-window", "root", "-crop", f"{width}x{height}+{left}+{top}", "+repage",
                    target / f"{name}-{DPI}.png"], check=True)


def shoot_dialog(drive, name, title):
    shoot(name, drive("dialog", title))


MEETING = "Besprechung vom Montag\n\n" + "Anwesend waren alle, die gefragt worden waren.\n" * 30 + \
    "Ab Mai gelten die neuen Öffnungszeiten: mittwochs bis 20 Uhr.\n" + "Es folgt der Rest der Sitzung.\n" * 10


def content(drive):
    """A profile with folders and clips, among them one of each kind that the preview shows."""
    drive("profile", "Notizen")
    drive("autodetect", 1)
    for type_, data in (("UTF8_STRING", "Öffnungszeiten: Mo–Fr 9–18 Uhr\nSa 10–14 Uhr".encode()),
                        ("text/rtf", rb"{\rtf1\ansi\deff0 {\b Fett} und {\i kursiv}: \'e4\'f6\'fc}"),
                        ("image/bmp", picture("BMP3")), ("image/png", picture("PNG", "-alpha", "set", "-channel", "A",
                                                                              "-evaluate", "multiply", "0.5")),
                        ("UTF8_STRING", MEETING.encode()), ("text/html", b"<p>Die <b>&Ouml;ffnungszeiten</b> im Mai</p>")):
        drive("watch")
        subprocess.run(["xclip", "-selection", "clipboard", "-t", type_, "-i"], input=data, check=True)
        drive("select", drive("newclip", 10))
    drive("autodetect", 0)


def picture(kind, *changes):
    return subprocess.run(["convert", "-size", "320x200", "-seed", "7", "plasma:steelblue-gold", *changes, f"{kind}:-"],
                          check=True, capture_output=True).stdout


def dialogs(drive):
    command = lambda name: drive("command", numbers[name])
    simple = [("frmStructProp", "m_edit_newstruct", "Ordner-Eigenschaften"), ("frmSearch", "m_search", "Suchen"),
              ("frmErrorMsg", "m_ext_fa", "Formatabfragen"), ("frmDiagnose", "m_ext_diag", "Clipboard Diagnose"),
              ("frmFirstStart", "m_quickstart", "Norvale - Der Manger für die Zwischenablage"),
              ("frmAbout", "mnuHelpAbout", "Info zu NXClip"), ("frmClipProp", "m_clip_prop", "Clip-Eigenschaften"),
              ("frmFileSel", "m_importProfil", "Profil importieren"), ("frmMoveTo", "m_move_to", "Verschieben nach")]
    for form, entry, title in simple:
        command(entry)
        shoot_dialog(drive, form, title)
        drive("gone", title)

    command("mnuViewOptions")
    for page in range(5):
        drive("page", "Optionen", numbers["tabOptions"], page)
        shoot_dialog(drive, f"frmOption{page + 1}", "Optionen")
    drive("gone", "Optionen")

    command("m_extra_fs")
    shoot_dialog(drive, "frmFormatSets", "Formatsätze")
    drive("press", "Formatsätze", numbers["cbChange"])
    shoot_dialog(drive, "frmChangeAlias", "Formatsatznamen ändern")
    drive("gone", "Formatsatznamen ändern")
    drive("gone", "Formatsätze")

    command("mnuFileNew")
    shoot_dialog(drive, "frmProfilePropNew", "Neue Profil")
    drive("press", "Neue Profil", numbers["cbDir"])
    shoot_dialog(drive, "frmDirSelect", "Verzeichnis auswählen")
    drive("press", "Verzeichnis auswählen", numbers["cbNew"])
    shoot_dialog(drive, "frmTextInput", "Neues Verzeichnis")
    drive("gone", "Neues Verzeichnis")
    drive("gone", "Verzeichnis auswählen")
    drive("press", "Neue Profil", numbers["cb_template"])
    shoot_dialog(drive, "frmSelectTemplate", "Profil-Vorlagen")
    drive("gone", "Profil-Vorlagen")
    drive("gone", "Neue Profil")


def main():
    target.mkdir(parents=True, exist_ok=True)
    drive = demo.Drive()
    try:
        drive("prepare")
        for key, twips in (("MainWidth", 12000), ("MainHeight", 8200), ("Splitter", 3600), ("MainLeft", 300),
                           ("MainTop", 300)):
            drive("setting", "Settings", key, twips)
        for key, value in (("UnknownFormats", 255), ("EditPropAfterSnap", 0), ("NewTextMode", 1), ("NewMaxLen", 30)):
            drive("setting", "Settings", key, value)
        drive("start")
        content(drive)
        drive("expand")
        for clip, tab, name in ((0, 0, "frmMain"), (1, 1, "frmMainRtf"), (2, 2, "frmMainPicture"), (3, 2, "frmMainPng")):
            drive("select", clip)
            drive("tab", tab)
            shoot(name, drive("main"))
        drive("search", "öffnungszeiten", 1)
        shoot("frmMainHits", drive("main"))
        drive("command", numbers["m_mark_all"])
        shoot("frmMainSeveral", drive("main"))
        dialogs(drive)
        drive("quit")
    finally:
        drive.close()


if __name__ == "__main__":
    main()
