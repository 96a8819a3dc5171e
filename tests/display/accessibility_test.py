"""What a screen reader finds, reads and presses in every window, and where the keyboard leads there.

usage: accessibility_test.py PROGRAM
"""

import re
import warnings

from gi.repository import GLib

from desktop import Failure, clipboard, desktop, expect, main, press, wait_for
from program import Atspi, Program

warnings.simplefilter("ignore", DeprecationWarning)  # newer names of what older systems have too

STATISTICS = "Strength | Agility | Constitution | Wisdom | Inteligence | Magic | Charisma | Perception | Luck"
# Of each window: a button of its own, its titles on the display server and to assistive technology, what is in
# it, the ring of Tab, and where in that the access keys lead. "#" is a number; of an answer and of the
# instructions only the start counts, and "¦" is the bar of a caption.
LAUNCHER = ("Exit", "Orvane Stats Generator", "Orvane Utilities", """
    image: Logo; label: Orvane Utilities; push button: _ | x; image: Orvane
    push button: Stats Min/Max Generator | Dice Roller | Stats Counter | Alingments | Dice Reverse | Weapons | Exit
    label: Instructions; status bar: Welcome, Adventurer.""", [], {})
DICE = ("Roll Dice !", "Orvane Stats Generator", "Orvane Dice", """
    image: Logo; label: Orvane Dice; push button: _ | x; label: Number; text: Number; label: D | Sides
    text: Sides; label: Plus; combo box: Plus; label: Bonus; text: Bonus; label: Result :; text: Result
    push button: Copy Result | Roll Dice ! | Close; label: Instructions; status bar: Result""",
    ["Number", "Sides", "Plus", "Bonus", "Result"], {"n": 0, "s": 1, "p": 2, "b": 3, "r": 4})
RANGE = ("Get Dice", "Range To Dice", "Orvane Dice", """
    image: Logo; label: Orvane Dice; push button: _ | x; label: From :; text: From; label: To :; text: To
    check box: Auto; push button: Get Dice; label: Result :; text: Result; label: Instructions; status bar:""",
    ["From", "To", "Auto", "Result"], {"f": 0, "t": 1, "r": 3})
GENERATOR = ("Randomize", "Orvane Stats Generator", "Orvane Stats Range Generator", """
    label: Orvane Stats Range Generator; image: Logo; push button: _ | x; label: Sex :; combo box: Sex
    label: Race :; combo box: Race; label: Class :; combo box: Class
    push button: Copy Result | Randomize | Close; label: Result :; text: Result
    label: Instructions; status bar: Welcome, Adventurer.""",
    ["Sex", "Race", "Class", "Result"], {"s": 0, "r": 1, "c": 2})
COUNTER = ("+", "Orvane Stats Generator", "Orvane Secondary Stats", f"""
    label: Orvane Secondary Stats; image: Logo; push button: _ | x; label: Stat : | Rnge : | Value :
    label: {STATISTICS}{9 * " | #-#"}; push button: -{8 * " | -"}; label: #{8 * " | #"}
    push button: +{8 * " | +"}; label: OK | Result :; text: Result
    push button: Copy Result | Randomize | Close; label: Instructions; status bar: Welcome, Adventurer.""",
    ["Result"], {"r": 0})
METER = ("Editor", "Form1", "Orvane Alingment meter", """
    image: Logo; label: Orvane Alingment meter; push button: _ | x; label: Question and ansvers :
    text: Question and ansvers; push button: 1.) | 2.) | 3.) | 4.); label: Result :; image: Display; status bar:
    push button: Editor""", ["Editor"], {"q": "Question and ansvers", "1": 0})
WEAPONS = ("Get Weapon", "Range To Dice", "Orvane Weapons", """
    image: Logo; label: Orvane Weapons; push button: _ | x | Get Weapon; label: Result :; text: Result
    label: Instructions; status bar:""", ["Result"], {"r": 0})
ANSWERS = [name.format(i) for i in range(1, 5) for name in ("Answer {}", "Code of answer {}")]
EDITOR = ("Save", *2 * ["Question Editor (ini version 1.0a )"], "label: Question Text :; text: Question Text\n" +
    "".join(f"label: {i} :; text: Answer {i}; combo box: Code of answer {i}\n" for i in range(1, 5)) + """
    push button: ¦<< | <<; label: 1/1; push button: Del >¦ | Add >¦ | >> | >>¦; text: File
    push button: Open | Save | Clear""",
    ["Question Text", *ANSWERS, "|<<", "<<", "Del >|", "Add >|", ">>", ">>|", "File", "Open", "Save", "Clear"],
    {"q": 0, "1": 1, "2": 3, "3": 5, "4": 7})

LISTS = {
    "Plus": ["+", "-"], "Sex": ["Male", "Female"],
    "Race": ["Human", "Elf", "Dwarf", "Halfling", "Troll", "Orc", "Drakeling"],
    "Class": "Warrior Ranger Paladin Thief Bard Assassin Mage Priest Alchemist Mentant".split(),
    "Code of answer": ["    Illegal value!", "G   Good", "E   Evil", "L   Lawfull", "C   Chaotic",
                       "LG  Lawfull Good", "LE  Lawfull Evil", "CG  Chaotic Good", "CE  Chaotic Evil",
                       "N   Neutral", "GEN Good-Evil Neutral", "LCN Law-Chaos Neutral", "NUL Nothing",
                       "R   Random"],
}


class Ear:
    """Hears what the program tells assistive technology by itself: (kind of event, name of the control)."""

    def __init__(self):
        self.heard = []
        self.listener = Atspi.EventListener.new(
            lambda event: self.heard.append((event.type, event.source.get_name())))
        for kind in "property-change:accessible-name", "state-changed:focused", "text-changed:insert":
            self.listener.register(f"object:{kind}")

    def expect(self, kind, name):
        def arrived():
            while GLib.MainContext.default().iteration(False):
                pass
            return (f"object:{kind}", name) in [(heard.removesuffix(":system"), who) for heard, who in self.heard]
        wait_for(f"the news of {kind} of {name!r}", arrived)
        self.heard.clear()


def outline(name):
    name = re.sub(r"^(\+\d+ Still left|-\d+ Below limit)$", "OK", name)  # the pool
    name = re.sub(r"^(Instructions|\d\.\)).*", r"\1", name)
    return re.sub(r"^\d+(-\d+)?$", lambda number: "#-#" if number[1] else "#", name).strip()


def rows(table):
    for row in re.split("[;\n]", table):
        role, _, names = row.strip().partition(":")
        yield from ((role, name.strip().replace("¦", "|")) for name in names.split("|") if role)


def find_and_read(window, name, table):
    if (window.role, window.name) not in (("frame", name), ("dialog", name)):
        raise Failure(f"{window.role} {window.name!r} instead of a window {name!r}")
    expect(f"what is in {name}", lambda: [(c.role, outline(c.name)) for c in window.controls()], list(rows(table)))
    for control in window.controls():
        if control.role not in ("label", "status bar"):
            left, top, width, height = control.place
            found = Atspi.Component.get_accessible_at_point(
                window.accessible, left + width // 2, top + height // 2, Atspi.CoordType.SCREEN)
            if not found or control.name not in (found.get_name(), found.get_parent().get_name()):
                raise Failure(f"{name}: {found and found.get_name()!r} lies over {control.name!r}")
        if not re.search(r"\w\w", control.name + control.description) and control.role == "push button":
            raise Failure(f"{name}: nobody knows what {control.name!r} does")
        if control.role == "combo box":
            entries = [entry.name for entry in control.controls()[0].controls()]
            if entries != LISTS[control.name.rstrip(" 1234")] or control.description != entries[0]:
                raise Failure(f"{name}: {control.name} reads {control.description!r} of {entries}")
        if control.role == "text":
            several = window.name != "Orvane Dice" or control.has(Atspi.StateType.READ_ONLY)
            several = several and not re.match("Answer|File", control.name)
            if control.has(Atspi.StateType.MULTI_LINE) != several:
                raise Failure(f"{name}: {control.name} has one line or several, and says otherwise")
            lines, at = [], 0
            while several and at < len(control.text):
                part = Atspi.Text.get_text_at_offset(control.accessible, at, Atspi.TextBoundaryType.LINE_START)
                lines.append(part.content)
                at = part.end_offset + 1
            if several and re.sub(r"\s", "", "".join(lines)) != re.sub(r"\s", "", control.text):
                raise Failure(f"{name}: {control.name} read by lines is {lines}")


def walk_by_keys(ear, window, ring, keys):
    """Tab goes round and back, access keys lead where they say, and each arrival is told."""
    takers = [control for control in window.controls() if control.has(Atspi.StateType.FOCUSABLE)]
    focus = lambda: [control.name for control in takers if control.focused]
    window.activate()
    wait_for("the focus", focus)
    for key, to in keys.items():
        to = ring[to] if isinstance(to, int) else to
        if focus() == [to]:
            press("Tab")
            wait_for("the focus to leave", lambda: len(ring) == 1 or focus() != [to])
        press(f"alt+{key}")
        expect(f"the focus after Alt+{key} in {window.name}", focus, [to])
    if len(ring) < 2:
        return
    start = ring.index(focus()[0])
    for keys, step in ("Tab", 1), ("shift+Tab", -1):
        for i in range(1, len(ring) + 1):
            ear.heard.clear()
            press(keys)
            there = ring[(start + step * i) % len(ring)]
            ear.expect("state-changed:focused", there)
            expect(f"the focus after {keys} in {window.name}", focus, [there])


class Desk:
    def __init__(self, program):
        self.program, self.ear, self.at = program, Ear(), 0
        self.launcher = self.take(LAUNCHER)

    def take(self, row):
        mark, title, name, table, ring, keys = row
        window = self.program.window(title, mark)
        window.move(20 + self.at % 3 * 520, 20 + self.at // 3 * 380)  # where none covers another
        self.at += 1
        find_and_read(window, name, table)
        if ring:
            walk_by_keys(self.ear, window, ring, keys)
        return window

    def open(self, button, row):
        self.launcher.button(button).act()
        return self.take(row)

    @staticmethod
    def roll(window):
        full = 321 if window.name == METER[2] else window.bounds[3]
        for glyph, height in ("_", 32), ("=", full):
            window.button(glyph).act()
            expect(f"{window.name} after {glyph!r}", lambda: window.bounds[3], height)

    def close(self, window, opener, *buttons):
        """Each way away, and back by the launcher."""
        self.roll(window)
        for button in buttons:
            window.button(button).act()
            expect(f"{window.name} after {button!r}", lambda: window.showing, False)
            self.launcher.button(opener).act()
            expect(f"{window.name} after {opener!r}", lambda: window.showing, True)
        window.activate()
        press("alt+F4")
        expect(f"{window.name} after Alt+F4", lambda: window.showing, False)


def changes(what, probe, act):
    """What is drawn at random may come out the same a few times."""
    before = probe()
    for _ in range(20):
        act()
        if probe() != before:
            return
    raise Failure(f"{what}: always {before!r}")


def use_dice(desk):
    window = desk.open("Dice Roller", DICE)
    for box in "Number", "Sides":
        Atspi.EditableText.set_text_contents(window.box(box).accessible, "99")
    desk.ear.heard.clear()
    window.button("Roll Dice !").act()
    expect("the roll", lambda: window.box("Result").text.split("\n")[0], "Dice:    99D99 +1")
    desk.ear.expect("text-changed:insert", "Result")
    window.button("Copy Result").act()
    expect("the copied roll", clipboard, window.box("Result").text.replace("\n", "\r\n"))
    use_list(window)
    result = window.box("Result")
    press("alt+r", "Down")  # a text that cannot be changed can be walked through
    second = result.text.index("\n") + 1
    expect("the place in the result", lambda: Atspi.Text.get_caret_offset(result.accessible), second)
    press("shift+End")
    expect("the selection", lambda: Atspi.Text.get_selection(result.accessible, 0).end_offset - second,
           len(result.text.split("\n")[1]))
    desk.close(window, "Dice Roller", "Close", "x")


def use_list(window):
    """An open list tells that it is open and which entry is chosen; Escape leaves, Return takes."""
    sign = window.list("Plus")
    press("alt+p", "alt+Down")
    view = wait_for("the open list", lambda: [view for view in sign.controls() if view.showing])[0]
    for key, entry in ("Down", "-"), ("Up", "+"), ("Down", "-"):
        press(key)
        expect("the chosen entry", lambda: [
            e.name for e in view.controls() if e.has(Atspi.StateType.SELECTED)], [entry])
        if not sign.has(Atspi.StateType.EXPANDED):
            raise Failure("an open list does not say that it is open")
    press("Escape")
    expect("the list after Escape", lambda: (view.showing, sign.description), (False, "+"))
    press("alt+Down")
    wait_for("the open list", lambda: view.showing)
    press("Down", "Return")
    expect("the list after Return", lambda: (view.showing, sign.description), (False, "-"))
    expect("the focus after the list", lambda: window.focus, ["Plus"])
    press("Up")
    expect("the closed list after Up", lambda: sign.description, "+")


def use_range(desk):
    window = desk.open("Dice Reverse", RANGE)
    result = window.box("Result")
    window.button("Get Dice").act()
    expect("the notation", lambda: result.text, "1D6  Chk: 1 - 6")
    window.check("Auto").act("Toggle")
    expect("Auto", lambda: window.check("Auto").checked, True)
    desk.close(window, "Dice Reverse", "x")


def use_stats(desk):
    generator = desk.open("Stats Min/Max Generator", GENERATOR)
    lists = [generator.list(name) for name in ("Sex", "Race", "Class")]
    changes("the selection", lambda: [each.description for each in lists], generator.button("Randomize").act)
    chosen = " ".join(each.description for each in lists)
    expect("the counted selection", lambda: generator.box("Result").text.split("\n")[0], chosen)
    generator.button("Copy Result").act()
    expect("the copied result", clipboard, generator.box("Result").text.replace("\n", "\r\n"))
    desk.close(generator, "Stats Min/Max Generator", "Close", "x")

    counter = desk.open("Stats Counter", COUNTER)
    cells = {(c.description, outline(c.name)): c for c in counter.controls()}
    for stat in STATISTICS.split(" | "):
        value = cells[stat, "#"]
        before = int(value.name)
        for sign, now in ("+", before + 1), ("-", before):
            cells[stat, sign].act()
            expect(f"{stat} after {sign}", lambda: int(value.name), now)
            desk.ear.expect("property-change:accessible-name", str(now))
    changes("the sheet", lambda: counter.box("Result").text, counter.button("Randomize").act)
    counter.button("Copy Result").act()
    expect("the copied sheet", clipboard, counter.box("Result").text.replace("\n", "\r\n"))
    desk.close(counter, "Stats Counter", "Close", "x")


def use_meter(desk, home):
    meter = desk.open("Alingments", METER)
    display, question = meter.find("image", "Display"), meter.box("Question and ansvers")
    for i in range(1, 5):
        next(c for c in meter.controls() if c.name.startswith(f"{i}.)")).act()
        expect("the next question", lambda: question.text.split("\n")[0], f"{i + 1} of 24")
    if not re.fullmatch(r"Good -?\d+, Evil -?\d+, Law -?\d+, Chaos -?\d+", display.description):
        raise Failure(f"the display reads {display.description!r}")
    meter.button("Editor").act()
    editor = desk.take(EDITOR)
    for button, number in (("Open", "1/24"), (">>", "2/24"), (">>|", "24/24"), ("<<", "23/24"), ("|<<", "1/24"),
                           ("Add >|", "25/25"), ("Del >|", "24/24"), ("Clear", "1/1")):
        editor.button(button).act()
        expect(f"the number after {button!r}", lambda: editor.has_label(number), True)
    file = home / ".local/share/orvane/questions.ini"
    editor.button("Save").act()
    wait_for("the saved file", file.exists)
    editor.activate()
    press("alt+F4")
    expect("the windows after Alt+F4", lambda: any(
        w.name == EDITOR[2] for w in desk.program.accessible_windows()), False)
    desk.close(meter, "Alingments", "x")


def use_weapons(desk):
    window = desk.open("Weapons", WEAPONS)
    changes("the weapon", lambda: window.box("Result").text, window.button("Get Weapon").act)
    desk.close(window, "Weapons", "x")


def check(path):
    with desktop() as home:
        desk = Desk(Program(path, home))
        desk.launcher.button("Dice Roller").hover()
        desk.ear.expect("property-change:accessible-name", "Will roll your favourite dice like 3D5-3")
        for use in use_dice, use_range, use_stats, use_weapons:
            use(desk)
        use_meter(desk, home)
        desk.roll(desk.launcher)
        for button in "Exit", "x":
            program = desk.program if button == "Exit" else Program(path, home)
            launcher = program.window(LAUNCHER[1], LAUNCHER[0])
            try:
                launcher.button(button).act()
            except GLib.Error:
                pass  # the program may end before it answers
            program.expect_end()


if __name__ == "__main__":
    main(check)
