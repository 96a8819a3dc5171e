"""The program under test as a user meets it: a process with windows, and in these what assistive technology
reads."""

import pathlib
import re
import time
from typing import NamedTuple

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402

from desktop import (DENSITY, PATIENCE, Failure, active_window, expect, output, start, wait_for,
                     xdotool)

Atspi.set_timeout(PATIENCE * 1000, PATIENCE * 1000)
FRAME = 64  # pixels that a window manager, with its shadows, may put round a window
FEWEST_COLOURS = 100  # in the picture of a window that is painted


class Tool(NamedTuple):
    name: str
    title: str  # for the desktop; several windows have the same
    mark: str  # a button that only this window has
    text: str = ""  # the box that a press of it fills
    shows: str = ""  # and with what at the end, as a pattern
    typed: dict = {}  # before the press, into the boxes with these access keys
    chosen: dict = {}  # after it, from these lists


# By their buttons, in the order in which they are opened.
TOOLS = {
    "Dice Roller": Tool(
        "frmDice", "Orvane Stats Generator", "Roll Dice !", "Result",
        r"Dice:    3D8 \+3\nRange:   6 to 27\nAverage: 16.5\n\nResult of roll: \d+",
        {"n": "3", "s": "8x", "b": "-3"}),
    "Dice Reverse": Tool(
        "frmRange2Dice", "Range To Dice", "Get Dice", "Result", r"2D6\+8 Chk: 10 - 20",
        {"f": "10", "t": "20"}),
    "Stats Min/Max Generator": Tool(
        "frmStatsGenerator", "Orvane Stats Generator", "Randomize", "Result",
        r"Female Elf Mage\nStats        Min  Max  Bon\nStrength       1   14   -3(\n.+){8}",
        chosen={"Sex": "Female", "Race": "Elf", "Class": "Mage"}),
    "Stats Counter": Tool(
        "frmStatsCounter", "Orvane Stats Generator", "+", "Result",
        r"(\w+ +\d+\n){9}Total +\d+\nLeft +-?\d+"),
    "Weapons": Tool(
        "frmWeapons", "Range To Dice", "Get Weapon", "Result", r"(.+\n)Damage: \d+(.+\n)+Shop price: \d.*"),
    "Alingments": Tool("frmAling", "Form1", "Editor"),
}
LAUNCHER = Tool("frmMain", "Orvane Stats Generator", "Exit")
EDITOR = Tool("frmEditQuestions", "Question Editor (ini version 1.0a )", "Save")


def overlap(a, b):
    """How many pixels two places reach into each other; below 0 if they lie apart."""
    return min(min(a[i] + a[i + 2], b[i] + b[i + 2]) - max(a[i], b[i]) for i in (0, 1))


class Control:
    """What assistive technology sees of a window or of something in it."""

    def __init__(self, accessible):
        self.accessible = accessible

    name = property(lambda self: self.accessible.get_name())
    description = property(lambda self: self.accessible.get_description())
    role = property(lambda self: self.accessible.get_role_name().removeprefix("push "))  # until AT-SPI 2.54
    text = property(lambda self: Atspi.Text.get_text(self.accessible, 0, -1))
    focused = property(lambda self: self.told("FOCUSED"))
    showing = property(lambda self: self.told("SHOWING"))

    def told(self, state):
        return self.accessible.get_state_set().contains(getattr(Atspi.StateType, state))

    @property
    def place(self):
        """Left, top, width and height on the screen, in the program's pixels."""
        box = self.accessible.get_extents(Atspi.CoordType.SCREEN)
        return box.x, box.y, box.width, box.height

    def controls(self):
        count = self.accessible.get_child_count()
        return [Control(child) for i in range(count) if (child := self.accessible.get_child_at_index(i))]

    def act(self):
        """What assistive technology does in place of a click."""
        Atspi.Action.do_action(self.accessible, 0)

    def hover(self, *then):
        left, top, width, height = self.place
        xdotool("mousemove", *(round(at * DENSITY) for at in (left + width // 2, top + height // 2)), *then)

    def click(self):
        self.hover("mousedown", 1, "mouseup", 1)

    def entries(self):
        """The open list of a drop-down list; None if it is closed."""
        view = self.controls()[0]
        return view.controls() if view.showing else None

    def choose(self, name):
        """A list tells its entry, and once open that it is and which is chosen."""
        self.click()
        entries = wait_for(f"the open list {self.name}", self.entries)
        expect(f"the chosen entry of {self.name}", lambda: (
            self.told("EXPANDED"), [entry.name for entry in entries if entry.told("SELECTED")]),
            (True, [self.description]))
        next(entry for entry in entries if entry.name == name).click()
        expect(f"the entry of {self.name}", lambda: (
            self.told("EXPANDED"), self.entries(), self.description), (False, None, name))


class Window(Control):
    """A window on the screen. Its number is that of the display server."""

    def __init__(self, accessible, number):
        super().__init__(accessible)
        self.number = number

    title = property(lambda self: xdotool("getwindowname", self.number))
    texts = property(lambda self: [box.text for box in self.all("text", "")])
    focus = property(lambda self: [control.name for control in self.controls() if control.focused])

    @property
    def bounds(self):
        """Left, top, width and height by the display server, in the program's pixels."""
        shell = dict(re.findall(r"(\w+)=(-?\d+)", xdotool("getwindowgeometry", "--shell", self.number)))
        return tuple(round(int(shell.get(name, 0)) / DENSITY) for name in ("X", "Y", "WIDTH", "HEIGHT"))

    def all(self, role, pattern):
        """The controls whose name begins like that, from the top."""
        found = [c for c in self.controls() if c.role == role and re.match(pattern, c.name)]
        return sorted(found, key=lambda control: control.place[1])

    def find(self, role, name):
        found = [control for control in self.controls() if (control.role, control.name) == (role, name)]
        if not found:
            raise Failure(f"no {role} {name!r} in the window {self.name!r}")
        return found[0]

    def button(self, name): return self.find("button", name)
    def box(self, name): return self.find("text", name)
    def list(self, name): return self.find("combo box", name)

    def has(self, name):
        return any(control.name == name for control in self.controls())

    def activate(self):
        if active_window() != str(self.number):
            xdotool("windowactivate", self.number)
            expect("the active window", active_window, str(self.number))
            time.sleep(0.1)  # to some window managers a press that comes with this is older than this

    def press(self, button):
        self.activate()
        self.button(button).click()

    def move(self, left, top):
        """Moves the window as a window manager does."""
        xdotool("windowmove", self.number, round(left * DENSITY), round(top * DENSITY))
        wait_for(f"{self.name} to come to its place",
                 lambda: all(0 <= at - wanted < FRAME for at, wanted in zip(self.place[:2], (left, top))))

    def photograph(self, file):
        """Leaves a picture of the window, taken once it is painted."""
        def painted():
            output("import", "-silent", "-window", self.number, file)
            return int(output("identify", "-format", "%k", file)) >= FEWEST_COLOURS

        self.activate()
        wait_for(f"a picture of {self.name}", painted)


class Session:
    """A started program. What it writes goes to a file that the user never sees and a test may read."""

    def __init__(self, path, home):
        self.output = pathlib.Path(home) / "program.log"
        Atspi.get_desktop(0).get_child_count()  # the program looks for assistive technology when it starts
        with open(self.output, "w") as log:
            self.process = start(str(pathlib.Path(path).resolve()), cwd=home, stdout=log, stderr=log)
        self.launcher = self.window(LAUNCHER)

    def accessible_windows(self):
        desktop = Atspi.get_desktop(0)
        for i in range(desktop.get_child_count()):
            program = desktop.get_child_at_index(i)
            if program and program.get_process_id() == self.process.pid:
                program.set_cache_mask(Atspi.Cache.NONE)
                return [window for window in Control(program).controls() if window.showing]
        return []

    def window_numbers(self):
        """The numbers of the windows on the screen, in the order in which they were made."""
        return sorted(map(int, xdotool("search", "--onlyvisible", "--pid", self.process.pid).split()))

    def window(self, tool):
        """The tool's window, once it has come. The display server and assistive technology know a window by
        different names, but at one place, give or take its frame."""
        def find():
            for control in self.accessible_windows():
                for number in reversed(self.window_numbers()):
                    window = Window(control.accessible, number)
                    apart = [abs(a - b) for a, b in zip(window.bounds, window.place)]
                    if window.title == tool.title and apart[2:] == [0, 0] and max(apart) < FRAME and \
                            window.has(tool.mark):
                        return window
            return None

        return wait_for(f"the window {tool.title!r} with {tool.mark!r}", find)

    def open(self, button):
        self.launcher.press(button)
        return self.window(TOOLS[button])

    def open_editor(self):
        self.open("Alingments").press("Editor")
        editor = self.window(EDITOR)
        editor.press("Open")
        expect("the number of questions", lambda: editor.has("1/24"), True)
        return editor

    def roll(self):
        """Presses something that must act at once."""
        for glyph, height in ("_", 32), ("=", 273):
            self.launcher.press(glyph)
            expect("the height after a press", lambda: self.launcher.bounds[3], height, seconds=1)

    def expect_end(self, code=0, seconds=PATIENCE):
        """The process ends as told, without a word if that is well, and else with a line at most."""
        expect("how the program ends", self.process.poll, code, seconds)
        # Somebody who assists and is slow to answer is the toolkit's own complaint.
        said = re.sub(r"QSpiApplication.*\n", "", self.output.read_text())
        if said.count("\n") > (code != 0):
            raise Failure(f"the program ended with {code} and said {said!r}")
        return f"ended with {code}"

    def leave(self, seconds=3):
        self.launcher.press("Exit")
        return self.expect_end(seconds=seconds)
