"""A walk through the real program on a display server, with the events of a pointer and a keyboard.

usage: tour.py PROGRAM [FOLDER]

Opens every tool, uses it and compares what it shows, prints what it showed, and leaves a picture of each
window in FOLDER. Fails if a window does not come or a text is not what was pressed for.
"""

import pathlib
import re
import tempfile
import time

from desktop import DENSITY, Failure, clipboard, desktop, enter, expect, main, press, xdotool
from program import Program
from walk_alignment import ask_edited_question, frmAling
from walk_stats import frmStatsCounter, frmStatsGenerator
from walk_weapons import frmWeapons

LAUNCHER = "Orvane Stats Generator", "Exit"
SCREEN_WIDTH, ROW, GAP = 1600, 400, 20


class Walk:
    def __init__(self, program, folder):
        self.program = program
        self.folder = folder
        self.corner = [GAP, GAP]  # where the next window goes, so that none covers another
        self.launcher = self.place(program.window(*LAUNCHER))

    def place(self, window):
        width = window.bounds[2]
        if self.corner[0] + width > SCREEN_WIDTH:
            self.corner = [GAP, self.corner[1] + ROW]
        window.move(*self.corner)
        self.corner[0] += width + GAP
        return window

    def press_launcher(self, button):
        self.launcher.activate()
        self.launcher.button(button).click()

    def tell(self, name, text):
        print(f"{name:18} " + text.replace("\n", "\n" + 19 * " "))

    def photograph(self, name, window):
        window.photograph(self.folder / f"{name}.png")


def frmMain(walk, launcher):
    expect("the greeting", lambda: launcher.status, "Welcome, Adventurer.")
    walk.tell("frmMain", launcher.status)
    walk.photograph("frmMain", launcher)
    for hint, control in (
        ("Stats generator counts Max and Min values of stats", launcher.button("Stats Min/Max Generator")),
        ("Will roll your favourite dice like 3D5-3", launcher.button("Dice Roller")),
        ("Will quit program", launcher.button("Exit")),
        ("Drag and move to move window", launcher.label("Orvane Utilities")),
    ):
        control.hover()
        expect("a hint", lambda: launcher.status, hint)
        walk.tell("", hint)


def frmDice(walk, window):
    result = window.box("Result")

    def expect_roll(title, low, high, average):
        expect("the roll", lambda: result.text.split("\n")[:4],
               [f"Dice:    {title}", f"Range:   {low} to {high}", f"Average: {average}", ""])
        rolled = re.fullmatch("Result of roll: (-?[0-9]+)", result.text.split("\n")[4])
        if not (rolled and low <= int(rolled[1]) <= high):
            raise Failure(f"a roll of {title} gave {result.text!r}")

    expect_roll("1D6 +1", 2, 7, "4.5")
    for key, box, text in ("alt+n", "Number", "3"), ("alt+s", "Sides", "8x"), ("alt+b", "Bonus", "-3"):
        press(key)
        expect("the focus", lambda: window.focus, [box])
        enter(text)
    window.list("Plus").choose("-")
    expect("the chosen sign for assistive technology", lambda: window.list("Plus").description, "-")
    window.button("Roll Dice !").click()
    expect_roll("3D8 -3", 0, 21, "10.5")
    walk.tell("frmDice", result.text)
    walk.photograph("frmDice", window)

    rolled = result.text
    window.button("Copy Result").click()
    expect("the copied roll", clipboard, rolled.replace("\n", "\r\n"))

    drag(window, window.label("Orvane Dice"))
    for height, glyph in (32, "_"), (305, "="):
        window.button(glyph).click()
        expect("the height", lambda: window.bounds[3], height)

    place = window.bounds
    window.button("x").click()
    expect("the windows on the screen", walk.program.window_numbers, [walk.launcher.number])
    walk.press_launcher("Dice Roller")
    again = walk.program.window(window.title, "Roll Dice !")
    expect("the roll after closing and opening", lambda: (again.box("Result").text, again.bounds), (rolled, place))


def drag(window, title):
    """The window follows the pointer by a fifteenth of the distance in each event."""
    left, top = window.bounds[:2]
    title.hover()
    expect("a hint", lambda: window.status, "Drag and move to move window")
    x, y = map(int, re.findall(r"[xy]:(\d+)", xdotool("getmouselocation")))
    xdotool("mousedown", 1)
    # What is less than a pixel adds up: in the last two events 7 and 6 fifteenths to the right.
    for (right, down), moved in ((30, 0), (2, 0)), ((9, 15), (2, 1)), ((8, 30), (3, 3)):
        xdotool("mousemove", x + round(right * DENSITY), y + round(down * DENSITY))
        expect("the dragged window", lambda: window.bounds[:2], (left + moved[0], top + moved[1]))
    xdotool("mouseup", 1)
    title.hover()
    expect("the dropped window", lambda: window.bounds[:2], (left + 3, top + 3))


def frmRange2Dice(walk, window):
    result = window.box("Result")
    expect("the first result", lambda: result.text, "")
    for key, text in ("alt+f", "10"), ("alt+t", "20"):
        press(key)
        enter(text)
    expect("the range and no notation", lambda: (window.box("To").text, result.text), ("20", ""))
    window.button("Get Dice").click()
    expect("the notation", lambda: result.text, "2D6+8 Chk: 10 - 20")
    walk.tell("frmRange2Dice", result.text)
    walk.photograph("frmRange2Dice", window)
    press("alt+r", "ctrl+a", "ctrl+c")
    expect("the copied notation", clipboard, "2D6+8 Chk: 10 - 20")

    press("alt+t", "Tab", "space")
    expect("Auto", lambda: window.check("Auto").checked, True)
    for text, notation in ("5", "Err1"), ("15", "5D2+5 Chk: 10 - 15"), ("14", "Err2"), ("", "Err1"):
        press("alt+t")
        enter(text)
        expect(f"the notation for 10 to {text!r}", lambda: result.text, notation)
        walk.tell("", f"10 to {text}: {notation}")
    press("Tab")
    expect("the focus with an empty box", lambda: window.focus, ["To"])
    enter("10")
    press("Tab")
    expect("the focus with a number", lambda: window.focus, ["Auto"])
    expect("the notation", lambda: result.text, "10")


def leave(walk):
    started = time.monotonic()
    walk.press_launcher("Exit")
    walk.program.expect_end()
    print(f"Exit ended the program after {(time.monotonic() - started) * 1000:.0f} ms")
    expect("the windows after the end", walk.program.window_numbers, [])
    expect("what the program wrote to the terminal", walk.program.output.read_text, "")


# The button of the launcher, the title of the window that it opens, a button that only this window has, and
# what is done there. Tools come in the order in which they are opened.
METER = "Alingments", "Form1", "Editor"
TOOLS = (
    ("Dice Roller", "Orvane Stats Generator", "Roll Dice !", frmDice),
    ("Dice Reverse", "Range To Dice", "Get Dice", frmRange2Dice),
    ("Stats Min/Max Generator", "Orvane Stats Generator", "Randomize", frmStatsGenerator),
    ("Stats Counter", "Orvane Stats Generator", "+", frmStatsCounter),
    ("Weapons", "Range To Dice", "Get Weapon", frmWeapons),
    (*METER, frmAling),
)


def use_tool(walk, button, title, mark, use):
    walk.press_launcher(button)
    window = walk.place(walk.program.window(title, mark))
    window.activate()
    use(walk, window)


def tour(path, folder):
    with desktop() as home:
        walk = Walk(Program(path, home), folder)
        frmMain(walk, walk.launcher)
        for tool in TOOLS:
            use_tool(walk, *tool)
        leave(walk)
        walk = Walk(Program(path, home), folder)
        use_tool(walk, *METER, ask_edited_question)
        leave(walk)


def check(path, folder=None):
    with tempfile.TemporaryDirectory() as scratch:
        pictures = pathlib.Path(folder or scratch).absolute()
        pictures.mkdir(parents=True, exist_ok=True)
        tour(path, pictures)
        if folder:
            print("Pictures:", *(f"  {file}" for file in sorted(pictures.glob("*.png"))), sep="\n")


if __name__ == "__main__":
    main(check)
