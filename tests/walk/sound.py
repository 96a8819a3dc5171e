"""What the real program plays, as its sound device gets it, and that no sound ever holds it up."""

import contextlib
import fcntl
import os
import pathlib
import shutil
import socket
import wave

from desktop import Failure, desktop, expect, output, surroundings, wait_for
from session import Session

SOUNDS = pathlib.Path(__file__).parents[2] / "sounds"


class Speaker:
    """A sound device that is a pipe: all that the program plays is heard here, in the order played."""

    def __init__(self, pipe):
        os.mkfifo(pipe)
        self.pipe = os.open(pipe, os.O_RDWR | os.O_NONBLOCK)
        fcntl.fcntl(self.pipe, fcntl.F_SETPIPE_SZ, 2 ** 20)  # 20 seconds, so that the player never waits
        self.surroundings = {"SDL_AUDIODRIVER": "disk", "SDL_DISKAUDIOFILE": str(pipe)}
        self.heard = b""
        self.at = 0
        self.files = {}
        for file in SOUNDS.glob("*.wav"):
            with wave.open(str(file)) as sound:
                self.files[file.stem] = sound.readframes(sound.getnframes())

    def listen(self):
        """All that was heard since what was last expected."""
        with contextlib.suppress(BlockingIOError):
            self.heard += os.read(self.pipe, 2 ** 20)
        return self.heard[self.at:]

    def passage(self, name, start=1000):
        """A twentieth of a second, by default close to the start, which is in no other sound."""
        part = self.files[name][start:start + 2000]
        if sum(part in sound for sound in self.files.values()) != 1:
            raise Failure(f"{name} cannot be told from the other sounds")
        return part

    def expect(self, name):
        """Waits for a sound after those expected before; any other but a click must not come in between."""
        part = self.passage(name)
        wait_for(f"the sound {name}", lambda: part in self.listen())
        before, _, _ = self.listen().partition(part)
        for other in set(self.files) - {"click"}:
            if self.passage(other) in before:
                raise Failure(f"the sound {other} before {name}")
        self.at += len(before) + len(part)

    def expect_all(self, session):
        """Presses what makes each of the five sounds. Gives the window that was used."""
        self.expect("theme")
        window = session.open("Weapons")
        self.expect("theme2")
        window.press("Get Weapon")
        self.expect("chant")
        session.open("Weapons")  # it is open already
        self.expect("click")
        window.press("x")
        self.expect("quit")
        return window


def quick(path, home, **environment):
    """Without a sound the program is as quick as ever and has nothing to say about it."""
    with surroundings(environment):
        session = Session(path, home)
    for _ in range(3):
        session.roll()  # each with a click
    return session.leave()


def sound(path):
    """each sound after its press; a new one replaces the old; a missing or dead device costs nothing"""
    path = pathlib.Path(path)
    with desktop() as home:
        speaker = Speaker(home / "speaker")
        with surroundings(speaker.surroundings):
            session = Session(path, home)
        speaker.expect_all(session)
        for name in "theme", "theme2":
            if speaker.passage(name, len(speaker.files[name]) // 2) in speaker.heard:
                raise Failure(f"{name} went on and was not replaced")
        last = speaker.files["quit"][-200:]
        wait_for("the end of the sound quit", lambda: last in speaker.listen())
        is_open = lambda: "speaker" in output("ls", "-l", f"/proc/{session.process.pid}/fd")
        expect("the device after the last sound", is_open, False)
        session.process.kill()  # what this device does at the end is its library's business

        quick(path, home, SDL_AUDIODRIVER="disk", SDL_DISKAUDIOFILE="/nowhere/speaker")
        quick(path, home, SDL_AUDIODRIVER="alsa", ALSA_CONFIG_PATH="/dev/null")
        with socket.socket(socket.AF_UNIX) as server:  # takes every connection and never answers
            server.bind(f"{home}/server")
            server.listen()
            quick(path, home, SDL_AUDIODRIVER="pulseaudio", PULSE_SERVER=f"unix:{home}/server")
            server.setblocking(False)
            server.accept()  # an error if the program never came
        shutil.copytree(path.parent, home / "silent", ignore=shutil.ignore_patterns("*.wav"))
        unheard = str(home / "unheard")
        quick(home / "silent" / path.name, home, SDL_AUDIODRIVER="disk", SDL_DISKAUDIOFILE=unheard)
