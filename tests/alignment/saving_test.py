"""Cuts a save off, or lets it fail, at each of its calls to the system: the file is the old one or the new
one, and what is left beside it goes with the next save. usage: saving_test.py SAVE_QUESTIONS"""

import collections
import os
import pathlib
import resource
import shutil
import subprocess
import sys
import tempfile

OLD = b"; mine\r\n[HEAD]\r\nitems=1\r\n" + 5000 * b"n"
MINE = ".orvane-save-0000000000000000ffffffffffff0000"  # nearly the name of a left-over
# What does not touch files; without unlink nobody can tidy up.
SPARED = {"brk", "exit_group", "futex", "madvise", "mmap", "mprotect", "munmap", "sigaltstack", "unlink"}
NEEDED = {"openat", "write", "fchmod", "fsync", "rename"}


def save(folder, mark, *command, limit=resource.RLIM_INFINITY):
    code = subprocess.run(
        [*command, sys.argv[1], folder, mark], stderr=subprocess.DEVNULL, check=False,
        env=dict(os.environ, ASAN_OPTIONS="detect_leaks=0"),  # which cannot look while it is watched
        preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit))).returncode
    assert code in (0, -9), f"{command} ends it with {code}"


def calls(folder, log):
    """Each call of a save, with its number among those of its name."""
    save(folder, "n", "strace", "-o", log)
    numbers, begun = collections.Counter(), False
    for line in log.read_text(errors="replace").splitlines():
        name = line.partition("(")[0]
        numbers[name] += 1
        begun = begun or f'"{folder}/' in line
        if begun and name.isidentifier() and name not in SPARED:
            yield name, numbers[name]


def check(folder, old):
    file = folder / "questions.ini"

    def prepare():
        shutil.rmtree(folder, ignore_errors=True)
        if old:
            folder.mkdir()
            file.write_bytes(old)
            (folder / MINE).write_text("kept")

    prepare()
    points = list(calls(folder, folder.with_suffix(".log")))
    new = file.read_bytes()
    beside = set(os.listdir(folder))
    assert 20 < len(points) < 300, f"{len(points)} calls, as if each key were written by itself"
    for fault in ("signal=KILL", "error=EIO"):
        kept = []
        for name, number in points:
            prepare()
            save(folder, "n", "strace", "-e", f"inject={name}:{fault}:when={number}")
            found = file.read_bytes() if file.exists() else b""
            assert found in (old, new), f"{fault} at {name} {number} leaves {len(found)} bytes"
            if found == old:
                kept.append(name)
            left = set(os.listdir(folder)) - beside if folder.exists() else set()
            assert len(left) <= (fault == "signal=KILL") and all(name[0] == "." for name in left), left
            save(folder, "l")
            assert set(os.listdir(folder)) == beside, f"the next save leaves what {name} {number} left"
        assert not old or (NEEDED <= set(kept) and len(kept) < len(points)), kept
    prepare()
    save(folder, "n", limit=9999)
    assert not old or (file.read_bytes() == old and set(os.listdir(folder)) == beside), "no room"


with tempfile.TemporaryDirectory() as top:
    for content in (OLD, b""):
        check(pathlib.Path(top, "data"), content)
