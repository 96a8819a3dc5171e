"""The real program in a broken world: a display that goes away, a home that cannot be written, no answer from
the sound server or the clipboard, a clock that jumps, an end from outside.

usage: faults.py PROGRAM [all]

Prints a line for each fault. With "all" it tries those too that take their time.
"""

import contextlib
import os
import pathlib
import pwd
import shutil
import signal
import subprocess
import sys
import time

from desktop import (Failure, children, clipboard, desktop, enter, expect, main, press, start, start_server,
                     wait_for, xdotool)
from program import Program
from sound_test import LAUNCHER, dead_server

TOOLS = {  # by their buttons: the title, a button, and a text that a press of it changes
    "Dice Roller": ("Orvane Stats Generator", "Roll Dice !", "Result"),
    "Dice Reverse": ("Range To Dice", "Get Dice", "Result"),
    "Stats Min/Max Generator": ("Orvane Stats Generator", "Randomize", None),
    "Stats Counter": ("Orvane Stats Generator", "+", None),
    "Weapons": ("Range To Dice", "Get Weapon", "Result"),
    "Alingments": ("Form1", "Editor", "Question and ansvers"),
}
QUESTIONS = "orvane/questions.ini"
EDITOR = "Question Editor (ini version 1.0a )", "Save"


@contextlib.contextmanager
def surroundings(**values):
    """Variables of the environment for what is started inside; None takes one away."""
    before = dict(os.environ)
    for name, value in values.items():
        os.environ.pop(name, None)
        if value is not None:
            os.environ[name] = str(value)
    try:
        yield
    finally:
        os.environ.clear()
        os.environ.update(before)


class Session:
    """A started program with its launcher in the corner."""

    latest = None

    @classmethod
    def end(cls):
        if cls.latest:
            cls.latest.process.kill()
            cls.latest.process.wait()

    def __init__(self, path, home):
        self.path = pathlib.Path(path).resolve()
        started = time.monotonic()
        self.program = Session.latest = Program(path, home)
        wait_for("the start", self.program.window_numbers, 3)
        self.start = time.monotonic() - started
        self.launcher = self.program.window(*LAUNCHER)
        self.launcher.move(0, 0)

    def open(self, tool, left=400, top=0):
        self.launcher.activate()
        self.launcher.button(tool).click()
        window = self.program.window(*TOOLS[tool][:2])
        window.move(left, top)
        return window

    def open_editor(self):
        meter = self.open("Alingments")
        expect("the first question", lambda: meter.box(TOOLS["Alingments"][2]).text.split("\n")[0], "1 of 24")
        meter.button("Editor").click()
        editor = self.program.window(*EDITOR)
        editor.move(400, 500)
        editor.button("Open").click()
        expect("the number of questions", lambda: editor.has_label("1/24"), True)
        return editor

    def edit(self, editor, text):
        editor.activate()
        press("alt+q")
        enter(text)
        question = next(control for control in editor.controls() if control.focused)
        expect("the text typed", lambda: question.text, text)

    def press_quickly(self):
        """Rolls the launcher up and down; tells how long the start and the slower press took."""
        self.launcher.activate()
        slowest = 0
        for button, height in ("_", 32), ("=", 273):
            control = self.launcher.button(button)
            control.hover()
            started = time.monotonic()
            xdotool("click", 1)
            expect("the height after a press", lambda: self.launcher.bounds[3], height, seconds=1)
            slowest = max(slowest, time.monotonic() - started)
        return f"start {self.start * 1000:.0f} ms, press {slowest * 1000:.0f} ms"

    def leave(self, seconds=1):
        self.launcher.activate()
        started = time.monotonic()
        self.launcher.button("Exit").click()
        self.program.expect_end(seconds)
        took = time.monotonic() - started
        expect("what the program wrote", self.program.output.read_text, "")
        self.expect_nothing_left()
        return f"Exit {took * 1000:.0f} ms"

    def expect_nothing_left(self):
        for child in children():
            with contextlib.suppress(OSError):  # it has just ended
                if pathlib.Path(f"/proc/{child}/exe").resolve() == self.path:
                    raise Failure(f"the process {child} is left")

    def expect_quiet_end(self, code):
        started = time.monotonic()
        wait_for("the end", lambda: self.program.process.poll() is not None, 2)
        took = time.monotonic() - started
        wrote = self.program.output.read_text()
        if self.program.process.returncode != code or wrote.count("\n") > 1:
            raise Failure(f"it ended with {self.program.process.returncode}, not {code}, and wrote {wrote!r}")
        self.expect_nothing_left()
        return f"ended with {code} after {took * 1000:.0f} ms, wrote {wrote.count(chr(10))} lines"


def wait_for_silence(program):
    """Until the last sound has ended and its device is closed."""
    time.sleep(0.2)  # a device that is to be opened is open by then
    tasks = pathlib.Path(f"/proc/{program.process.pid}/task")
    wait_for("the end of the last sound",
             lambda: not any("SDL" in name.read_text() for name in tasks.glob("*/comm")))


def files(folder):
    return {str(file.relative_to(folder)): file.is_file() and file.read_bytes() for file in folder.rglob("*")}


# Displays

@contextlib.contextmanager
def another_screen(home):
    """A display with a window manager that may be killed. Gives its server's process number."""
    with open(home / "other.log", "w") as log:
        before = set(children())
        number = start_server(log, "Xvfb", "-displayfd", "{}", "-screen", "0", "1600x1200x24", "-noreset")
        (server,) = set(children()) - before
        with surroundings(DISPLAY=f":{number}"):
            (home / "managed").unlink(missing_ok=True)
            start("openbox", "--sm-disable", "--startup", f"touch {home}/managed", stdout=log, stderr=log)
            wait_for("the window manager", (home / "managed").exists)
            try:
                yield server
            finally:
                pathlib.Path(f"/tmp/.X11-unix/X{number}").unlink(missing_ok=True)


def with_sound(session):
    session.launcher.button("Weapons").click()


def with_drag(session):
    session.open("Dice Roller")
    session.launcher.activate()
    session.launcher.label("Orvane Utilities").hover("mousedown", 1, "mousemove_relative", 9, 9)


def with_list(session):
    window = session.open("Dice Roller")
    window.list("Plus").click()
    time.sleep(0.2)


def with_unsaved_text(session):
    session.edit(session.open_editor(), "not saved")


def display(work, end):
    """The display goes away while the program is at work: its server ends, or cuts the program off."""
    def fault(path, home):
        with another_screen(home) as server:
            session = Session(path, home)
            work(session)
            before = files(home / ".local")
            if end is None:
                xdotool("windowkill", session.launcher.number)
            else:
                os.kill(server, end)
            told = session.expect_quiet_end(1)
            expect("the user's files", lambda: files(home / ".local"), before)
            return told
    return fault


def stopped(number):
    """An end from outside, with a sound and a text that is not saved."""
    def fault(path, home):
        session = Session(path, home)
        with_unsaved_text(session)
        before = files(home)
        before.pop("program.log")
        session.program.process.send_signal(number)
        told = session.expect_quiet_end(-number)
        after = files(home)
        after.pop("program.log")
        expect("the files", after.keys, before.keys())
        return told
    return fault


# Homes

def use_home(path, home, folder, saves):
    """Edits the questions. They are saved, or everything in the folder stays as it was."""
    before = files(folder)
    session = Session(path, home)
    editor = session.open_editor()
    session.edit(editor, "Who goes there?")
    editor.button("Save").click()
    told = session.press_quickly()  # behind the save
    if saves:
        expect("the saved question",
               lambda: any(data and b"Who goes there?" in data for data in files(folder).values()), True)
    elif files(folder) != before:
        raise Failure(f"a save that failed left {sorted(files(folder))} of {sorted(before)}")
    if [name for name in files(folder) if pathlib.Path(name).name.startswith(".orvane")]:
        raise Failure("a save left a hidden file")
    return session, editor, told


def home_of(saves, **values):
    """Values are made from the folder that the home may lie in."""
    def fault(path, home):
        folder = home / "world"
        folder.mkdir()
        (folder / "file").write_text("mine")
        made = {name: value and value.format(folder) for name, value in values.items()}
        with surroundings(**{"XDG_DATA_HOME": None, **made}):
            session, _, told = use_home(path, home, folder, saves)
        return f"{'saved' if saves else 'not saved'}, {told}, {session.leave()}"
    return fault


def mount(*words):
    subprocess.run(["mount", *map(str, words)], check=True)


def user_data(home, path):
    """A file system of its own for the user's data, with questions of his own."""
    data = home / "data"
    data.mkdir()
    mount("-t", "tmpfs", "-o", "size=64k", "none", data)
    (data / "orvane").mkdir()
    shutil.copy(pathlib.Path(path).parent / "questions.ini", data / QUESTIONS)
    return data


def full_home(path, home):
    data = user_data(home, path)
    with contextlib.suppress(OSError), open(data / "filler", "wb", buffering=0) as filler:
        while True:
            filler.write(bytes(4096))
    with surroundings(XDG_DATA_HOME=data):
        session, editor, told = use_home(path, home, data, saves=False)
        (data / "filler").unlink()
        editor.button("Save").click()
        expect("the folder, with room again", lambda: [name for name, data in files(data).items()
                                                       if data and b"Who goes there?" in data], [QUESTIONS])
        expect("the folder", lambda: set(files(data)), {"orvane", QUESTIONS})
    return f"not saved, then with room saved, {told}, {session.leave()}"


def read_only_home(path, home):
    data = user_data(home, path)
    mount("-o", "remount,ro", data)
    with surroundings(XDG_DATA_HOME=data):
        session, _, told = use_home(path, home, data, saves=False)
    return f"not saved, {told}, {session.leave()}"


def unset_home(path, home):
    entry = pathlib.Path(pwd.getpwuid(os.getuid()).pw_dir)
    if entry in pathlib.Path(path).resolve().parents:
        return "NOT TRIED: the program lies in the home that would be used"
    mount("-t", "tmpfs", "-o", "size=1m", "none", entry)
    with surroundings(HOME=None, XDG_DATA_HOME=None):
        session, _, told = use_home(path, home, entry, saves=True)
    return f"saved, {told}, {session.leave()}"


def all_tools(path, home):
    """Without a home that can be used every tool does its work."""
    with surroundings(HOME="/proc/nowhere"):
        session = Session(path, home)
        for number, (tool, (_, button, text)) in enumerate(TOOLS.items()):
            window = session.open(tool, 250 + number % 3 * 370, number // 3 * 420)
            window.activate()
            before = text and window.box(text).text
            answers = [control for control in window.controls() if control.name.startswith("1.)")]
            (answers[0] if answers else window.button(button)).click()
            if text:
                wait_for(f"an answer of {tool}", lambda: window.box(text).text != before)
        return session.leave()


# Sound

def hung_sound(path, home):
    (home / "pulse").mkdir()
    with dead_server(home / "pulse/native") as pulse, dead_server(home / "pipewire-0"), \
            surroundings(SDL_AUDIODRIVER=None, ALSA_CONFIG_PATH="/dev/null", XDG_RUNTIME_DIR=home):
        session = Session(path, home)
        told = f"{session.press_quickly()}, {session.leave()}"
        pulse.setblocking(False)
        pulse.accept()  # an error if the program never came
        return told


def no_sound(path, home):
    with surroundings(SDL_AUDIODRIVER=None, ALSA_CONFIG_PATH="/dev/null"):
        session = Session(path, home)
        return f"{session.press_quickly()}, {session.leave()}"


# The clipboard

@contextlib.contextmanager
def clipboard_owner(text, selection="clipboard"):
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


def copy_from_hung_owner(path, home):
    session = Session(path, home)
    dice = session.open("Dice Roller")
    with clipboard_owner("another's"):
        dice.activate()
        started = time.monotonic()
        dice.button("Copy Result").click()
        roll = dice.box("Result").text.replace("\n", "\r\n")
        expect("the copied roll", clipboard, roll, seconds=2)
        told = f"copied after {(time.monotonic() - started) * 1000:.0f} ms"
        return f"{told}, {session.leave()}"


def paste(*how, selection="clipboard", dies=False):
    """The one who holds the clipboard does not answer for a while, or dies."""
    def fault(path, home):
        session = Session(path, home)
        dice = session.open("Dice Roller")
        number = dice.box("Number")
        with clipboard_owner("5", selection) as owner:
            dice.activate()
            press("alt+n")
            number.hover()
            started = time.monotonic()
            xdotool(*how)
            if dies:
                owner.kill()
            xdotool("mousemove", 176, 16, "click", 1)  # the launcher's "_"
            expect("the height after a press", lambda: session.launcher.bounds[3], 32, seconds=3)
            told = f"the program goes on after {time.monotonic() - started:.1f} s"
            xdotool("click", 1)
            expect("the box", lambda: number.text, "1")
            if not dies and selection == "clipboard":
                owner.send_signal(signal.SIGCONT)
                number.click()
                press("ctrl+a", "ctrl+v")
                expect("what was pasted", lambda: number.text, "5")
            return f"{told}, {session.leave()}"
    return fault


# The clock

def clock(*times):
    """The wall clock jumps while the program is used; the last time is the one at which it starts."""
    def fault(path, home):
        library = next(pathlib.Path("/usr/lib").glob("*/faketime/libfaketime.so.1"))
        now = home / "now"
        now.write_text(times[-1])
        with surroundings(LD_PRELOAD=library, FAKETIME_TIMESTAMP_FILE=now, FAKETIME_NO_CACHE=1,
                          DONT_FAKE_MONOTONIC=1):
            session = Session(path, home)
        editor = session.open_editor()
        dice = session.open("Dice Roller", 800)
        saved = home / ".local/share" / QUESTIONS
        for jump in times:
            now.write_text(jump)
            told = session.press_quickly()
            dice.activate()
            press("alt+n")
            enter("3")
            dice.button("Roll Dice !").click()
            expect("the roll", lambda: dice.box("Result").text.startswith("Dice:    3D6"), True, seconds=1)
            session.launcher.activate()
            title, (left, top) = session.launcher.label("Orvane Utilities"), session.launcher.bounds[:2]
            title.hover("mousedown", 1)
            now.write_text(times[0])
            xdotool("mousemove_relative", 40, 40)
            wait_for("the drag", lambda: session.launcher.bounds[:2] != (left, top), 1)
            xdotool("mouseup", 1)
            session.launcher.move(0, 0)
            session.edit(editor, jump)
            editor.button("Save").click()
            expect("the save", lambda: saved.exists() and jump.encode() in saved.read_bytes(), True)
        # A sound is over when it is over.
        wait_for_silence(session.program)
        return f"{told}, {session.leave()}"
    return fault


QUICK, THOROUGH = False, True
FAULTS = (
    ("the display's server is killed, a list open", QUICK, display(with_list, signal.SIGKILL)),
    ("the display cuts the program off in a drag", QUICK, display(with_drag, None)),
    ("the display's server ends, a text not saved", THOROUGH, display(with_unsaved_text, signal.SIGTERM)),
    ("the display's server is killed in a drag", THOROUGH, display(with_drag, signal.SIGKILL)),
    ("the display's server is killed, a sound on", THOROUGH, display(with_sound, signal.SIGKILL)),
    ("the home is nowhere", QUICK, home_of(False, HOME="/proc/nowhere")),
    ("the folder for data is a relative one", THOROUGH, home_of(True, HOME="{}", XDG_DATA_HOME="relative")),
    ("the folder for data is a file", THOROUGH, home_of(False, HOME="{}", XDG_DATA_HOME="{}/file")),
    ("the disk is full", QUICK, full_home),
    ("the disk is read-only", THOROUGH, read_only_home),
    ("no home is told", THOROUGH, unset_home),
    ("the home is nowhere, every tool", THOROUGH, all_tools),
    ("the sound server never answers", QUICK, hung_sound),
    ("no sound server, no device", THOROUGH, no_sound),
    ("the clipboard's owner hangs, a copy", THOROUGH, copy_from_hung_owner),
    ("the clipboard's owner hangs, a paste", QUICK, paste("key", "ctrl+v")),
    ("the selection's owner hangs, a paste", THOROUGH, paste("key", "ctrl+shift+Insert", selection="primary")),
    ("the selection's owner hangs, a click", THOROUGH, paste("click", 2, selection="primary")),
    ("the clipboard's owner hangs, a menu", THOROUGH, paste("click", 3)),
    ("the clipboard's owner dies in a paste", THOROUGH, paste("key", "ctrl+v", dies=True)),
    ("the clock jumps a day and a year", THOROUGH, clock("+1d", "-1y", "+0")),
    ("the clock stands before 1970 and behind 2038", THOROUGH,
     clock("@2040-02-01 00:00:00", "@1969-06-01 00:00:00")),
    ("SIGTERM, a text not saved", QUICK, stopped(signal.SIGTERM)),
    ("SIGHUP, a text not saved", THOROUGH, stopped(signal.SIGHUP)),
    ("SIGINT, a text not saved", THOROUGH, stopped(signal.SIGINT)),
)
MOUNTING = full_home, read_only_home, unset_home


def with_own_mounts():
    """Whether what is mounted here is seen by nobody else; starts the script anew to make it so."""
    if "own" in sys.argv:
        return True
    for words in ["unshare", "--mount"], ["unshare", "--mount", "--map-root-user"]:
        trial = [*words, "mount", "-t", "tmpfs", "none", "/mnt"]
        if subprocess.run(trial, capture_output=True).returncode == 0:
            os.execvp(words[0], [*words, sys.executable, "-B", *sys.argv, "own"])
    return False


def check(path, *words):
    mounts = with_own_mounts()
    failed = 0
    with desktop() as home:
        for number, (name, thorough, fault) in enumerate(FAULTS):
            if thorough and "all" not in words:
                continue
            own = home / str(number)
            own.mkdir(mode=0o700)
            with surroundings(HOME=own):
                try:
                    tried = mounts or fault not in MOUNTING
                    told = fault(path, own) if tried else "NOT TRIED: this machine lets nobody mount"
                    failed += "all" in words and told.startswith("NOT TRIED")
                except Failure as failure:
                    told = f"FAILED: {failure}"
                    failed += 1
                finally:
                    Session.end()
            print(f"{name:46} {told}", flush=True)
    if failed:
        raise Failure(f"{failed} faults are not borne or not tried")


if __name__ == "__main__":
    main(check)
