"""Cuts a save off, or lets it fail, at each of its calls to the system: the file is the old one or the new
one, and what is left beside it goes with the next save. usage: saving_test.py SAVE_QUESTIONS"""

import collections
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

OLD = b"; mine\r\n[HEAD]\r\nitems=1\r\n" + 5000 * b"n"
SPARED = {"mmap", "unlink"}  # without unlink nobody can tidy up
NEEDED = {"openat", "write", "fchmod", "fsync", "rename"}


def save(folder, mark, *command):
    code = subprocess.run([*command, sys.argv[1], folder, mark], stderr=subprocess.DEVNULL, check=False,
                          env=dict(os.environ, ASAN_OPTIONS="detect_leaks=0")).returncode  # it cannot look
    assert code in (0, -9), f"{command} ends it with {code}"


def calls(folder, log):
    """Each call of a save that touches files, with its number among those of its name."""
    save(folder, "n", "strace", "-e", "trace=%file,%desc", "-o", log)
    numbers, begun = collections.Counter(), False
    for line in log.read_text(errors="replace").splitlines():
        name = line.partition("(")[0]
        numbers[name] += 1
        begun = begun or f'"{folder}/' in line
        if begun and name.isidentifier() and name not in SPARED:
            yield name, numbers[name]


def check(folder, old):
    file = folder / "questions.ini"

    def saved(*command):
        """What a save under the command leaves of the file, and beside it."""
        shutil.rmtree(folder, ignore_errors=True)
        if old:
            folder.mkdir()
            file.write_bytes(old)
        save(folder, "n", *command)
        return file.read_bytes() if file.exists() else b"", set(os.listdir(folder) if folder.exists() else ())

    new, beside = saved()
    saved("true")  # which does not save
    points = list(calls(folder, folder.with_suffix(".log")))
    assert 20 < len(points) < 300, f"{len(points)} calls, as if each key were written by itself"
    for fault in ("signal=KILL", "error=ENOSPC"):
        kept = []
        for name, number in points:
            found, there = saved("strace", "-e", f"inject={name}:{fault}:when={number}")
            assert found in (old, new), f"{fault} at {name} {number} leaves {len(found)} bytes"
            if found == old:
                kept.append(name)
            left = there - beside
            assert len(left) <= (fault == "signal=KILL") and all(name[0] == "." for name in left), left
            save(folder, "l")
            assert set(os.listdir(folder)) == beside, f"the next save leaves what {name} {number} left"
        assert not old or (NEEDED <= set(kept) and len(kept) < len(points)), kept
    assert not old or saved("prlimit", "--fsize=9999") == (old, beside), "no room"


with tempfile.TemporaryDirectory() as top:
    for content in (OLD, b""):
        check(pathlib.Path(top, "data"), content)
