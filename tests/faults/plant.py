#!/usr/bin/env python3
"""Plants single faults in the sources and asks whether the quick tests notice.

The sources are copied to build/faults, once for every worker, and built there;
the tree itself is left alone. Then, fault by fault: one place of one file is
changed, what depends on it is rebuilt, and the unit tests, session tests and
replays that it can reach are run, those of the same folder first, until one fails;
those that run in real time only where no other links the file. The same seed on the
same sources plants the same faults; those that are in the report already are not
planted again.

  tests/faults/plant.py --faults 200 --seed 1      200 faults over all folders
  tests/faults/plant.py --faults 20 --only race    only in src/race
  tests/faults/plant.py --fault ID                 one fault again, as a report names it

What the compiler refuses, warnings being errors, is counted apart.
Exit status 0 if every fault that compiled was caught, 1 if some survived, 2 if
the tests fail without any fault.
"""

import argparse
import collections
import concurrent.futures
import difflib
import json
import os
import queue
import random
import re
import resource
import signal
import subprocess
import sys
import time
from pathlib import Path

TOP = Path(__file__).resolve().parents[2]
QUICK = {"unit", "sessions", "replays"}  # labels of tests
SLOW = re.compile(r"desktop/|sessions/program/")  # they run in real time, as a player would
ELSEWHERE = re.compile(r"src/platform/web/|_windows\.cpp$")  # what this system's build leaves out
LISTENING = {"sounds", "testdrive"}  # folders of tests that listen to the set of sounds; theirs is the label "sounds"
MEMORY = 6 << 30  # bytes; a fault that would eat more than this counts as caught
WAITING = 10  # a test may take so many times longer by the clock than without a fault

CAUGHT, HUNG, SURVIVED, REFUSED = "caught", "caught by its time limit", "survived", "refused by the compiler"


# --- where faults can stand -------------------------------------------------

def code_mask(text):
    """The text with every comment, literal and preprocessor line blanked out; same length."""
    pattern = re.compile(r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|(?<!\d)\'(?:\\.|[^\'\\\n])*\'|^[ \t]*#[^\n]*', re.S | re.M)
    mask = pattern.sub(lambda m: re.sub(r"[^\n]", " ", m.group()), text)
    return re.sub(r"\[\[[^\]\n]*\]\]", lambda m: " " * len(m.group()), mask)


def matching(mask, opening):
    """Where the bracket at `opening` closes; None if it does not."""
    depth = 0
    for at in range(opening, len(mask)):
        depth += mask[at] in "([{"
        depth -= mask[at] in ")]}"
        if depth == 0:
            return at
    return None


SWAPS = {
    "comparison": {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "=="},
    "arithmetic": {"+": "-", "-": "+", "*": "/", "/": "*", "+=": "-=", "-=": "+="},
    "logic": {"&&": "||", "||": "&&"},
}


def line_at(text, at):
    return text[text.rfind("\n", 0, at) + 1:text.find("\n", at)]


def swaps(text, mask):
    """Operators, which the format sets between two blanks, turned into others."""
    for kind, table in SWAPS.items():
        for m in re.finditer(r"(?<=[\w\)\]] )(?:%s)(?= [\w\(\-!'\"{*&])" % "|".join(
                re.escape(op) for op in sorted(table, key=len, reverse=True)), mask):
            if m.group() in ("+", "+=") and '"' in line_at(text, m.start()):
                continue  # texts are joined here, and nothing can be taken from a text
            yield kind, m.start(), m.end(), table[m.group()]
    for m in re.finditer(r"\+\+|--", mask):
        yield "arithmetic", m.start(), m.end(), "--" if m.group() == "++" else "++"


def constants(mask):
    """Numbers off by one, or by a twentieth where they have a fraction; truth turned round."""
    for m in re.finditer(r"(?<![\w.'])(\d+\.\d+|0|[1-9]\d*(?:e\d+)?|0x[0-9A-Fa-f]+)(?![\w.'])", mask):
        number = m.group()
        if re.fullmatch(r"0x\w+|\d+", number):
            changed = str(int(number, 0) + 1)
        else:
            changed = repr(float(number) * 1.05 or 0.05)
        yield "constant", m.start(), m.end(), changed
    for m in re.finditer(r"\b(?:true|false)\b", mask):
        yield "constant", m.start(), m.end(), "false" if m.group() == "true" else "true"


def conditions(mask):
    """Conditions the other way round."""
    for m in re.finditer(r"\b(?:if|while) (\()", mask):
        end = matching(mask, m.start(1))
        if end is not None and ";" not in mask[m.start(1):end] and " = " not in mask[m.start(1):end]:
            yield "condition", m.start(1), m.start(1) + 1, "(!(", end, "))"
    for m in re.finditer(r"(?<=[(\s])!(?=[\w(])", mask):
        yield "condition", m.start(), m.end(), ""


def statements(mask):
    """Calls and assignments left out."""
    for m in re.finditer(r"(?<=[;{})\n])([ \t]+)([\w.:>\-\[\]*()]+?)(\(| [-+*/]?= )", mask):
        start = m.start(2)
        word = re.match(r"\w+", m.group(2))
        if not word or word.group() in ("return", "throw", "if", "for", "while", "switch", "static_assert", "using"):
            continue
        end = mask.find(";", start)
        if end < 0 or mask[start:end].count("(") != mask[start:end].count(")") or re.search(r"[{}]", mask[start:end]):
            continue
        if m.group(3) == "(" and matching(mask, m.end(3) - 1) != end - 1:
            continue
        yield ("dropped call" if m.group(3) == "(" else "dropped assignment"), start, end, ""


def arguments(mask):
    """Two neighbouring simple arguments of a call exchanged."""
    simple = r"[\w.:\-]+(?:\[[\w. +\-]*\])?"
    for m in re.finditer(r"[\w>]\((?:[^()\n]*?, )??(%s), (%s)(?=[,)])" % (simple, simple), mask):
        first, second = m.group(1), m.group(2)
        if first == second or first == "g":  # the state stands first everywhere: no exchange of it compiles
            continue
        yield "swapped arguments", m.start(1), m.end(2), f"{second}, {first}"


def texts(path, text, mask):
    """Texts with one character less, those of errors and of the command line's help excepted."""
    for m in re.finditer(r'"((?:\\.|[^"\\\n])+)"', text):
        line = text[text.rfind("\n", 0, m.start()) + 1:m.start()]
        if "//" in line or line.lstrip().startswith("#") or mask[m.start()] != " " or "\\" in m.group(1):
            continue
        if re.search(r"Error|fail\(|add_option|add_flag|belongs|cerr", line) or path.name == "main.cpp":
            continue
        at = m.start() + 1 + len(m.group(1)) // 2
        yield "text", at, at + 1, ""


class Fault:
    def __init__(self, path, text, kind, start, end, new, close=None, closing=""):
        self.path, self.kind = path, kind
        self.line = text.count("\n", 0, start) + 1
        self.column = start - text.rfind("\n", 0, start)
        self.old_text = text
        self.text = text[:start] + new + (text[end:] if close is None else text[end:close] + closing + text[close + 1:])
        self.id = f"{path}:{self.line}:{self.column}:{kind.replace(' ', '-')}"
        self.folder = path.split("/")[1] if path.count("/") > 1 else "main"
        if self.folder == "platform" and path.count("/") > 2:
            self.folder = "/".join(path.split("/")[1:3])

    def diff(self):
        lines = difflib.unified_diff(self.old_text.splitlines(), self.text.splitlines(), lineterm="", n=0)
        return [line for line in lines if line[:1] in "+-" and line[:3] not in ("+++", "---")]


def possible_faults(top):
    faults = []
    for path in sorted((top / "src").rglob("*")):
        if path.suffix not in (".cpp", ".h"):
            continue
        text = path.read_text()
        mask = code_mask(text)
        name = str(path.relative_to(top))
        if ELSEWHERE.search(name):
            continue
        found = [*swaps(text, mask), *constants(mask), *conditions(mask), *statements(mask), *arguments(mask),
                 *texts(path, text, mask)]
        faults += [Fault(name, text, *place) for place in found]
    return faults


def chosen_faults(faults, number, seed):
    """In turn from every folder, and there from every kind, so that tables of constants do not crowd out the rest."""
    chance = random.Random(seed)
    rooms = collections.defaultdict(lambda: collections.defaultdict(list))
    for fault in faults:
        rooms[fault.folder][fault.kind].append(fault)
    chosen = []
    while rooms and len(chosen) < number:
        for room in sorted(rooms):
            kinds = rooms[room]
            kind = chance.choice(sorted(kinds))
            chosen.append(kinds[kind].pop(chance.randrange(len(kinds[kind]))))
            if not kinds[kind]:
                del kinds[kind]
            if not kinds:
                del rooms[room]
    return chosen[:number]


# --- building and testing ---------------------------------------------------

def processor_time_of_children():
    used = resource.getrusage(resource.RUSAGE_CHILDREN)
    return used.ru_utime + used.ru_stime


class Tests:
    """A GoogleTest program with all its cases, or one command of another test."""

    def __init__(self, command, folder, program, quick):
        self.command, self.folder, self.program, self.quick = command, folder, program, quick
        self.name = " ".join(Path(word).name for word in command if not word.startswith("--"))
        self.sources = set()
        self.lasts = 60.0  # seconds by the clock
        self.limit = 600  # seconds of processor time

    def measure(self):
        """Returns the name of what fails without any fault; the processor time it takes sets the test's limit."""
        begun, used = time.monotonic(), processor_time_of_children()
        result, which = self.run()
        self.lasts = time.monotonic() - begun
        self.limit = round(20 + 8 * (processor_time_of_children() - used))
        return which if result != SURVIVED else ""

    def run(self):
        """Returns what became of the fault, and which test told.

        Processor time is what is limited, so that nothing hangs because the machine is busy; only
        what waits for ever is ended by the clock.
        """
        def prepare():
            resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))
            resource.setrlimit(resource.RLIMIT_CPU, (self.limit, self.limit))
        process = subprocess.Popen(self.command, cwd=self.folder, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                   stderr=subprocess.STDOUT, preexec_fn=prepare, start_new_session=True)
        try:
            output, _ = process.communicate(timeout=60 + WAITING * self.lasts)
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, signal.SIGKILL)
            process.communicate()
            return HUNG, self.name
        if process.returncode == 0:
            return SURVIVED, ""
        if process.returncode in (-signal.SIGXCPU, -signal.SIGKILL):
            return HUNG, self.name
        failed = re.findall(rb"\[  FAILED  \] ([\w./]+)", output)
        return CAUGHT, failed[0].decode() if failed else f"{self.name} (exit status {process.returncode})"


class Workshop:
    def __init__(self, top, folder, jobs):
        self.top, self.folder, self.jobs = top, folder, jobs
        self.build = folder / "build" / "dev"
        self.tests = []

    def copy_sources(self):
        """Brings the copy up to date; files that have not changed keep their times, so little is rebuilt."""
        names = subprocess.run(["git", "ls-files", "-co", "--exclude-standard", "-z"], cwd=self.top, check=True,
                               capture_output=True).stdout.decode().split("\0")
        wanted = {name for name in names if name and (self.top / name).is_file()}
        for name in wanted:
            source, copy = self.top / name, self.folder / name
            if copy.is_file() and copy.read_bytes() == source.read_bytes():
                continue
            copy.parent.mkdir(parents=True, exist_ok=True)
            copy.write_bytes(source.read_bytes())
            copy.chmod(source.stat().st_mode)
        for path in list(self.folder.glob("src/**/*.*")) + list(self.folder.glob("tests/**/*.*")):
            if path.is_file() and str(path.relative_to(self.folder)) not in wanted:
                path.unlink()

    def make(self, *targets, jobs=None):
        done = subprocess.run(["ninja", "-C", str(self.build), "-j", str(jobs or self.jobs), *targets],
                              capture_output=True)
        return done.returncode == 0, done.stdout.decode(errors="replace")

    def prepare(self):
        # Programs are not asked for their tests whenever they are linked, but once, by ctest.
        subprocess.run(["cmake", "--preset", "dev", "-DCMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST"],
                       cwd=self.folder, check=True, stdout=subprocess.DEVNULL)
        rooms = [room.parent.relative_to(self.folder) for kind in ("unit", "sessions")
                 for room in (self.folder / "tests" / kind).glob("*/CMakeLists.txt")]
        made, output = self.make(*[f"{room}/all" for room in rooms if room.name not in LISTENING],
                                 "tests/replays/all", "tests/desktop/all", jobs=os.cpu_count())
        if not made:
            sys.exit(output)
        self.tests = self.find_tests()

    def find_tests(self):
        listed = subprocess.run(["ctest", "--preset", "dev", "--show-only=json-v1"], cwd=self.folder, check=True,
                                capture_output=True).stdout
        tests = {}
        for test in json.loads(listed)["tests"]:
            properties = {p["name"]: p["value"] for p in test.get("properties", [])}
            quick = not SLOW.match(test["name"])
            if quick and not QUICK.intersection(properties.get("LABELS", [])) or "command" not in test:
                continue
            command = test["command"]
            if any(word.startswith("--gtest_filter") for word in command):  # all cases at once
                command = [word for word in command if not word.startswith("--gtest_")]
                command += ["--gtest_fail_fast", "--gtest_brief=1"]
            programs = [Path(word).name for word in command if word.startswith(str(self.build / "bin"))]
            if programs:
                tests.setdefault(tuple(command), Tests(command, properties["WORKING_DIRECTORY"], programs[0], quick))
        for test in tests.values():
            test.sources = self.inputs(test.program)
        # The slow ones are not wanted but by what the others do not link.
        covered = set().union(*(test.sources for test in tests.values() if test.quick))
        return [test for test in tests.values() if test.quick or test.sources - covered]

    def inputs(self, program):
        """The game's sources that a program is made of."""
        listed = subprocess.run(["ninja", "-C", str(self.build), "-t", "inputs", f"bin/{program}"],
                                capture_output=True).stdout.decode()
        sources = (os.path.relpath(line, self.folder) for line in listed.split() if line.endswith(".cpp"))
        return {source for source in sources if source.startswith("src/")}

    def concerned(self, fault):
        """The tests that the fault can reach, those of its own folder first, then the quickest."""
        folder = os.path.dirname(fault.path)

        def reaches(test):
            if fault.path.endswith(".cpp"):
                return fault.path in test.sources
            return any(os.path.dirname(source) == folder for source in test.sources)
        own = str(self.build / "tests" / "unit" / folder.removeprefix("src/"))
        reached = [test for test in self.tests if reaches(test)]
        quick = [test for test in reached if test.quick]
        return sorted(quick or reached, key=lambda test: (test.folder != own, test.lasts))

    def try_fault(self, fault):
        path = self.folder / fault.path
        path.write_text(fault.text)
        try:
            rest, size = self.concerned(fault), 1
            if not rest:
                return SURVIVED, "no test links it"
            while rest:  # a few at first: most faults are caught at once
                batch, rest, size = rest[:size], rest[size:], 2 * size
                compiled, _ = self.make(*{f"bin/{test.program}" for test in batch})
                if not compiled:
                    return REFUSED, ""
                for test in batch:
                    result, which = test.run()
                    if result != SURVIVED:
                        return result, which
            return SURVIVED, ""
        finally:
            path.write_text(fault.old_text)


# --- the report -------------------------------------------------------------

def table(results):
    rows = collections.defaultdict(collections.Counter)
    for fault, result, _ in results:
        for row in (fault.folder, "all"):
            rows[row][CAUGHT if result == HUNG else result] += 1
    lines = [f"{'folder':<20} {'planted':>8} {'caught':>8} {'survived':>9} {'refused':>8}"]
    for row in sorted(rows, key=lambda row: (row == "all", row)):
        counts = rows[row]
        lines.append(f"{row:<20} {sum(counts.values()):>8} {counts[CAUGHT]:>8} {counts[SURVIVED]:>9} "
                     f"{counts[REFUSED]:>8}")
    compiled = rows["all"][CAUGHT] + rows["all"][SURVIVED]
    if compiled:
        lines.append(f"{100 * rows['all'][CAUGHT] / compiled:.1f} % of those that compiled were caught.")
    return "\n".join(lines)


def reported(report, faults):
    """What a report knows of these faults already."""
    if not report or not report.exists():
        return []
    planted = {fault.id: fault for fault in faults}
    lines = map(json.loads, report.read_text().splitlines())
    return [(planted[line["fault"]], line["result"], line["by"]) for line in lines if line["fault"] in planted]


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--faults", type=int, default=200, help="how many [200]")
    parser.add_argument("--seed", type=int, default=1, help="which ones [1]")
    parser.add_argument("--only", default="", help="a folder or file below src/")
    parser.add_argument("--headers", action="store_true", help="headers too: after each, much is built again")
    parser.add_argument("--fault", action="append", default=[], help="a fault by its name in a report")
    parser.add_argument("--work", type=Path, default=TOP / "build" / "faults", help="the copies [build/faults]")
    parser.add_argument("--report", type=Path, help="where results are appended, a line of JSON each")
    parser.add_argument("--list", action="store_true", help="only say which faults would be planted")
    parser.add_argument("--workers", type=int, default=os.cpu_count(), help="faults at a time")
    parser.add_argument("--jobs", type=int, default=1, help="compilers at a time for each")
    args = parser.parse_args()

    faults = [f for f in possible_faults(TOP) if f.path.startswith("src/" + args.only)]
    if args.fault:
        faults = [f for f in faults if f.id in args.fault]
    else:
        files = (".cpp", ".h") if args.headers else (".cpp",)
        faults = chosen_faults([f for f in faults if f.path.endswith(files)], args.faults, args.seed)
    if not faults:
        sys.exit("There is no such fault.")
    if args.list:
        for fault in faults:
            print(fault.id, *fault.diff(), sep="\n  ")
        return 0

    results = reported(args.report, faults)
    known = {fault.id for fault, _, _ in results}
    faults = [fault for fault in faults if fault.id not in known]

    workshops = [Workshop(TOP, args.work.resolve() / str(number + 1), args.jobs) for number in range(args.workers)]
    for workshop in workshops:
        workshop.copy_sources()
        workshop.prepare()

    idle = queue.SimpleQueue()
    with concurrent.futures.ThreadPoolExecutor(len(workshops)) as pool:
        first = workshops[0].tests
        for failed in pool.map(Tests.measure, first):
            if failed:
                print(f"Without any fault: {failed} fails.", file=sys.stderr)
                return 2
        for workshop in workshops:
            for test, measured in zip(workshop.tests, first):
                test.lasts, test.limit = measured.lasts, measured.limit
            idle.put(workshop)
        print(f"{len(first)} tests pass without a fault, in {sum(test.lasts for test in first):.0f} s.", flush=True)

        def try_somewhere(fault):
            workshop = idle.get()
            try:
                return fault, *workshop.try_fault(fault)
            finally:
                idle.put(workshop)

        tried = [pool.submit(try_somewhere, fault) for fault in faults]
        for done in concurrent.futures.as_completed(tried):
            fault, result, detail = done.result()
            results.append((fault, result, detail))
            print(f"{len(results)}/{len(known) + len(faults)} {fault.id}: {result} {detail}", flush=True)
            if result == SURVIVED:
                print(*fault.diff(), sep="\n", flush=True)
            if args.report:
                with args.report.open("a") as report:
                    report.write(json.dumps({"fault": fault.id, "folder": fault.folder, "result": result,
                                             "by": detail, "change": fault.diff()}) + "\n")
    print(table(results))
    return 1 if any(result == SURVIVED for _, result, _ in results) else 0


if __name__ == "__main__":
    sys.exit(main())
