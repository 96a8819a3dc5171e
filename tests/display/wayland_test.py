"""On a Wayland desktop with an X server the program's windows go through X, which lets it place them and keep
them in front; on one without they go through Wayland.

usage: wayland_test.py PROGRAM
"""

import os
import pathlib
import re
import subprocess
import sys

from desktop import main, new_home, start, wait_for, xdotool

SKIPPED = 77
TITLE = "Orvane Stats Generator"


def start_compositor(home):
    """Starts a compositor without a screen. Gives the display number of its X server; nothing if the machine
    cannot run one."""
    log = home / "weston.log"
    server = start("weston", "--backend=headless-backend.so", "--xwayland", "--socket=wayland-test",
                   f"--log={log}", stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    listening = lambda: log.exists() and re.search(r"listening on display (:\d+)", log.read_text())
    wait_for("the compositor", lambda: listening() or server.poll() is not None)
    if server.poll() is None:
        return listening()[1]
    print(f"Skipped: the compositor does not run here:\n{log.exists() and log.read_text()}")
    sys.exit(SKIPPED)


def check(path):
    path = pathlib.Path(path).absolute()
    with new_home() as home:
        os.environ.update(DISPLAY=start_compositor(home), WAYLAND_DISPLAY="wayland-test")
        for platform in {}, {"QT_QPA_PLATFORM": "wayland"}:
            program = start(path, env={**os.environ, **platform})
            wait_for(f"the launcher on the X server, with {platform}", lambda: xdotool(
                "search", "--onlyvisible", "--all", "--pid", program.pid, "--name", TITLE))
            program.kill()
            program.wait()

        del os.environ["DISPLAY"]
        with open(home / "protocol.log", "w") as protocol:
            start(path, env={**os.environ, "WAYLAND_DEBUG": "1"}, stderr=protocol)
        spoken = pathlib.Path(protocol.name)
        wait_for("the launcher on Wayland", lambda: f'set_title("{TITLE}")' in spoken.read_text())


if __name__ == "__main__":
    main(check)
