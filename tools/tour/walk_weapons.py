"""The walk through the weapon generator."""

import re

from desktop import Failure, expect, wait_for

DICE = r"\d+(D\d+([+-]\d+)?)?"
# The lines of a sheet. Those of the set may be missing.
LINES = (
    r"\S.*", f"Damage: {DICE}", f"Damage Fatigue: {DICE}", r"Attack Bonus: [+-]\d+", r"Critical Chance: \d+",
    "Damage Type: (Piercing|Slashing|Blunt|Universal)", r"Speed: \d+", r"Defence Bonus: [+-]\d+",
    r"Durability: \d+ of \d+(\.\d+)?", r"Weight: \d+(\.\d+)?", r"Required Strength: \d+",
    r"Required Dexterity: \d+", r"Required Level: \d+", r"\d-Handed", r"Shop price: \d+(\.\d+)?",
)
OPTIONAL = {3, 7, 10, 11, 12}
SHEET = "".join(f"({line}\n)" + "?" * (i in OPTIONAL) for i, line in enumerate(LINES))


def frmWeapons(walk, window):
    result = window.box("Result")
    expect("the first sheet", lambda: result.text, "")
    name = "frmWeapons"
    for _ in range(3):
        before = result.text
        window.button("Get Weapon").click()
        wait_for("a new sheet", lambda: result.text != before)
        if not re.fullmatch(SHEET, result.text + "\n"):
            raise Failure(f"no sheet of a weapon: {result.text!r}")
        walk.tell(name, result.text + "\n")
        name = ""
    walk.photograph("frmWeapons", window)
