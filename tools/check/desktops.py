"""The program under window managers of different kinds.

usage: desktops.py PROGRAM FOLDER MANAGER

Prints a line for each check with what it saw and leaves pictures of the whole screen in FOLDER. Fails if a
check fails.
"""

import functools
import pathlib
import subprocess
import time

from Xlib import X, Xutil, display
from Xlib.protocol import event

from desktop import Failure, desktop, expect, main, wait_for, xdotool
from program import Program
from tour import LAUNCHER, Walk, drag

MANAGERS = {
    "openbox": (),
    # A file of the user's own keeps the question for one off the screen.
    "i3": ("sh", "-c", "mkdir -p ~/.config/i3; cp /etc/i3/config ~/.config/i3; exec i3"),
    "xfwm4": ("sh", "-c", "xfsettingsd --replace --no-daemon & exec xfwm4 --compositor=on"),
    "mutter": ("mutter", "--x11"),
}
SCREEN = 1600, 1200
TOOLS = (  # title, button on the launcher, a button of the tool
    ("Orvane Stats Generator", "Dice Roller", "Roll Dice !"),
    ("Range To Dice", "Dice Reverse", "Get Dice"),
    ("Range To Dice", "Weapons", "Get Weapon"),
    ("Form1", "Alingments", "Editor"),
)
WITHOUT_MINIMISE = {"i3"}


class Server:
    """The display server's and the window manager's side of the windows."""

    def __init__(self):
        self.display = display.Display()
        self.root = self.display.screen().root

    def window(self, number):
        return self.display.create_resource_object("window", number)

    def outer(self, number):
        """The window with all that is put round it."""
        window = self.window(number)
        while (tree := window.query_tree()).parent != self.root:
            window = tree.parent
        return window

    def property(self, number, name):
        found = self.window(number).get_full_property(self.display.intern_atom(name), X.AnyPropertyType)
        return list(found.value) if found else []

    def states(self, number):
        return {self.display.get_atom_name(atom) for atom in self.property(number, "_NET_WM_STATE")}

    def over(self, number, other):
        order = [window.id for window in self.root.query_tree().children]
        return order.index(self.outer(number).id) > order.index(self.outer(other).id)

    def ask(self, number, message, *data):
        """Sends the window manager a message about a window, as a task list does."""
        data = list(data) + [0] * (5 - len(data))
        self.root.send_event(event.ClientMessage(window=self.window(number), data=(32, data),
                             client_type=self.display.intern_atom(message)),
                             event_mask=X.SubstructureRedirectMask | X.SubstructureNotifyMask)
        self.display.sync()

    def plain_window(self, *place):
        """An ordinary window of another program, once a window manager has it."""
        def managed():
            # One that comes while the window manager starts may be overlooked.
            window = self.root.create_window(*place, 0, X.CopyFromParent, background_pixel=0x305070)
            window.set_wm_name("Another program")
            window.set_wm_normal_hints(flags=Xutil.USPosition | Xutil.USSize)
            window.map()
            self.display.sync()
            time.sleep(0.5)
            if self.property(window.id, "WM_STATE"):
                return window.id
            window.destroy()
            return None

        return wait_for("the window manager", managed)


class Desk:
    """A started program on a desktop, and how its checks went."""

    def __init__(self, name, folder, server, program):
        self.name, self.folder, self.server = name, pathlib.Path(folder), server
        self.walk = Walk(program, self.folder)
        self.program = program
        self.launcher = self.walk.launcher

    def open(self, title, button, own):
        self.launcher.activate()
        time.sleep(0.2)  # a press that comes with the activation is older than it to some window managers
        self.launcher.button(button).click()
        return self.program.window(title, own)

    def picture(self, what):
        subprocess.run(["import", "-silent", "-window", "root", self.folder / f"{self.name}-{what}.png"], check=True)


failures = 0


def report(name, what, check, *arguments):
    """Runs a check and prints what it saw."""
    global failures
    try:
        saw = check(*arguments)
    except Failure as failure:
        failures += 1
        saw = f"FAILED: {failure}"
    print(f"{name:9} {what:22} {saw}", flush=True)


def middle(box, screen=(0, 0, *SCREEN)):
    return screen[0] + (screen[2] - box[2]) // 2, screen[1] + (screen[3] - box[3]) // 2


def check_centred(program):
    launcher = program.window(*LAUNCHER)
    expect("the launcher's place", lambda: launcher.bounds[:2], middle(launcher.bounds))
    expect("the active window", lambda: xdotool("getactivewindow"), str(launcher.number))
    return f"the launcher came up at {launcher.bounds[:2]} and is active"


def check_frames(desk, windows):
    server = desk.server
    for window in windows:
        outer, own = server.outer(window.number).get_geometry(), window.bounds
        if (outer.width, outer.height) != own[2:] or any(server.property(window.number, "_NET_FRAME_EXTENTS")):
            raise Failure(f"{window.name} has a frame: {outer} round {own}")
        if window.number not in server.root.get_full_property(
                server.display.intern_atom("_NET_CLIENT_LIST"), X.AnyPropertyType).value:
            raise Failure(f"{window.name} is not in the list of windows")
        if left_out := server.states(window.number) & {"_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER"}:
            raise Failure(f"{window.name}: {left_out}")
    return "no frame and listed: " + ", ".join(f"{w.bounds[2]}x{w.bounds[3]}" for w in windows)


def check_on_top(desk, windows, plain):
    for how in "raised", "activated":
        if how == "raised":
            desk.server.window(plain).configure(stack_mode=X.Above)
            desk.server.display.sync()
        else:
            desk.server.ask(plain, "_NET_ACTIVE_WINDOW", 2)
            expect("the active window", lambda: xdotool("getactivewindow"), str(plain))
        time.sleep(0.3)
        if under := [w.name for w in windows if not desk.server.over(w.number, plain)]:
            raise Failure(f"another program's window, {how}, covers {under}")
    return f"{len(windows)} windows stay over another program's that is raised, then activated"


def check_drag(desk, window):
    title = next(c for c in window.controls() if c.role == "label" and c.place[1] == window.bounds[1] + 8)
    drag(window, title)
    # A burst of moves to the right and down: the window may only follow, and ends where it was last asked to.
    desk.server.window(window.number).change_attributes(event_mask=X.StructureNotifyMask)
    desk.server.display.sync()
    title.hover()
    x, y = (int(part.split(":")[1]) for part in xdotool("getmouselocation").split()[:2])
    first = window.bounds
    xdotool("mousedown", 1, *(word for i in range(300) for word in ("mousemove", x + 1 + i, y + 1 + i // 2, "sleep", 0.002)),
            "mouseup", 1)
    notes, server = [], desk.server.display
    while (time.sleep(0.5) or server.pending_events()):
        notes += [server.next_event() for _ in range(server.pending_events())]
    moved = [(note.x, note.y) for note in notes if note.type == X.ConfigureNotify and (note.send_event or note.x)]
    back = [pair for pair in zip(moved, moved[1:]) if pair[1][0] < pair[0][0] or pair[1][1] < pair[0][1]]
    if back or not first[0] < window.bounds[0] <= first[0] + 300 or moved[-1:] != [window.bounds[:2]]:
        raise Failure(f"from {first[:2]} to {window.bounds[:2]}, last seen at {moved[-1:]}, backwards {back}")
    desk.server.window(window.number).change_attributes(event_mask=0)
    title.click()
    if (rest := window.bounds[:2]) != moved[-1]:
        raise Failure(f"a click on the title moves the window from {moved[-1]} to {rest}")
    return f"follows by a fifteenth; 300 moves: {first[:2]} to {rest} in {len(moved)} steps, none backwards"


def check_roll(desk, windows):
    for window in windows:
        left, top, width, height = window.bounds
        for glyph, wanted in (("_", 32), ("=", None)):
            window.button(glyph).click()
            wanted = wanted or {305: 321 if window.name == "Orvane Alingment meter" else 305}.get(height, height)
            expect(f"{window.name} after {glyph}", lambda: window.bounds, (left, top, width, wanted))
            outer = desk.server.outer(window.number)
            expect("the room of the window manager", lambda: outer.get_geometry().height, wanted)
            if glyph == "_":
                desk.picture("rolled")
    return "32 pixels high and back at the same place: " + ", ".join(w.name for w in windows)


def check_keys(desk, window):
    expect("the active window", lambda: xdotool("getactivewindow"), str(window.number))
    expect("the focus", lambda: window.focus, ["Number"])
    xdotool("key", "7")
    expect("what was typed at once", lambda: window.box("Number").text, "71")
    return "typed right after opening: " + window.box("Number").text


def check_hidden(desk, tool, window):
    window.button("Roll Dice !").click()
    kept, notes = window.box("Result").text, ""
    for how in "x", "the window manager", "a task list's minimise", "x", "x":
        place = window.bounds
        if how == "x":
            window.button("x").click()
        elif how == "the window manager":
            desk.server.ask(window.number, "_NET_CLOSE_WINDOW", X.CurrentTime, 2)
        else:
            xdotool("windowminimize", window.number)
        if "minimise" not in how:
            expect(f"the window closed by {how}", lambda: window.number in desk.program.window_numbers(), False)
        elif desk.name not in WITHOUT_MINIMISE:
            expect("a minimised window", lambda: desk.server.property(window.number, "WM_STATE")[:1], [Xutil.IconicState])
        time.sleep(0.2)
        again = desk.open(*tool)
        time.sleep(0.3)
        if "minimise" in how and "_NET_WM_STATE_DEMANDS_ATTENTION" in desk.server.states(window.number):
            # A window manager may take a minimised window's wish to come back for a theft of the focus.
            notes = ", minimised: at the second press"
            again = desk.open(*tool)
        expect(f"place and text after {how}", lambda: (again.bounds, again.box("Result").text), (place, kept))
        expect(f"the active window after {how}", lambda: xdotool("getactivewindow"), str(again.number))
        window = again
    return f"back at {window.bounds[:2]} with its text after x, closing and minimising from outside{notes}"


def check_editor(desk, window):
    window.button("Editor").click()
    editor = desk.program.window("Question Editor (ini version 1.0a )", "Open")
    server, shape = desk.server, editor.bounds
    outer = wait_for("the editor's frame", lambda: (
        frame := server.outer(editor.number).get_geometry()).height > shape[3] and (frame.width, frame.height))
    if server.states(editor.number) & {"_NET_WM_STATE_ABOVE"}:
        raise Failure("the editor stays on top")
    actions = {server.display.get_atom_name(atom) for atom in server.property(editor.number, "_NET_WM_ALLOWED_ACTIONS")}
    if wrong := {action for action in actions if "MAXIMIZE" in action or "RESIZE" in action}:
        raise Failure(f"the editor allows {wrong}")
    desk.picture("editor")
    return f"{shape[2]}x{shape[3]} in a frame of {outer[0]}x{outer[1]}, neither maximised nor resized"


def check(path, folder, name):
    folder = pathlib.Path(folder).absolute()
    folder.mkdir(parents=True, exist_ok=True)
    with desktop(*MANAGERS[name]) as home:
        server = Server()
        plain = server.plain_window(20, 20, 1500, 1000)
        program = Program(path, home)
        say = functools.partial(report, name)
        say("centred, focus", check_centred, program)
        desk = Desk(name, folder, server, program)
        dice = desk.open(*TOOLS[0])
        say("keys", check_keys, desk, dice)
        desk.walk.place(dice)
        windows = [desk.launcher, dice] + [desk.walk.place(desk.open(*tool)) for tool in TOOLS[1:]]
        say("frames, task list", check_frames, desk, windows)
        say("stay on top", check_on_top, desk, windows, plain)
        desk.picture("all")
        say("roll up and down", check_roll, desk, windows)
        say("drag", check_drag, desk, windows[2])
        say("hide and come back", check_hidden, desk, TOOLS[0], dice)
        say("editor", check_editor, desk, windows[-1])
        server.ask(desk.launcher.number, "_NET_CLOSE_WINDOW", X.CurrentTime, 2)
        say("close the launcher", lambda: program.expect_end() or "the program ends with 0")
    if failures:
        raise Failure(f"{failures} checks failed")


if __name__ == "__main__":
    main(check)
