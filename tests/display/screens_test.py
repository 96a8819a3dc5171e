"""On several screens a window comes up in the middle of the one with the pointer, a list opens within its
screen, and a window whose screen has gone comes back on one that is there.

usage: screens_test.py PROGRAM
"""

import subprocess

from desktop import Failure, desktop, expect, main, wait_for, xdotool
from program import Atspi, Program

LEFT, RIGHT = (0, 0, 800, 600), (800, 200, 800, 1000)
LAUNCHER = "Orvane Stats Generator", "Exit"


def set_screens(**screens):
    for name, (left, top, width, height) in screens.items():
        place = f"{width}/{width // 4}x{height}/{height // 4}+{left}+{top}"
        # The first takes the server's only output.
        subprocess.run(["xrandr", "--setmonitor", name, place, "none" if name != "left" else "screen"], check=True)


def middle(screen, window):
    return tuple(at + (length - own) // 2 for at, length, own in zip(screen, screen[2:], window.bounds[2:]))


def expect_middle(window, screen):
    expect(f"the place of {window.name}", lambda: window.bounds[:2], middle(screen, window))
    print(f"{window.name}: {window.bounds} in the middle of {screen}")


def check(path):
    with desktop() as home:
        set_screens(left=LEFT, right=RIGHT)
        xdotool("mousemove", 1500, 1100)
        program = Program(path, home)
        launcher = program.window(*LAUNCHER)
        expect_middle(launcher, RIGHT)

        launcher.button("Stats Min/Max Generator").click()
        stats = program.window("Orvane Stats Generator", "Randomize")
        expect_middle(stats, RIGHT)
        stats.move(RIGHT[0] - 60, 560)
        classes = stats.list("Class")
        classes.click()
        view = wait_for("the open list", lambda: [view for view in classes.controls() if view.showing])[0]
        left, top, width, height = view.place
        if not any(s[0] <= left and left + width <= s[0] + s[2] and s[1] <= top and top + height <= s[1] + s[3]
                   for s in (LEFT, RIGHT)):
            raise Failure(f"the list {view.place} of {stats.bounds} reaches over the edge of a screen")
        print(f"the list of {stats.bounds} opens at {view.place}")
        xdotool("key", "Escape")

        # Without the pointer, which is elsewhere.
        xdotool("mousemove", 100, 500)
        Atspi.Action.do_action(launcher.button("Dice Roller").accessible, 0)
        dice = program.window("Orvane Stats Generator", "Roll Dice !")
        expect_middle(dice, LEFT)

        dice.move(1300, 900)
        dice.button("x").click()
        xdotool("mousemove", 100, 500)
        subprocess.run(["xrandr", "--delmonitor", "right"], check=True)
        Atspi.Action.do_action(launcher.button("Dice Roller").accessible, 0)
        expect_middle(program.window("Orvane Stats Generator", "Roll Dice !"), LEFT)


if __name__ == "__main__":
    main(check)
