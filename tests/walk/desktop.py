"""A desktop of its own for the tests: a display server without a screen, a window manager, a message bus and
assistive technology, and a user at its pointer, keyboard and clipboard."""

import contextlib
import ctypes
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile
import time

PATIENCE = 10  # seconds until what should happen at once counts as not happening
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


def children():
    for stat in pathlib.Path("/proc").glob("[0-9]*/stat"):
        with contextlib.suppress(OSError):
            if int(stat.read_text().rpartition(")")[2].split()[1]) == os.getpid():
                yield int(stat.parent.name)


def end_children():
    # The orphans of a child become children, so nothing is left when there are none. Servers get the time to
    # take their files away.
    patience = time.monotonic() + 2
    asked = set()
    while found := set(children()):
        late = time.monotonic() > patience
        for child in found if late else found - asked:
            with contextlib.suppress(ProcessLookupError):
                os.kill(child, signal.SIGKILL if late else signal.SIGTERM)
        asked |= found
        with contextlib.suppress(ChildProcessError):
            while os.waitpid(-1, os.WNOHANG)[0]:
                pass
        time.sleep(0.01)


@contextlib.contextmanager
def surroundings(**values):
    """Variables of the environment for what is started inside; None takes one away."""
    before = dict(os.environ)
    for name in values:
        os.environ.pop(name, None)
    os.environ.update({name: str(value) for name, value in values.items() if value is not None})
    try:
        yield
    finally:
        os.environ.clear()
        os.environ.update(before)


@contextlib.contextmanager
def new_home():
    """An empty home and an environment in which nothing of the real user's takes part. Gives the home, which
    ends with all that was started in it."""
    for stop in signal.SIGTERM, signal.SIGHUP, signal.SIGINT:
        signal.signal(stop, lambda number, _: sys.exit(128 + number))
    prctl(PR_SET_CHILD_SUBREAPER, 1)
    home = pathlib.Path(tempfile.mkdtemp(prefix="orvane-desktop-"))
    kept = {name: value for name, value in os.environ.items()
            if name in ("PATH", "QT_SCALE_FACTOR") or name.endswith("SAN_OPTIONS")}
    os.environ.clear()
    os.environ.update(kept, HOME=str(home), XDG_RUNTIME_DIR=str(home), LC_ALL="C.UTF-8", SDL_AUDIODRIVER="dummy")
    try:
        yield home
    finally:
        end_children()
        shutil.rmtree(home, ignore_errors=True)


@contextlib.contextmanager
def screen(log, manager="openbox"):
    """A display server and a window manager, on which every program comes up that is started inside. Gives the
    server's process."""
    width, height = (round(side * DENSITY) for side in SCREEN)
    number, server = start_server(log, "Xvfb", "-displayfd", "{}", "-screen", "0", f"{width}x{height}x24", "-noreset")
    with surroundings(DISPLAY=f":{number}"):
        start(*MANAGERS[manager], stdout=log, stderr=log)
        wait_for("the window manager", lambda: "window id" in output("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"))
        try:
            yield server
        finally:
            if server.poll() is not None:  # one that was killed leaves it
                pathlib.Path(f"/tmp/.X11-unix/X{number}").unlink(missing_ok=True)
                pathlib.Path(f"/tmp/.X{number}-lock").unlink(missing_ok=True)


@contextlib.contextmanager
def desktop(manager="openbox"):
    """The whole desktop. Gives the user's home."""
    with new_home() as home, open(home / "servers.log", "w") as log:
        bus, _ = start_server(log, "dbus-daemon", "--session", "--nofork", "--print-address={}",
                              f"--address=unix:path={home}/bus")
        with surroundings(DBUS_SESSION_BUS_ADDRESS=bus, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1"), screen(log, manager):
            yield home


# The user's hands and eyes.

def output(*words, given=None):
    done = subprocess.run(list(map(str, words)), input=given, capture_output=True, timeout=PATIENCE)
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
    return output("xclip", "-out", "-selection", selection, "-target", "UTF8_STRING")


def active_window():
    return xdotool("getactivewindow")


def properties(window, name):
    """What the window manager says of a window, "root" included, under a name."""
    return output("xprop", *(["-root"] if window == "root" else ["-id", window]), name)
