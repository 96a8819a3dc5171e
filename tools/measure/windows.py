"""The program as a stop-watch beside it sees it: from exec to the launcher on the screen, from a click to a
window or a text, the memory, and how often an idle program wakes up. Needs a display without other windows
(Xvfb serves)."""
import contextlib
import pathlib
import select
import subprocess
import sys
import time

from Xlib import X, display
from Xlib.ext import xtest

# Of each tool its button in the launcher, how many windows come up (its own is the last), a button of its
# window that gives a text, and the box of this text: left, top, width, height.
TOOLS = {
    "Stats Min/Max Generator": ((100, 72), 1, (64, 192), (128, 48, 209, 177)),
    "Dice Roller": ((100, 96), 1, (110, 200), (8, 104, 193, 81)),
    "Stats Counter": ((100, 120), 2, (270, 219), (216, 28, 121, 177)),
    "Alingments": ((100, 144), 1, (60, 168), (8, 48, 273, 105)),
    "Dice Reverse": ((100, 168), 1, (120, 64), (48, 80, 153, 19)),
    "Weapons": ((100, 192), 1, (140, 40), (8, 72, 265, 219)),
}
PATIENCE = 20  # seconds
NOTHING_CHANGED = 0.5  # seconds after which a press counts as one that gave the same text again


class Program:
    """A started program. `started` is the time from exec to its first window on the screen, in
    milliseconds."""

    def __init__(self, command):
        self.screen = display.Display()
        self.root = self.screen.screen().root
        self.root.change_attributes(event_mask=X.SubstructureNotifyMask)
        self.screen.sync()
        start = time.perf_counter()
        self.process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.launcher = self.next_window()
        self.started = (time.perf_counter() - start) * 1000
        time.sleep(0.6)

    def next_window(self):
        """The next window that comes to the screen, but for tips and the like."""
        while self.screen.pending_events() or select.select([self.screen], [], [], PATIENCE)[0]:
            event = self.screen.next_event()
            with contextlib.suppress(Exception):  # it may be gone again
                if event.type == X.MapNotify and event.window.get_geometry().width > 50:
                    return event.window
        sys.exit(f"no window within {PATIENCE} s")

    def click(self, window, x, y):
        """Presses at a place of a window and gives the moment of the release, which is what acts."""
        corner = window.get_geometry()
        xtest.fake_input(self.screen, X.MotionNotify, x=corner.x + x, y=corner.y + y)
        xtest.fake_input(self.screen, X.ButtonPress, 1)
        self.screen.sync()
        time.sleep(0.05)
        start = time.perf_counter()
        xtest.fake_input(self.screen, X.ButtonRelease, 1)
        self.screen.sync()
        return start

    def open(self, tool):
        """Opens a tool from the launcher. Gives its window and the time to it, in milliseconds."""
        self.launcher.configure(stack_mode=X.Above)
        button, windows, *_ = TOOLS[tool]
        start = self.click(self.launcher, *button)
        for _ in range(windows):
            window = self.next_window()
        took = (time.perf_counter() - start) * 1000
        time.sleep(0.3)
        return window, took

    def press(self, window, tool):
        """Presses the tool's button. Gives the time to the changed text, in milliseconds; None if it is
        the same."""
        *_, button, text = TOOLS[tool]

        def picture():
            return window.get_image(*text, X.ZPixmap, 0xFFFFFFFF).data

        before = picture()
        start = self.click(window, *button)
        while picture() == before:
            if time.perf_counter() - start > NOTHING_CHANGED:
                return None
        took = (time.perf_counter() - start) * 1000
        time.sleep(0.05)
        return took

    def memory(self, kinds):
        """The sizes of these kinds in MiB."""
        rollup = pathlib.Path(f"/proc/{self.process.pid}/smaps_rollup").read_text().splitlines()[1:]
        sizes = dict(line.split(":") for line in rollup)
        return [int(sizes[key].split()[0]) / 1024 for key in kinds]

    def wake_ups(self):
        """How often the threads of the process have run and gone to sleep again so far."""
        statuses = pathlib.Path(f"/proc/{self.process.pid}/task").glob("*/status")
        return sum(int(line.split()[1]) for status in statuses for line in status.read_text().splitlines()
                   if "ctxt_switches" in line)

    def idle_wake_ups(self, seconds):
        """The wake-ups in so many seconds, once the sounds are over, with the focus in no text box."""
        self.launcher.set_input_focus(X.RevertToParent, X.CurrentTime)
        self.screen.sync()
        for _ in range(60):
            before = self.wake_ups()
            time.sleep(1)
            if self.wake_ups() == before:
                break
        before = self.wake_ups()
        time.sleep(seconds)
        return self.wake_ups() - before

    def close(self):
        self.process.kill()
        self.process.wait()
        self.screen.close()
