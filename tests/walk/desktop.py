"""A desktop of its own for the tests: a display server without a screen, a window manager, a message bus and
assistive technology, and a user at its pointer, keyboard and clipboard."""

import contextlib
import ctypes
import functools
import itertools
import os
import pathlib
import signal
import subprocess
import tempfile
import time
from unittest import mock

PATIENCE = 20  # seconds until what should happen at once counts as not happening
DENSITY = float(os.environ.get("QT_SCALE_FACTOR") or 1)  # pixels of the screen in one of the program's
SCREEN = 1600, 1200
# Display servers that look for a free number at the same time get into each other's way.
NUMBERS = itertools.count(1000 + os.getpid() % 3000 * 16)
MANAGERS = {
    "openbox": ("openbox", "--sm-disable"),
    # A file of the user's own keeps the question for one off the screen; Alt is the program's.
    "i3": ("sh", "-c", "mkdir -p ~/.config/i3; sed 's/Mod1/Mod4/; $a bindsym Mod1+F4 kill' /etc/i3/config >"
                       "~/.config/i3/config; exec i3"),
    "xfwm4": ("sh", "-c", "xfsettingsd --replace --no-daemon & exec xfwm4 --compositor=on"),
    "mutter": ("mutter", "--x11"),
}
SURROUNDINGS = {"LC_ALL": "C.UTF-8", "SDL_AUDIODRIVER": "dummy", "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}


class Failure(Exception):
    """What the user sees is not what it should be."""


def wait_for(what, probe, seconds=PATIENCE, right=bool):
    """Polls until the probe gives something true, or what else is right, and gives that."""
    end = time.monotonic() + seconds
    while not right(shown := probe()):
        if time.monotonic() > end:
            raise Failure(f"{what}: {shown!r} after {seconds} seconds")
        time.sleep(0.01)
    return shown


def expect(what, probe, wanted, seconds=PATIENCE):
    wait_for(f"{what}, not {wanted!r}", probe, seconds, lambda shown: shown == wanted)


# Processes. Whatever is started here, and whatever that starts, ends with this process.

PR_SET_PDEATHSIG, PR_SET_CHILD_SUBREAPER = 1, 36
prctl = ctypes.CDLL(None).prctl


def start(*words, at_end=signal.SIGKILL, **options):
    return subprocess.Popen(words, stdin=subprocess.DEVNULL, **options,
                            preexec_fn=lambda: prctl(PR_SET_PDEATHSIG, at_end))


def end_children():
    """The orphans of a child become children, so nothing is left when there are none."""
    patience = time.monotonic() + 2
    while children := {int(child) for task in pathlib.Path("/proc/self/task").glob("*/children")
                       for child in task.read_text().split()}:
        for child in children:
            os.kill(child, signal.SIGTERM if time.monotonic() < patience else signal.SIGKILL)
        time.sleep(0.02)
        for child in children:
            os.waitpid(child, os.WNOHANG)


# Variables of the environment for what is started inside.
surroundings = functools.partial(mock.patch.dict, os.environ)


@contextlib.contextmanager
def new_home():
    """An empty home and an environment in which nothing of the real user's takes part. Gives the home, which
    ends with all that was started in it; that of a killed test goes with the folder that ./test makes."""
    prctl(PR_SET_CHILD_SUBREAPER, 1)
    kept = {name: value for name, value in os.environ.items()
            if name in ("PATH", "QT_SCALE_FACTOR") or name.endswith("SAN_OPTIONS")}
    with tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as home:
        with surroundings({**kept, **SURROUNDINGS, "HOME": home, "XDG_RUNTIME_DIR": home}, clear=True):
            try:
                yield pathlib.Path(home)
            finally:
                end_children()


@contextlib.contextmanager
def screen(home, manager="openbox"):
    """A display server, whose keys do not repeat when the user is held up, and a window manager, for every
    program that is started inside. Gives the server's process."""
    width, height = (round(side * DENSITY) for side in SCREEN)
    number = f":{next(NUMBERS)}"
    with open(home / "screen.log", "w") as log, surroundings(DISPLAY=number):
        server = start("Xvfb", number, "-noreset", "-r", "-screen", "0", f"{width}x{height}x24",
                       at_end=signal.SIGTERM, stdout=log, stderr=log)
        wait_for("the display server", lambda: xdotool("getdisplaygeometry"))
        if manager:
            start(*MANAGERS[manager], stdout=log, stderr=log)
            wait_for("the window manager",
                     lambda: "window id" in properties("root", "_NET_SUPPORTING_WM_CHECK"))
        yield server


@contextlib.contextmanager
def desktop(manager="openbox"):
    """The whole desktop. Gives the user's home."""
    with new_home() as home, open(home / "bus.log", "w") as log:
        bus = f"unix:path={home}/bus"
        start("dbus-daemon", "--session", "--nofork", f"--address={bus}", stdout=log, stderr=log)
        wait_for("the message bus", (home / "bus").exists)
        with surroundings(DBUS_SESSION_BUS_ADDRESS=bus), screen(home, manager):
            yield home


# The user's hands and eyes.

def output(*words):
    done = subprocess.run(list(map(str, words)), capture_output=True, timeout=PATIENCE)
    return done.stdout.decode(errors="replace")


def xdotool(*words):
    """What xdotool prints; empty if it fails, as a search does that finds nothing."""
    return output("xdotool", *words).strip()


def press(*keys):
    xdotool("key", "--delay", 5, *keys)


def enter(text):
    """Types the text in place of what the box with the focus holds."""
    press("ctrl+a", "BackSpace")
    xdotool("type", "--delay", 5, "--", text)


def clipboard(selection="clipboard"):
    # An owner that gives way to another amid its answer leaves the asker waiting.
    return output("timeout", 1, "xclip", "-out", "-selection", selection, "-target", "UTF8_STRING")


def active_window():
    return xdotool("getactivewindow")


def properties(window, name):
    """What the window manager says of a window, "root" included, under a name."""
    return output("xprop", *(["-root"] if window == "root" else ["-id", window]), name)
