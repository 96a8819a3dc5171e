"""Drives the real program on a display server from outside.

usage: python3 tests/walk PROGRAM CHECK [WORDS...]

Fails with a message if a user would not see what should be seen.
"""

import importlib
import sys

from desktop import Failure

CHECKS = {  # and the module that holds each
    "walk": "walk", "accessibility": "accessibility", "sound": "sound", "installed": "installed", "screens": "world",
    "wayland": "world", "handover": "world", "faults": "world", "idle": "world",
}


def main(program, check, *words):
    try:
        getattr(importlib.import_module(CHECKS[check]), check)(program, *words)
    except Failure as failure:
        sys.exit(f"{check}: {failure}")


main(*sys.argv[1:])
