"""An idle program does nothing at all: none of its threads runs, so none can make a system call. With the
focus in a text box only the cursor blinks.

usage: idle.py PROGRAM [SECONDS]

With a number of seconds it looks that long at several states of the program, counts system calls as well, and
prints what it counted.
"""

import collections
import pathlib
import re
import signal
import subprocess
import time

from desktop import Failure, desktop, expect, main, press, wait_for, xdotool
from program import Program
from faults import TOOLS, Session, surroundings, wait_for_silence


def runs(program):
    """For each thread how often it began to run, and how often it gave way, as the kernel counts."""
    counted = {}
    for task in pathlib.Path(f"/proc/{program.process.pid}/task").iterdir():
        switches = re.findall(r"ctxt_switches:\s*(\d+)", (task / "status").read_text())
        counted[task.name] = int((task / "schedstat").read_text().split()[2]), *map(int, switches)
    return counted


def count_runs(program, seconds):
    before = runs(program)
    time.sleep(seconds)
    after = runs(program)
    if before.keys() != after.keys():
        raise Failure(f"threads came or went: {before.keys() ^ after.keys()}")
    return sum(after[thread][0] - before[thread][0] for thread in before), \
        sum(sum(after[thread][1:]) - sum(before[thread][1:]) for thread in before)


def count_calls(program, home, seconds):
    """The system calls of all threads by name, or nothing if this machine lets no process be traced."""
    log = home / "calls"
    tracer = subprocess.Popen(["strace", "-f", "-o", log, "-p", str(program.process.pid)],
                              stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
    if "attached" not in tracer.stderr.readline():
        tracer.wait()
        return None
    time.sleep(1)
    # What each thread was waiting in when it was attached to shows as a call that goes on.
    known = log.read_text().count("\n")
    time.sleep(seconds)
    lines = [line for line in log.read_text().split("\n")[known:-1] if "resuming interrupted" not in line]
    tracer.send_signal(signal.SIGINT)
    tracer.wait()
    return collections.Counter(call[1] for line in lines if (call := re.match(r"\d+ +(\w+)\(", line)))


def expect_idle(what, program, home, seconds, blinks=False, counts=True):
    wait_for_silence(program)
    time.sleep(0.5)
    run, switched = count_runs(program, seconds)
    calls = counts and count_calls(program, home, seconds)
    told = f"; {sum(calls.values())} system calls {dict(calls) or ''}" if counts and calls is not None else \
        "; system calls NOT COUNTED: no process can be traced here" if counts else ""
    print(f"{what:46} {seconds:g} s: {run} runs, {switched} switches of all threads{told}", flush=True)
    if counts and calls is None:
        raise Failure("no system calls can be counted on this machine")
    if not blinks and (run or switched or calls):
        raise Failure(f"{what}: not idle")


def check_without_assistance(path, home, seconds):
    program = Program(path, home)
    number = wait_for("the launcher", program.window_numbers)[0]
    xdotool("mousemove", "--window", number, 100, 96, "click", 1)
    wait_for("the dice roller", lambda: len(program.window_numbers()) == 2)
    xdotool("windowactivate", "--sync", number, "mousemove", 1500, 1100)
    expect_idle("without assistive technology, a tool open", program, home, seconds)


def check_states(path, home, seconds):
    session = Session(path, home)
    xdotool("mousemove", 1500, 1100)
    expect_idle("the launcher", session.program, home, seconds)
    windows = []
    for number, (tool, (_, button, _)) in enumerate(TOOLS.items()):
        windows.append(session.open(tool, 250 + number % 3 * 370, number // 3 * 420))
        windows[-1].activate()
        if tool != "Alingments":
            windows[-1].button(button).click()
    # No box of the launcher takes the focus.
    session.launcher.activate()
    xdotool("mousemove", 1500, 1100)
    expect_idle("all tools open and used", session.program, home, seconds)
    # Caches of a toolkit are looked through as late as that.
    expect_idle("half a minute later", session.program, home, 30, counts=False)
    for window in windows:
        window.activate()
        window.button("x").click()
    session.launcher.activate()
    session.launcher.button("_").click()
    xdotool("mousemove", 1500, 1100)
    expect_idle("all tools closed, the launcher rolled up", session.program, home, seconds)
    session.launcher.button("=").click()
    dice = session.open("Dice Roller")
    dice.activate()
    press("alt+n")
    expect("the focus", lambda: dice.focus, ["Number"])
    expect_idle("a text box with the focus: the cursor", session.program, home, seconds, blinks=True)
    session.leave()


def check(path, seconds=None):
    with desktop() as home:
        if seconds:
            check_states(path, home, float(seconds))
            bus = f"unix:path={home}/none"
            with surroundings(QT_LINUX_ACCESSIBILITY_ALWAYS_ON=None, DBUS_SESSION_BUS_ADDRESS=bus):
                check_without_assistance(path, home, float(seconds))
        else:
            session = Session(path, home)
            session.press_quickly()  # the sounds of these are short, and end that of the start
            expect_idle("the launcher", session.program, home, 3, counts=False)
            session.leave()


if __name__ == "__main__":
    main(check)
