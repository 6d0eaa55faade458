#!/usr/bin/env python3
"""What clang-tidy finds in the program.

A file that was found clean is not looked at again until it, a header of ours
that it includes, its compiler command, the checks or clang-tidy itself change;
with VORN_TIDY_ALL set every file is looked at.

Usage: check_tidy.py TOP BUILD_FOLDER
"""

import concurrent.futures
import hashlib
import json
import os
import pathlib
import re
import subprocess
import sys

INCLUDE = re.compile(rb'^\s*#\s*include\s*"([^"]+)"', re.MULTILINE)


def with_headers(source, src):
    """The file and every header of ours that it includes, by whatever way round."""
    found = {source}
    ahead = [source]
    while ahead:
        for name in INCLUDE.findall(ahead.pop().read_bytes()):
            header = src / os.fsdecode(name)
            if header.is_file() and header not in found:
                found.add(header)
                ahead.append(header)
    return sorted(found)


def key_of(source, src, given):
    digest = hashlib.sha256(given)
    for file in with_headers(source, src):
        digest.update(os.fsencode(file.relative_to(src)) + b"\0")
        digest.update(hashlib.sha256(file.read_bytes()).digest())
    return digest.hexdigest()


def main():
    top, build = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
    src, cache = top / "src", build / "tidy"
    version = subprocess.run(["clang-tidy", "--version"], check=True, capture_output=True).stdout
    checks = (top / ".clang-tidy").read_bytes()
    commands = {
        pathlib.Path(entry["file"]): entry["command"]
        for entry in json.loads((build / "compile_commands.json").read_text())
    }

    # What this build leaves out is another system's.
    sources = sorted(source for source in src.rglob("*.cpp") if source in commands)
    if not sources:
        sys.exit(f"no source file in {src}")
    keys = {
        source: key_of(source, src, version + checks + commands[source].encode())
        for source in sources
    }
    notes = {source: cache / source.relative_to(src) for source in sources}

    def is_known_clean(source):
        note = notes[source]
        return note.is_file() and note.read_text() == keys[source]

    asked = sources if os.environ.get("VORN_TIDY_ALL") else [s for s in sources if not is_known_clean(s)]

    def look_at(source):
        run = subprocess.run(
            ["clang-tidy", "-p", str(build), "--quiet", str(source)],
            stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        if run.returncode != 0:
            print(run.stdout or run.stderr, flush=True)
            return False
        notes[source].parent.mkdir(parents=True, exist_ok=True)
        notes[source].write_text(keys[source])
        return True

    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as workers:
        faulty = list(workers.map(look_at, asked)).count(False)
    print(f"{len(sources)} files, {len(asked)} looked at, {faulty} with faults")
    sys.exit(faulty > 0)


main()
