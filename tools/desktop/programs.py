"""The machine's own programs as sources of the demonstration: each opens a document, selects all of it and copies."""

import os
import shutil
import signal
import subprocess
import time
from urllib.parse import unquote, urlsplit

from contents import SCRATCH, Content, xclip_out
from driving import NotCopied

STARTED = 90  # seconds until a program must have its window, and until it must have copied

PAGE = """<!DOCTYPE html><html lang="de"><head><meta charset="utf-8"><title>Vorführung</title></head>
<body><h1>Überschrift</h1><p>Ein <b>fetter</b> Satz für 5 € 😀 und ein <a href="https://example.org/">Verweis</a>.</p>
<ul><li>eins</li><li>zwei</li></ul></body></html>
"""
TEXT = "Grüße aus dem Editor – 5 € 😀\nZweite Zeile\n"
TABLE = 'ID;PNXCLIP\nC;X1;Y1;K"Name"\nC;X2;Y1;K"Wert"\nC;X1;Y2;K"Birnen"\nC;X2;Y2;K34\nE\n'
DRAWING = """<svg xmlns="http://www.w3.org/2000/svg" width="120" height="80"><rect x="10" y="10" width="60" height="40"
fill="#36c"/><circle cx="80" cy="45" r="25" fill="#c63" fill-opacity="0.6"/></svg>
"""
OFFICE = ["--norestore", "--nologo", "--nofirststartwizard"]

# Debian package, what it shows, command, the document's name and content (none: a directory), a part of its window's
# title, the X11 targets that must read from the clip as they did from the program.
PROGRAMS = [
    ("chromium", "web page from Chromium", ["chromium", "--no-sandbox", "--no-first-run", "--disable-gpu"],
     "seite.html", PAGE, "Vorführung", ["UTF8_STRING", "text/html"]),
    ("libreoffice-writer", "letter from LibreOffice Writer", ["lowriter", *OFFICE],
     "brief.html", PAGE, "Writer", ["UTF8_STRING"]),  # its HTML and RTF bear the time at which they are asked for
    ("libreoffice-calc", "table from LibreOffice Calc", ["localc", *OFFICE],
     "tabelle.slk", TABLE, "Calc", ["UTF8_STRING", "text/html"]),
    ("inkscape", "drawing from Inkscape", ["inkscape"], "zeichnung.svg", DRAWING, "zeichnung.svg", ["image/x-inkscape-svg"]),
    ("mousepad", "text from the editor Mousepad", ["mousepad"], "mousepad.txt", TEXT, "mousepad.txt", ["UTF8_STRING"]),
    ("geany", "text from the editor Geany", ["geany", "--new-instance"], "geany.txt", TEXT, "geany.txt", ["UTF8_STRING"]),
    ("l3afpad", "text from the editor L3afpad", ["l3afpad"], "l3afpad.txt", TEXT, "l3afpad.txt", ["UTF8_STRING"]),
    ("pcmanfm", "files from the file manager PCManFM", ["pcmanfm", "--no-desktop"], "ordner", None, "ordner",
     ["text/uri-list"]),
]


def environment():
    """Programs of this machine must neither meet the user's own settings nor Wine's German locale."""
    home = SCRATCH / "home"
    home.mkdir(mode=0o700, exist_ok=True)
    values = dict(os.environ, HOME=str(home), XDG_RUNTIME_DIR=str(home), LC_ALL="C.UTF-8", GDK_BACKEND="x11",
                  GTK_USE_PORTAL="0", NO_AT_BRIDGE="1")
    values.pop("LOCPATH", None)
    return values


def xdotool(*arguments):
    return subprocess.run(["xdotool", *arguments], capture_output=True, timeout=30, text=True).stdout.split()


def clipboard_targets():
    """Nothing while the owner is too busy to answer."""
    try:
        return xclip_out("TARGETS").split(b"\n")
    except subprocess.SubprocessError:
        return []


class ProgramSource:
    """A program with its document open, everything in it copied. It stays until it is ended."""

    def __init__(self, command, title, target):
        # A group of its own, since some only start the real program.
        self.process = subprocess.Popen(command, cwd=SCRATCH, env=environment(), stdin=subprocess.DEVNULL,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, start_new_session=True)
        try:
            self.copy_all(title, target)
        except NotCopied:
            self.end()
            raise

    def copy_all(self, title, target):
        before = clipboard_targets()
        end = time.monotonic() + STARTED
        asked = 0
        while True:
            now = clipboard_targets()
            if now and now != before and target.encode() in now:
                return
            if time.monotonic() > end:
                raise NotCopied(f"{self.process.args[0]} has copied nothing within {STARTED} seconds")
            # A window that stands may not listen yet; then it is told again.
            if time.monotonic() > asked + 3:
                windows = xdotool("search", "--onlyvisible", "--name", title)
                if windows:
                    xdotool("windowfocus", "--sync", windows[-1], "key", "--clearmodifiers", "ctrl+a", "key", "ctrl+c")
                    asked = time.monotonic()
            time.sleep(0.1)

    def end(self):
        for number in (signal.SIGTERM, signal.SIGKILL):
            try:
                os.killpg(self.process.pid, number)
                self.process.wait(5)
            except (ProcessLookupError, subprocess.TimeoutExpired):
                continue


def write_document(name, content):
    path = SCRATCH / name
    if content is None:
        path.mkdir(exist_ok=True)
        # Without umlauts: what Wine makes of them for other programs is no name at all.
        for file in ("eins.txt", "zwei drei.txt"):
            (path / file).write_text(TEXT, encoding="utf-8")
    else:
        path.write_text(content, encoding="utf-8")
    return path


def plain(target, data):
    """The bytes without what differs between the systems: the end of a text, the way to write the name of a file."""
    data = data.rstrip(b"\0\r\n")
    if target == "text/uri-list":
        return sorted(unquote(urlsplit(line).path) for line in data.decode().split())
    return data


def reads_the_same(target):
    """Another program reads from the clip what it has read from the source."""
    read = {}

    def remember():
        read["before"] = plain(target, xclip_out(target))

    def check(_):
        return plain(target, xclip_out(target)) == read["before"]
    return remember, (f"xclip reads the same {target}", check)


def content_of(program):
    _, name, command, document, text, title, targets = program
    path = write_document(document, text)
    if command[0] == "chromium":
        command = [*command, f"--user-data-dir={SCRATCH}/chromium"]
    watched = [reads_the_same(target) for target in targets]

    def put(drive):
        return ProgramSource([*command, path], title, targets[0])
    return Content(name, put, [check for _, check in watched], lambda: [remember() for remember, _ in watched])


def contents():
    """A content for each of the programs that this machine has."""
    return [lambda program=program: content_of(program) for program in PROGRAMS if shutil.which(program[2][0])]


def missing():
    return [program[0] for program in PROGRAMS if not shutil.which(program[2][0])]
