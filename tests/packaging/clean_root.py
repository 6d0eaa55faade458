#!/usr/bin/env python3
"""Fills a folder with what Debian packages have installed on this machine, and nothing else.

  clean_root.py ROOT [--alone] PACKAGE...

ROOT gets the files of the packages and, without --alone, of all that they depend on: a system as small as
their declarations allow. A package is named as in a Depends field, so that such a field is an argument too.
Manuals and translations are left out.
"""

import os
import re
import subprocess
import sys

FOLDERS_OF_USR = ("bin", "lib", "lib64", "sbin")  # that also stand in / under their old names
LEFT_OUT = re.compile(r"/usr/share/(doc|man|locale|info|lintian|bug)/")


def output_of(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def names(field):
    """The packages of a Depends field, each a list of alternatives."""
    plain = re.sub(r"\([^)]*\)|\[[^]]*\]|:any", "", field)
    return [[name.strip() for name in entry.split("|")] for entry in plain.split(",") if entry.strip()]


class Installed:
    def __init__(self):
        self.depends, self.provider = {}, {}
        status = "${Package}\t${Depends}, ${Pre-Depends}\t${Provides}\t${db:Status-Abbrev}\n"
        for line in output_of("dpkg-query", "-W", "-f", status).splitlines():
            package, depends, provides, state = line.split("\t")
            if not state.startswith("ii"):
                continue
            self.depends[package] = names(depends)
            for name in [package] + [alternatives[0] for alternatives in names(provides)]:
                self.provider.setdefault(name, package)
        self.provider.update({package: package for package in self.depends})

    def choose(self, alternatives):
        for name in alternatives:
            if name in self.provider:
                return self.provider[name]
        sys.exit("not installed on this machine: " + " | ".join(alternatives))

    def closure(self, wanted):
        found, waiting = set(), [self.choose(alternatives) for alternatives in wanted]
        while waiting:
            package = waiting.pop()
            if package not in found:
                found.add(package)
                waiting += [self.choose(alternatives) for alternatives in self.depends[package]]
        return sorted(found)


def copy(packages, root):
    for folder in FOLDERS_OF_USR:
        os.makedirs(os.path.join(root, "usr", folder), exist_ok=True)
        if not os.path.lexists(os.path.join(root, folder)):
            os.symlink("usr/" + folder, os.path.join(root, folder))
    listed = set(output_of("dpkg", "-L", *packages).splitlines())
    files = sorted(name for name in listed
                   if (os.path.islink(name) or os.path.isfile(name)) and name.strip("/") not in FOLDERS_OF_USR
                   and not LEFT_OUT.match(name))
    pack = subprocess.Popen(["tar", "-C", "/", "-c", "--null", "-T", "-"],
                            stdin=subprocess.PIPE, stdout=subprocess.PIPE)
    unpack = subprocess.Popen(["tar", "-C", root, "-x", "--keep-directory-symlink"], stdin=pack.stdout)
    pack.stdin.write("\0".join(name.lstrip("/") for name in files).encode())
    pack.stdin.close()
    if pack.wait() or unpack.wait():
        sys.exit("could not fill " + root)


def main(root, *fields):
    installed = Installed()
    alone = "--alone" in fields
    wanted = [entry for field in fields if field != "--alone" for entry in names(field)]
    packages = [installed.choose(entry) for entry in wanted] if alone else installed.closure(wanted)
    copy(packages, root)
    print(len(packages), "packages in", root)


if __name__ == "__main__":
    main(*sys.argv[1:])
