"""The walk through the program for Windows, in Wine: the same tools, used with the same pointer and keyboard,
and read through what Windows' assistive technology is told."""

import os
import pathlib
import re
import subprocess
import time

import walk
from desktop import (DENSITY, PATIENCE, Failure, clipboard, expect, new_home, output, press, screen, start,
                     wait_for, xdotool)
from session import LAUNCHER, TOOLS, Session, Window

WINE = pathlib.Path(__file__).parents[2] / "tools/wine.sh"
ROLES = {9: "frame", 18: "dialog", 23: "status bar", 40: "icon", 41: "label", 42: "text", 43: "button",
         44: "check box", 46: "combo box"}


class Eyes:
    """A program in Wine that tells of a window of the program under test and of the controls in it, or of all
    its windows from the top, each as a list of fields."""

    def __init__(self, program):
        self.process = subprocess.Popen([WINE, program.parents[1] / "src/eyes.exe"], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, text=True, encoding="utf-8", errors="replace")

    def look(self, number="0"):
        self.process.stdin.write(f"{number}\n")
        self.process.stdin.flush()
        return [line.rstrip("\r\n").split("\t") for line in iter(self.process.stdout.readline, "\n")]


class Seen(Window):
    """A window, or a control in it. What a control is and where, it was when its window was looked at; its
    text is looked at anew, as is all of a window."""

    def __init__(self, eyes, fields, number=None):
        self.eyes, self.fields, self.number = eyes, fields, number

    name = property(lambda self: self.fields[7])
    role = property(lambda self: ROLES.get(int(self.fields[1]), "?"))
    text = property(lambda self: self.eyes.look(self.fields[0])[0][8].replace("\\n", "\n"))
    showing = property(lambda self: self.eyes.look(self.fields[0]) != [])
    place = property(lambda self: tuple(round(int(side) / DENSITY) for side in self.fields[3:7]))

    def controls(self):
        return [Seen(self.eyes, fields) for fields in self.eyes.look(self.fields[0])[1:]]

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
            named = xdotool("search", "--onlyvisible", "--name", f"^{re.escape(tool.title)}$")
            for number in map(int, named.split()):
                for fields in self.eyes.look():
                    window = Seen(self.eyes, fields, number)
                    if window.bounds == window.place and window.has(tool.mark):
                        return window
            return None

        return wait_for(f"the window {tool.title!r} with {tool.mark!r}", find)


def windows(program, folder=None):
    """every tool opened, used, closed and opened again; a question edited; pictures in a folder"""
    program = pathlib.Path(program).resolve()
    prefix = os.environ.get("ORVANE_WINE", str(WINE.parents[1] / "build/wine"))
    # Other programs get the line breaks of their own desktop.
    walk.clipboard = lambda: clipboard().replace("\n", "\r\n")
    with new_home() as home, screen(home, manager=None):
        os.environ["ORVANE_WINE"] = prefix
        pictures = pathlib.Path(folder or home / "pictures").absolute()
        pictures.mkdir(parents=True, exist_ok=True)
        questions = lambda: pathlib.Path(prefix).glob("drive_c/users/*/AppData/Roaming/Orvane/questions.ini")
        mine = {file: file.read_bytes() for file in questions()}
        for file in mine:
            file.unlink()
        session = WineSession(program, home)
        session.launcher.photograph(pictures / "frmMain.png")
        loaded = pathlib.Path(f"/proc/{session.process.pid}/maps")
        wait_for("what plays sounds", lambda: "winmm.dll" in loaded.read_text())
        for button, tool in TOOLS.items():
            window = session.open(button)
            window.photograph(pictures / f"{tool.name}.png")
            walk.use(window, tool) if tool.text else walk.answer(window)
            window.photograph(pictures / f"{tool.name}-used.png")
            before = window.bounds, window.texts
            # Closed at the end, too: in the middle of the screen it lies over the launcher.
            for way in "x", "alt+F4", "x":
                if not window.showing:
                    session.open(button)
                expect(f"{button} before {way}", lambda: (window.bounds, window.texts), before)
                walk.WAYS[way](window)
                wait_for(f"{button} to go by {way}", lambda: not window.showing)
        walk.edit(session, pictures)
        wait_for("the saved question", lambda: any(walk.EDITED in file.read_text() for file in questions()))
        for file, content in mine.items():
            file.write_bytes(content)
        session.launcher.press("Exit")
        print("Exit", "ended with", session.process.wait(PATIENCE))
        output(WINE.parent / "wine.sh", "--end")
    print("Pictures:", *(f"  {file}" for file in sorted(pictures.glob("*.png"))), sep="\n")
