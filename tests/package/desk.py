"""A user with a home of his own at a virtual screen: starts programs there, looks for their windows, types."""
import os
import pathlib
import subprocess
import time

NOBODY = 65534
PATIENCE = 120
ACCENT = bytes.fromhex("0b7285")
BUTTON = 6  # pixels of it above each other that no text interrupts
FRESH = 1.1  # a window that came up by itself takes no keys in its first second


def until(what, condition, patience=PATIENCE):
    """Waits for the condition and gives what it gave."""
    end = time.monotonic() + patience
    while time.monotonic() < end:
        found = condition()
        if found:
            return found
        time.sleep(0.05)
    raise AssertionError(f"{what} does not come.")


def is_accent(pixel):
    return all(abs(part - wanted) < 8 for part, wanted in zip(pixel, ACCENT))


def has_passed(seconds):
    """A condition that is true when the time is over."""
    end = time.monotonic() + seconds
    return lambda: time.monotonic() > end


def sweep_port_locks():
    """Another test may have killed a program that held a port as root: its lock would refuse the port to the user."""
    for lock in pathlib.Path("/var/lock").glob("LCK..*"):
        try:
            if not pathlib.Path("/proc", lock.read_text().split()[0]).exists():
                lock.unlink()
        except (OSError, IndexError):
            continue  # it has gone by itself, or is not ours


class Desk:
    """The user is nobody where the test runs as root, else whoever runs it."""

    def __init__(self, folder, programs):
        self.home = pathlib.Path(folder)
        (self.home / "run").mkdir(mode=0o700, parents=True)
        self.as_user = {"user": NOBODY, "group": NOBODY, "extra_groups": []} if os.geteuid() == 0 else {}
        self.own(self.home)
        read, write = os.pipe()
        self.server = subprocess.Popen(["Xvfb", "-displayfd", str(write), "-ac", "-noreset", "-screen", "0", "1366x768x24", "-nolisten",
                                        "tcp"], pass_fds=[write], stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read) as numbers:
            display = ":" + numbers.readline().strip()
        self.environment = {"HOME": str(self.home), "PATH": f"{programs}:/usr/bin:/bin", "DISPLAY": display,
                            "XDG_RUNTIME_DIR": str(self.home / "run"), "LC_ALL": "C.UTF-8", "TZ": "UTC"}
        self.processes = []
        self.manager = self.start("openbox")
        self.processes.clear()

    def own(self, folder):
        """Everything below the folder belongs to the user."""
        for path in [folder, *pathlib.Path(folder).rglob("*")]:
            if self.as_user:
                os.chown(path, NOBODY, NOBODY, follow_symlinks=False)

    def start(self, *command):
        """Until end_all(); what it has to say lies in the file <name>.err of the home."""
        with open(self.home / f"{command[0]}.err", "w") as complaints:
            process = subprocess.Popen(command, env=self.environment, cwd=self.home, stdout=subprocess.DEVNULL,
                                       stderr=complaints, **self.as_user)
        self.processes.append(process)
        return process

    def run(self, *command):
        done = subprocess.run(command, env=self.environment, cwd=self.home, capture_output=True, text=True, timeout=PATIENCE,
                              **self.as_user)
        assert done.returncode == 0, f"{command}: {done.stderr}"
        return done.stdout

    def xdotool(self, *words):
        return subprocess.run(["xdotool", *words], env=self.environment, capture_output=True, text=True, timeout=PATIENCE)

    def titles(self):
        windows = self.xdotool("search", "--onlyvisible", "--name", ".").stdout.split()
        return {self.xdotool("getwindowname", window).stdout.strip() for window in windows}

    def shows(self, title):
        return any(shown.startswith(title) for shown in self.titles())

    def window(self, title):
        """Waits until it is there and has the keys."""
        try:
            until(f"the window {title!r}", lambda: self.shows(title))
        except AssertionError as failure:
            raise AssertionError(f"{failure} {self.state()}") from None
        until(f"the focus of {title!r}", lambda: self.xdotool("getactivewindow", "getwindowname").stdout.startswith(title))

    def state(self):
        """What a failure should know: the windows on show, how the programs are, and what they complained of."""
        programs = {process.args[0]: process.poll() for process in self.processes}
        said = {path.name: path.read_text()[-2000:] for path in self.home.glob("*.err")}
        return f"On show: {sorted(self.titles())}; programs: {programs}; said: {said}"

    def keys(self, *names):
        self.xdotool("key", "--delay", "30", *names)

    def type(self, text):
        self.xdotool("type", "--delay", "30", text)

    def click(self, x, y):
        self.xdotool("mousemove", str(x), str(y), "click", "1")

    def filled_button(self, x):
        """Height of the middle of the lowest button filled with the accent on the column x; 0 where there is none."""
        column = subprocess.run(["import", "-window", "root", "-crop", f"1x768+{x}+0", "-depth", "8", "rgb:-"],
                                env=self.environment, capture_output=True, timeout=PATIENCE).stdout
        filled = [is_accent(column[at:at + 3]) for at in range(0, len(column), 3)]
        for bottom in range(len(filled) - 1, BUTTON, -1):
            if all(filled[bottom - BUTTON:bottom]):
                return bottom - BUTTON // 2
        return 0

    def leave(self, program, question="Save Data?"):
        """Ends the program by its menu; what was not saved is not saved."""
        self.keys("ctrl+q")

        def ended():
            if program.poll() is None and self.shows(question):
                self.window(question)
                self.keys("Tab", "space")
            return program.poll() is not None
        until("the end of the program", ended)
        assert program.returncode == 0, program.returncode
        return (self.home / "sorvanto.err").read_text()

    def picture(self, path):
        subprocess.run(["import", "-window", "root", str(path)], env=self.environment, timeout=PATIENCE)

    def end_all(self):
        while self.processes:
            process = self.processes.pop()
            process.terminate()
            process.wait(PATIENCE)

    def close(self):
        self.processes += [self.server, self.manager]
        self.end_all()
