"""A walk through the real program with the events of a pointer and a keyboard. Prints what the tools showed
and leaves two pictures of each window: as it opens, and used."""

import itertools
import pathlib
import re

from accessibility import find, go_round, hear
from desktop import (Failure, active_window, clipboard, desktop, enter, expect, press, properties, wait_for,
                     xdotool)
from session import EDITOR, LAUNCHER, TOOLS, Session, overlap

ALIGNMENTS = "Lawfull Good|Good|Chaotic Good|Lawfull|True Neutral|Chaotic|Lawfull Evil|Evil|Chaotic Evil"
QUESTION = "Question and ansvers"
EDITED = "Who goes there?"
WAYS = {"x": lambda window: window.button("x").click(), "alt+F4": lambda _: press("alt+F4"),
        "minimised": lambda window: xdotool("windowminimize", window.number)}


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
    wait_for(f"a text like {tool.shows} in {tool.name}", lambda: result.text,
             right=lambda text: re.fullmatch(tool.shows, text))
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
    editor.photograph(folder / f"{EDITOR.name}.png")
    press("alt+q")
    enter(EDITED)
    editor.press("Save")
    tell(EDITOR.name, f"the first question is now {EDITED!r}")


def look(window, file, framed=False):
    """What every window is as it opens: in front, of its kind to the window manager, and readable."""
    expect(f"the active window at {window.name}", active_window, str(window.number))
    state, allowed, frame = (properties(window.number, f"_NET_{name}")
                             for name in ("WM_STATE", "WM_ALLOWED_ACTIONS", "FRAME_EXTENTS"))
    if "SKIP" in state or ("ABOVE" in state) == framed or (
            re.search("RESIZE|MAXIMIZE", allowed) if framed else re.search("[1-9]", frame)):
        raise Failure(f"{window.name} is no window of its kind: {state}{allowed}{frame}")
    window.photograph(file)
    find(window)
    go_round(window)


def come_back(session, window, button):
    """A window that is behind, was closed, by itself or by the window manager, or minimised, is as it was."""
    before = window.bounds, window.texts
    for way in "behind", *session.ways:
        window.activate()
        if way in WAYS:
            WAYS[way](window)
            wait_for(f"{button} to go by {way}", lambda: window.number not in session.window_numbers() or
                     "Iconic" in properties(window.number, "WM_STATE"))
        session.open(button)
        expect(f"{button} after {way}", lambda: (window.bounds, window.texts), before)
        expect(f"the active window after {way}", active_window, str(window.number))


def visit(session, button, folder):
    """A tool, opened as assistive technology does, and used."""
    tool = TOOLS[button]
    session.launcher.button(button).act()
    window = session.window(tool)
    look(window, folder / f"{tool.name}.png")
    use(window, tool) if tool.text else answer(window)
    window.photograph(folder / f"{tool.name}-used.png")
    come_back(session, window, button)


def drag(window):
    left, title = window.bounds[0], window.label("Orvane Utilities")
    title.hover("mousedown", 1, *50 * ["mousemove_relative", 3, 1, "sleep", 0.01], "mouseup", 1)
    wait_for(f"{window.name} to follow the pointer", lambda: window.bounds[0] > left)


def walk(path, folder=None, manager="openbox"):
    """every tool opened, read, used, closed, brought back; a question edited; pictures in a folder"""
    with desktop(manager) as home:
        pictures = pathlib.Path(folder or home / "pictures").absolute()
        pictures.mkdir(parents=True, exist_ok=True)
        session = Session(path, home)
        session.ways = [way for way in WAYS if (manager, way) != ("i3", "minimised")]  # no place there
        look(session.launcher, pictures / f"{LAUNCHER.name}.png")
        hear("Will quit program", session.launcher.button("Exit").hover)
        for button in TOOLS:
            visit(session, button, pictures)
        drag(session.launcher)
        session.open("Alingments").press("Editor")
        look(session.window(EDITOR), pictures / f"{EDITOR.name}.png", framed=True)
        edit(session, pictures)
        tell("Exit", session.leave())
        again = Session(path, home, tidy=False)
        meter = again.open("Alingments")
        expect("the edited question", lambda: meter.box(QUESTION).text, f"1 of 24\n{EDITED}")
        windows = [again.launcher, meter, again.open("Dice Reverse"), again.open_editor()]
        for one, other in itertools.combinations(windows, 2):
            if overlap(one.place, other.place) > 0:
                raise Failure(f"{one.name} at {one.place} and {other.name} at {other.place} overlap")
        again.leave()
        if folder:
            print("Pictures:", *(f"  {file}" for file in sorted(pictures.glob("*.png"))), sep="\n")
