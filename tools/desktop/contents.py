"""Contents that the demonstration puts on the clipboard, and the small programs that they come from."""

import os
import struct
import subprocess
import sys
from pathlib import Path

from driving import Failure, NotCopied

SCRATCH = Path(os.environ["NXCLIP_SCRATCH"])


class Source:
    """A program that owns the clipboard while the content is captured."""

    def __init__(self, command):
        self.process = subprocess.Popen(command, cwd=SCRATCH, stdin=subprocess.DEVNULL,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def end(self):
        self.process.terminate()
        self.process.wait(10)


class Content:
    """`put` gets the driver, puts the content on the clipboard and returns its source; `remember` is called while the
    source still owns the clipboard; `checks` are (text, function of what came back) for when the clip owns it."""

    def __init__(self, name, put, checks=(), remember=lambda: None):
        self.name, self.put, self.checks, self.remember = name, put, checks, remember


def xclip_in(name, *target):
    return lambda drive: Source(["xclip", "-quiet", "-selection", "clipboard", *target, "-i", name])


def xclip_out(target):
    return subprocess.run(["xclip", "-selection", "clipboard", "-o", "-t", target], capture_output=True, timeout=15,
                          check=True).stdout


def pixels(picture):
    return subprocess.run(["convert", "bmp:-", "-depth", "8", "rgb:-"], input=picture, capture_output=True, timeout=15,
                          check=True).stdout


def same(read, expected):
    if read != expected:
        raise Failure(f"what it reads is {read[:80]!r}")
    return True


def is_text(expected):
    return "xclip reads the text", lambda _: same(xclip_out("UTF8_STRING"), expected.encode())


def is_target(target, expected):
    return f"xclip reads {target}", lambda _: same(xclip_out(target).rstrip(b"\0\r\n"), expected)


def is_picture(expected):
    return "xclip reads the pixels", lambda _: pixels(xclip_out("image/bmp")) == pixels(expected)


def is_format(number, expected):
    return f"format {number} is what the source put", lambda returned: returned.get(number) == expected


def contains(name, part):
    return f"{name} holds the text", lambda returned: part in returned.get(name, b"")


def plain_text():
    text = "Grüße aus Köln: Äpfel, Öl und süße Brötchen für 5 €.\nZweite Zeile – mit „Anführung“.\n"
    (SCRATCH / "text.txt").write_text(text, encoding="utf-8")
    return Content("text with umlauts (xclip)", xclip_in("text.txt"), [is_text(text)])


def rtf_from_wordpad():
    rtf = (r"{\rtf1\ansi\ansicpg1252\deff0{\fonttbl{\f0 Arial;}}\f0\fs24 "
           r"Ein Brief aus der \b Textverarbeitung\b0 : gr\'fcn, wei\'df, \i schr\'e4g\i0 .\par}")
    (SCRATCH / "brief.rtf").write_text(rtf, encoding="ascii")

    def put(drive):
        return WineProgram(drive, "write.exe", SCRATCH / "brief.rtf", "RichEdit20W")
    return Content("RTF from Wine's word processor", put, [contains("Rich Text Format", rb"\b Textverarbeitung")])


def text_from_notepad():
    text = "Notiz aus dem Editor von Wine: Größe 10 µm\r\n"
    (SCRATCH / "notiz.txt").write_bytes(b"\xef\xbb\xbf" + text.encode())

    def put(drive):
        return WineProgram(drive, "notepad.exe", SCRATCH / "notiz.txt", "Edit")
    return Content("text from Wine's editor", put, [is_text(text.replace("\r\n", "\n"))])


class WineProgram:
    """One of Wine's own, with a document open and all of it copied."""

    def __init__(self, drive, program, document, control):
        self.drive = drive
        drive("run", f"{program} Z:" + str(document).replace("/", "\\"))
        try:
            drive("copyall", control)
        except Failure as error:
            raise NotCopied(f"{program} does not answer: " + str(error).splitlines()[0]) from error

    def end(self):
        self.drive("close")


TK_OWNER = """
import sys, tkinter
root = tkinter.Tk()
root.withdraw()
root.clipboard_clear()
for target, name in (("STRING", "page.txt"), ("text/html", "page.html"), ("text/rtf", "page.rtf")):
    root.clipboard_append(open(name, encoding="utf-8").read(), type=target)
root.mainloop()
"""


def page_from_tkinter():
    html = "<html><body><p>Eine <b>fette</b> Seite aus M&uuml;nchen</p></body></html>"
    rtf = r"{\rtf1\ansi Eine \b fette\b0  Seite aus M\'fcnchen\par}"
    text = "Eine fette Seite aus München"
    for name, content in (("page.txt", text), ("page.html", html), ("page.rtf", rtf), ("owner.py", TK_OWNER)):
        (SCRATCH / name).write_text(content, encoding="utf-8")
    python = next((p for p in (sys.executable, "/usr/bin/python3")
                   if subprocess.run([p, "-c", "import tkinter"], stderr=subprocess.DEVNULL).returncode == 0), None)
    if python is None:
        raise Failure("no Python with tkinter here")
    return Content("text, HTML and RTF together (tkinter)", lambda drive: Source([python, "owner.py"]),
                   [is_text(text), is_target("text/html", html.encode()), is_target("text/rtf", rtf.encode())])


def picture():
    width, height = 61, 40
    rows = b""
    for y in range(height):
        row = b"".join(bytes((4 * x % 256, 6 * y % 256, (x * y) % 256)) for x in range(width))
        rows += row + b"\0" * (-len(row) % 4)
    bmp = struct.pack("<2sIHHI", b"BM", 54 + len(rows), 0, 0, 54)
    bmp += struct.pack("<IiiHHIIiiII", 40, width, height, 1, 24, 0, len(rows), 2835, 2835, 0, 0) + rows
    (SCRATCH / "picture.bmp").write_bytes(bmp)
    return Content("picture as image/bmp (xclip)", xclip_in("picture.bmp", "-t", "image/bmp"), [is_picture(bmp)])


def enhanced_metafile():
    """A drawing of a rectangle and an ellipse in it."""
    records = struct.pack("<II4i", 43, 24, 10, 10, 400, 250) + struct.pack("<II4i", 42, 24, 40, 40, 370, 220)
    records += struct.pack("<IIIII", 14, 20, 0, 16, 20)
    size = 88 + len(records)
    header = struct.pack("<II4i4i", 1, 88, 10, 10, 400, 250, 0, 0, 10000, 6500)
    header += struct.pack("<4sIIIHHIII2i2i", b" EMF", 0x10000, size, 4, 1, 0, 0, 0, 0, 1000, 700, 265, 185)
    (SCRATCH / "drawing.emf").write_bytes(header + records)
    return Content("enhanced metafile (clipput)", lambda drive: ClipPut("14=drawing.emf"),
                   [is_format(14, header + records)])


class ClipPut:
    def __init__(self, offer):
        self.process = subprocess.Popen(["wine", Path(os.environ["NXCLIP_TOOLS"], "clipput.exe"), offer], cwd=SCRATCH, stdin=subprocess.DEVNULL,
                                        stdout=subprocess.PIPE)
        if self.process.stdout.readline().strip() != b"ready":
            raise Failure("clipput is not ready")

    def end(self):
        subprocess.run(["wine", Path(os.environ["NXCLIP_TOOLS"], "clipput.exe"), "--quit"], timeout=30, check=True)
        self.process.wait(10)




def contents():
    """What the programs that every machine of ours has put on the clipboard."""
    return [plain_text, rtf_from_wordpad, text_from_notepad, page_from_tkinter, picture, enhanced_metafile]
