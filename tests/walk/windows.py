"""The walk through the program for Windows, in Wine: the same tools, used with the same pointer and keyboard,
and read through what Windows' assistive technology is told."""

import os
import pathlib
import re
import subprocess
import tempfile
import time

import walk
from desktop import PATIENCE, Failure, clipboard, expect, new_home, output, press, screen, start, wait_for
from desktop import xdotool
from session import LAUNCHER, TOOLS, Session, Window

WINE = pathlib.Path(__file__).parents[2] / "tools/wine.sh"
ROLES = {9: "frame", 18: "dialog", 23: "status bar", 40: "icon", 41: "label", 42: "text", 43: "button",
         44: "check box", 46: "combo box"}
CHECKED = 0x10


class Eyes:
    """A program in Wine that tells of all windows of the program under test."""

    def __init__(self, program):
        self.process = subprocess.Popen([WINE, program.parents[1] / "src/eyes.exe", program.name],
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True,
                                        encoding="utf-8", errors="replace")

    def look(self, pressed=0):
        """The windows from the top, each with its controls, as lists of fields."""
        self.process.stdin.write(f"{pressed}\n")
        self.process.stdin.flush()
        windows = []
        while line := self.process.stdout.readline().rstrip("\r\n"):
            top, *fields = line.split("\t")
            if top == "1":
                windows.append([])
            windows[-1].append(fields)
        return windows


class Seen(Window):
    """A window, or a control in it. What a control is and where, it was when its window was looked at; its text
    is looked at anew, as is all of a window."""

    def __init__(self, eyes, fields, number=None):
        self.eyes, self.fields, self.number = eyes, fields, number

    @property
    def now(self):
        for window in self.eyes.look():
            for fields in window:
                if fields[0] == self.fields[0]:
                    return fields
        raise Failure("a control that was there is gone")

    name = property(lambda self: self.fields[7])
    description = property(lambda self: self.fields[9])
    role = property(lambda self: ROLES.get(int(self.fields[1]), "?"))
    text = property(lambda self: self.now[8].replace("\\n", "\n"))
    checked = property(lambda self: bool(int(self.now[2]) & CHECKED))
    place = property(lambda self: tuple(map(int, self.fields[3:7])))

    def controls(self):
        for window in self.eyes.look():
            if window[0][0] == self.fields[0]:
                return [Seen(self.eyes, fields) for fields in window[1:]]
        return []

    def activate(self):
        """There is no window manager to ask; the window that was opened last is in front."""

    def photograph(self, file):
        """Bitmap fonts leave few colours to tell a painted window by."""
        time.sleep(0.5)
        output("import", "-silent", "-window", self.number, file)

    def choose(self, entry):
        """With the pointer into the list, and then by its first letter, which other entries may have too."""
        self.click()
        press("Escape")
        for _ in range(10):
            if self.text == entry:
                return
            press(entry[0].lower())
            time.sleep(0.2)
        raise Failure(f"{self.name} shows {self.text!r} and not {entry!r}")


class WineSession(Session):
    def __init__(self, path, home):
        self.output = pathlib.Path(home) / "program.log"
        with open(self.output, "w") as log:
            self.process = start(str(WINE), str(path), cwd=home, stdout=log, stderr=subprocess.DEVNULL)
        self.eyes = Eyes(path)
        self.launcher = self.window(LAUNCHER)

    def window(self, tool):
        def find():
            for head, *controls in self.eyes.look():
                if not any(fields[7].replace("&", "") == tool.mark for fields in controls):
                    continue
                named = xdotool("search", "--onlyvisible", "--name", f"^{re.escape(tool.title)}$")
                for number in named.split():
                    window = Seen(self.eyes, head, int(number))
                    if window.bounds == window.place:
                        return window
            return None

        return wait_for(f"the window {tool.title!r} with {tool.mark!r}", find)


def windows(program, folder=None):
    """every tool opened, used, rolled up, closed and opened again; a question edited; pictures in a folder"""
    program = pathlib.Path(program).resolve()
    prefix = os.environ.get("ORVANE_WINE", str(WINE.parents[1] / "build/wine"))
    # Other programs get the line breaks of their own desktop.
    walk.clipboard = lambda: clipboard().replace("\n", "\r\n")
    with tempfile.TemporaryDirectory() as scratch, new_home() as home, screen(home, manager=None):
        os.environ["ORVANE_WINE"] = prefix
        pictures = pathlib.Path(folder or scratch).absolute()
        pictures.mkdir(parents=True, exist_ok=True)
        session = WineSession(program, home)
        session.launcher.photograph(pictures / "frmMain.png")
        for button, tool in TOOLS.items():
            window = session.open(button)
            walk.use(window, tool) if tool.text else walk.answer(window)
            window.photograph(pictures / f"{tool.name}.png")
            for glyph, height in ("_", {32}), ("=", {window.bounds[3], 321}):
                window.press(glyph)
                wait_for(f"{tool.name} to be as high as one of {height}", lambda: window.bounds[3] in height)
            place, shown = window.bounds, [box.text for box in window.all("text", "")]
            window.press("x")
            session.open(button)
            expect(f"the place of {button}", lambda: window.bounds, place)
            expect(f"the texts of {tool.name}", lambda: [box.text for box in window.all("text", "")], shown)
            window.press("x")  # what is in the middle of the screen lies over the launcher
        walk.edit(session, pictures)
        session.launcher.press("Exit")
        print("Exit", "ended with", session.process.wait(PATIENCE))
        output(WINE.parent / "wine.sh", "--end")
    print("Pictures:", *(f"  {file}" for file in sorted(pictures.glob("*.png"))), sep="\n")
