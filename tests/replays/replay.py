#!/usr/bin/env python3
"""Plays scripts through the headless session and holds them to their traces.

For each NAME.script there is a NAME.trace, or a NAME.trace.gz where it is long:
what the session must trace, byte for byte. A comment "# options: ..." in the script gives the session's options;
the files of NAME.folder, where there is one, lie in its folder besides the sounds.

With --accept the traces are written anew. NAME may be a pattern.

Usage: replay.py PROGRAM SOUNDS [--accept] NAME...
"""

import gzip
import itertools
import os
import pathlib
import shlex
import shutil
import subprocess
import sys
import tempfile

OPTIONS = "# options:"
CONTEXT = 5  # lines
BAD_SCRIPT = 2  # exit status
LONG = 200_000  # bytes; a race comes to a megabyte, a sixteenth of that compressed


def options_of(script):
    for line in script.read_text(errors="replace").splitlines():
        if line.startswith(OPTIONS):
            return shlex.split(line[len(OPTIONS):])
    return []


def fill(folder, sounds, starting_files):
    if starting_files.is_dir():
        shutil.copytree(starting_files, folder, dirs_exist_ok=True)
    for sound in sounds.glob("*.wav"):
        if not (folder / sound.name).exists():
            os.symlink(sound, folder / sound.name)


def play(program, sounds, script):
    """What the session traced."""
    with tempfile.TemporaryDirectory(prefix="vorn1-replay-") as work:
        folder, trace = pathlib.Path(work, "folder"), pathlib.Path(work, "trace")
        folder.mkdir()
        fill(folder, sounds, script.with_suffix(".folder"))
        run = subprocess.run(
            [program, "--headless", "--script", script, "--trace", trace, "--folder", folder]
            + options_of(script), stderr=subprocess.PIPE, text=True)
        sys.stderr.write(run.stderr)
        if run.returncode == BAD_SCRIPT or not trace.exists():
            sys.exit(f"{script.name} cannot be played")
        return trace.read_text()


def stored_trace(script):
    plain, packed = script.with_suffix(".trace"), script.with_suffix(".trace.gz")
    if plain.exists():
        return plain.read_text()
    return gzip.decompress(packed.read_bytes()).decode() if packed.exists() else None


def store(script, trace):
    plain, packed = script.with_suffix(".trace"), script.with_suffix(".trace.gz")
    plain.unlink(missing_ok=True)
    packed.unlink(missing_ok=True)
    if len(trace) < LONG:
        plain.write_text(trace)
    else:
        packed.write_bytes(gzip.compress(trace.encode(), mtime=0))


def first_difference(expected, traced):
    """Where two traces part, with what comes before and after."""
    expected, traced = expected.split("\n"), traced.split("\n")
    at = next(i for i, (old, new) in enumerate(itertools.zip_longest(expected, traced)) if old != new)
    report = [f"line {at + 1} is the first of those that differ (- expected, + traced):"]
    report += [f"  {line}" for line in expected[max(at - CONTEXT, 0):at]]
    report += [f"- {line}" for line in expected[at:at + CONTEXT]]
    report += [f"+ {line}" for line in traced[at:at + CONTEXT]]
    return "\n".join(report)


def scripts_named(names):
    here = pathlib.Path(__file__).resolve().parent
    for name in names:
        found = sorted(here.glob(name + ".script"))
        if not found:
            sys.exit(f"no such replay: {name}")
        yield from found


def main():
    program, sounds, *names = sys.argv[1:]
    program, sounds = pathlib.Path(program).resolve(), pathlib.Path(sounds).resolve()
    accept = "--accept" in names
    names = [name for name in names if name != "--accept"]
    scripts = list(scripts_named(names))
    if not scripts:
        sys.exit("which replay?")
    faulty = False
    for script in scripts:
        name = script.stem
        expected, traced = stored_trace(script), play(program, sounds, script)
        if expected == traced:
            print(f"{name}: as it was")
            continue
        if expected is None:
            print(f"{name}: has no trace yet")
        else:
            print(f"{name}: {first_difference(expected, traced)}")
        if accept:
            store(script, traced)
            print(f"{name}: written")
        else:
            faulty = True
            print(f"Is it meant so? Then: ./test --accept {name}")
    sys.exit(faulty)


if __name__ == "__main__":
    main()
