#!/usr/bin/env python3
"""A lap in Node is played many times as fast as it lasts, and traced byte for byte as everywhere else.

Processor time of all threads is counted, which other work on the machine lengthens little: of some laps the quickest
counts, and a native one of the same minute tells how fast the machine is. The floor is for the lap without the start
of Node and of the game in it, which takes three times as long in one Node as in another.

Usage: speed_in_node.py PROGRAM NATIVE SOUNDS FLOOR
"""

import json
import os
import pathlib
import subprocess
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).parent.parent / "replays"))
import replay

SCRIPT = pathlib.Path(__file__).parent.parent / "replays" / "lap_maple_by_keys.script"
LAPS = 5


def processor_seconds(program, folder, script, trace):
    process = subprocess.Popen([program, "--headless", "--script", script, "--trace", trace, "--folder", folder])
    _, status, used = os.wait4(process.pid, 0)
    if status != 0:
        sys.exit(f"{program} ended with {os.waitstatus_to_exitcode(status)}")
    return used.ru_utime + used.ru_stime


def main(program, native, sounds, floor):
    expected = replay.stored_trace(SCRIPT)
    virtual = json.loads(expected.splitlines()[-1])["ms"] / 1000
    with tempfile.TemporaryDirectory(prefix="vorn1-speed-") as work:
        folder, nothing, trace = (pathlib.Path(work, name) for name in ("folder", "nothing", "trace"))
        folder.mkdir()
        replay.fill(folder, pathlib.Path(sounds).resolve(), SCRIPT.with_suffix(".folder"))
        nothing.write_text("end\n")
        laps, starts, natives = [], [], []
        for _ in range(LAPS):
            natives.append(processor_seconds(native, folder, SCRIPT, trace))
            starts.append(processor_seconds(program, folder, nothing, trace))
            laps.append(processor_seconds(program, folder, SCRIPT, trace))
            if trace.read_text() != expected:
                sys.exit("the trace is not the stored one")
    lap, start = min(laps), min(starts)
    print(f"{virtual:.1f} s in {1000 * lap:.0f} ms of processor time, {virtual / lap:.0f} times as fast as real; "
          f"without the {1000 * start:.0f} ms of a start {virtual / (lap - start):.0f} times; "
          f"native {1000 * min(natives):.0f} ms; load {os.getloadavg()[0]:.1f}")
    if virtual / (lap - start) < float(floor):
        sys.exit(f"that is less than {floor} times")


main(*sys.argv[1:])
