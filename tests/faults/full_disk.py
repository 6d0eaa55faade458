#!/usr/bin/env python3
"""Sessions in a folder on a file system that is really full, or has room for a page or a
few more; and in one that may only be read.

Usage: full_disk.py PROGRAM SOUNDS REPLAYS
Needs the right to mount a tmpfs in a name space of its own; where there is none it says
so, and its exit status is 77.
"""

import os
import pathlib
import subprocess
import sys
import types

from inject import Session, sessions

PAGE = 4096
SKIPPED = 77
READ_ONLY = -1


def mount(*arguments):
    subprocess.run(["mount", *arguments], check=True)


class OnFullDisk(Session):
    """`fault` is one more than the pages that are left; 0: all that one wants."""

    losses = 0  # sessions that could not save all

    def fill(self, folder, fault):
        mount("-t", "tmpfs", "-o", "size=1m", "tmpfs", folder)
        super().fill(folder, fault)
        if fault == READ_ONLY:
            mount("-o", "remount,ro", folder)
        elif fault:
            filler = os.open(folder / "filler", os.O_WRONLY | os.O_CREAT)
            try:
                while True:
                    os.write(filler, bytes(PAGE))
            except OSError:
                pass
            os.ftruncate(filler, os.fstat(filler).st_size - (fault - 1) * PAGE)
            os.close(filler)

    def empty(self, folder):
        subprocess.run(["umount", folder], check=True)

    def complaints(self, fault):
        wrong = super().complaints(fault)
        self.losses += {n: c for n, c in self.last.items() if n != "filler"} != self.after
        return wrong

    def complaints_of_rest(self, name, content):
        return [] if name == "filler" else super().complaints_of_rest(name, content)


def inside(program, sounds, replays):
    options = types.SimpleNamespace(program=program, sounds=sounds, injector=None, mode="fail", kind="write")
    failed = made = 0
    for name, script in sessions(replays):
        session = OnFullDisk(options, script)
        for fault in (READ_ONLY, 1, 2, 3, 4, 5, 6):
            room = "in a folder to be read only" if fault == READ_ONLY else f"with {fault - 1} pages left"
            made += 1
            for complaint in session.complaints(fault):
                failed += 1
                print(f"{name} {room}: {complaint}")
        if not session.losses:
            failed += 1
            print(f"{name}: the disk was never full")
    print(f"{made} sessions, {failed} complaints")
    return 1 if failed else 0


def main():
    if sys.argv[1] == "--inside":
        return inside(*sys.argv[2:])
    own_space = ["unshare", "--map-root-user", "--mount"]
    may = subprocess.run([*own_space, "mount", "-t", "tmpfs", "tmpfs", "/mnt"], stderr=subprocess.DEVNULL)
    if may.returncode != 0:
        print("no full disk was tried: this user may not mount a tmpfs")
        return SKIPPED
    return subprocess.run([*own_space, pathlib.Path(__file__).resolve(), "--inside", *sys.argv[1:]]).returncode


if __name__ == "__main__":
    sys.exit(main())
