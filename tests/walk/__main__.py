"""Drives the real program on a display server from outside, and fails with a message if a user would not see
what should be seen.

usage: python3 tests/walk PROGRAM CHECK [WORDS...]
"""

import importlib
import sys

from desktop import Failure

program, check, *words = sys.argv[1:]
module = check if check in ("walk", "installed", "windows") else "world"
try:
    getattr(importlib.import_module(module), check)(program, *words)
except Failure as failure:
    sys.exit(f"{check}: {failure}")
