"""A walk through the real program: every tool is opened, used, read, rolled up and down, closed and opened again,
with the events of a pointer and a keyboard. Prints what the tools showed and leaves a picture of each window."""

import pathlib
import re
import subprocess
import sys
import tempfile
import time

from desktop import (DENSITY, Failure, active_window, clipboard, desktop, enter, expect, output, press, properties,
                     start, wait_for, xdotool)
from session import EDITOR, TOOLS, Session

DICE = r"\d+(D\d+([+-]\d+)?)?"
# The lines of a weapon's sheet. Those after a "?" may be missing.
SHEET = re.sub(r"^\?(.*\n)", r"(\1)?", rf"""\S.*
Damage: {DICE}
Damage Fatigue: {DICE}
?Attack Bonus: [+-]\d+
Critical Chance: \d+
Damage Type: (Piercing|Slashing|Blunt|Universal)
Speed: \d+
?Defence Bonus: [+-]\d+
Durability: \d+ of \d+(\.\d+)?
Weight: \d+(\.\d+)?
?Required Strength: \d+
?Required Dexterity: \d+
?Required Level: \d+
\d-Handed
Shop price: \d+(\.\d+)?
""", flags=re.M)
ALIGNMENTS = "Lawfull Good|Good|Chaotic Good|Lawfull|True Neutral|Chaotic|Lawfull Evil|Evil|Chaotic Evil"
QUESTION = "Question and ansvers"
EDITED = "Who goes there?"


def tell(name, text):
    print(f"{name:18} " + text.replace("\n", "\n" + 19 * " "), flush=True)


def expect_copied(window):
    window.button("Copy Result").click()
    expect("the copied result", clipboard, window.box("Result").text.replace("\n", "\r\n"))


# What is done in each window.

def frmMain(session, window):
    expect("the greeting", lambda: window.status, "Welcome, Adventurer.")
    window.button("Exit").hover()
    expect("a hint", lambda: window.status, "Will quit program")
    tell("frmMain", window.status)


def frmDice(session, window):
    result = window.box("Result")

    def expect_roll(title, low, high, average):
        expect("the roll", lambda: result.text.split("\n")[:4],
               [f"Dice:    {title}", f"Range:   {low} to {high}", f"Average: {average}", ""])
        rolled = re.fullmatch("Result of roll: (-?[0-9]+)", result.text.split("\n")[4])
        if not (rolled and low <= int(rolled[1]) <= high):
            raise Failure(f"a roll of {title} gave {result.text!r}")

    expect_roll("1D6 +1", 2, 7, "4.5")
    press("7")  # the box with the focus takes keys from the first moment
    expect("what was typed at once", lambda: window.box("Number").text, "71")
    for key, box, text in ("alt+n", "Number", "3"), ("alt+s", "Sides", "8x"), ("alt+b", "Bonus", "-3"):
        press(key)
        expect("the focus", lambda: window.focus, [box])
        enter(text)
    window.list("Plus").choose("-")
    window.button("Roll Dice !").click()
    expect_roll("3D8 -3", 0, 21, "10.5")
    expect_copied(window)
    drag(window)


def drag(window):
    """The window follows the pointer by a fifteenth of the distance in each event, and never goes back, however
    late the display server tells where it is."""
    title = window.label("Orvane Dice")
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

    title.hover("mousedown", 1)
    x, y = map(int, re.findall(r"[xy]:(\d+)", xdotool("getmouselocation")))
    with tempfile.TemporaryFile("w+") as log:
        watcher = start("stdbuf", "-oL", "xev", "-id", str(window.number), "-event", "structure", stdout=log, stderr=log)
        time.sleep(0.3)
        xdotool(*(word for i in range(1, 300) for word in ("mousemove", x + i, y + i // 2, "sleep", 0.002)), "mouseup", 1)
        time.sleep(0.5)
        watcher.kill()
        log.seek(0)
        seen = [int(at) for at in re.findall(r"synthetic YES.*\n.*\((\d+),", log.read())]
    if not seen or seen != sorted(seen):
        raise Failure(f"a window that is dragged to the right was seen at {seen}")
    place = window.bounds
    title.click()
    expect("the place after a click on the title", lambda: window.bounds, place)


def frmRange2Dice(session, window):
    result = window.box("Result")
    expect("the first result", lambda: result.text, "")
    for key, text in ("alt+f", "10"), ("alt+t", "20"):
        press(key)
        enter(text)
    expect("the range and no notation", lambda: (window.box("To").text, result.text), ("20", ""))
    window.button("Get Dice").click()
    expect("the notation", lambda: result.text, "2D6+8 Chk: 10 - 20")
    tell("frmRange2Dice", result.text)
    press("alt+r", "ctrl+a", "ctrl+c")
    expect("the copied notation", clipboard, "2D6+8 Chk: 10 - 20")

    press("alt+t", "Tab", "space")
    expect("Auto", lambda: window.find("check box", "Auto").checked, True)
    for text, notation in ("5", "Err1"), ("14", "Err2"), ("", "Err1"):
        press("alt+t")
        enter(text)
        expect(f"the notation for 10 to {text!r}", lambda: result.text, notation)
    press("Tab")
    expect("the focus with an empty box", lambda: window.focus, ["To"])
    enter("15")
    expect("the notation", lambda: result.text, "5D2+5 Chk: 10 - 15")


def frmStatsGenerator(session, window):
    result = window.box("Result")
    expect("the first selection", lambda: result.text.split("\n")[::2][:2],
           ["Male Human Warrior", "Strength      11   29   +2"])
    for name, entry in ("Sex", "Female"), ("Race", "Elf"), ("Class", "Mage"):
        window.list(name).choose(entry)
    expect("the selection", lambda: result.text.split("\n")[::2][:2],
           ["Female Elf Mage", "Strength       1   14   -3"])
    expect("the status", lambda: window.status, "Choose your class here.")
    expect_copied(window)


def frmStatsCounter(session, window):
    sheet = window.box("Result")
    plus, minus = (window.all("button", sign)[0] for sign in (r"\+", "-"))

    def strength():
        return int(sheet.text.split("\n")[0].removeprefix("Strength"))

    expect("the range of Strength", lambda: window.all("label", r"\d+-\d+")[0].name, "1-14")
    total = int(sheet.text.split("\n")[9].removeprefix("Total"))
    for value in range(strength() + 1, 15):
        plus.click()
        total += 1
        expect("the sheet", lambda: [strength(), *(line.split() for line in sheet.text.split("\n")[9:])],
               [value, ["Total", str(total)], ["Left", str(81 - total)]])
    for button, value in (plus, 14), (minus, 13):
        button.click()
        expect("the Strength at its bound", strength, value)
    pool = 82 - total
    window.label(f"{pool:+} Still left" if pool > 0 else f"{pool} Below limit" if pool < 0 else "OK")
    expect_copied(window)


def frmWeapons(session, window):
    result = window.box("Result")
    expect("the first sheet", lambda: result.text, "")
    for _ in range(3):
        before = result.text
        window.button("Get Weapon").click()
        wait_for("a new sheet", lambda: result.text != before)
        if not re.fullmatch(SHEET, result.text + "\n"):
            raise Failure(f"no sheet of a weapon: {result.text!r}")


def frmAling(session, window):
    question = window.box(QUESTION)
    result = lambda: window.all("label", "Result :")[0].name
    expect("the result before the first answer", result, "Result :")
    for number in range(1, 25):
        expect("the question", lambda: question.text.split("\n")[0], f"{number} of 24")
        answer = window.all("button", r"\d\.\)")[number * 3 % 4]
        tell("frmAling", " ".join(question.text.split("\n")[1:]) + "\n" + answer.name)
        answer.click()
    wait_for("an alignment", lambda: re.fullmatch(f"Result : ({ALIGNMENTS})", result()))
    final = result()
    answer.click()
    expect("the result after the last question", result, final)
    tell("frmAling", final)


def edit(session, folder):
    """A question is edited, saved, and asked by a program that was started anew."""
    editor = session.open_editor()
    state, allowed = (properties(editor.number, name) for name in ("_NET_WM_STATE", "_NET_WM_ALLOWED_ACTIONS"))
    if "ABOVE" in state or re.search("RESIZE|MAXIMIZE", allowed):
        raise Failure(f"the editor is no ordinary window of a fixed size: {state}{allowed}")
    editor.photograph(folder / f"{EDITOR.name}.png")
    press("alt+q")
    enter(EDITED)
    editor.press("Save")
    tell(EDITOR.name, f"the first question is now {EDITED!r}")


# What every window does.

def visit(session, button, folder):
    tool = TOOLS[button]
    window = session.open(button)
    expect(f"the active window after {button!r}", active_window, str(window.number))
    frame = re.findall(r"\d+", properties(window.number, "_NET_FRAME_EXTENTS"))
    if any(map(int, frame)) or "SKIP" in properties(window.number, "_NET_WM_STATE"):
        raise Failure(f"{tool.name} has a frame or is in no list of windows")
    use = getattr(sys.modules[__name__], tool.name, None)
    if use:
        use(session, window)
    shown = [box.text for box in window.all("text", "")]
    if tool.text:
        tell(tool.name, window.box(tool.text).text)
    window.photograph(folder / f"{tool.name}.png")
    roll(window, tool)
    reopen(session, window, button)
    if (again := [box.text for box in window.all("text", "")]) != shown:
        raise Failure(f"{tool.name} comes back with {again} and not {shown}")
    return window


def roll(window, tool):
    place = window.bounds
    for glyph, height in ("_", 32), ("=", tool.rolled_down or place[3]):
        window.press(glyph)
        expect(f"{tool.name} after {glyph!r}", lambda: window.bounds, (*place[:3], height))


def reopen(session, window, button):
    """A window that was closed, by its own button or by the window manager, or minimised, comes back where it was."""
    place = window.bounds
    for how in "x", "alt+F4", "minimised":
        window.activate()
        if how == "x":
            window.button("x").click()
        elif how == "alt+F4":
            press(how)
        else:
            xdotool("windowminimize", window.number)
        gone = lambda: window.number not in session.window_numbers() or "Iconic" in properties(window.number, "WM_STATE")
        if how != "minimised" or session.minimises:
            wait_for(f"{button} to leave the screen by {how}", gone)
        session.open(button)
        if button not in ("Dice Reverse", "Alingments"):  # PENDING
            expect(f"the place of {button} after {how}", lambda: window.bounds, place)
        expect(f"the active window after {how}", active_window, str(window.number))


def stay_on_top(windows):
    """Another program's window that is raised, and then one that is turned to, covers none of them."""
    start("xmessage", "-geometry", "1500x1000+20+20", "Another program", stderr=subprocess.DEVNULL)
    other = wait_for("another program's window", lambda: xdotool("search", "--onlyvisible", "--class", "^xmessage$"))
    for how in "windowraise", "windowactivate":
        xdotool(how, other)
        time.sleep(0.3)
        order = [int(number, 16) for number in
                 re.findall("0x[0-9a-f]+", properties("root", "_NET_CLIENT_LIST_STACKING"))]
        if under := [w.name for w in windows if order.index(w.number) < order.index(int(other))]:
            raise Failure(f"another program's window, after {how}, covers {under}")
    xdotool("windowkill", other)


def walk(path, folder=None, manager="openbox"):
    """every tool opened, used, rolled up, closed, brought back; a question edited; pictures in a folder"""
    with tempfile.TemporaryDirectory() as scratch, desktop(manager) as home:
        pictures = pathlib.Path(folder or scratch).absolute()
        pictures.mkdir(parents=True, exist_ok=True)
        session = Session(path, home)
        session.minimises = manager != "i3"  # which has no place for such windows
        expect("the active window", active_window, str(session.launcher.number))
        frmMain(session, session.launcher)
        session.launcher.photograph(pictures / "frmMain.png")
        windows = [session.launcher, *(visit(session, button, pictures) for button in TOOLS)]
        stay_on_top(windows)
        edit(session, pictures)
        tell("Exit", session.leave())
        again = Session(path, home)
        meter = again.open("Alingments")
        expect("the edited question", lambda: meter.box(QUESTION).text, f"1 of 24\n{EDITED}")
        again.leave()
        if folder:
            print("Pictures:", *(f"  {file}" for file in sorted(pictures.glob("*.png"))), sep="\n")
