"""The program under test as a user meets it: a process with windows, and in these what assistive technology
reads."""

import contextlib
import os
import pathlib
import re
import subprocess

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402

from desktop import DENSITY, PATIENCE, Failure, expect, start, wait_for, xdotool


FRAME = 50  # pixels that a window manager may put round a window
FEWEST_COLOURS = 100  # in the picture of a window that is painted


class Control:
    """What assistive technology sees of a window or of something in it."""

    def __init__(self, accessible):
        self.accessible = accessible

    name = property(lambda self: self.accessible.get_name())
    description = property(lambda self: self.accessible.get_description())
    # Newer versions of the bus call a push button a button.
    role = property(lambda self: re.sub("^button$", "push button", self.accessible.get_role_name()))
    text = property(lambda self: Atspi.Text.get_text(self.accessible, 0, -1))
    checked = property(lambda self: self.has(Atspi.StateType.CHECKED))
    focused = property(lambda self: self.has(Atspi.StateType.FOCUSED))
    showing = property(lambda self: self.has(Atspi.StateType.SHOWING))

    def has(self, state):
        return self.accessible.get_state_set().contains(state)

    @property
    def place(self):
        """Left, top, width and height on the screen, in the program's pixels."""
        box = self.accessible.get_extents(Atspi.CoordType.SCREEN)
        return box.x, box.y, box.width, box.height

    def controls(self):
        count = self.accessible.get_child_count()
        return [Control(child) for i in range(count) if (child := self.accessible.get_child_at_index(i))]

    def act(self, action="Press"):
        """What assistive technology does in place of a click."""
        names = [Atspi.Action.get_action_name(self.accessible, i)
                 for i in range(Atspi.Action.get_n_actions(self.accessible))]
        Atspi.Action.do_action(self.accessible, names.index(action))

    def hover(self, *then):
        left, top, width, height = self.place
        xdotool("mousemove", *(round(at * DENSITY) for at in (left + width // 2, top + height // 2)), *then)

    def click(self):
        self.hover("mousedown", 1, "mouseup", 1)

    def choose(self, name):
        """Opens a drop-down list and clicks on an entry."""
        self.click()
        entries = wait_for(f"the open list {self.name}", lambda: [
            entry for view in self.controls() if view.showing for entry in view.controls() if entry.name == name])
        entries[0].click()
        wait_for(f"the list {self.name} to close", lambda: not any(view.showing for view in self.controls()))


class Window(Control):
    """A window on the screen. Its number is that of the display server."""

    def __init__(self, accessible, number):
        super().__init__(accessible)
        self.number = number

    title = property(lambda self: xdotool("getwindowname", self.number))

    @property
    def bounds(self):
        """Left, top, width and height by the display server, in the program's pixels."""
        shell = dict(re.findall(r"(\w+)=(-?\d+)", xdotool("getwindowgeometry", "--shell", self.number)))
        return tuple(round(int(shell[name]) / DENSITY) for name in ("X", "Y", "WIDTH", "HEIGHT"))

    def find(self, role, name):
        found = [control for control in self.controls() if (control.role, control.name) == (role, name)]
        if not found:
            raise Failure(f"no {role} {name!r} in the window {self.name!r}")
        return found[0]

    def button(self, name): return self.find("push button", name)
    def label(self, name): return self.find("label", name)
    def box(self, name): return self.find("text", name)
    def list(self, name): return self.find("combo box", name)
    def check(self, name): return self.find("check box", name)

    def has_label(self, name):
        return any(control.name == name for control in self.controls())

    @property
    def status(self):
        return next(control.name for control in self.controls() if control.role == "status bar")

    @property
    def focus(self):
        return [control.name for control in self.controls() if control.focused]

    def activate(self):
        xdotool("windowactivate", self.number)
        expect("the active window", lambda: xdotool("getactivewindow"), str(self.number))

    def move(self, left, top):
        """Moves the window as a window manager does."""
        xdotool("windowmove", self.number, round(left * DENSITY), round(top * DENSITY))
        wait_for(f"{self.name} to come to its place",
                 lambda: all(0 <= at - wanted < FRAME for at, wanted in zip(self.place[:2], (left, top))))

    def photograph(self, file):
        """Leaves a picture of the window, taken once it is painted and does not change any more."""
        self.activate()

        def settled():
            first, second = (output("import", "-silent", "-window", str(self.number), "png:-") for _ in range(2))
            painted = int(output("identify", "-format", "%k", "png:-", given=first)) >= FEWEST_COLOURS
            return painted and first == second and first

        pathlib.Path(file).write_bytes(wait_for(f"a picture of {self.name}", settled))


def output(*words, given=None):
    return subprocess.run(words, input=given, stdout=subprocess.PIPE, timeout=PATIENCE, check=True).stdout


class Program:
    """A started program. What it writes goes to a file that the user never sees and a test may read."""

    def __init__(self, path, home):
        self.output = pathlib.Path(home) / "program.log"
        Atspi.get_desktop(0).get_child_count()  # the program looks for assistive technology when it starts
        with open(self.output, "w") as output:
            self.process = start(str(pathlib.Path(path).absolute()), cwd=home, stdout=output, stderr=output)

    def accessible_windows(self):
        screen = Atspi.get_desktop(0)
        for i in range(screen.get_child_count()):
            program = screen.get_child_at_index(i)
            if program and program.get_process_id() == self.process.pid:
                program.set_cache_mask(Atspi.Cache.NONE)
                return [window for window in Control(program).controls() if window.showing]
        return []

    def window_numbers(self):
        """The numbers of the windows on the screen, in the order in which they were made."""
        return sorted(map(int, xdotool("search", "--onlyvisible", "--pid", self.process.pid).split()))

    def window(self, title, button):
        """The window that has this title on the display server, and the button; several windows may have the
        same title."""
        def find():
            numbers = self.window_numbers()
            for control in self.accessible_windows():
                if not any(c.name == button for c in control.controls()):
                    continue
                # The display server and assistive technology know a window by different names, but at one
                # place, give or take its frame.
                for number in reversed(numbers):
                    window = Window(control.accessible, number)
                    if window.title == title and window.bounds[2:] == window.place[2:] and \
                            all(abs(a - b) < FRAME for a, b in zip(window.bounds[:2], window.place[:2])):
                        return window
            return None

        return wait_for(f"the window {title!r} with {button!r}", find)

    def open_files(self):
        """What the process holds open: paths of files and pipes, and the kinds of the rest."""
        found = []
        for file in pathlib.Path(f"/proc/{self.process.pid}/fd").iterdir():
            with contextlib.suppress(FileNotFoundError):  # closed meanwhile
                found.append(os.readlink(file))
        return found

    def expect_end(self, seconds=PATIENCE):
        wait_for("the end of the program", lambda: self.process.poll() is not None, seconds)
        if self.process.returncode != 0:
            raise Failure(f"the program ended with {self.process.returncode}: {self.output.read_text()}")
