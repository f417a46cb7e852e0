#!/usr/bin/env python3
"""Measures the tests: puts small faults into the code, one at a time, and counts how many the tests notice.

  scripts/mutants.py --folders src/mixer src/core --count 50 --seed 1
  scripts/mutants.py --list --folders src/records     the faults of that sample, without running anything
  scripts/mutants.py --only 3,17 ...                  these of the sample alone, after a test was added
  scripts/mutants.py --self-test                      the operators over small examples

Works on a copy of the tree in build/mutants (--scratch), never on the tree itself. The same seed over the
same code is the same sample. After each fault the test programs that can see the file (PROGRAMS) are built
and run, one after the other up to the first that fails; a run that lasts far longer than without the fault
counts as noticed. A fault that does not compile is no fault and the next one takes its place. Ctrl-C ends
with the table of what was done so far.
"""
import argparse
import collections
import os
import pathlib
import random
import re
import resource
import signal
import subprocess
import sys
import time

# The test programs that can see a folder, the closest first.
PROGRAMS = {
    "src/platform/basic": ["platform_basic", "platform_data", "records", "config"],
    "src/platform/ask": ["platform_ask", "screens"],
    "src/platform/xml": ["platform_xml", "config", "mixer"],
    "src/platform/data": ["platform_data", "records", "core", "tools"],
    "src/platform/serial": ["platform_serial", "mixer"],
    "src/platform/widgets": ["platform_widgets", "screens"],
    "src/platform/report": ["platform_report", "reports"],
    "src/mixer/protocol": ["mixer"],
    "src/mixer": ["mixer"],
    "src/shared": ["shared", "core", "screens"],
    "src/config": ["config", "shared", "core"],
    "src/records": ["records", "screens", "reports"],
    "src/reports": ["reports", "screens"],
    "src/mixing": ["mixing", "screens"],
    "src/screens": ["screens"],
    "src/core": ["core", "screens"],
}
ENVIRONMENT = {"QT_QPA_PLATFORM": "offscreen", "LC_ALL": "C.UTF-8", "TZ": "UTC"}
GIGABYTE = 1 << 30

Mutant = collections.namedtuple("Mutant", "path line operator start end new")

LITERAL = re.compile(r'R"\((?:.|\n)*?\)"|"(?:\\.|[^"\\\n])*"|(?<![0-9a-fA-F])\'(?:\\.|[^\'\\\n])+\'')
COMMENT = re.compile(r"//[^\n]*|/\*(?:.|\n)*?\*/|^[ \t]*#[^\n]*", re.M)
NAME = r"(?:[\w:]+(?:\(\))?(?:\.|->))*(?:::)?[\w:]+"
SIMPLE = r"[\w.]+(?:->\w+)?(?:\(\))?"
SWAPS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "==", "&&": "||", "||": "&&",
         "+": "-", "-": "+", "*": "/", "/": "*", "true": "false", "false": "true"}
WORDS = {"FULL": "OFF", "ON": "OFF", "OFF": "ON", "ROLLBACK": "COMMIT", "COMMIT": "ROLLBACK", "ASC": "DESC",
         "DESC": "ASC", "AND": "OR", "DISTINCT": "ALL", "NOT": ""}


# ---- the operators: each gives (start, end, new text) for every place it fits --------------------------

def blanked(text, pattern):
    return pattern.sub(lambda match: re.sub(r"[^\n]", "\x01", match.group()), text)


def swapped(pattern):
    def operator(code, _text):
        for match in re.finditer(pattern, code):
            yield match.start(1), match.end(1), SWAPS[match.group(1)]
    return operator


def constants(code, _text):
    for match in re.finditer(r"(?<![\w.'])(\d(?:[\d']*\d)?)(?=[^\w.'])", code):
        yield match.start(1), match.end(1), str(int(match.group(1).replace("'", "")) + 1)


def negations(code, _text):
    for match in re.finditer(r"(?<=[ (])!(?=[\w(])", code):
        yield match.start(), match.end(), ""


def swapped_arguments(code, _text):
    for match in re.finditer(rf"\w\(({SIMPLE}), ({SIMPLE})(?=[,)])", code):
        if match.group(1) != match.group(2):
            yield match.start(1), match.end(2), f"{match.group(2)}, {match.group(1)}"


def dropped_calls(code, _text):
    for match in re.finditer(rf"^[ ]+(?:emit )?({NAME}\((?:[^;{{}}]*)\);)$", code, re.M):
        if not match.group(1).startswith(("return", "if", "for", "while", "switch", "throw")):
            yield match.start(1), match.end(1), "{}"


def dropped_assignments(code, _text):
    for match in re.finditer(rf"^[ ]+({NAME} = [^;{{}}]*;)$", code, re.M):
        yield match.start(1), match.end(1), "{}"


def ignored_answers(code, _text):
    for match in re.finditer(r"\bif \(", code):
        end = closing(code, match.end() - 1)
        start = match.end() + code[match.end():end].rfind(";") + 1
        condition = code[start:end]
        if "(" in condition and " = " not in condition:
            yield start, end, f"({condition.strip()}) && false"


def dropped_syncs(code, _text):
    for match in re.finditer(r"::f?sync\(", code):
        end = closing(code, match.end() - 1) + 1
        yield match.start(), end, "0"


def dropped_terms(code, _text):
    for match in re.finditer(r" (?:&&|\|\|) ", code):
        end = term_end(code, match.end())
        yield match.start(), end, ""


def words(_code, text):
    for literal in LITERAL.finditer(text):
        for match in re.finditer(r"\b(" + "|".join(WORDS) + r")\b", literal.group()):
            yield literal.start() + match.start(), literal.start() + match.end(), WORDS[match.group()]


def closing(code, opening):
    """Place of the bracket that closes the one at that place."""
    depth = 0
    for place in range(opening, len(code)):
        depth += {"(": 1, ")": -1}.get(code[place], 0)
        if depth == 0:
            return place
    return len(code)


def term_end(code, start):
    """End of the term of a condition that begins there."""
    depth = 0
    for place in range(start, len(code)):
        if depth == 0 and (code[place] in "),;?{}" or code.startswith((" &&", " ||", " ?"), place)):
            return place
        depth += {"(": 1, "[": 1, ")": -1, "]": -1}.get(code[place], 0)
    return len(code)


OPERATORS = {
    "border": swapped(r" (<=|>=|<|>) "),
    "equality": swapped(r" (==|!=) "),
    "logic": swapped(r" (&&|\|\|) "),
    "arithmetic": swapped(r" ([-+*/]) "),
    "truth": swapped(r"\b(true|false)\b"),
    "constant": constants,
    "negation": negations,
    "arguments": swapped_arguments,
    "call": dropped_calls,
    "assignment": dropped_assignments,
    "answer": ignored_answers,
    "sync": dropped_syncs,
    "term": dropped_terms,
    "word": words,
}


def mutants_of(path, text):
    code = blanked(text, COMMENT)
    text_only = "".join(b if b == "\x01" else a for a, b in zip(text, code))
    code = blanked(code, LITERAL)
    for name, operator in OPERATORS.items():
        for start, end, new in operator(code, text_only):
            # Conditions are rebuilt from the blanked code: what stands in their literals comes back.
            new = restored(new, code[start:end], text[start:end])
            yield Mutant(path, text.count("\n", 0, start) + 1, name, start, end, new)


def restored(new, masked, original):
    return new.replace(masked.strip(), original.strip()) if "\x01" in masked else new


def sample(top, folders, seed):
    """All faults of the folders in the order of the seed, each operator in its turn."""
    by_operator = collections.defaultdict(list)
    for folder in folders:
        for file in sorted((top / folder).glob("*.cpp")) or [top / folder]:
            path = file.relative_to(top).as_posix()
            for mutant in mutants_of(path, file.read_text(encoding="utf-8")):
                by_operator[mutant.operator].append(mutant)
    chance = random.Random(seed)
    lists = [by_operator[name] for name in OPERATORS]
    for one in lists:
        chance.shuffle(one)
    return [one[turn] for turn in range(max(map(len, lists), default=0)) for one in lists if turn < len(one)]


def told(number, mutant, text):
    old = " ".join(text[mutant.start:mutant.end].split())
    new = "" if mutant.new == "{}" else " ".join(mutant.new.split())
    return f"{number:4} {mutant.path}:{mutant.line} {mutant.operator}: {shortened(old)} -> {shortened(new)}"


def shortened(text):
    return f"[{text if len(text) <= 60 else text[:57] + '...'}]"


# ---- building and running ------------------------------------------------------------------------------

class Scratch:
    """The copy of the tree, and its test programs."""

    def __init__(self, top, folder, shards):
        self.top, self.folder, self.shards = top, folder, shards
        self.limits = {}

    def refresh(self):
        """Brings the copy up to the tree; files that are the same keep their times."""
        listed = subprocess.run(["git", "ls-files", "-co", "--exclude-standard", "-z"], cwd=self.top,
                                capture_output=True, check=True, text=True).stdout.split("\0")
        for name in filter(None, listed):
            source, target = self.top / name, self.folder / name
            if source.is_file() and not (target.is_file() and target.read_bytes() == source.read_bytes()):
                target.parent.mkdir(parents=True, exist_ok=True)
                target.write_bytes(source.read_bytes())
                target.chmod(source.stat().st_mode)
        if not (self.folder / "build/dev/build.ninja").exists():
            subprocess.run(["cmake", "--preset", "dev"], cwd=self.folder, check=True, capture_output=True)

    def build(self, program):
        return subprocess.run(["cmake", "--build", "build/dev", "--target", "test_" + program], cwd=self.folder,
                              capture_output=True).returncode == 0

    def run(self, program, limit):
        """Nothing when all tests pass, else the first that failed."""
        shares = [self.start(program, share) for share in range(self.shards)]
        end = time.monotonic() + limit
        try:
            while True:
                codes = [share.poll() for share, _ in shares]
                failed = next((i for i, code in enumerate(codes) if code), None)
                if failed is not None:
                    return first_failure(shares[failed][1]) or f"ended with {codes[failed]}"
                if None not in codes:
                    return None
                if time.monotonic() > end:
                    return "time limit"
                time.sleep(0.02)
        finally:
            for share, _ in shares:
                kill_group(share)

    def start(self, program, share):
        output = self.folder / f"build/run-{share}.txt"
        environment = {**os.environ, **ENVIRONMENT, "GTEST_TOTAL_SHARDS": str(self.shards),
                       "GTEST_SHARD_INDEX": str(share)}
        with output.open("wb") as out:
            return subprocess.Popen([f"build/dev/bin/test_{program}", "--gtest_fail_fast", "--gtest_brief=1"],
                                    cwd=self.folder, env=environment, stdout=out, stderr=out,
                                    stdin=subprocess.DEVNULL, start_new_session=True,
                                    preexec_fn=bounded), output

    def measure(self, programs):
        """Builds and runs without a fault: all must pass, and the time taken gives the limit."""
        for program in programs:
            if not self.build(program):
                sys.exit(f"test_{program} does not build")
            begin = time.monotonic()
            failure = self.run(program, 600)
            if failure:
                sys.exit(f"test_{program} fails without any fault: {failure}")
            self.limits[program] = 30 + 4 * (time.monotonic() - begin)

    def notice(self, mutant):
        """Nothing when it does not compile, else (noticed, by what)."""
        file = self.folder / mutant.path
        text = file.read_text(encoding="utf-8")
        file.write_text(text[:mutant.start] + mutant.new + text[mutant.end:], encoding="utf-8")
        try:
            for program in programs_of(mutant.path):
                if not self.build(program):
                    return None
                failure = self.run(program, self.limits[program])
                if failure:
                    return True, f"{program}: {failure}"
            return False, "-"
        finally:
            file.write_text(text, encoding="utf-8")


def bounded():
    """A fault may ask for memory or write without end."""
    resource.setrlimit(resource.RLIMIT_AS, (8 * GIGABYTE, 8 * GIGABYTE))
    resource.setrlimit(resource.RLIMIT_FSIZE, (GIGABYTE, GIGABYTE))


def kill_group(process):
    try:
        os.killpg(process.pid, signal.SIGKILL)
    except ProcessLookupError:
        pass
    process.wait()


def first_failure(output):
    match = re.search(r"\[  FAILED  \] ([\w/]+\.[\w/]+)", output.read_text(errors="replace"))
    return match.group(1) if match else None


def programs_of(path):
    return PROGRAMS[max((folder for folder in PROGRAMS if path.startswith(folder + "/")), key=len)]


def measure(scratch, mutants, texts, count, only):
    """Runs them until there are enough; gives (mutant, noticed) of each."""
    done = []
    try:
        for number, mutant in enumerate(mutants, 1):
            if len(done) == count or (only and number not in only):
                if len(done) == count:
                    break
                continue
            result = scratch.notice(mutant)
            if result is None:
                continue
            done.append((mutant, result[0]))
            print("killed  " if result[0] else "SURVIVED", told(number, mutant, texts[mutant.path]),
                  "  by", result[1], flush=True)
    except KeyboardInterrupt:
        print("stopped")
    return done


def print_table(done):
    rows = collections.defaultdict(lambda: [0, 0])
    for mutant, noticed in done:
        for row in (os.path.dirname(mutant.path), "all"):
            rows[row][0 if noticed else 1] += 1
    print(f"\n{'folder':24} {'faults':>6} {'killed':>6} {'survived':>8} {'noticed':>8}")
    for row, (killed, survived) in sorted(rows.items(), key=lambda item: (item[0] == "all", item[0])):
        part = 100 * killed / (killed + survived)
        print(f"{row:24} {killed + survived:6} {killed:6} {survived:8} {part:7.0f}%")


# ---- examples ------------------------------------------------------------------------------------------

def self_test():
    examples = [
        ("border", "    if (a < b)\n", ["    if (a <= b)\n"]),
        ("border", "    std::vector<int> a; // a < b\n", []),
        ("equality", '    return a == 1 || b != "x == y";\n',
         ['    return a != 1 || b != "x == y";\n', '    return a == 1 || b == "x == y";\n']),
        ("logic", "    return a && b;\n", ["    return a || b;\n"]),
        ("arithmetic", "    a = b + 1;\n", ["    a = b - 1;\n"]),
        ("truth", "    m_on = true;\n", ["    m_on = false;\n"]),
        ("constant", "    int a1 = 57'600; double b = 1.5;\n", ["    int a1 = 57601; double b = 1.5;\n"]),
        ("constant", "    f(10, 'x', \"10\");\n", ["    f(11, 'x', \"10\");\n"]),
        ("negation", "    if (!open(path))\n", ["    if (open(path))\n"]),
        ("arguments", "    f(from, m_to);\n", ["    f(m_to, from);\n"]),
        ("arguments", "void f(int a, int b)\n", []),
        ("call", "    m_link.send(\n        a, b);\n    return f();\n    QString s(t);\n",
         ["    {}\n    return f();\n    QString s(t);\n"]),
        ("assignment", "    m_a = b;\n    int c = d;\n", ["    {}\n    int c = d;\n"]),
        ("answer", '    if (!write("x") || b)\n', ['    if ((!write("x") || b) && false)\n']),
        ("answer", "    if (const auto a = f())\n", []),
        ("sync", "    ok = a && ::fsync(file.number()) == 0;\n", ["    ok = a && 0 == 0;\n"]),
        ("term", "    return a && b(c, d) && e;\n",
         ["    return a && e;\n", "    return a && b(c, d);\n"]),
        ("word", '    run("PRAGMA synchronous = FULL");\n', ['    run("PRAGMA synchronous = OFF");\n']),
        ("word", '    // "ROLLBACK"\n    sql = "ROLLBACK";\n', ['    // "ROLLBACK"\n    sql = "COMMIT";\n']),
    ]
    failed = 0
    for name, text, expected in examples:
        found = [text[:m.start] + m.new + text[m.end:] for m in mutants_of("a.cpp", text) if m.operator == name]
        if found != expected:
            failed += 1
            print(f"self-test: {name}: {found}, expected {expected}")
    print(f"mutants self-test: {len(examples)} examples, {failed} failed")
    return failed == 0


def main():
    top = pathlib.Path(__file__).resolve().parent.parent
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--folders", nargs="+", default=sorted(PROGRAMS), metavar="FOLDER",
                        help="folders or single files")
    parser.add_argument("--count", type=int, default=200)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--only", type=lambda text: {int(part) for part in text.split(",")}, default=set())
    parser.add_argument("--list", action="store_true")
    parser.add_argument("--scratch", type=pathlib.Path, default=top / "build/mutants")
    parser.add_argument("--shards", type=int, default=4, help="runs of a test program side by side")
    parser.add_argument("--self-test", action="store_true")
    options = parser.parse_args()
    if options.self_test:
        return 0 if self_test() else 1
    folders = [folder.rstrip("/") for folder in options.folders]
    mutants = sample(top, folders, options.seed)
    texts = {mutant.path: (top / mutant.path).read_text(encoding="utf-8") for mutant in mutants}
    if options.list:
        for number, mutant in enumerate(mutants[:options.count], 1):
            print(told(number, mutant, texts[mutant.path]))
        return 0
    scratch = Scratch(top, options.scratch.resolve(), options.shards)
    scratch.refresh()
    scratch.measure(sorted({program for mutant in mutants for program in programs_of(mutant.path)}))
    print_table(measure(scratch, mutants, texts, options.count, options.only))
    return 0


if __name__ == "__main__":
    sys.exit(main())
