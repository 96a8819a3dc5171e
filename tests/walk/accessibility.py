"""What a screen reader finds, hears and presses in every window, and where the keyboard leads there."""

import itertools
import re
import warnings

from gi.repository import GLib

from desktop import Failure, desktop, expect, press, wait_for
from session import EDITOR, LAUNCHER, TOOLS, Atspi, Session

warnings.simplefilter("ignore", DeprecationWarning)  # newer names of what older systems have too

BUTTONS, TAKERS = ("button", "check box"), ("text", "combo box")
LEFT_OUT_BY_TAB = {"Question and ansvers"}
TOUCH = 1  # pixels that neighbours may share


class Ear:
    """Hears what the program tells assistive technology by itself: (kind of event, name of the control)."""

    def __init__(self):
        self.heard = set()
        self.listener = Atspi.EventListener.new(
            lambda event: self.heard.add((event.type.removesuffix(":system"), event.source.get_name())))
        for kind in "property-change:accessible-name", "state-changed:focused", "text-changed:insert":
            self.listener.register(f"object:{kind}")

    def expect(self, kind, name, act):
        def arrived():
            while GLib.MainContext.default().iteration(False):
                pass
            return (f"object:{kind}", name) in self.heard

        arrived()
        self.heard.clear()
        act()
        wait_for(f"the news of {kind} of {name!r}", arrived)


def find(window):
    """Everything in the window has a name, and nothing lies over what can be used."""
    controls = window.controls()
    for control in controls:
        if not re.search(r"\w\w", control.name + control.description) and control.role not in ("label", "status bar"):
            raise Failure(f"{window.name}: nobody knows what the {control.role} {control.name!r} is")
        if control.role == "combo box":
            entries = [entry.name for entry in control.controls()[0].controls()]
            if control.description not in entries or control.told("EXPANDED"):
                raise Failure(f"{window.name}: {control.name} reads {control.description!r} of {entries}")
    for one, other in itertools.combinations(controls, 2):
        a, b = one.place, other.place
        shared = [min(a[i] + a[i + 2], b[i] + b[i + 2]) - max(a[i], b[i]) for i in (0, 1)]
        if min(shared) > TOUCH and {one.role, other.role} & {*BUTTONS, *TAKERS}:
            raise Failure(f"{window.name}: {one.name!r} at {a} and {other.name!r} at {b} lie over each other")
    left, top, width, height = window.place
    for control in controls:
        x, y, right, down = control.place
        if min(x - left, y - top, left + width - x - right, top + height - y - down) < -TOUCH:
            raise Failure(f"{window.name}: {control.name!r} at {control.place} is not in {window.place}")


def go_round(window, ear):
    """Tab reaches every control that takes the focus, tells so, and returns; Shift+Tab goes back."""
    takers = [c for c in window.controls() if c.told("FOCUSABLE") and c.name not in LEFT_OUT_BY_TAB]
    if missing := [c.name for c in window.controls() if c.role in TAKERS and not c.told("FOCUSABLE")]:
        raise Failure(f"{window.name}: no focus for {missing}")
    window.activate()
    if len(takers) < 2:
        return
    wait_for(f"the focus of {window.name}", lambda: window.focus)
    start = [c.name for c in takers].index(window.focus[0])
    for keys, step in ("Tab", 1), ("shift+Tab", -1):
        for i in range(1, len(takers) + 1):
            there = takers[(start + step * i) % len(takers)].name
            ear.expect("state-changed:focused", there, lambda: press(keys))
            expect(f"the focus after {keys} in {window.name}", lambda: window.focus, [there])


def open_lists(window):
    """An open list tells that it is open and which entry is chosen; Escape leaves, Return takes."""
    for control in window.controls():
        if control.role != "combo box":
            continue
        before = control.description
        while (at := window.focus) != [control.name]:
            press("Tab")
            wait_for("the focus", lambda: window.focus not in ([], at))
        for key in "Escape", "Return":
            press("alt+Down")
            wait_for(f"{control.name} to tell that it is open", lambda: control.entries() and control.told("EXPANDED"))
            selected = lambda: [entry.name for entry in control.entries() if entry.told("SELECTED")]
            expect("the chosen entry", selected, [before])
            press("Down")
            wait_for("another entry to be chosen", lambda: selected() != [before])
            chosen = selected()[0]
            press(key)
            wait_for(f"{control.name} to close", lambda: control.entries() is None)
            expect(f"{control.name} after {key}", lambda: control.description, before if key == "Escape" else chosen)


def press_all(session, window, button, ear):
    """A press of each button does what a click does."""
    tool = TOOLS[button]
    if tool.text:
        result = window.box(tool.text)
        before = result.text
        ear.expect("text-changed:insert", tool.text,
                   lambda: wait_for(f"{tool.mark} to act", lambda: window.button(tool.mark).act() or result.text != before))
    for glyph in "_=":
        height = window.bounds[3]
        window.button(glyph).act()
        wait_for(f"the height after {glyph!r}", lambda: window.bounds[3] != height)
    for close in {"x", "Close"} & {control.name for control in window.controls()}:
        window.button(close).act()
        expect(f"{tool.name} after {close}", lambda: window.showing, False)
        session.launcher.button(button).act()
        expect(f"{tool.name} after {button!r}", lambda: window.showing, True)


def accessibility(path):
    """all is named, nothing overlaps, Tab goes round and back, a press acts, a list tells its state"""
    with desktop() as home:
        session, ear = Session(path, home), Ear()
        find(session.launcher)
        ear.expect("property-change:accessible-name", "Will quit program", session.launcher.button("Exit").hover)
        for button in TOOLS:
            window = session.open(button)
            find(window)
            go_round(window, ear)
            open_lists(window)
            press_all(session, window, button, ear)
        answers = [control for control in window.controls() if control.name.startswith("1.)")]
        answers[0].act()
        display = window.find("image", "Display")
        if not re.fullmatch(r"Good -?\d+, Evil -?\d+, Law -?\d+, Chaos -?\d+", display.description):
            raise Failure(f"the display reads {display.description!r}")
        window.button("Editor").act()
        editor = session.window(EDITOR)
        find(editor)
        go_round(editor, ear)
        open_lists(editor)
        for button, number in ("Open", "1/24"), (">>", "2/24"), ("Clear", "1/1"):
            editor.button(button).act()
            expect(f"the number after {button!r}", lambda: editor.has(number), True)
        try:
            session.launcher.button(LAUNCHER.mark).act()
        except GLib.Error:
            pass  # the program may end before it answers
        session.expect_end()
