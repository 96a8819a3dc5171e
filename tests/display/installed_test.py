"""What is installed is whole: started from elsewhere and by a user with an empty home, the program finds its sounds,
weapons and questions.

usage: installed_test.py BUILD              what the rules of a build folder install
       installed_test.py PACKAGE ARCHIVE    what a Debian package and a portable archive hold
       installed_test.py COMMAND            an installed command
"""

import os
import pathlib
import re
import subprocess
import tempfile

from desktop import Failure, desktop, expect, main, wait_for, xdotool
from program import Program
from sound_test import LAUNCHER, Speaker
from walk_weapons import SHEET

SOURCES = pathlib.Path(__file__).parents[2]
FOLDER = "Würfel und Waffen"
WM_CLASS = "orvane-utilities"


def run(*words, **environment):
    done = subprocess.run(words, env={**os.environ, **environment}, capture_output=True, text=True)
    if done.returncode:
        raise Failure(f"{words[0]}: {done.stderr or done.stdout}")


def unpack(scratch, first, second=None):
    """Puts what is to be installed into folders of their own. Gives the command and the portable program."""
    root, portable = scratch / "root", scratch / FOLDER
    if second:
        portable.mkdir()
        run("dpkg-deb", "--extract", first, str(root))
        run("tar", "-C", str(portable), "--strip-components=1", "-xf", second)
    else:
        run("cmake", "--install", first, "--prefix", "/usr", DESTDIR=str(root))
        run("cmake", "--install", first, "--prefix", str(portable), "--component", "portable")
    check_entry(root / "usr")
    return root / "usr/bin/orvane-utilities", portable / "orvane-utilities"


def check_entry(usr):
    """The desktop entry starts the command, has an icon, and is that of the program's windows."""
    entry = (usr / "share/applications/orvane-utilities.desktop").read_text().splitlines()
    if not {"Exec=orvane-utilities", "Icon=orvane-utilities", f"StartupWMClass={WM_CLASS}"} <= set(entry):
        raise Failure(f"the desktop entry is {entry}")
    icons = {icon.parts[-3] for icon in usr.glob("share/icons/hicolor/*/apps/orvane-utilities.*g")}
    if not {"16x16", "22x22", "24x24", "32x32", "48x48", "256x256", "scalable"} <= icons:
        raise Failure(f"the icons are {sorted(icons)}")


def use(command, home):
    speaker = Speaker(home / "speaker", SOURCES / "sounds")
    os.environ.update(SDL_AUDIODRIVER="disk", SDL_DISKAUDIOFILE=speaker.name)
    program = Program(command, home)
    launcher = program.window(*LAUNCHER)
    launcher.move(0, 0)
    speaker.expect("theme")
    expect("the windows of the entry's class", lambda: xdotool("search", "--onlyvisible", "--class", f"^{WM_CLASS}$"),
           str(launcher.number))

    launcher.button("Weapons").click()
    weapons = program.window("Range To Dice", "Get Weapon")
    weapons.move(300, 0)
    speaker.expect("theme2")
    weapons.button("Get Weapon").click()
    sheet = wait_for("a weapon", lambda: weapons.box("Result").text)
    if not re.fullmatch(SHEET, sheet + "\n"):
        raise Failure(f"no sheet of a weapon: {sheet!r}")
    speaker.expect("chant")

    launcher.activate()
    launcher.button("Alingments").click()
    meter = program.window("Form1", "Editor")
    meter.move(600, 0)
    expect("the first question", lambda: meter.box("Question and ansvers").text.split("\n")[0], "1 of 24")
    launcher.activate()
    launcher.button("Weapons").click()  # it is open already
    speaker.expect("click")
    weapons.activate()
    weapons.button("x").click()
    speaker.expect("quit")
    launcher.activate()
    launcher.button("Exit").click()
    program.expect_end()
    os.remove(speaker.name)
    said = [line for line in program.output.read_text().splitlines() if not line.startswith("CRITICAL: ")]
    if said:  # but for what the sound library says about a device that is a file
        raise Failure(f"the program wrote {said} to the terminal")
    if (home / ".local").exists():
        raise Failure("the program left something in the home")
    print(f"{command}: five sounds, {sheet.splitlines()[0]!r}, 24 questions")


def check(first, second=None):
    is_command = not second and pathlib.Path(first).is_file()
    with desktop() as home, tempfile.TemporaryDirectory(prefix="orvane-installed-") as scratch:
        for command in [first] if is_command else unpack(pathlib.Path(scratch), first, second):
            use(command, home)


if __name__ == "__main__":
    main(check)
