"""The real program in a world that is not as it should be: several screens and one that goes away, other display
servers, no room or rights in the home, nobody who answers for the clipboard, an end from outside, nothing to do."""

import contextlib
import os
import pathlib
import pwd
import re
import shutil
import signal
import subprocess
import sys
import time

from desktop import (Failure, clipboard, desktop, enter, expect, new_home, press, screen, start, surroundings,
                     wait_for, xdotool)
from session import LAUNCHER, TOOLS, Session

LEFT, RIGHT = (0, 0, 800, 600), (800, 200, 800, 1000)
TYPED = "Who goes there?"


# Screens

def set_screens(**screens):
    for name, (left, top, width, height) in screens.items():
        place = f"{width}/{width // 4}x{height}/{height // 4}+{left}+{top}"
        # The first takes the server's only output.
        subprocess.run(["xrandr", "--setmonitor", name, place, "none" if name != "left" else "screen"], check=True)


def expect_middle(window, area):
    size = window.bounds[2:]
    middle = tuple(at + (length - own) // 2 for at, length, own in zip(area, area[2:], size))
    expect(f"the place of {window.name}", lambda: window.bounds[:2], middle)


def screens(path):
    """windows come up on the pointer's screen and back from one that has gone; a list keeps to its screen"""
    with desktop() as home:
        set_screens(left=LEFT, right=RIGHT)
        xdotool("mousemove", 1500, 1100)
        session = Session(path, home, tidy=False)
        expect_middle(session.launcher, RIGHT)
        session.launcher.button("Stats Min/Max Generator").act()
        stats = session.window(TOOLS["Stats Min/Max Generator"])
        expect_middle(stats, RIGHT)
        stats.move(RIGHT[0] - 60, 560)
        classes = stats.list("Class")
        classes.click()
        left, top, width, height = wait_for("the open list", classes.entries) and classes.controls()[0].place
        if not any(s[0] <= left and left + width <= s[0] + s[2] and s[1] <= top and top + height <= s[1] + s[3]
                   for s in (LEFT, RIGHT)):
            raise Failure(f"the list at {left, top, width, height} of {stats.bounds} reaches over the edge of a screen")
        press("Escape")

        def open_dice():  # without the pointer, which is elsewhere
            xdotool("mousemove", 100, 500)
            session.launcher.button("Dice Roller").act()
            dice = session.window(TOOLS["Dice Roller"])
            expect_middle(dice, LEFT)
            return dice

        dice = open_dice()
        dice.move(1300, 900)
        dice.press("x")
        subprocess.run(["xrandr", "--delmonitor", "right"], check=True)
        open_dice()


# Other display servers

def wayland(path):
    """on Wayland with an X server the windows go through X, without one through Wayland"""
    with new_home() as home:
        log = home / "weston.log"
        server = start("weston", "--backend=headless-backend.so", "--xwayland", "--socket=wayland-test",
                       f"--log={log}", stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        listening = lambda: log.exists() and re.search(r"listening on display (:\d+)", log.read_text())
        wait_for("the compositor", lambda: listening() or server.poll() is not None)
        if server.poll() is not None:
            print(f"Skipped: the compositor does not run here:\n{log.exists() and log.read_text()}")
            sys.exit(77)
        path = str(pathlib.Path(path).absolute())
        with surroundings(WAYLAND_DISPLAY="wayland-test"):
            for platform in {}, {"QT_QPA_PLATFORM": "wayland"}:
                with surroundings(DISPLAY=listening()[1], **platform):
                    program = start(path)
                    wait_for(f"the launcher on the X server, with {platform}", lambda: xdotool(
                        "search", "--onlyvisible", "--all", "--pid", program.pid, "--name", LAUNCHER.title))
                    program.kill()
                    program.wait()
            with open(home / "protocol.log", "w") as protocol, surroundings(WAYLAND_DEBUG=1):
                start(path, stderr=protocol)
            spoken = pathlib.Path(protocol.name)
            wait_for("the launcher on Wayland", lambda: f'set_title("{LAUNCHER.title}")' in spoken.read_text())


# The clipboard

def handover(path):
    """what was copied outlives the program, and a clipboard manager that hangs holds nobody up"""
    def copy_and_leave(hold=None):
        session = Session(path, home)
        dice = session.open("Dice Roller")
        dice.press("Copy Result")
        roll = dice.box("Result").text.replace("\n", "\r\n")
        expect("the copied roll", clipboard, roll)
        if hold:
            hold.send_signal(signal.SIGSTOP)
        session.leave(seconds=2)
        return roll

    with desktop() as home:
        manager = start("xfsettingsd", "--no-daemon", stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        # It may not be ready for the first.
        wait_for("a manager to keep what was copied", lambda: (roll := copy_and_leave()) and clipboard() == roll)
        copy_and_leave(manager)


@contextlib.contextmanager
def hung_owner(text, selection):
    """Somebody who holds what was copied, and does not answer."""
    owner = subprocess.Popen(["xclip", "-in", "-quiet", "-selection", selection], stdin=subprocess.PIPE,
                             stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    owner.stdin.write(text.encode())
    owner.stdin.close()
    expect("the clipboard", lambda: clipboard(selection), text)
    owner.send_signal(signal.SIGSTOP)
    try:
        yield owner
    finally:
        owner.kill()
        owner.wait()


def paste(*how, selection="clipboard"):
    def fault(path, home):
        session = Session(path, home)
        dice = session.open("Dice Roller")
        number = dice.box("Number")
        with hung_owner("5", selection) as owner:
            press("alt+n")
            number.hover()
            glyph = session.launcher.button("_").place
            started = time.monotonic()
            xdotool(*how, "mousemove", glyph[0] + 8, glyph[1] + 8, "click", 1)
            expect("the height after a press", lambda: session.launcher.bounds[3], 32, seconds=3)
            took = time.monotonic() - started
            xdotool("click", 1)
            expect("the box", lambda: number.text, "1")
            if selection == "clipboard":
                owner.send_signal(signal.SIGCONT)
                dice.activate()
                number.click()
                press("ctrl+a", "ctrl+v")
                expect("what was pasted", lambda: number.text, "5")
                subprocess.run(["xclip", "-in", "-selection", selection], input=b"7" * 5_000_000)  # in pieces
                press("ctrl+a", "ctrl+v")
                expect("what was pasted of much", lambda: number.text, "777")
        return f"the program goes on after {took:.1f} s, {session.leave()}"
    return fault


# Displays and signals

def with_list(session):
    window = session.open("Dice Roller")
    window.list("Plus").click()
    wait_for("the open list", window.list("Plus").entries)


def with_drag(session):
    session.launcher.label("Orvane Utilities").hover("mousedown", 1, "mousemove_relative", 9, 9)


def with_unsaved_text(session):
    session.open_editor().activate()
    press("alt+q")
    enter("not saved")


def ends(work, code, end):
    """The program is ended from outside while it is at work: it writes no file, at most a line, and is gone."""
    def fault(path, home):
        with open(home / "other.log", "w") as log, screen(log) as server:
            session = Session(path, home)
            work(session)
            before = files(home / ".local")
            end(session, server)
            told = session.expect_end(code, 2)
            expect("the user's files", lambda: files(home / ".local"), before)
            return told
    return fault


# Homes

def files(folder):
    return {str(file.relative_to(folder)): file.is_file() and file.read_bytes() for file in folder.rglob("*")}


def use_home(path, home, folder, saves):
    """Edits the questions. They are saved, or everything in the folder stays as it was."""
    before = files(folder)
    session = Session(path, home)
    editor = session.open_editor()
    editor.activate()
    press("alt+q")
    enter(TYPED)
    editor.press("Save")
    session.roll()  # behind the save
    now = files(folder)
    if saves != any(data and TYPED.encode() in data for data in now.values()) or (not saves and now != before):
        raise Failure(f"a save left {sorted(now)} of {sorted(before)}")
    return f"{'saved' if saves else 'not saved'}, {session.started}, {session.leave()}"


def home_of(saves, **values):
    """Values are made from the folder that the home may lie in."""
    def fault(path, home):
        folder = home / "world"
        folder.mkdir()
        (folder / "file").write_text("mine")
        with surroundings(**{"XDG_DATA_HOME": None, **{name: value.format(folder) for name, value in values.items()}}):
            return use_home(path, home, folder, saves)
    return fault


def mount(*words):
    if subprocess.run(["mount", *map(str, words)], capture_output=True).returncode:
        raise Failure("NOT TRIED: this machine lets nobody mount")


def disk(full):
    """A file system of its own for the user's data, with questions of his own, that is full or read-only."""
    def fault(path, home):
        data = home / "data"
        data.mkdir()
        mount("-t", "tmpfs", "-o", "size=64k", "none", data)
        (data / "orvane").mkdir()
        shutil.copy(pathlib.Path(path).parent / "questions.ini", data / "orvane/questions.ini")
        if full:
            with contextlib.suppress(OSError), open(data / "filler", "wb", buffering=0) as filler:
                while True:
                    filler.write(bytes(4096))
        else:
            mount("-o", "remount,ro", data)
        with surroundings(XDG_DATA_HOME=data):
            return use_home(path, home, data, saves=False)
    return fault


def unset_home(path, home):
    entry = pathlib.Path(pwd.getpwuid(os.getuid()).pw_dir)
    if entry in pathlib.Path(path).resolve().parents:
        return "NOT TRIED: the program lies in the home that would be used"
    mount("-t", "tmpfs", "-o", "size=1m", "none", entry)
    with surroundings(HOME=None, XDG_DATA_HOME=None):
        return use_home(path, home, entry, saves=True)


FAULTS = {
    "the display's server is killed, a list open": ends(with_list, 1, lambda _, server: server.kill()),
    "the display cuts the program off in a drag":
        ends(with_drag, 1, lambda session, _: xdotool("windowkill", session.launcher.number)),
    "SIGTERM, a text not saved":
        ends(with_unsaved_text, -signal.SIGTERM, lambda session, _: session.process.terminate()),
    "the home is nowhere": home_of(False, HOME="/proc/nowhere"),
    "the folder for data is a relative one": home_of(True, HOME="{}", XDG_DATA_HOME="relative"),
    "the folder for data is a file": home_of(False, HOME="{}", XDG_DATA_HOME="{}/file"),
    "no home is told": unset_home,
    "the disk is full": disk(full=True),
    "the disk is read-only": disk(full=False),
    "the clipboard's owner hangs, a paste": paste("key", "ctrl+v"),
    "the clipboard's owner hangs, a menu": paste("click", 3, "key", "p"),
    "the selection's owner hangs, a click": paste("click", 2, selection="primary"),
}


def faults(path, *own):
    """no display, home, room or answer: the program goes on or ends, and no file is harmed"""
    # What is mounted here is seen by nobody else.
    for words in [] if own else [["unshare", "--mount"], ["unshare", "--mount", "--map-root-user"]]:
        if subprocess.run([*words, "true"], capture_output=True).returncode == 0:
            os.execvp(words[0], [*words, sys.executable, "-B", *sys.argv, "own"])
    failed = []
    with desktop() as home:
        for number, (name, fault) in enumerate(FAULTS.items()):
            own = home / str(number)
            own.mkdir(mode=0o700)
            try:
                with surroundings(HOME=own):
                    told = fault(path, own)
            except Failure as failure:
                told = f"FAILED: {failure}"
                failed.append(name)
            print(f"{name:44} {told}", flush=True)
    if failed := [name for name in failed]:
        raise Failure(f"not borne: {', '.join(failed)}")


# Nothing to do

def runs(session):
    """For each thread how often it began to run, and how often it gave way, as the kernel counts."""
    counted = {}
    for task in pathlib.Path(f"/proc/{session.process.pid}/task").iterdir():
        switches = re.findall(r"ctxt_switches:\s*(\d+)", (task / "status").read_text())
        counted[task.name] = [int((task / "schedstat").read_text().split()[2]), *map(int, switches)]
    return counted


def idle(path, seconds="3"):
    """a program that waits, all tools open and used, does not wake up at all"""
    with desktop() as home:
        session = Session(path, home)
        for button, tool in TOOLS.items():
            window = session.open(button)
            if tool.text:
                window.press(tool.mark)
        session.launcher.activate()  # no box of it takes the focus
        xdotool("mousemove", 1599, 1199)
        tasks = pathlib.Path(f"/proc/{session.process.pid}/task")
        wait_for("the end of the last sound", lambda: not any("SDL" in name.read_text() for name in tasks.glob("*/comm")))
        time.sleep(1)
        before = runs(session)
        time.sleep(float(seconds))
        expect(f"the runs of each thread in {seconds} s", lambda: runs(session), before, seconds=0)
        print(f"idle for {seconds} s, all tools open: no thread ran")
