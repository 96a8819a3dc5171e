"""What was copied outlives the program on a desktop with a clipboard manager that asks for it at the end.
One that hangs holds nobody up.

usage: clipboard_test.py PROGRAM
"""

import ctypes
import signal
import subprocess

from desktop import clipboard, desktop, expect, main, start, wait_for
from program import Program


def manager_is_there():
    x11 = ctypes.CDLL("libX11.so.6")
    x11.XOpenDisplay.restype = ctypes.c_void_p
    x11.XInternAtom.restype = x11.XGetSelectionOwner.restype = ctypes.c_ulong
    display = ctypes.c_void_p(x11.XOpenDisplay(None))
    name = ctypes.c_ulong(x11.XInternAtom(display, b"CLIPBOARD_MANAGER", False))
    owner = x11.XGetSelectionOwner(display, name)
    x11.XCloseDisplay(display)
    return owner != 0


def copy_and_leave(path, home, manager=None):
    program = Program(path, home)
    launcher = program.window("Orvane Stats Generator", "Exit")
    launcher.move(0, 0)
    launcher.button("Dice Roller").click()
    dice = program.window("Orvane Stats Generator", "Roll Dice !")
    roll = dice.box("Result").text.replace("\n", "\r\n")
    dice.button("Copy Result").click()
    expect("the copied roll", clipboard, roll)
    if manager:
        manager.send_signal(signal.SIGSTOP)
    launcher.button("Exit").click()
    program.expect_end(seconds=2)
    return roll


def check(path):
    with desktop() as home:
        manager = start("xfsettingsd", "--no-daemon", stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        wait_for("the clipboard manager", manager_is_there)
        roll = copy_and_leave(path, home)
        expect("the copied roll after the end", clipboard, roll)
        copy_and_leave(path, home, manager)  # that hangs
        manager.kill()


if __name__ == "__main__":
    main(check)
