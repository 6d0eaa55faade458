#!/usr/bin/env python3
"""Holds what a session sounds like in one program to what it sounds like in another.

Processors and compilers round the mix differently in its last place: a sample may be
off by one, and nothing else.

Usage: same_sound.py PROGRAM OTHER SOUNDS SCRIPT
"""

import array
import pathlib
import shutil
import subprocess
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "replays"))
from replay import options_of

MOST_OFF = 1  # of 32768


def rendered(program, sounds, script, work):
    folder = work / "folder"
    shutil.rmtree(folder, ignore_errors=True)
    shutil.copytree(sounds, folder)
    samples = array.array("h")
    run = subprocess.run([program, "--headless", "--script", script, "--render", "-", "--folder", folder]
                         + options_of(script), stdout=subprocess.PIPE)
    samples.frombytes(run.stdout)
    return samples


def main():
    program, other, sounds, script = map(pathlib.Path, sys.argv[1:])
    with tempfile.TemporaryDirectory(prefix="vorn1-sound-") as work:
        one, two = (rendered(each, sounds, script, pathlib.Path(work)) for each in (program, other))
    if len(one) != len(two):
        sys.exit(f"{len(one)} samples and {len(two)}")
    if not one or max(one) < 1000:
        sys.exit("hardly a sound in it")
    off = max(abs(a - b) for a, b in zip(one, two))
    print(f"{len(one)} samples, at most {off} apart")
    sys.exit(off > MOST_OFF)


main()
