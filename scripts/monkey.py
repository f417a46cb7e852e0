#!/usr/bin/env python3
"""Random mouse and keys on the real program, to find what nobody thought of.

  scripts/monkey.py [--build build/asan] [--seconds 300] [--seed 1] [--folder FOLDER]

Lays out a program folder with the sample pharmacy, starts a virtual screen, the simulated mixer and the
program from the build folder (sanitized, if it was built so), and sends events from a seeded generator. Ends
with 1 when the program crashed, a sanitizer reported something, or the program did not answer for half a minute; the
folder then holds its output, the events before and the last picture. Errors that the program itself
reported are printed, for a look: typing nonsense may well earn them.
"""
import argparse
import os
import pathlib
import random
import shutil
import signal
import subprocess
import sys
import tempfile
import time

KEYS = (["Tab"] * 8 + ["shift+Tab"] * 2 + ["Return"] * 4 + ["Escape"] * 4 + ["Down", "Up", "Left", "Right"] * 2
        + ["Page_Down", "Home", "End", "space", "Delete", "BackSpace", "F2", "F6", "shift+F6", "F4"]
        + ["ctrl+" + key for key in "s s n e p f a v c z x y Home End Right Left".split()]
        + ["alt+" + key for key in "f a h o y n s c Down Up".split()])
TEXTS = ["12", "0.5", "1,5", "1.234,5", "O'Brien", "abc", "100", "-3", "99999", "1/2/2024", "\u00e9", "%", "0", "[", "*"]
PATIENCE = 30
WIDTH, HEIGHT = 1366, 768


def lay_out(root, build, folder):
    (folder / "ports").mkdir(parents=True)
    for name in [*(root / "languages").glob("*.xml"), root / "data/dbupdate.xml", build / "bin/sorvanto"]:
        shutil.copy(name, folder)
    database = folder / "sorvanto.mdb"
    subprocess.run([build / "bin/sorvanto-db", "sample", database], check=True)
    (folder / "options.xml").write_text(
        "<Configuration><Version>1</Version><Options><CommPort>1</CommPort>"
        f"<DBLocation>{database}</DBLocation><Language>0</Language><DefPrinter/><DefCurrency>$</DefCurrency>"
        "</Options><Pharmacy><StoreName>Mill Road</StoreName><Address/><City/><State/><PostalCode/><Phone/><Fax/>"
        "<DEA/><ShowPatients>1</ShowPatients><OverrideSpeed>0</OverrideSpeed></Pharmacy></Configuration>")


def start_screen():
    read, write = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(write), "-screen", "0", f"{WIDTH}x{HEIGHT}x24", "-nolisten", "tcp"],
                              pass_fds=[write], stderr=subprocess.DEVNULL)
    os.close(write)
    with os.fdopen(read) as numbers:
        return server, ":" + numbers.readline().strip()


# Whole walks, so that the mixer runs and previews open as often as the screens are looked at: a make (with the
# quantity question) and a start, a mix signed or left, and each print menu's entries.
# Where these are below the window manager's title; the panel's button lies lower with each line above it.
PRINT, MAKE, SIDE_BAR = (486, 75), (194, 75), [(34, y) for y in (138, 194, 250, 306, 362)]
START = [(1210, y) for y in range(420, 540, 24)]


class Monkey:
    """Where it clicks: half anywhere, the rest on tool bar, side bar and mixer panel. Every tenth event is a whole
    walk: to a screen, to the mixer, or to a preview, each as often as the others."""

    def __init__(self, seed, display, log):
        self.random = random.Random(seed)
        self.environment = dict(os.environ, DISPLAY=display)
        self.log = log

    def place(self):
        areas = [(90, 760, 100, 730)] * 5 + [(15, 880, 60, 95)] * 3 + [(15, 55, 110, 370)] + [(1075, 1350, 100, 650)]
        left, right, top, bottom = self.random.choice(areas)
        return str(self.random.randint(left, right)), str(self.random.randint(top, bottom))

    def event(self):
        dice = self.random.random()
        if dice < 0.40:
            button = "3" if self.random.random() < 0.04 else "1"
            times = ["--repeat", "2"] if self.random.random() < 0.12 else []
            return ["mousemove", *self.place(), "click", *times, button]
        if dice < 0.44:
            return ["mousemove", *self.place(), "mousedown", "1", "mousemove", *self.place(), "mouseup", "1"]
        if dice < 0.55:
            return ["type", "--delay", "1", self.random.choice(TEXTS)]
        return ["key", "--delay", "1", self.random.choice(KEYS)]

    @staticmethod
    def click(place):
        return ["mousemove", str(place[0]), str(place[1]), "click", "1"]

    def walk(self):
        screen = [self.click(self.random.choice(SIDE_BAR))]
        mixer = [self.click(SIDE_BAR[1]), self.click(MAKE), ["sleep", "0.2"], ["key", "Return"], ["sleep", "1"],
                 *[self.click(place) for place in START]]
        preview = [self.click(self.random.choice(SIDE_BAR)), self.click(PRINT), ["sleep", "0.1"],
                   *[["key", "Down"]] * self.random.randint(1, 5), ["key", "Return"], ["sleep", "0.2"], ["key", "Return"]]
        return self.random.choice([screen, mixer, preview])

    def act(self):
        if self.random.random() < 0.1:
            for step in self.walk():
                self.send(step)
        self.send(self.event())

    def send(self, event):
        self.log.write(" ".join(event) + "\n")
        subprocess.run(["xdotool", *event], env=self.environment, stderr=subprocess.DEVNULL, timeout=PATIENCE)


def processor_time(process):
    fields = pathlib.Path(f"/proc/{process.pid}/stat").read_text().rsplit(")", 1)[1].split()
    return int(fields[11]) + int(fields[12])


def answers(process, display, picture):
    """A program that hangs in a loop uses the processor all the time; a calm one rests between two events."""
    for _ in range(PATIENCE * 2):
        if process.poll() is not None:
            return True
        before = processor_time(process)
        time.sleep(0.5)
        if process.poll() is not None or processor_time(process) - before < 40:
            return True
    subprocess.run(["import", "-window", "root", picture], env=dict(os.environ, DISPLAY=display))
    return False


def play(arguments, folder, display):
    """True when nothing was found until the time was over."""
    end = time.time() + arguments.seconds
    seed, count = arguments.seed, 0
    environment = dict(os.environ, DISPLAY=display, ASAN_OPTIONS="detect_leaks=0", UBSAN_OPTIONS="print_stacktrace=1")
    while time.time() < end:
        with open(folder / "output.txt", "w") as output, open(folder / "events.txt", "w") as log:
            program = subprocess.Popen([folder / "sorvanto"], env=environment, stdout=output, stderr=output)
            time.sleep(1.5)
            monkey = Monkey(seed, display, log)
            while time.time() < end and program.poll() is None:
                for _ in range(40):
                    monkey.act()
                    count += 1
                    if program.poll() is not None:
                        break
                log.flush()
                if program.poll() is None and not answers(program, display, folder / "hang.png"):
                    print(f"seed {seed}: the program does not answer.")
                    program.kill()
                    return False
            subprocess.run(["import", "-window", "root", folder / "last.png"], env=environment)
            if program.poll() is None:
                program.terminate()
                try:
                    program.wait(10)
                except subprocess.TimeoutExpired:
                    program.kill()
        said = (folder / "output.txt").read_text(errors="replace")
        if "Sanitizer" in said or "runtime error" in said or program.returncode not in (0, -signal.SIGTERM):
            print(f"seed {seed}: ended with {program.returncode}\n" + said[:4000])
            return False
        seed += 1
    print(f"{count} events, {seed - arguments.seed} starts.")
    return True


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--build", default="build/asan", type=pathlib.Path)
    parser.add_argument("--seconds", default=300, type=int)
    parser.add_argument("--seed", default=1, type=int)
    parser.add_argument("--folder", default=None, type=pathlib.Path)
    arguments = parser.parse_args()
    root = pathlib.Path(__file__).resolve().parent.parent
    folder = (arguments.folder or pathlib.Path(tempfile.mkdtemp(prefix="monkey-"))) / "program"
    lay_out(root, arguments.build.resolve(), folder)
    server, display = start_screen()
    helpers = [subprocess.Popen([arguments.build / "bin/sorvanto-mixersim", "--link", folder / "ports/COM1", "--speed", "300"],
                                stdout=subprocess.DEVNULL),
               subprocess.Popen(["openbox"], env=dict(os.environ, DISPLAY=display), stderr=subprocess.DEVNULL)]
    try:
        good = play(arguments, folder, display)
    finally:
        for helper in [*helpers, server]:
            helper.terminate()
    reports = folder / "errors.log"
    if reports.exists():
        print("What the program reported:\n" + reports.read_text(errors="replace")[-6000:])
    print(f"The folder: {folder}")
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main())
