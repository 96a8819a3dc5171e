"""A desktop of its own for the tests: a display server without a screen, a window manager, a message bus and
assistive technology, and a user at its pointer, keyboard and clipboard."""

import contextlib
import ctypes
import functools
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile
import time
from unittest import mock

PATIENCE = 20  # seconds until what should happen at once counts as not happening
DENSITY = float(os.environ.get("QT_SCALE_FACTOR") or 1)  # pixels of the screen in one of the program's
SCREEN = 1600, 1200
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


def wait_for(what, probe, seconds=PATIENCE):
    """Polls until the probe gives something true, and gives that."""
    end = time.monotonic() + seconds
    while not (result := probe()):
        if time.monotonic() > end:
            raise Failure(f"{what}: not within {seconds} seconds")
        time.sleep(0.01)
    return result


def expect(what, probe, wanted, seconds=PATIENCE):
    """Polls until the probe gives what is wanted; tells the last that it gave."""
    end = time.monotonic() + seconds
    while (shown := probe()) != wanted:
        if time.monotonic() > end:
            raise Failure(f"{what}: {shown!r} instead of {wanted!r}")
        time.sleep(0.01)


# Processes. Whatever is started here, and whatever that starts, ends with this process.

PR_SET_PDEATHSIG, PR_SET_CHILD_SUBREAPER = 1, 36
prctl = ctypes.CDLL(None).prctl


def start(*words, **options):
    return subprocess.Popen(words, stdin=subprocess.DEVNULL, **options,
                            preexec_fn=lambda: prctl(PR_SET_PDEATHSIG, signal.SIGKILL))


def start_server(log, *words):
    """Starts a server that writes one line, where it can be reached, to the descriptor put for {}. Gives the
    line and the process."""
    reader, writer = os.pipe()
    server = start(*(word.format(writer) for word in words), pass_fds=[writer], stdout=log, stderr=log)
    os.close(writer)
    with os.fdopen(reader) as answer:
        address = answer.readline().strip()
    if not address:
        raise Failure(f"{words[0]} ended with {server.wait(PATIENCE)}: {pathlib.Path(log.name).read_text()}")
    return address, server


def end_children():
    # The orphans of a child become children, so nothing is left when there are none. Servers get the time to
    # take their files away.
    patience = time.monotonic() + 2
    asked = set()
    while found := {int(child) for task in pathlib.Path("/proc/self/task").iterdir()
                    for child in (task / "children").read_text().split()}:
        late = time.monotonic() > patience
        for child in found if late else found - asked:
            os.kill(child, signal.SIGKILL if late else signal.SIGTERM)
        asked |= found
        while any(found) and os.waitpid(-1, os.WNOHANG)[0]:
            found.pop()
        time.sleep(0.01)


# Variables of the environment for what is started inside.
surroundings = functools.partial(mock.patch.dict, os.environ)


@contextlib.contextmanager
def new_home():
    """An empty home and an environment in which nothing of the real user's takes part. Gives the home, which
    ends with all that was started in it."""
    for stop in signal.SIGTERM, signal.SIGHUP, signal.SIGINT:
        signal.signal(stop, lambda number, _: sys.exit(128 + number))
    prctl(PR_SET_CHILD_SUBREAPER, 1)
    home = tempfile.mkdtemp(prefix="orvane-desktop-")
    kept = {name: value for name, value in os.environ.items()
            if name in ("PATH", "QT_SCALE_FACTOR") or name.endswith("SAN_OPTIONS")}
    try:
        with surroundings({**kept, **SURROUNDINGS, "HOME": home, "XDG_RUNTIME_DIR": home}, clear=True):
            yield pathlib.Path(home)
    finally:
        end_children()
        shutil.rmtree(home, ignore_errors=True)


@contextlib.contextmanager
def screen(home, manager="openbox"):
    """A display server and a window manager, for every program that is started inside. Gives the server's
    process."""
    width, height = (round(side * DENSITY) for side in SCREEN)
    with open(home / "screen.log", "w") as log:
        number, server = start_server(log, "Xvfb", "-displayfd", "{}", "-noreset", "-screen", "0",
                                      f"{width}x{height}x24")
        with surroundings(DISPLAY=f":{number}"):
            if manager:
                start(*MANAGERS[manager], stdout=log, stderr=log)
                managed = lambda: "window id" in properties("root", "_NET_SUPPORTING_WM_CHECK")
                wait_for("the window manager", managed)
            yield server
    if server.poll() is not None:  # one that was killed leaves these
        for left in f".X11-unix/X{number}", f".X{number}-lock":
            pathlib.Path("/tmp", left).unlink(missing_ok=True)


@contextlib.contextmanager
def desktop(manager="openbox"):
    """The whole desktop. Gives the user's home."""
    with new_home() as home, open(home / "bus.log", "w") as log:
        bus, _ = start_server(log, "dbus-daemon", "--session", "--nofork", "--print-address={}",
                              f"--address=unix:path={home}/bus")
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
    if text:
        xdotool("type", "--delay", 5, "--", text)


def clipboard(selection="clipboard"):
    # An owner that gives way to another amid its answer leaves the asker waiting.
    return output("timeout", 1, "xclip", "-out", "-selection", selection, "-target", "UTF8_STRING")


def active_window():
    return xdotool("getactivewindow")


def properties(window, name):
    """What the window manager says of a window, "root" included, under a name."""
    return output("xprop", *(["-root"] if window == "root" else ["-id", window]), name)
