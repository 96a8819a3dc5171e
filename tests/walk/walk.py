"""A walk through the real program with the events of a pointer and a keyboard. Prints what the tools showed
and leaves two pictures of each window: as it opens, and used."""

import itertools
import pathlib
import re
import warnings

from gi.repository import GLib

from desktop import (Failure, active_window, clipboard, desktop, enter, expect, press, properties, wait_for,
                     xdotool)
from session import EDITOR, LAUNCHER, TOOLS, Atspi, Session, overlap

ALIGNMENTS = "Lawfull Good|Good|Chaotic Good|Lawfull|True Neutral|Chaotic|Lawfull Evil|Evil|Chaotic Evil"
QUESTION = "Question and ansvers"
EDITED = "Who goes there?"
WAYS = {"x": lambda window: window.button("x").click(), "alt+F4": lambda _: press("alt+F4"),
        "minimised": lambda window: xdotool("windowminimize", window.number)}
USED = {"button", "check box", "text", "combo box"}
TOUCH = 1  # pixels that neighbours may share

warnings.simplefilter("ignore", DeprecationWarning)  # newer names of what older systems have too


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


def hear(name, act):
    """What is done makes the program tell by itself that something is now called by that name."""
    heard = set()
    listener = Atspi.EventListener.new(lambda event: heard.add(event.source.get_name()))
    listener.register("object:property-change:accessible-name")
    act()
    wait_for(f"the news of {name!r}", lambda: (GLib.MainContext.default().iteration(False), name in heard)[1])


def find(window):
    """Everything in the window has a name, lies in it, and has nothing over it."""
    controls = window.controls()
    left, top, width, height = window.place
    for control in controls:
        spoken = control.name + control.description
        if control.role not in ("label", "status bar") and not re.search(r"\w\w", spoken):
            raise Failure(f"{window.name}: nobody knows what the {control.role} {control.name!r} is")
        x, y, right, down = control.place
        if min(x - left, y - top, left + width - x - right, top + height - y - down) < -TOUCH:
            raise Failure(f"{window.name}: {control.name!r} at {control.place} is not in {window.place}")
    for one, other in itertools.combinations(controls, 2):
        if overlap(one.place, other.place) > TOUCH and {one.role, other.role} & USED:
            raise Failure(f"{window.name}: {one.name!r} and {other.name!r} lie over each other")


def go_round(window):
    """Tab goes from the first control that takes the focus to each, and returns; Shift+Tab goes back."""
    takers = [c.name for c in window.controls() if c.name != QUESTION and
              (c.told("FOCUSABLE") or c.role in ("text", "combo box", "check box"))]
    if len(takers) < 2:
        return
    expect(f"the focus of {window.name}", lambda: window.focus, takers[:1])
    for keys, there in ("Tab", [*takers[1:], takers[0]]), ("shift+Tab", takers[::-1]):
        for taker in there:
            press(keys)
            expect(f"the focus after {keys} in {window.name}", lambda: window.focus, [taker])


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


def walk(path, folder=None, manager="openbox"):
    """every tool opened, read, used, closed, brought back; a question edited; pictures in a folder"""
    with desktop(manager) as home:
        pictures = pathlib.Path(folder or home / "pictures").absolute()
        pictures.mkdir(parents=True, exist_ok=True)
        session = Session(path, home)
        session.ways = [way for way in WAYS if (manager, way) != ("i3", "minimised")]  # no place there
        look(session.launcher, pictures / f"{LAUNCHER.name}.png")
        leave = session.launcher.button("Exit")
        hear(leave.description, leave.hover)
        for button in TOOLS:
            visit(session, button, pictures)
        session.open("Alingments").press("Editor")
        look(session.window(EDITOR), pictures / f"{EDITOR.name}.png", framed=True)
        edit(session, pictures)
        tell("Exit", session.leave())
        again = Session(path, home)
        meter = again.open("Alingments")
        expect("the edited question", lambda: meter.box(QUESTION).text, f"1 of 24\n{EDITED}")
        windows = [again.launcher, meter, again.open("Dice Reverse"), again.open_editor()]
        for one, other in itertools.combinations(windows, 2):
            if overlap(one.place, other.place) > 0:
                raise Failure(f"{one.name} at {one.place} and {other.name} at {other.place} overlap")
        again.leave()
        if folder:
            print("Pictures:", *(f"  {file}" for file in sorted(pictures.glob("*.png"))), sep="\n")
