"""An hour of use squeezed into a minute or two: does the program's memory grow, or what it holds open?

usage: soak.py PROGRAM [ROUNDS]

Each round opens every tool and the editor, presses all that they have, saves, copies, drags, rolls up and closes.
Prints the figures of every tenth round; fails if files or threads are more than after the first round, or if memory
grows steadily.
"""

import contextlib
import pathlib
import statistics
import time

from desktop import Failure, clipboard, desktop, main, press, wait_for, xdotool
from program import Program
from tour import METER, TOOLS, Walk

LEAST_GROWTH = 1.0  # KiB a round that count as growth: what 40 presses lose at 25 bytes each
SETTLED = 10  # rounds until every text, font and buffer has been in use once


def memory(pid):
    """Memory of the process's own that it has written to, in KiB."""
    rollup = pathlib.Path(f"/proc/{pid}/smaps_rollup").read_text().splitlines()[1:]
    sizes = {name: int(size.split()[0]) for name, size in (line.split(":") for line in rollup)}
    return sizes["Private_Dirty"]


def open_ends(pid):
    """The numbers of open files and of threads."""
    return tuple(len(list(pathlib.Path(f"/proc/{pid}/{what}").iterdir())) for what in ("fd", "task"))


def middle(control):
    left, top, width, height = control.place
    return left + width // 2, top + height // 2


class Hands:
    """What a round does, put together once as the words of one xdotool."""

    def __init__(self):
        self.words = []

    def click(self, *controls):
        for control in controls:
            self.words += ["mousemove", *middle(control), "click", "--delay", 20, 1]
        return self

    def turn_to(self, window):
        """A window manager may take the first press in a window for itself."""
        self.words += ["windowactivate", window.number, "sleep", 0.05]
        return self

    def keys(self, *keys):
        self.words += ["key", "--delay", 2, *keys]
        return self

    def pause(self, seconds=0.03):
        self.words += ["sleep", seconds]
        return self

    def choose(self, box, steps):
        return self.click(box).pause(0.1).keys(*["Down"] * steps, "Return").pause(0.1)

    def drag(self, title):
        x, y = middle(title)
        self.words += ["mousemove", x, y, "mousedown", 1]
        for step in (6, -6) * 3:
            self.words += ["mousemove_relative", "--", step, step]
        self.words += ["mouseup", 1]
        return self


def a_round(launcher, windows):
    """The openings, the use, and the closings."""
    dice, finder, generator, counter, weapons, meter = windows
    opening = [Hands().turn_to(launcher).click(launcher.button(button)) for button, *_ in TOOLS]
    hands = Hands().turn_to(dice).click(*[dice.button("Roll Dice !")] * 10, dice.button("Copy Result"), dice.box("Number")).keys("ctrl+a", "3")
    hands.choose(dice.list("Plus"), 1)
    hands.turn_to(finder).click(finder.check("Auto"), finder.box("To")).keys("ctrl+a", "2", "0", "0", "BackSpace")
    hands.click(finder.button("Get Dice"))
    hands.turn_to(generator)
    for steps, box in enumerate(("Sex", "Race", "Class"), 1):
        hands.choose(generator.list(box), steps)
    hands.click(*[generator.button("Randomize")] * 3, generator.button("Copy Result"))
    hands.turn_to(counter).click(*[counter.button("+"), counter.button("-")] * 5, counter.button("Randomize"))
    hands.turn_to(weapons).click(*[weapons.button("Get Weapon")] * 10)
    hands.turn_to(meter).click(*[c for c in meter.controls() if c.role == "push button" and ".)" in c.name])
    for window in windows:
        hands.turn_to(window).click(*[window.button("_")] * 2).pause().drag(window.label(next(
            c.name for c in window.controls() if c.role == "label" and c.name.startswith("Orvane"))))
    return opening, hands, [Hands().turn_to(window).click(window.button("x")) for window in windows]


def until(done, hands):
    """Presses, and presses again if a window manager that turns to another window took the first press."""
    for _ in range(5):
        xdotool(*hands.words)
        with contextlib.suppress(Failure):
            return wait_for("what was pressed for", done, 2)
    raise Failure("a button does nothing")


def put_back(homes):
    """After a drag, and where a window manager had its own idea of a place for what came back."""
    for window, at in homes:
        xdotool("windowmove", window.number, *at)
    wait_for("the tools to be in their places", lambda: all(window.bounds[:2] == at for window, at in homes))


def edit(editor, text):
    """The editor is made anew each time, so it is looked for where it stands."""
    hands = Hands().turn_to(editor).click(editor.button("Open")).pause().keys("alt+q", "ctrl+a", *text)
    hands.click(editor.button("Add >|"), editor.button("<<"), editor.button("|<<"), editor.button("Save")).pause()
    xdotool(*hands.words)


def soak(path, rounds=60):
    with desktop() as home:
        saved = home / ".local/share/orvane/questions.ini"
        walk = Walk(Program(path, home), None)
        pid = walk.program.process.pid
        windows = []
        for button, title, mark, _ in TOOLS:
            walk.press_launcher(button)
            windows.append(walk.place(walk.program.window(title, mark)))
        meter = windows[-1]
        meter.button("Editor").click()
        title, mark = "Question Editor (ini version 1.0a )", "Save"
        editor = walk.place(walk.program.window(title, mark))
        place = editor.bounds[:2]
        opening, hands, closing = a_round(walk.launcher, windows)
        homes = [(window, window.bounds[:2]) for window in windows]

        grown, ends = [], None
        started = time.monotonic()
        print("round   private KiB   open files   threads")
        for number in range(int(rounds)):
            walk.launcher.activate()
            for window, button in zip(windows, opening):
                until(lambda: window.number in walk.program.window_numbers(), button)
            put_back(homes)
            xdotool(*hands.words)
            put_back(homes)
            until(lambda: len(walk.program.window_numbers()) == len(windows) + 2, Hands().turn_to(meter).click(meter.button("Editor")))
            editor = walk.program.window(title, mark)
            xdotool("windowmove", editor.number, *place)
            text = f"round{number}"
            edit(editor, text)
            wait_for(f"the question of {text} in the file", lambda: f"question={text}" in saved.read_text())
            if not clipboard().startswith(("Dice:", "Male", "Female")):
                raise Failure(f"the last that was copied is {clipboard()!r}")
            editor.activate()
            press("alt+F4")
            put_back(homes)
            for window, button in zip(windows, closing):
                until(lambda: window.number not in walk.program.window_numbers(), button)
            grown.append(memory(pid))
            if number == 0 or (number + 1) % 10 == 0:
                if ends is None:
                    time.sleep(3)  # the sounds end
                    ends = open_ends(pid)
                wait_for(f"no more open files and threads than {ends}",
                         lambda: all(now <= first for now, first in zip(open_ends(pid), ends)), 4)
                print(f"{number + 1:5} {grown[-1]:13} {open_ends(pid)[0]:12} {open_ends(pid)[1]:9}", flush=True)
        settled = grown[SETTLED:]
        slope = statistics.linear_regression(range(len(settled)), settled).slope
        rise = statistics.median(settled[-10:]) - statistics.median(settled[:10])
        print(f"{slope:.2f} KiB a round after round {SETTLED}, {rise:+.0f} KiB from first ten to last, bound {LEAST_GROWTH}; "
              f"{time.monotonic() - started:.0f} s")
        if slope > LEAST_GROWTH:
            raise Failure("memory grows")


if __name__ == "__main__":
    main(soak)
