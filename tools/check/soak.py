"""An hour of use squeezed into a minute or so: does the program's memory grow, or what it holds open?

usage: soak.py PROGRAM [ROUNDS]

A round is what a minute brings: it opens every tool and the editor, presses what they have, types, saves, copies, drags,
rolls up and closes. Prints the figures of every tenth of the run; fails if there are more open files or threads at the
end than after the first round, or if memory grows steadily.
"""

import contextlib
import pathlib
import statistics
import time

from Xlib import XK, X, display
from Xlib.ext import xtest
from Xlib.protocol import event

from desktop import Failure, clipboard, desktop, expect, main, wait_for
from program import Program
from tour import METER, TOOLS, Walk

EDITOR = "Question Editor (ini version 1.0a )", "Save"
LEAST_GROWTH = 8.0  # KiB a round that count as growth: it is 2 to 4 with no leak, and 18 when a press loses 200 bytes
SETTLED = 0.25  # of the run: until every text, font and buffer has been in use, and the heap is as broken up as it gets
PACE = 0.004  # seconds between two presses


def figures(pid):
    """Memory of the process's own that it has written to, in KiB, and the numbers of open files and of threads."""
    process = pathlib.Path(f"/proc/{pid}")
    rollup = process.joinpath("smaps_rollup").read_text().splitlines()[1:]
    sizes = dict(line.split(":") for line in rollup)
    counts = (len(list(process.joinpath(what).iterdir())) for what in ("fd", "task"))
    return int(sizes["Private_Dirty"].split()[0]), *counts


class Hands:
    """A pointer and a keyboard that start no program for each press, and what they need to see."""

    def __init__(self):
        self.screen = display.Display()
        self.root = self.screen.screen().root

    def atom(self, name):
        return self.screen.intern_atom(name)

    def send(self, kind, detail=0, **place):
        xtest.fake_input(self.screen, kind, detail, **place)
        self.screen.sync()

    def press(self, at):
        self.send(X.MotionNotify, x=at[0], y=at[1])
        self.send(X.ButtonPress, 1)
        self.send(X.ButtonRelease, 1)
        time.sleep(PACE)

    def keys(self, *names):
        for name in names:
            codes = [self.screen.keysym_to_keycode(XK.string_to_keysym(key)) for key in name.split("+")]
            for code in codes:
                self.send(X.KeyPress, code)
            for code in reversed(codes):
                self.send(X.KeyRelease, code)
            time.sleep(PACE)

    def drag(self, at):
        self.send(X.MotionNotify, x=at[0], y=at[1])
        self.send(X.ButtonPress, 1)
        for step in (6, 0) * 3:
            self.send(X.MotionNotify, x=at[0] + step, y=at[1] + step)
            time.sleep(PACE)
        self.send(X.ButtonRelease, 1)

    def windows(self):
        return list(self.root.get_full_property(self.atom("_NET_CLIENT_LIST"), X.AnyPropertyType).value)


class Tool:
    """A window of the program, and where its controls lie."""

    def __init__(self, hands, window):
        self.hands = hands
        self.native = hands.screen.create_resource_object("window", window.number)
        self.corner = self.at()
        self.spots = {}
        # A box has the name of the label ahead of it.
        for control in sorted(window.controls(), key=lambda control: control.role != "label"):
            left, top, width, height = control.place
            self.spots[control.name] = left + width // 2 - self.corner[0], top + height // 2 - self.corner[1]

    def shown(self):
        return self.native.get_attributes().map_state == X.IsViewable

    def at(self):
        corner = self.native.translate_coords(self.hands.root, 0, 0)
        return -corner.x, -corner.y

    def spot(self, name):
        return tuple(a + b for a, b in zip(self.at(), self.spots[name]))

    def turn_to(self):
        """A window manager may take the first press in a window for itself."""
        atom = self.hands.atom("_NET_ACTIVE_WINDOW")
        ask = event.ClientMessage(window=self.native, client_type=atom, data=(32, [2, X.CurrentTime, 0, 0, 0]))

        def turned():
            active = self.hands.root.get_full_property(atom, X.AnyPropertyType)
            if active and active.value[0] == self.native.id:
                return True
            self.hands.root.send_event(ask, event_mask=X.SubstructureRedirectMask | X.SubstructureNotifyMask)
            return time.sleep(PACE)

        wait_for("the active window", turned)
        return self

    def press(self, *names):
        for name in names:
            self.hands.press(self.spot(name))
        return self

    def choose(self, name, *keys):
        self.press(name)
        time.sleep(0.05)
        self.hands.keys(*keys, "Return")
        return self

    def put_back(self):
        """After a drag, and where a window manager had its own idea of a place for what came back."""

        def back():
            if self.at() == self.corner:
                return True
            self.native.configure(x=self.corner[0], y=self.corner[1])
            return time.sleep(PACE)

        wait_for("a window to be in its place", back)


def until(done, use):
    """Uses, and uses again if a window manager that turned to another window took a press for itself."""
    for _ in range(5):
        use()
        with contextlib.suppress(Failure):
            return wait_for("what was pressed for", done, 2)
    raise Failure("a button does nothing")


def open_all(launcher, tools):
    for (button, *_), tool in zip(TOOLS, tools):
        until(tool.shown, lambda: launcher.turn_to().press(button))
    for tool in tools:
        tool.put_back()


def use(hands, dice, finder, generator, counter, weapons, meter):
    dice.turn_to().press(*["Roll Dice !"] * 10, "Copy Result", "Number")
    hands.keys("Control_L+a", "3")
    dice.choose("Plus", "Down")
    finder.turn_to().press("Auto", "To")
    hands.keys("Control_L+a", "2", "0", "0", "BackSpace")
    finder.press("Get Dice")
    generator.turn_to()
    for steps, name in enumerate(("Sex", "Race", "Class"), 1):
        generator.choose(name, *["Down"] * steps)
    generator.press(*["Randomize"] * 3, "Copy Result")
    counter.turn_to().press(*["-", "+"] * 5, "Randomize")
    weapons.turn_to().press(*["Get Weapon"] * 10)
    meter.turn_to().press(*[name for name in meter.spots if ".)" in name[:4]])


def edit(hands, editor, text):
    editor.turn_to().put_back()
    editor.press("Open")
    hands.keys("Alt_L+q", "Control_L+a", *text)
    editor.press("Add >|", "Del >|", "|<<", "Save")


def end_sounds(pid):
    """Waits until no thread has come or gone for a while. Gives the figures."""
    last, since = figures(pid), time.monotonic()
    while time.monotonic() - since < 2:
        time.sleep(0.1)
        if (now := figures(pid))[1:] != last[1:]:
            last, since = now, time.monotonic()
    return last


def soak(path, rounds="40"):
    rounds = int(rounds)
    with desktop() as home:
        saved = home / ".local/share/orvane/questions.ini"
        walk = Walk(Program(path, home), None)
        pid = walk.program.process.pid
        hands = Hands()
        launcher = Tool(hands, walk.launcher)
        tools = []
        for button, title, mark, _ in TOOLS:
            walk.press_launcher(button)
            tools.append(Tool(hands, walk.place(walk.program.window(title, mark))))
        walk.press_launcher(METER[0])
        tools[-1].turn_to().press("Editor")
        editor = Tool(hands, walk.place(walk.program.window(*EDITOR)))
        editor.turn_to()
        hands.keys("Alt_L+F4")

        grown = []
        started = time.monotonic()
        print("round   private KiB   open files   threads")
        for number in range(1, rounds + 1):
            open_all(launcher, tools)
            use(hands, *tools)
            before = hands.windows()
            made = until(lambda: set(hands.windows()) - set(before), lambda: tools[-1].turn_to().press("Editor"))
            editor.native = hands.screen.create_resource_object("window", made.pop())
            text = f"round{number}"
            until(lambda: saved.exists() and f"question={text}\n" in saved.read_text(), lambda: edit(hands, editor, text))
            if not clipboard().startswith(("Dice:", "Male", "Female")):
                raise Failure(f"the last that was copied is {clipboard()!r}")
            hands.keys("Alt_L+F4")
            expect("the windows without the editor", lambda: set(hands.windows()), set(before))
            for tool in tools:
                tool.turn_to().press("_")
                hands.drag(tool.spot(next(name for name in tool.spots if name.startswith("Orvane"))))
                tool.press("_")
                tool.put_back()
                until(lambda: not tool.shown(), lambda: tool.press("x"))
            now = end_sounds(pid) if number in (1, rounds) else figures(pid)
            first = now if number == 1 else first
            grown.append(now[0])
            if number == 1 or number * 10 % rounds < 10:
                print("{:5} {:13} {:12} {:9}".format(number, *now), flush=True)
        settled = grown[round(SETTLED * rounds):]
        slope, start = statistics.linear_regression(range(len(settled)), settled)
        noise = statistics.pstdev(size - start - slope * i for i, size in enumerate(settled))
        print(f"{slope:+.2f} KiB a round in the last {len(settled)}, each {noise:.0f} KiB off the line; bound {LEAST_GROWTH}; "
              f"{time.monotonic() - started:.0f} s")
        if slope > LEAST_GROWTH:
            raise Failure("memory grows")
        if any(last > one for last, one in zip(now[1:], first[1:])):
            raise Failure(f"open files and threads went from {first[1:]} to {now[1:]}")
        print("nothing grows")


if __name__ == "__main__":
    main(soak)
