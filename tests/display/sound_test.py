"""What the real program plays, as its sound device gets it, and that no sound ever holds it up.

usage: sound_test.py PROGRAM SOUNDS
"""

import contextlib
import fcntl
import os
import pathlib
import shutil
import socket
import time
import wave

from desktop import Failure, desktop, expect, main, wait_for
from program import Program

LAUNCHER = "Orvane Stats Generator", "Exit"
SPEED = 2 * 22050  # bytes of sound in a second
DICE = "Orvane Stats Generator", "Roll Dice !"


class Speaker:
    """A sound device that is a pipe: all that the program plays is heard here, in the order played."""

    def __init__(self, pipe, sounds):
        os.mkfifo(pipe)
        self.pipe = os.open(pipe, os.O_RDWR | os.O_NONBLOCK)
        fcntl.fcntl(self.pipe, fcntl.F_SETPIPE_SZ, 2 ** 20)  # 20 seconds, so that the player never waits
        self.name = str(pipe)
        self.heard = b""
        self.at = 0
        self.files = {}
        for file in sounds.glob("*.wav"):
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

    def expect(self, name, never=()):
        """Waits for a sound after those expected before; the others named must not come in between."""
        part = self.passage(name)
        wait_for(f"the sound {name}", lambda: part in self.listen())
        before, _, _ = self.listen().partition(part)
        for other in never:
            if self.passage(other) in before:
                raise Failure(f"the sound {other} before {name}")
        self.at += len(before) + len(part)


def check_sounds(path, sounds, home):
    speaker = Speaker(home / "speaker", sounds)
    os.environ.update(SDL_AUDIODRIVER="disk", SDL_DISKAUDIOFILE=str(home / "speaker"))
    program = Program(path, home)
    launcher = program.window(*LAUNCHER)
    launcher.move(0, 0)
    speaker.expect("theme", never=["theme2", "click", "chant", "quit"])
    launcher.button("Dice Roller").click()
    dice = program.window(*DICE)
    speaker.expect("theme2", never=["chant", "quit"])
    dice.button("Roll Dice !").click()
    speaker.expect("chant", never=["theme", "theme2", "quit"])
    launcher.button("Dice Roller").click()  # it is open already
    speaker.expect("click", never=["theme2"])
    dice.activate()
    dice.button("x").click()
    speaker.expect("quit", never=["theme", "theme2"])
    for name in "theme", "theme2":
        if speaker.passage(name, len(speaker.files[name]) // 2) in speaker.heard:
            raise Failure(f"{name} went on and was not replaced")

    started = time.monotonic()
    last = speaker.files["quit"][-200:]
    wait_for("the end of the sound quit", lambda: last in speaker.listen())
    if time.monotonic() - started < len(speaker.files["quit"]) / SPEED * 0.8:
        raise Failure("quit was played too fast")
    expect("the sound device after the last sound", lambda: speaker.name in program.open_files(), False)
    leave(program, launcher)


def leave(program, launcher):
    launcher.activate()
    launcher.button("Exit").click()
    program.expect_end(seconds=1)


def check_quick(path, home, **environment):
    """Without a sound the program is as quick as ever and has nothing to say about it."""
    os.environ.update(environment)
    program = Program(path, home)
    launcher = program.window(*LAUNCHER)
    for height in (32, 273) * 3:  # each with a click
        launcher.button("_" if height == 32 else "=").click()
        expect("the height after a press", lambda: launcher.bounds[3], height, seconds=1)
    leave(program, launcher)
    expect("what the program wrote to the terminal", program.output.read_text, "")


def dead_server(file):
    """A sound server that takes every connection and never answers."""
    server = socket.socket(socket.AF_UNIX)
    server.bind(str(file))
    server.listen()
    return server


def check(path, sounds):
    path, sounds = pathlib.Path(path), pathlib.Path(sounds)
    with desktop() as home:
        check_sounds(path, sounds, home)

        check_quick(path, home, SDL_AUDIODRIVER="disk", SDL_DISKAUDIOFILE="/nowhere/speaker")
        check_quick(path, home, SDL_AUDIODRIVER="alsa", ALSA_CONFIG_PATH="/dev/null")
        with dead_server(home / "server") as server:
            check_quick(path, home, SDL_AUDIODRIVER="pulseaudio", PULSE_SERVER=f"unix:{home}/server")
            server.setblocking(False)
            server.accept()  # an error if the program never came
        silent = home / "program"
        shutil.copytree(path.parent, silent, ignore=shutil.ignore_patterns("*.wav"))
        check_quick(silent / path.name, home, SDL_AUDIODRIVER="disk", SDL_DISKAUDIOFILE=str(home / "unheard"))


if __name__ == "__main__":
    main(check)
