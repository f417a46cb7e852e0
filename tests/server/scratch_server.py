"""A server in a scratch folder of the tests, made by its one command and asked by the server's own shell."""
import os
import pathlib
import re
import shutil
import socket
import subprocess
import tempfile
import time
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
PATIENCE = 120  # seconds; what is not over by then hangs
START = ROOT / "scripts" / "start-server.sh"


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


class Server:
    """A server in a scratch folder, and its benches' way of asking it."""

    def __init__(self, *options, place="/tmp"):
        self.scratch = pathlib.Path(tempfile.mkdtemp(prefix="srv", dir=place))  # a socket's path is short
        self.scratch.chmod(0o755)
        self.folder = self.scratch / "s"
        self.port = free_port()
        self.options = options
        self.said = self.command("--port", str(self.port), *options).stdout

    def command(self, *arguments):
        done = subprocess.run([START, self.folder, *arguments], capture_output=True, text=True)
        assert done.returncode == 0, done.stderr
        return done

    def end(self):
        self.command("--stop")
        shutil.rmtree(self.scratch)

    def password_file(self, role):
        copy = self.scratch / f"{role}.pgpass"
        copy.touch(mode=0o600)
        copy.write_text((self.folder / f"{role}.pgpass").read_text())
        return copy

    def ask(self, statement, role="bench", database="sorvanto", **settings):
        """Exit code, output, error of one shell; a list holds statements that it sends one by one."""
        statements = [statement] if isinstance(statement, str) else statement
        login = "sorvanto_owner" if role == "owner" else role
        words = {"host": self.folder / "run", "port": self.port, "user": login, "dbname": database, **settings}
        environment = {**os.environ, "PGPASSFILE": str(self.password_file(role)), "PGOPTIONS": "-c search_path=sorvanto"}
        done = subprocess.run(
            ["psql", "-X", "-q", "-A", "-t", "-v", "VERBOSITY=verbose", "-v", "ON_ERROR_STOP=1",
             " ".join(f"{name}={value}" for name, value in words.items()),
             *[word for one in statements for word in ("-c", one)]],
            capture_output=True, text=True, env=environment, cwd="/", timeout=PATIENCE)
        return done.returncode, done.stdout.strip(), done.stderr

    def administer(self, statement):
        """As the account that runs the server."""
        account = ["setpriv", "--reuid", "postgres", "--regid", "postgres", "--init-groups"] if os.getuid() == 0 else []
        subprocess.run([*account, "psql", "-X", "-q", "-v", "ON_ERROR_STOP=1", "-h", self.folder / "run", "-p",
                        str(self.port), "-U", "sorvanto_admin", "-d", "sorvanto"], input=statement, text=True, check=True,
                       cwd="/")

    def value(self, statement, **who):
        code, out, err = self.ask(statement, **who)
        assert code == 0, err
        return out

    def until(self, condition):
        """Asks again and again until the owner finds it true."""
        end = time.monotonic() + PATIENCE
        while self.value(condition, role="owner") != "t":
            assert time.monotonic() < end, f"never true: {condition}"

    def state(self, statement, **who):
        """The five characters by which the server names what was wrong; where nobody was let in its sentence; empty
        where nothing was wrong."""
        code, _, err = self.ask(statement, **who)
        found = re.search(r"ERROR:  (\w{5}):", err)
        return found.group(1) if found else ("" if code == 0 else err)


class LocalServer(unittest.TestCase):
    """Most tests share one server without a network."""

    server = None

    @classmethod
    def setUpClass(cls):
        if not LocalServer.server:
            LocalServer.server = Server("--local")
            unittest.addModuleCleanup(LocalServer.server.end)
        cls.value, cls.state = cls.server.value, cls.server.state
