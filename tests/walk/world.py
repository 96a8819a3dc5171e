"""The real program in a world that is not as it should be: several screens and one that goes away, other
display servers, nobody who answers for the clipboard or the sound, an end from outside."""

import pathlib
import re
import signal
import socket
import subprocess
import sys

from desktop import (clipboard, desktop, expect, new_home, output, press, screen, start, surroundings,
                     wait_for, xdotool)
from session import LAUNCHER, TOOLS, Session

WAYS_TO_PASTE = ("clipboard", "key", "ctrl+v"), ("clipboard", "click", 3, "key", "p"), ("primary", "click", 2)
LEFT, RIGHT = (0, 0, 800, 600), (800, 200, 800, 1000)


def set_screen(name, area, display="none"):
    left, top, width, height = area
    place = f"{width}/{width // 4}x{height}/{height // 4}+{left}+{top}"
    output("xrandr", "--setmonitor", name, place, display)


def screens(path):
    """windows come up on the pointer's screen and back from one that has gone"""
    def open_in_middle(button, area, pointer):
        xdotool("mousemove", *pointer)
        if button:
            session.launcher.button(button).act()
        window = session.window(TOOLS.get(button, LAUNCHER))
        middle = tuple(at + (length - own) // 2 for at, length, own in zip(area, area[2:], window.bounds[2:]))
        expect(f"the place of {window.name}", lambda: window.bounds[:2], middle)
        return window

    with desktop() as home:
        set_screen("left", LEFT, "screen")  # the server's only output
        set_screen("right", RIGHT)
        xdotool("mousemove", 1500, 1100)
        session = Session(path, home)
        open_in_middle(None, RIGHT, (1500, 1100))
        open_in_middle("Stats Min/Max Generator", RIGHT, (1500, 1100))
        dice = open_in_middle("Dice Roller", LEFT, (100, 500))
        dice.move(1300, 900)
        dice.press("x")
        wait_for("the window to go", lambda: dice.number not in session.window_numbers())
        output("xrandr", "--delmonitor", "right")
        open_in_middle("Dice Roller", LEFT, (100, 500))


def wayland(path):
    """on Wayland with an X server the windows go through X, without one through Wayland"""
    path = str(pathlib.Path(path).absolute())
    with new_home() as home, surroundings(WAYLAND_DISPLAY="wayland-test", WAYLAND_DEBUG="1"):
        log = home / "weston.log"
        server = start("weston", "--backend=headless-backend.so", "--xwayland", "--socket=wayland-test",
                       f"--log={log}", stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        listening = lambda: log.exists() and re.search(r"listening on display (:\d+)", log.read_text())
        wait_for("the compositor", lambda: listening() or server.poll() is not None)
        if server.poll() is not None:
            print(f"Skipped: the compositor does not run here:\n{log.exists() and log.read_text()}")
            sys.exit(77)
        for platform in {}, {"QT_QPA_PLATFORM": "wayland"}:
            with surroundings(DISPLAY=listening()[1], **platform):
                program = start(path)
                wait_for(f"the launcher on the X server, with {platform}", lambda: xdotool(
                    "search", "--onlyvisible", "--all", "--pid", program.pid, "--name", LAUNCHER.title))
                program.kill()
        protocol = home / "protocol.log"
        start(path, stderr=open(protocol, "w"))
        wait_for("the launcher on Wayland", lambda: f'set_title("{LAUNCHER.title}")' in protocol.read_text())


def handover(path):
    """what was copied outlives the program, and a clipboard manager that hangs holds nobody up"""
    def is_kept():
        session = Session(path, home)
        dice = session.open("Dice Roller")
        dice.press("Copy Result")
        roll = dice.box("Result").text.replace("\n", "\r\n")
        expect("the copied roll", clipboard, roll)
        manager.send_signal(hold)
        session.leave()
        return hold or clipboard() == roll

    with desktop() as home:
        manager = start("xfsettingsd", "--no-daemon", stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        hold = 0
        wait_for("a manager to keep what was copied", is_kept)  # it may not be ready for the first
        hold = signal.SIGSTOP
        is_kept()


# Faults: each is a function of the program and a home of its own, and tells what it saw.

def clipboard_hangs(path, home):
    """The owner of what was copied does not answer a paste by key, by menu, or by the middle button."""
    session = Session(path, home)
    dice = session.open("Dice Roller")
    dice.move(900, 500)
    number, glyph = dice.box("Number"), session.launcher.button("_").place
    (home / "copied").write_text("5")
    for selection, *how in WAYS_TO_PASTE:
        owner = start("xclip", "-quiet", "-selection", selection, home / "copied", stderr=subprocess.DEVNULL)
        expect("the clipboard", lambda: clipboard(selection), "5")
        owner.send_signal(signal.SIGSTOP)
        dice.activate()
        press("alt+n")
        number.hover()
        xdotool(*how, "mousemove", glyph[0] + 8, glyph[1] + 8, "click", 1)
        expect("the height after a press", lambda: session.launcher.bounds[3], 32, seconds=2)
        expect("the box", lambda: number.text, "1")
        owner.kill()
        session.launcher.press("=")
    subprocess.run(["xclip", "-in", "-selection", "clipboard"], input=b"7" * 5_000_000,  # in pieces
                   stderr=subprocess.DEVNULL)
    dice.activate()
    press("alt+n", "ctrl+a", "ctrl+v")
    expect("what was pasted of much", lambda: number.text, "777")
    return session.leave()


def open_list(session):
    sign = session.open("Dice Roller").list("Plus")
    sign.click()
    wait_for("the open list", sign.entries)


def server_goes(work):
    """The display's server ends at the program's work: that writes at most a line, and ends, too."""
    def fault(path, home):
        with screen(home) as server:
            session = Session(path, home)
            work(session)
            server.terminate()
            return session.expect_end(1, 2)
    return fault


def sound(path, home, **environment):
    """Without a sound the program is as quick as ever and has nothing to say about it."""
    with surroundings(environment):
        session = Session(path, home)
    session.roll()  # with clicks
    return session.leave()


def deaf_server(path, home):
    with socket.socket(socket.AF_UNIX) as server:
        server.bind(f"{home}/server")
        server.listen()
        told = sound(path, home, SDL_AUDIODRIVER="pulseaudio", PULSE_SERVER=f"unix:{home}/server")
        server.setblocking(False)
        server.accept()  # an error if the program never came
        return told


FAULTS = {
    "the display's server goes, a list open": server_goes(open_list),
    "the display's server goes, a window comes":
        server_goes(lambda session: session.launcher.button("Weapons").click()),
    "the owner of the clipboard hangs": clipboard_hangs,
    "no sound device":
        lambda path, home: sound(path, home, SDL_AUDIODRIVER="alsa", ALSA_CONFIG_PATH="/dev/null"),
    "the sound server never answers": deaf_server,
}


def faults(path):
    """no display, sound or answer: the program goes on or ends, and no file is harmed"""
    with desktop() as home:
        for number, (name, fault) in enumerate(FAULTS.items()):
            own = home / str(number)
            own.mkdir(mode=0o700)
            print(f"{name:42}", end=" ", flush=True)
            with surroundings(HOME=str(own)):
                print(fault(path, own), flush=True)
