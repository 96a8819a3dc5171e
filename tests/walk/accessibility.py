"""What a screen reader finds and hears in every window, and where the keyboard leads there."""

import itertools
import re
import warnings

from gi.repository import GLib

from desktop import Failure, expect, press, wait_for
from session import Atspi, overlap

warnings.simplefilter("ignore", DeprecationWarning)  # newer names of what older systems have too

USED = {"button", "check box", "text", "combo box"}
LEFT_OUT_BY_TAB = {"Question and ansvers"}
TOUCH = 1  # pixels that neighbours may share


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
    takers = [c.name for c in window.controls() if c.name not in LEFT_OUT_BY_TAB and
              (c.told("FOCUSABLE") or c.role in ("text", "combo box", "check box"))]
    if len(takers) < 2:
        return
    expect(f"the focus of {window.name}", lambda: window.focus, takers[:1])
    for keys, there in ("Tab", [*takers[1:], takers[0]]), ("shift+Tab", takers[::-1]):
        for taker in there:
            press(keys)
            expect(f"the focus after {keys} in {window.name}", lambda: window.focus, [taker])
