"""What is installed is whole: started from elsewhere and by a user with an empty home, the program finds its
sounds, weapons and questions. Its sound device gets each sound after its press, instead of the one before."""

import contextlib
import fcntl
import os
import pathlib
import subprocess
import wave

from desktop import Failure, desktop, expect, output, surroundings, wait_for, xdotool
from session import Session

FOLDER = "Würfel und Waffen"
WM_CLASS = "orvane-utilities"


class Speaker:
    """A sound device that is a pipe: all that the program plays is heard here, in the order played."""

    def __init__(self, pipe):
        os.mkfifo(pipe)
        self.pipe = os.open(pipe, os.O_RDWR | os.O_NONBLOCK)
        fcntl.fcntl(self.pipe, fcntl.F_SETPIPE_SZ, 2 ** 20)  # 20 seconds, so that the player never waits
        self.heard = b""
        self.sounds = {}
        for file in (pathlib.Path(__file__).parents[2] / "sounds").glob("*.wav"):
            with wave.open(str(file)) as sound:
                self.sounds[file.stem] = sound.readframes(sound.getnframes())

    def hears(self, part):
        with contextlib.suppress(BlockingIOError):
            self.heard += os.read(self.pipe, 2 ** 20)
        return part in self.heard

    def expect(self, name):
        """Waits for the start of a sound. None but a click may have gone on until late before."""
        start = self.sounds[name][1000:3000]
        wait_for(f"the sound {name}", lambda: self.hears(start))
        before, _, self.heard = self.heard.partition(start)
        for other, sound in self.sounds.items():
            if sound[len(sound) * 3 // 4:][:2000] in before and other != "click":
                raise Failure(f"the sound {other} went on and was not replaced by {name}")


def run(*words):
    subprocess.run(words, check=True, stdout=subprocess.DEVNULL)


def unpack(scratch, first, second=None):
    """Puts what is to be installed into folders of their own. Gives the command and the portable program."""
    root, portable = scratch / "root", scratch / FOLDER
    if second:
        portable.mkdir(parents=True)
        run("dpkg-deb", "--extract", first, root)
        run("tar", "-C", portable, "--strip-components=1", "-xf", second)
    else:
        run("env", f"DESTDIR={root}", "cmake", "--install", first, "--prefix", "/usr")
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
    with surroundings(SDL_AUDIODRIVER="disk", SDL_DISKAUDIOFILE=str(home / "speaker")):
        session = Session(command, home)
    of_class = lambda: xdotool("search", "--onlyvisible", "--class", f"^{WM_CLASS}$")
    expect("the windows of the entry's class", of_class, str(session.launcher.number))
    speaker.expect("theme")
    window = session.open("Weapons")
    speaker.expect("theme2")
    window.press("Get Weapon")
    speaker.expect("chant")
    weapon = window.box("Result").text.splitlines()[0]
    session.open("Weapons")  # it is open already
    speaker.expect("click")
    window.press("x")
    speaker.expect("quit")
    wait_for("the end of the last sound", lambda: speaker.hears(speaker.sounds["quit"][-3000:-1000]))
    is_open = lambda: "speaker" in output("ls", "-l", f"/proc/{session.process.pid}/fd")
    expect("the sound device to be open", is_open, False)
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
    with desktop() as home:
        for command in [first] if is_command else unpack(home / "installed", first, second):
            use(command, home)
