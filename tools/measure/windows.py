#!/usr/bin/python3
"""How long the program takes from a click to what the click is for, seen from outside, on the display at hand.

usage: windows.py PROGRAM [ROUNDS]
Prints the memory with all tools open, for each tool the time from the click on its button to its window on the screen (first opening), and for the
dice roller the time from the press of "Roll Dice !" to the first change of its picture. Needs a display without
other windows (Xvfb serves) and Debian's python3-xlib.
"""
import statistics, subprocess, sys, time
from Xlib import X, display
from Xlib.ext import xtest

BUTTONS = {"Stats Min/Max Generator": 72, "Dice Roller": 96, "Stats Counter": 120, "Alingments": 144,
           "Dice Reverse": 168, "Weapons": 192}
LAUNCHER = (209, 273)


class Program:
    def __init__(self, command):
        self.screen = display.Display()
        self.root = self.screen.screen().root
        self.root.change_attributes(event_mask=X.SubstructureNotifyMask)
        self.screen.sync()
        self.process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.launcher = self.next_window()
        time.sleep(0.5)

    def next_window(self):
        while True:
            event = self.screen.next_event()
            if event.type == X.MapNotify and event.window.get_geometry().width > 50:
                return event.window

    def click(self, window, x, y):
        """Presses at a place of a window; returns the moment of the release, which is what acts."""
        corner = window.get_geometry()
        xtest.fake_input(self.screen, X.MotionNotify, x=corner.x + x, y=corner.y + y)
        xtest.fake_input(self.screen, X.ButtonPress, 1)
        self.screen.sync()
        time.sleep(0.05)
        start = time.perf_counter()
        xtest.fake_input(self.screen, X.ButtonRelease, 1)
        self.screen.sync()
        return start

    def close(self):
        self.process.kill()
        self.process.wait()
        self.screen.close()


def first_opening(command, y):
    program = Program(command)
    start = program.click(program.launcher, 100, y)
    program.next_window()
    took = time.perf_counter() - start
    program.close()
    return took * 1000


def press_to_text(command):
    program = Program(command)
    program.click(program.launcher, 100, BUTTONS["Dice Roller"])
    dice = program.next_window()
    time.sleep(0.3)

    def result():
        return dice.get_image(136, 170, 16, 12, X.ZPixmap, 0xFFFFFFFF).data  # the number behind "Result of roll: "

    times = []
    for _ in range(10):
        before = result()
        start = program.click(dice, 110, 200)
        while result() == before and time.perf_counter() - start < 1:
            pass
        took = time.perf_counter() - start
        if took < 1:  # the same roll again shows no change
            times.append(took * 1000)
        time.sleep(0.1)
    program.close()
    return statistics.median(times)


def memory(command):
    """Memory of the program with all tools open, in MiB."""
    program = Program(command)
    for y in BUTTONS.values():
        program.click(program.launcher, 100, y)
        time.sleep(0.5)
        program.launcher.configure(stack_mode=X.Above)
    time.sleep(0.6)
    with open(f"/proc/{program.process.pid}/smaps_rollup") as rollup:
        sizes = dict(line.split(":") for line in list(rollup)[1:])
    program.close()
    return [int(sizes[key].split()[0]) / 1024 for key in ("Rss", "Pss")]


def main():
    command, rounds = sys.argv[1:2], int(sys.argv[2]) if len(sys.argv) > 2 else 5
    for name, y in BUTTONS.items():
        times = [first_opening(command, y) for _ in range(rounds)]
        print(f"first opening  {name:24s} ms min {min(times):6.1f} median {statistics.median(times):6.1f}   budget 50")
    print("all tools open  rss MiB {:6.1f}   pss MiB {:6.1f}".format(*memory(command)))
    print(f"press to text  {'Roll Dice !':24s} ms median {press_to_text(command):6.1f}   budget 5")


main()
