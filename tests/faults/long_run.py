#!/usr/bin/env python3
"""Races, crashes, gives up and reads the log for hours of virtual time, and looks at the
program's memory.

Usage: long_run.py PROGRAM SOUNDS REPLAYS HOURS
Between the first tenth and the end it may not grow by more than half a megabyte.
"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile

from inject import NAMING

MOST_GROWTH = 512  # kilobytes
DOWN, UP = "tap Down\nwait 550\n", "tap Up\nwait 550\n"
TO_MAIN_MENU = 3 * DOWN + "tap Enter\n"
CRASHING = "wait 100\nrelease Up\nwait 45000\nrelease LeftCtrl\ntap Escape\n"
READING = "wait say  Select. Exit Game.\nwait 550\n" + 3 * DOWN + "tap Enter\nwait 5000\ntap Space\nwait 1000\n" + 3 * UP


def resident(process):
    """Kilobytes."""
    return int(re.search(r"VmRSS:\s*(\d+)", pathlib.Path(f"/proc/{process.pid}/status").read_text())[1])


def main():
    program, sounds, replays, hours = *sys.argv[1:4], float(sys.argv[4])
    lap = pathlib.Path(replays, "lap_kirtland_by_keys.script").read_text()
    lap = lap[:lap.index("wait 5000\nwait quiet\nend")]
    first = lap + NAMING[:NAMING.index("close")] + "release LeftCtrl\n" + TO_MAIN_MENU + READING
    start = lap[lap.index("wait 550\n"):lap.index("wait tick")]
    again = start + CRASHING + READING
    with tempfile.TemporaryDirectory(prefix="vorn1-hours-") as work:
        for sound in pathlib.Path(sounds).glob("*.wav"):
            os.symlink(sound, pathlib.Path(work, sound.name))
        game = subprocess.Popen(
            [program, "--headless", "--folder", work, "--script", "-", "--trace", "-"],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        limit = hours * 3600 * 1000
        virtual, races, early = 0, 0, None
        while virtual < limit and game.poll() is None:
            game.stdin.write((again if races else first) + "echo race\n")
            game.stdin.flush()
            for line in game.stdout:
                if '"ev":"echo"' in line:
                    virtual = int(re.match(r'{"ms":(\d+)', line)[1])
                    break
            races += 1
            if early is None and virtual > limit / 10:
                early = resident(game)
        if game.poll() is not None:
            print(f"the game ended in race {races} with exit status {game.returncode}")
            return 1
        late = resident(game)
        game.stdin.write("close\n")
        game.stdin.close()
        game.stdout.read()
        print(f"{virtual / 3600000:.1f} hours, {races} races; "
              f"{early} KB after a tenth, {late} KB at the end; exit status {game.wait()}")
        return 0 if game.returncode == 0 and late - early <= MOST_GROWTH else 1


if __name__ == "__main__":
    sys.exit(main())
