"""What is installed is whole: started from elsewhere and by a user with an empty home, the program finds its sounds,
weapons and questions."""

import os
import pathlib
import re
import subprocess
import tempfile

from desktop import Failure, desktop, expect, surroundings, wait_for, xdotool
from session import Session
from sound import Speaker
from walk import QUESTION, SHEET

FOLDER = "Würfel und Waffen"
WM_CLASS = "orvane-utilities"


def run(*words, **environment):
    done = subprocess.run(list(map(str, words)), env={**os.environ, **environment}, capture_output=True, text=True)
    if done.returncode:
        raise Failure(f"{words[0]}: {done.stderr or done.stdout}")


def unpack(scratch, first, second=None):
    """Puts what is to be installed into folders of their own. Gives the command and the portable program."""
    root, portable = scratch / "root", scratch / FOLDER
    if second:
        portable.mkdir()
        run("dpkg-deb", "--extract", first, root)
        run("tar", "-C", portable, "--strip-components=1", "-xf", second)
    else:
        run("cmake", "--install", first, "--prefix", "/usr", DESTDIR=str(root))
        run("cmake", "--install", first, "--prefix", portable, "--component", "portable")
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
    speaker = Speaker(home / "speaker")
    with surroundings(**speaker.surroundings):
        session = Session(command, home)
    expect("the windows of the entry's class", lambda: xdotool("search", "--onlyvisible", "--class", f"^{WM_CLASS}$"),
           str(session.launcher.number))
    speaker.expect_all(session)
    weapons, meter = session.open("Weapons"), session.open("Alingments")
    sheet = weapons.box("Result").text
    if not re.fullmatch(SHEET, sheet + "\n"):
        raise Failure(f"no sheet of a weapon: {sheet!r}")
    expect("the first question", lambda: meter.box(QUESTION).text.split("\n")[0], "1 of 24")
    session.launcher.press("Exit")
    wait_for("the end", lambda: session.process.poll() == 0)
    os.remove(home / "speaker")
    said = [line for line in session.output.read_text().splitlines() if not line.startswith("CRITICAL: ")]
    if said:  # but for what the sound library says about a device that is a file
        raise Failure(f"the program wrote {said} to the terminal")
    if (home / ".local").exists():
        raise Failure("the program left something in the home")
    print(f"{command}: five sounds, {sheet.splitlines()[0]!r}, 24 questions")


def installed(first, second=None):
    """a build folder's rules, a package and an archive, or a command give a whole program"""
    is_command = not second and pathlib.Path(first).is_file()
    with desktop() as home, tempfile.TemporaryDirectory(prefix="orvane-installed-") as scratch:
        for command in [first] if is_command else unpack(pathlib.Path(scratch), first, second):
            use(command, home)
