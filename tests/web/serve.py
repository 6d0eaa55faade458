#!/usr/bin/env python3
"""What ./play --web serves with: it answers, ends when it is asked to, and says so where its port is taken.
Usage: serve.py TOP"""
import re
import signal
import subprocess
import sys
import urllib.request

top = sys.argv[1]


def served(*command):
    """The program once it has told its address, and the address."""
    program = subprocess.Popen(command, cwd=top, stderr=subprocess.PIPE, text=True)
    for line in program.stderr:
        if address := re.search(r"http://localhost:\d+/", line):
            return program, address[0]
    sys.exit(f"{command} has told no address")


for ending in signal.SIGINT, signal.SIGTERM:
    program, address = served("packaging/web/serve", "0")
    try:
        page = urllib.request.urlopen(address).read().decode()
        assert "<title>Vorn 1 TTS</title>" in page, page
        other = subprocess.run(["packaging/web/serve", re.search(r":(\d+)/", address)[1]], cwd=top, capture_output=True, text=True)
        assert other.returncode == 1 and other.stderr.startswith("Another program uses port "), other
        program.send_signal(ending)
        assert program.wait(60) == 0, (ending, program.returncode)
    finally:
        program.kill()
