"""Cuts a save off, or lets it fail, at each of its calls to the system: the file is the old one or the new one,
and what is left beside it goes with the next save. usage: saving_test.py SAVE_QUESTIONS"""

import collections
import os
import pathlib
import subprocess
import sys
import tempfile

OLD = b"; mine\r\n[HEAD]\r\nitems=1\r\n" + 5000 * b"n"
MANY_CALLS = 300  # only if each key is written by itself
# What does not touch files; without unlink nobody can tidy up.
SPARED = {"brk", "exit_group", "futex", "madvise", "mmap", "mprotect", "munmap", "sigaltstack", "unlink"}
# Without these there is no new file.
NEEDED = {"openat", "write", "fchmod", "fsync", "rename"}


def save(folder, mark, *options):
    environment = dict(os.environ, ASAN_OPTIONS="detect_leaks=0")  # which cannot look while it is watched
    command = ["strace", "-o", folder.parent / "log", *options, sys.argv[1], folder, mark]
    code = subprocess.run(command, env=environment, stderr=subprocess.DEVNULL, check=False).returncode
    assert code in (0, -9), f"{options} ends it with {code}"


def calls(folder, mark):
    """Each call of a save, with its number among those of its name."""
    save(folder, mark)
    numbers, begun = collections.Counter(), False
    for line in (folder.parent / "log").read_text(errors="replace").splitlines():
        name = line.partition("(")[0]
        numbers[name] += 1
        begun = begun or str(folder) in line and not name.startswith("exec")
        if begun and name.isidentifier() and name not in SPARED:
            yield name, numbers[name]


def check(folder, old):
    file = folder / "questions.ini"
    kept = {"signal=KILL": set(), "error=EIO": set()}

    def prepare():
        subprocess.run(["rm", "-rf", folder], check=True)
        if old:
            folder.mkdir()
            file.write_bytes(old)

    prepare()
    points = list(calls(folder, "n"))
    if not points:
        sys.exit(77)  # this machine lets no process be watched
    new = file.read_bytes()
    assert 20 < len(points) < MANY_CALLS, points
    for fault, names in kept.items():
        for name, number in points:
            prepare()
            save(folder, "n", "-e", f"inject={name}:{fault}:when={number}")
            found = file.read_bytes() if file.exists() else b""
            assert found in (old, new), f"{fault} at {name} {number} leaves {len(found)} bytes"
            if found == old:
                names.add(name)
            left = [path for path in folder.glob("*") if path != file]
            assert len(left) <= (fault == "signal=KILL"), left
            assert all(path.name.startswith(".") for path in left), left
            save(folder, "l")
            assert os.listdir(folder) == [file.name], f"the next save leaves something of {name} {number}"
    assert not old or all(NEEDED <= names for names in kept.values()), kept


with tempfile.TemporaryDirectory() as top:
    for old in (OLD, b""):
        check(pathlib.Path(top, "data"), old)
