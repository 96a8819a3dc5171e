"""What is installed is whole: started from elsewhere and by a user with an empty home, the program finds its
sounds, weapons and questions."""

import os
import pathlib
import subprocess
import tempfile

from desktop import Failure, desktop, expect, surroundings, wait_for, xdotool
from session import Session
from sound import Speaker

FOLDER = "Würfel und Waffen"
WM_CLASS = "orvane-utilities"


def run(*words, **environment):
    with surroundings(environment):
        done = subprocess.run(list(map(str, words)), capture_output=True, text=True)
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
    share = root / "usr/share"
    entry = (share / "applications/orvane-utilities.desktop").read_text().splitlines()
    if not {"Exec=orvane-utilities", "Icon=orvane-utilities", f"StartupWMClass={WM_CLASS}"} <= set(entry):
        raise Failure(f"the desktop entry is {entry}")
    if len(list(share.glob("icons/hicolor/*/apps/orvane-utilities.*g"))) < 7:
        raise Failure("the entry's icon is not there in every size")
    return root / "usr/bin/orvane-utilities", portable / "orvane-utilities"


def use(command, home):
    speaker = Speaker(home / "speaker")
    with surroundings(speaker.surroundings):
        session = Session(command, home)
    of_class = lambda: xdotool("search", "--onlyvisible", "--class", f"^{WM_CLASS}$")
    expect("the windows of the entry's class", of_class, str(session.launcher.number))
    speaker.expect_all(session)
    weapon = session.open("Weapons").box("Result").text.splitlines()[0]
    session.open_editor()
    session.launcher.press("Exit")
    wait_for("the end", lambda: session.process.poll() == 0)
    os.remove(home / "speaker")
    said = [line for line in session.output.read_text().splitlines() if not line.startswith("CRITICAL: ")]
    if said:  # but for what the sound library says about a device that is a file
        raise Failure(f"the program wrote {said} to the terminal")
    if (home / ".local").exists():
        raise Failure("the program left something in the home")
    print(f"{command}: five sounds, {weapon!r}, 24 questions")


def installed(first, second=None):
    """a build folder's rules, a package and an archive, or a command give a whole program"""
    is_command = not second and pathlib.Path(first).is_file()
    with desktop() as home, tempfile.TemporaryDirectory(prefix="orvane-installed-") as scratch:
        for command in [first] if is_command else unpack(pathlib.Path(scratch), first, second):
            use(command, home)
