#!/usr/bin/env python3
"""Measures the tests: puts small faults into the code, one at a time, and counts how many the tests notice.

  scripts/mutants.py --folders src/mixer src/core --count 50 --seed 1
  scripts/mutants.py --again                          the survivors so far once more, after tests were added
  scripts/mutants.py --list --folders src/records     the faults of that sample, without running anything
  scripts/mutants.py --only 3,17 ...                  these of the sample alone
  scripts/mutants.py --table                          the table of all that was found out so far
  scripts/mutants.py --self-test                      the operators (scripts/faults.py) over small examples

Works on a copy of the tree in build/mutants (--scratch), never on the tree itself, and gives way to all other
work. The same seed over the same code is the same sample. After each fault the test programs that can see the
file (PROGRAMS) are built and run, one after the other up to the first that fails, the likely tests first. A
test that fails has to fail twice, lest a loaded machine is taken for a sharp test; a run that lasts far longer
than without the fault counts as noticed. A fault that does not compile is no fault and the next one takes its
place. Each trial is written to the results (--results, scripts/mutant_results.py) at once; a run that was
stopped goes on there.
"""
import argparse
import fcntl
import os
import pathlib
import re
import resource
import signal
import subprocess
import sys
import time

import faults
import mutant_results

# The test programs that can see a folder, the closest first.
PROGRAMS = {
    "src/setup": ["setup"],
    "src/db": ["tools"],
    "src/platform/basic": ["platform_basic", "platform_data", "records", "config"],
    "src/platform/ask": ["platform_ask", "screens"],
    "src/platform/xml": ["platform_xml", "config", "mixer"],
    "src/platform/data": ["platform_data", "records", "core", "tools"],
    "src/platform/serial": ["platform_serial", "mixer"],
    "src/platform/widgets": ["platform_widgets", "screens"],
    "src/platform/report": ["platform_report", "reports"],
    "src/mixer/protocol": ["mixer"],
    "src/mixer": ["mixer", "desk"],
    "src/shared": ["shared", "core", "screens"],
    "src/history": ["history", "tools", "core"],
    "src/trace": ["trace", "reports", "core"],
    "src/prices": ["prices", "screens"],
    "src/manual": ["manual", "core"],
    "src/config": ["config", "shared", "core"],
    "src/records": ["records", "screens", "reports"],
    "src/reports": ["reports", "screens"],
    "src/mixing": ["mixing", "screens"],
    "src/screens": ["screens"],
    "src/core": ["core", "screens", "desk"],
}
ENVIRONMENT = {"QT_QPA_PLATFORM": "offscreen", "LC_ALL": "C.UTF-8", "TZ": "UTC"}
GIGABYTE = 1 << 30


class Scratch:
    """The copy of the tree, and its test programs."""

    def __init__(self, top, folder, shards, most_programs, leave_out):
        self.top, self.folder, self.shards, self.most_programs = top, folder, shards, most_programs
        self.leave_out = leave_out
        self.limits = {}
        folder.mkdir(parents=True, exist_ok=True)
        self.lock = (folder / "lock").open("w")
        fcntl.flock(self.lock, fcntl.LOCK_EX)  # a second run would mix its faults with these

    def programs_of(self, path):
        folder = max((folder for folder in PROGRAMS if path.startswith(folder + "/")), key=len)
        return PROGRAMS[folder][:self.most_programs]

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
        command = ["cmake", "--build", "build/dev", "--parallel", "2", "--target", "test_" + program]
        return subprocess.run(command, cwd=self.folder, capture_output=True).returncode == 0

    def measure(self, programs, limit):
        """Builds and runs without a fault: all must pass. The time taken gives the limit, where none is given."""
        for program in programs:
            if not self.build(program):
                sys.exit(f"test_{program} does not build")
            if limit:
                self.limits[program] = limit
                continue
            begin = time.monotonic()
            failure = self.run(program, 600)
            if failure:
                sys.exit(f"test_{program} fails without any fault: {failure}")
            self.limits[program] = 30 + 2 * (time.monotonic() - begin)

    def notice(self, fault, likely):
        """What notices the fault, an empty text when nothing does, or None when it does not compile."""
        file = self.folder / fault.path
        text = file.read_text(encoding="utf-8")
        file.write_text(text[:fault.start] + fault.new + text[fault.end:], encoding="utf-8")
        try:
            for program in self.programs_of(fault.path):
                if not self.build(program):
                    return None
                for tests in (likely, "*"):
                    failure = self.run(program, self.limits[program], tests=tests)
                    if failure and self.fails_again(program, failure):
                        return f"{program}: {failure}"
            return ""
        finally:
            file.write_text(text, encoding="utf-8")

    def fails_again(self, program, failure):
        """Alone, and where it passes then, among all others. A crash and the time limit count at once."""
        limit = self.limits[program]
        if "." not in failure or self.run(program, limit, shards=1, tests=failure):
            return True
        return bool(self.run(program, limit))

    def run(self, program, limit, shards=None, tests="*"):
        """Nothing when all tests pass, else the first that failed."""
        shares = [self.start(program, tests, share, shards or self.shards)
                  for share in range(shards or self.shards)]
        end = time.monotonic() + limit
        try:
            while time.monotonic() < end:
                codes = [process.poll() for process, _ in shares]
                failed = next((share for share, code in enumerate(codes) if code), None)
                if failed is not None:
                    return first_failure(shares[failed][1]) or f"ended with {codes[failed]}"
                if None not in codes:
                    return None
                time.sleep(0.02)
            return "time limit"
        finally:
            for process, _ in shares:
                kill_group(process)

    def start(self, program, tests, share, shards):
        output = self.folder / f"build/run-{share}.txt"
        environment = {**os.environ, **ENVIRONMENT, "GTEST_TOTAL_SHARDS": str(shards),
                       "GTEST_SHARD_INDEX": str(share)}
        command = [f"build/dev/bin/test_{program}", "--gtest_fail_fast", "--gtest_brief=1",
                   f"--gtest_filter={tests}-{self.leave_out}"]
        with output.open("wb") as out:
            return subprocess.Popen(command, cwd=self.folder, env=environment, stdout=out, stderr=out,
                                    stdin=subprocess.DEVNULL, start_new_session=True,
                                    preexec_fn=bounded), output


def bounded():
    """A fault may ask for memory, or write, without end."""
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


def measure(scratch, numbered, texts, count, book):
    """Tries them until there are enough; what the book has already counts and is not tried again."""
    done = 0
    for number, fault in numbered:
        key = mutant_results.key_of(fault, texts[fault.path])
        if key not in book.trials:
            by = scratch.notice(fault, book.likely(fault.path))
            if by is None:
                continue
            tell(number, fault, texts, by)
            book.add(key, by)
        done += 1
        if done == count:
            return


def try_again(scratch, texts, book):
    """The survivors once more, wherever their lines stand now."""
    places = {mutant_results.key_of(fault, texts[path]): fault
              for path, text in texts.items() for fault in faults.faults_of(path, text)}
    for number, key in enumerate(book.survivors(), 1):
        fault = places.get(key)
        by = scratch.notice(fault, book.likely(fault.path)) if fault else "gone"
        if fault:
            tell(number, fault, texts, by)
        else:
            print(f"gone     {number:4} {key.path} {key.operator}: {key.line}", flush=True)
        if by:
            book.add(key, by)


def tell(number, fault, texts, by):
    line = faults.told(fault, texts[fault.path])
    print(f"{'killed' if by else 'SURVIVED':8} {number:4} {line}   {by}", flush=True)


def options_of(top):
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--folders", nargs="+", default=sorted(PROGRAMS), metavar="FOLDER",
                        help="folders or single files")
    parser.add_argument("--count", type=int, default=200)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--only", type=lambda text: {int(part) for part in text.split(",")},
                        help="numbers of the sample")
    parser.add_argument("--near", action="store_true", help="the closest test program alone")
    parser.add_argument("--leave-out", default="", metavar="TESTS", help="slow tests that can't see the folders")
    parser.add_argument("--shards", type=int, default=12, help="runs of a test program side by side; they wait a lot")
    parser.add_argument("--limit", type=int, help="seconds of a test program; not found out by a run before")
    parser.add_argument("--scratch", type=pathlib.Path, default=top / "build/mutants")
    parser.add_argument("--results", type=pathlib.Path, default=top / "build/mutants.tsv")
    parser.add_argument("--again", action="store_true")
    parser.add_argument("--list", action="store_true")
    parser.add_argument("--table", action="store_true")
    parser.add_argument("--self-test", action="store_true")
    return parser.parse_args()


def sources(top, folders):
    """path: text of all sources of the folders."""
    files = [file for folder in folders for file in sorted((top / folder).glob("*.cpp")) or [top / folder]]
    return {file.relative_to(top).as_posix(): file.read_text(encoding="utf-8") for file in files}


def run(top, options, book):
    texts = sources(top, options.folders)
    numbered = [(number, fault) for number, fault in enumerate(faults.sample(texts, options.seed), 1)
                if not options.only or number in options.only]
    if options.list:
        for number, fault in numbered[:options.count]:
            print(f"{number:4} {faults.told(fault, texts[fault.path])}")
        return
    scratch = Scratch(top, options.scratch.resolve(), options.shards, 1 if options.near else None,
                      options.leave_out)
    scratch.refresh()
    if options.again:
        texts = sources(top, sorted({key.path for key in book.survivors() if (top / key.path).is_file()}))
    scratch.measure(sorted({program for path in texts for program in scratch.programs_of(path)}),
                    options.limit)
    if options.again:
        try_again(scratch, texts, book)
    else:
        measure(scratch, numbered, texts, options.count, book)


def main():
    top = pathlib.Path(__file__).resolve().parent.parent
    options = options_of(top)
    if options.self_test:
        return 0 if all([faults.self_test(), mutant_results.self_test()]) else 1
    os.nice(10)
    signal.signal(signal.SIGTERM, signal.default_int_handler)
    book = mutant_results.Book(options.results, top / "tests/mutants/explained.tsv")
    try:
        if not options.table:
            run(top, options, book)
    except KeyboardInterrupt:
        print("stopped")
    if not options.list:
        book.print_table()
    return 0


if __name__ == "__main__":
    sys.exit(main())
