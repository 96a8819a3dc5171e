"""The walk through the two statistics windows."""

import re

from desktop import Failure, clipboard, expect


def column(window, role, pattern):
    """The controls of a column of the grid, from the top."""
    found = [control for control in window.controls() if control.role == role and re.fullmatch(pattern, control.name)]
    return sorted(found, key=lambda control: control.place[1])


def frmStatsGenerator(walk, window):
    result = window.box("Result")
    expect("the first selection", lambda: result.text.split("\n")[:3],
           ["Male Human Warrior", "Stats        Min  Max  Bon", "Strength      11   29   +2"])
    window.list("Sex").choose("Female")
    window.list("Race").choose("Elf")
    window.list("Class").choose("Mage")
    expect("the selection", lambda: result.text.split("\n")[:3],
           ["Female Elf Mage", "Stats        Min  Max  Bon", "Strength       1   14   -3"])
    expect("the status", lambda: window.status, "Choose your class here.")
    walk.tell("frmStatsGenerator", result.text)
    walk.photograph("frmStatsGenerator", window)
    window.button("Copy Result").click()
    expect("the copied result", clipboard, result.text.replace("\n", "\r\n"))


def frmStatsCounter(walk, window):
    sheet = window.box("Result")

    def strength():
        return int(sheet.text.split("\n")[0].removeprefix("Strength"))

    low, high = map(int, column(window, "label", r"\d+-\d+")[0].name.split("-"))
    if (low, high) != (1, 14):
        raise Failure(f"the grid shows {low}-{high} for a Strength of 1 to 14")
    plus = column(window, "push button", r"\+")[0]
    total = int(sheet.text.split("\n")[9].removeprefix("Total"))
    for value in range(strength() + 1, high + 1):
        plus.click()
        expect("the Strength", strength, value)
        total += 1
        expect("the sheet", lambda: [line.split() for line in sheet.text.split("\n")[9:]],
               [["Total", str(total)], ["Left", str(81 - total)]])
    shown = sheet.text
    plus.click()
    plus.click()
    column(window, "push button", "-")[0].click()
    expect("the Strength beyond its bound and back", strength, high - 1)
    plus.click()
    expect("the sheet at the bound", lambda: sheet.text, shown)
    pool = 81 - total
    words = f"{pool:+} Still left" if pool > 0 else f"{pool} Below limit" if pool < 0 else "OK"
    window.label(words)
    walk.tell("frmStatsCounter", f"{shown}\n{words}")
    walk.photograph("frmStatsCounter", window)
    window.button("Copy Result").click()
    expect("the copied sheet", clipboard, shown.replace("\n", "\r\n"))
