#!/usr/bin/env python3
"""Several programs on one folder at once, each racing to a record, again and again.

Usage: crowd.py PROGRAM SOUNDS REPLAYS PROGRAMS ROUNDS
Every file is whole at the end: the record is the best that a program has driven, the
summary tells it, and the log holds all the lines of all the programs.
"""

import os
import pathlib
import struct
import subprocess
import sys
import tempfile

from inject import NAMING

RECORD, SUMMARY, LOG = "vorn1kirtland0001.rec", "vorn1records.txt", "vorn1log.txt"


def race(replays, driver):
    script = pathlib.Path(replays, f"lap_kirtland_by_{driver}.script").read_text()
    # Whoever finds a better record gets no question for his name, and goes on after the limit.
    return script[:script.index("wait 5000\nwait quiet\nend")] + NAMING


def start(program, folder, script, options):
    return subprocess.Popen(
        [program, "--headless", "--folder", folder, "--script", script, "--limit", "120000"] + options,
        stderr=subprocess.DEVNULL)


def main():
    program, sounds, replays, programs, rounds = *sys.argv[1:4], int(sys.argv[4]), int(sys.argv[5])
    with tempfile.TemporaryDirectory(prefix="vorn1-crowd-") as work:
        folders = []

        def fresh(name):
            folder = pathlib.Path(work, name, "folder")
            folder.mkdir(parents=True)
            for sound in pathlib.Path(sounds).glob("*.wav"):
                os.symlink(sound, folder / sound.name)
            folders.append(folder)
            return folder

        drivers = []
        for name, options in (("keys", []), ("wheel", ["--controller"])):
            script = pathlib.Path(work, name)
            script.write_text(race(replays, name))
            drivers.append((name, script, options))
        kept, lines = [], set()  # a record and its summary each, then what the log may hold
        for name, script, options in drivers:
            alone = fresh("alone_" + name)
            start(program, alone, script, options).wait()
            kept.append(((alone / RECORD).read_bytes(), (alone / SUMMARY).read_bytes()))
            lines |= set((alone / LOG).read_bytes().split(b"\r\n"))
        seconds = [struct.unpack("<d", record[:8])[0] for record, _ in kept]
        assert seconds[0] != seconds[1], "the drivers must differ"
        best_record, best_summary = kept[seconds.index(min(seconds))]

        wrong = []
        for number in range(rounds):
            folder = fresh(f"round_{number}")
            running = [start(program, folder, *drivers[i % 2][1:]) for i in range(programs)]
            statuses = [each.wait() for each in running]
            wrong += [f"exit status {status}" for status in statuses if status not in (0, 4)]
            record, summary, log = [(folder / name).read_bytes() for name in (RECORD, SUMMARY, LOG)]
            if record != best_record:
                wrong.append(f"the record holds {record!r}")
            if summary != best_summary:
                wrong.append(f"the summary holds {summary!r}")
            if not log.endswith(b"\r\n") or log.count(b"Vorn 1 log for") != programs:
                wrong.append(f"the log holds {log!r}")
            for line in log.split(b"\r\n"):
                # Which record was beaten, and whose it was, depends on who came first.
                if line not in lines and b" record" not in line and not line.startswith(b" By "):
                    wrong.append(f"the log holds {line!r}")
            strays = {path.name for path in folder.iterdir() if not path.is_symlink()} - {RECORD, SUMMARY, LOG}
            if strays:
                wrong.append(f"there are {strays}")
        for complaint in wrong:
            print(complaint)
        print(f"{rounds} rounds of {programs} programs, {len(wrong)} complaints")
        return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
