"""A walk through the real program with the events of a pointer and a keyboard. Prints what the tools showed
and leaves a picture of each window."""

import itertools
import pathlib
import re
import subprocess
import tempfile
import time

from desktop import (Failure, active_window, clipboard, desktop, enter, expect, press, properties, start,
                     wait_for, xdotool)
from session import EDITOR, TOOLS, Session, overlap

ALIGNMENTS = "Lawfull Good|Good|Chaotic Good|Lawfull|True Neutral|Chaotic|Lawfull Evil|Evil|Chaotic Evil"
QUESTION = "Question and ansvers"
EDITED = "Who goes there?"


def tell(name, text):
    print(f"{name:18} " + text.replace("\n", "\n" + 19 * " "), flush=True)


def use(window, tool):
    result = window.box(tool.text)
    for key, text in tool.typed.items():
        press(f"alt+{key}")
        enter(text)
    window.button(tool.mark).click()
    for name, entry in tool.chosen.items():
        window.list(name).choose(entry)
    wait_for(f"a text like {tool.shows} in {tool.name}", lambda: re.fullmatch(tool.shows, result.text))
    tell(tool.name, result.text)
    if window.has("Copy Result"):
        window.button("Copy Result").click()
        expect("the copied result", clipboard, result.text.replace("\n", "\r\n"))


def answer(window):
    """All questions of the alignment meter."""
    question = window.box(QUESTION)
    result = lambda: window.all("label", "Result :")[0].name
    for number in range(1, 25):
        expect("the question", lambda: question.text.split("\n")[0], f"{number} of 24")
        button = window.all("button", r"\d\.\)")[number * 3 % 4]
        tell("frmAling", " ".join(question.text.split("\n")[1:]) + "\n" + button.name)
        button.click()
    wait_for("an alignment", lambda: re.fullmatch(f"Result : ({ALIGNMENTS})", result()))
    tell("frmAling", result())


def edit(session, folder):
    """A question is edited and saved."""
    editor = session.open_editor()
    state = properties(editor.number, "_NET_WM_STATE")
    allowed = properties(editor.number, "_NET_WM_ALLOWED_ACTIONS")
    if "ABOVE" in state or re.search("RESIZE|MAXIMIZE", allowed):
        raise Failure(f"the editor is no ordinary window of a fixed size: {state}{allowed}")
    editor.photograph(folder / f"{EDITOR.name}.png")
    press("alt+q")
    enter(EDITED)
    editor.press("Save")
    tell(EDITOR.name, f"the first question is now {EDITED!r}")


def visit(session, button, folder):
    """What every window does."""
    tool = TOOLS[button]
    window = session.open(button)
    expect(f"the active window after {button!r}", active_window, str(window.number))
    frame = re.findall(r"\d+", properties(window.number, "_NET_FRAME_EXTENTS"))
    if any(map(int, frame)) or "SKIP" in properties(window.number, "_NET_WM_STATE"):
        raise Failure(f"{tool.name} has a frame or is in no list of windows")
    use(window, tool) if tool.text else answer(window)
    window.photograph(folder / f"{tool.name}.png")
    for glyph, height in ("_", {32}), ("=", {window.bounds[3], 321}):  # one is a little higher than at first
        window.press(glyph)
        wait_for(f"{tool.name} to be as high as one of {height}", lambda: window.bounds[3] in height)
    shown = [box.text for box in window.all("text", "")]
    reopen(session, window, button)
    expect(f"the texts of {tool.name}", lambda: [box.text for box in window.all("text", "")], shown)
    return window


def reopen(session, window, button):
    """A window that was closed, by itself or by the window manager, or minimised, comes back where it was."""
    place = window.bounds
    for how in "x", "alt+F4", "minimised":
        window.activate()
        if how == "x":
            window.button("x").click()
        elif how == "alt+F4":
            press(how)
        else:
            xdotool("windowminimize", window.number)
        if how != "minimised":
            wait_for(f"{button} to be closed", lambda: window.number not in session.window_numbers())
        elif session.minimises:
            wait_for(f"{button} to be minimised", lambda: "Iconic" in properties(window.number, "WM_STATE"))
        session.open(button)
        expect(f"the place of {button} after {how}", lambda: window.bounds, place)
        expect(f"the active window after {how}", active_window, str(window.number))


def drag(window):
    """The window follows the pointer and stays where it was let go, however late the display server tells."""
    title = next(c for c in window.controls() if c.role == "label")
    left = window.bounds[0]
    title.hover("mousedown", 1)
    x, y = map(int, re.findall(r"[xy]:(\d+)", xdotool("getmouselocation")))
    moves = (word for i in range(1, 300) for word in ("mousemove", x + i, y + i // 2, "sleep", 0.002))
    xdotool(*moves, "mouseup", 1)
    time.sleep(0.5)
    place = window.bounds
    title.click()
    if place[0] <= left or window.bounds != place:
        raise Failure(f"a drag from {left} leaves the window at {place}, a click at {window.bounds}")


def stay_on_top(windows):
    """Another program's window that is raised, and then one that is turned to, covers none of them."""
    start("xmessage", "-geometry", "1500x1000+20+20", "Another program", stderr=subprocess.DEVNULL)
    search = "search", "--onlyvisible", "--class", "^xmessage$"
    other = wait_for("another program's window", lambda: xdotool(*search))
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
        session.launcher.button("Exit").hover()
        expect("a hint", lambda: session.launcher.status, "Will quit program")
        session.launcher.photograph(pictures / "frmMain.png")
        windows = [session.launcher, *(visit(session, button, pictures) for button in TOOLS)]
        drag(windows[1])
        stay_on_top(windows)
        edit(session, pictures)
        tell("Exit", session.leave())
        again = Session(path, home, tidy=False)
        meter = again.open("Alingments")
        expect("the edited question", lambda: meter.box(QUESTION).text, f"1 of 24\n{EDITED}")
        windows = [again.launcher, meter, again.open("Dice Reverse"), again.open_editor()]
        for one, other in itertools.combinations(windows, 2):
            if overlap(one.bounds, other.bounds) > 0:
                raise Failure(f"{one.name} at {one.bounds} and {other.name} at {other.bounds} overlap")
        again.leave()
        if folder:
            print("Pictures:", *(f"  {file}" for file in sorted(pictures.glob("*.png"))), sep="\n")
