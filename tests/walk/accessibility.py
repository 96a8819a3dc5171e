"""What a screen reader finds, hears and presses in every window, and where the keyboard leads there."""

import contextlib
import itertools
import re
import warnings

from gi.repository import GLib

from desktop import Failure, desktop, expect, press, wait_for
from session import EDITOR, LAUNCHER, TOOLS, Atspi, Session, overlap

warnings.simplefilter("ignore", DeprecationWarning)  # newer names of what older systems have too

USED = {"button", "check box", "text", "combo box"}
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


def go_round(window, ear):
    """Tab reaches every control that takes the focus, tells so, and returns; Shift+Tab goes back."""
    takers = [c.name for c in window.controls() if c.name not in LEFT_OUT_BY_TAB and
              (c.told("FOCUSABLE") or c.role in ("text", "combo box", "check box"))]
    window.activate()
    if len(takers) < 2:
        return
    wait_for(f"the focus of {window.name}", lambda: window.focus)
    start = takers.index(window.focus[0])
    for keys, step in ("Tab", 1), ("shift+Tab", -1):
        for i in range(1, len(takers) + 1):
            there = takers[(start + step * i) % len(takers)]
            ear.expect("state-changed:focused", there, lambda: press(keys))
            expect(f"the focus after {keys} in {window.name}", lambda: window.focus, [there])


def use_list(window, control):
    """A list tells its entry, and once open that it is and which is chosen; Escape leaves, Return takes."""
    while (at := window.focus) != [control.name]:
        press("Tab")
        wait_for("the focus", lambda: window.focus not in ([], at))
    for key in "Escape", "Return":
        before = control.description
        press("alt+Down")
        wait_for(f"{control.name} to open", lambda: control.entries() and control.told("EXPANDED"))
        chosen = lambda: [entry.name for entry in control.entries() if entry.told("SELECTED")]
        expect("the chosen entry", chosen, [before])
        press("Down")
        wait_for("another entry to be chosen", lambda: chosen() != [before])
        after = before if key == "Escape" else chosen()[0]
        press(key)
        wait_for(f"{control.name} to close", lambda: control.entries() is None)
        expect(f"{control.name} after {key}", lambda: control.description, after)
        expect(f"{control.name} to be open", lambda: control.told("EXPANDED"), False)


def accessibility(path):
    """all is named, nothing overlaps, Tab goes round and back, a press acts, a list tells its state"""
    with desktop() as home:
        session, ear = Session(path, home), Ear()
        find(session.launcher)
        hover = session.launcher.button("Exit").hover
        ear.expect("property-change:accessible-name", "Will quit program", hover)

        def read(window):
            find(window)
            go_round(window, ear)
            for control in window.controls():
                if control.role == "combo box":
                    use_list(window, control)

        for button, tool in TOOLS.items():
            session.launcher.button(button).act()
            window = session.window(tool)
            read(window)
            if tool.text:
                mark, box = window.button(tool.mark), window.box(tool.text)
                before = box.text
                acts = lambda: mark.act() or box.text != before  # what is drawn may come out the same
                ear.expect("text-changed:insert", tool.text, lambda: wait_for(f"{tool.mark} to act", acts))
        window.button("Editor").act()
        read(session.window(EDITOR))
        with contextlib.suppress(GLib.Error):  # the program may end before it answers
            session.launcher.button(LAUNCHER.mark).act()
        session.expect_end()
