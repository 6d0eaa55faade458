#!/usr/bin/env python3
"""Has every call of a kind fail in turn, each in a session of its own, and looks at
what is left.

Usage: inject.py PROGRAM INJECTOR SOUNDS REPLAYS MODE KIND [--step N]
MODE: fail (the call fails) or kill (the program is killed at it); KIND: see injector.cpp.
--step N: every Nth call alone.

Whatever fails: a file never ends the game nor keeps a result from being said, a sound ends
it in order (as does, at worst by an abort, the lack of memory), and every file of the folder holds what it
held before or what an undisturbed session leaves; the log grows by whole lines.
"""

import argparse
import concurrent.futures
import os
import pathlib
import re
import signal
import subprocess
import sys
import tempfile

OLD_LOG = b" \r\nVorn 1 log for 1/2/2025 By Ostrin \r\n"
BEFORE = {
    "vorn1log.txt": OLD_LOG,
    "vorn1ops.cfg": b"2\r\n2\r\n2\r\n2\r\n2\r\n1\r\n",
    "vorn1voc.cfg": b"0\r\n5\r\n80\r\n0\r\n",
}
MAKING_SETTINGS = """wait say  Select. Exit Game.
wait 550
tap Down
wait 550
tap Down
wait 550
tap Down
wait 550
tap Down
wait 550
tap Enter
wait say  Are you sure that you want to delete the log file?
wait 550
tap Y
wait say  The log file has been deleted.
wait 2000
tap Down
wait 550
tap Down
wait 550
tap Down
wait 550
tap Down
wait 550
tap Enter
wait 3000
tap Up
wait 1000
tap Enter
wait 2000
close
"""
NAMING = """wait say  Enter your name as the new record holder.
wait 50
tap A
wait 300
tap Enter
wait say  Is a correct, for the new record holder?
wait 300
tap Enter
wait say  Select, repeat race time
wait 550
close
"""
RESULT = " Your time for 1 lap on the Kirtland Dirt Mile Oval Track is, "
SAID = " could not be saved. "
EMPTY_SUMMARY = b"Vorn 1 tts records  By Ostrin\r\n \r\n"
LEFTOVER = re.compile(r"\.vorn1.*\.new-[0-9a-f]{16}")
FAILED_CALL = 1
LAST_STATUS = 4  # beyond it the shell tells of signals


class Session:
    def __init__(self, options, script):
        self.options, self.script = options, script
        self.after, (status, output, _) = self.play(None)
        assert status == 0, f"undisturbed: exit status {status}: {output[-300:]}"
        assert self.after != BEFORE, "the session leaves nothing"

    def play(self, fault):
        """What the folder holds afterwards, and (exit status, trace, whether the fault was reached)."""
        with tempfile.TemporaryDirectory(prefix="vorn1-faults-") as work:
            folder, reached = pathlib.Path(work, "folder"), pathlib.Path(work, "reached")
            trace = pathlib.Path(work, "trace")
            folder.mkdir()
            self.fill(folder, fault)
            environment = dict(os.environ)
            if fault and self.options.injector:
                environment |= {
                    "LD_PRELOAD": self.options.injector, "VORN_FAULT_KIND": self.options.kind,
                    "VORN_FAULT_NUMBER": str(fault), "VORN_FAULT_MODE": self.options.mode,
                    "VORN_FAULT_FOLDER": str(folder) + "/", "VORN_FAULT_REACHED": str(reached)}
            run = subprocess.run(
                [self.options.program, "--headless", "--folder", folder, "--script", "-", "--limit", "300000"]
                # The writer of traces, which no player has, ends the program where it gets no memory.
                + (["--trace", trace] if self.options.kind != "memory" else []),
                input=self.script, env=environment, stderr=subprocess.PIPE, text=True)
            files = {path.name: path.read_bytes() for path in folder.iterdir() if not path.is_symlink()}
            self.empty(folder)
            told = trace.read_text() if trace.exists() else ""
            return files, (run.returncode, told + run.stderr, reached.exists() or not self.options.injector)

    def fill(self, folder, fault):
        for sound in pathlib.Path(self.options.sounds).glob("*.wav"):
            os.symlink(sound, folder / sound.name)
        for name, content in BEFORE.items():
            (folder / name).write_bytes(content)

    def empty(self, folder):
        pass

    def complaints(self, fault):
        """What is wrong after this fault; None where it was not reached."""
        files, (status, output, reached) = self.play(fault)
        self.last = files
        if not reached:
            return None
        wrong = []
        killed = self.options.mode == "kill"
        # Without memory the standard library ends the program in places that cannot fail.
        aborted = self.options.kind == "memory" and status == -signal.SIGABRT
        if not killed and not aborted and not 0 <= status <= LAST_STATUS:
            wrong.append(f"exit status {status}: {output[-300:]}")
        if not killed and self.options.kind not in ("sound", "memory"):
            if status == FAILED_CALL:
                wrong.append(f"a file ended the game: {output[-300:]}")
            if self.script.endswith(NAMING) and RESULT not in output:
                wrong.append("the result was not said")
            ours = {name: content for name, content in files.items() if name.startswith("vorn1")}
            # What could not be opened may have been something to read.
            if ours != self.after and self.options.kind not in ("open", "read") and SAID not in output:
                wrong.append("it was not said that something could not be saved")
        for name, content in files.items():
            if killed and LEFTOVER.fullmatch(name):
                continue
            if name == "vorn1log.txt":
                wrong += self.complaints_of_log(content)
            else:
                wrong += self.complaints_of_rest(name, content)
        for name in BEFORE.keys() & self.after.keys():
            if name not in files and not (name == "vorn1log.txt" and self.deletes_log()):
                wrong.append(f"{name} is lost")
        return wrong

    def complaints_of_rest(self, name, content):
        if content in (BEFORE.get(name), self.after.get(name)) or self.is_start_value(name, content):
            return []
        if name == "vorn1records.txt" and content == EMPTY_SUMMARY:
            return []  # of a record that could not be saved, or read again
        return [f"{name} holds {content[:200]!r}"]

    def is_start_value(self, name, content):
        """Settings that could not be read have their start values, and are saved when the player changes one."""
        lines = BEFORE.get(name, b"").count(b"\n")
        return (self.options.kind in ("open", "read", "memory") and name.endswith(".cfg")
                and re.fullmatch(rb"(-?\d+\r\n){%d}" % lines, content))

    def deletes_log(self):
        return not self.after["vorn1log.txt"].startswith(OLD_LOG)

    def complaints_of_log(self, log):
        known = (OLD_LOG + self.after["vorn1log.txt"]).split(b"\r\n")
        if not self.deletes_log() and not log.startswith(OLD_LOG):
            return [f"the log lost lines: {log!r}"]
        if any(line not in known for line in log.split(b"\r\n")) or (log and not log.endswith(b"\r\n")):
            return [f"the log holds {log!r}"]
        return []


def sessions(replays):
    """Their names and scripts."""
    race = pathlib.Path(replays, "lap_kirtland_by_keys.script").read_text()
    return [("settings", MAKING_SETTINGS), ("record", race[:race.index("wait 5000\nwait quiet\nend")] + NAMING)]


def main():
    parser = argparse.ArgumentParser()
    for name in ("program", "injector", "sounds", "replays", "mode", "kind"):
        parser.add_argument(name)
    parser.add_argument("--step", type=int, default=1)
    options = parser.parse_args()
    made = failed = 0
    for name, script in sessions(options.replays):
        session = Session(options, script)
        faults = 0
        with concurrent.futures.ThreadPoolExecutor(2) as pool:
            number, batch = 1, 4
            while True:
                numbers = range(number, number + batch * options.step, options.step)
                results = list(pool.map(session.complaints, numbers))
                for fault, wrong in zip(numbers, results):
                    faults += wrong is not None
                    for complaint in wrong or []:
                        failed += 1
                        print(f"{name}: {options.mode} at {options.kind} {fault}: {complaint}")
                if None in results:
                    break
                number += batch * options.step
        print(f"session {name}: {faults} faults")
        made += faults
    print(f"{made} faults, {failed} complaints")
    return 1 if failed or not made else 0


if __name__ == "__main__":
    sys.exit(main())
