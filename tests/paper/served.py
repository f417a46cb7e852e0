"""The pharmacies of the gate on a server of its own: a database for each, with the values of its file."""
import os
import pathlib
import shutil
import subprocess
import sys

sys.path.append(str(pathlib.Path(__file__).resolve().parents[1] / "server"))

from scratch_server import Server  # noqa: E402


ROLES = {"bench": "bench", "owner": "sorvanto_owner"}


ROOM = 1_000_000_000  # bytes


def in_memory():
    """A folder in memory where there is room: a disk may take longer than all papers."""
    memory = pathlib.Path("/dev/shm")
    return memory if os.access(memory, os.W_OK) and shutil.disk_usage(memory).free > ROOM else pathlib.Path("/tmp")


def start(at_the_end):
    """A server without a network, which ends with the stack; it lets the two roles into all of its databases."""
    server = Server("--local", place=in_memory())
    at_the_end.callback(server.end)
    with open(server.folder / "data" / "pg_hba.conf", "a", encoding="utf-8") as doors:
        doors.write(f"local all {','.join(ROLES.values())} scram-sha-256\n")
    server.administer("DO $$ BEGIN PERFORM pg_reload_conf(); END $$")
    for role in ROLES:
        password_file = server.password_file(role)
        password_file.write_text(password_file.read_text().replace(":sorvanto:", ":*:"))
    return server


def address(server, database, role="bench"):
    return f"postgresql://{ROLES[role]}@/{database}?host={server.folder / 'run'}&port={server.port}"


def password(server, role="bench"):
    """Where the programs find it."""
    return {"PGPASSFILE": str(server.scratch / f"{role}.pgpass")}


def copy_all(server, tool, databases):
    """databases: files by name. Carries each to a database of that name, as a pharmacy would."""
    server.administer("".join(
        f'CREATE DATABASE "{name}" OWNER sorvanto_owner TEMPLATE sorvanto; GRANT CONNECT ON DATABASE "{name}" TO bench;\n'
        for name in databases))
    for name, file in databases.items():
        copy = subprocess.run([tool, "copy", file, address(server, name, "owner")], capture_output=True, text=True,
                              env={**os.environ, **password(server, "owner")}, check=False)
        if copy.returncode != 0:
            sys.exit(f"{name} does not go to the server: {copy.stderr}")
