#!/usr/bin/env python3
"""Installs the program into a scratch folder and uses it there as an ordinary user, at a virtual screen.

  tests/package/install_test.py BUILD           what "cmake --install" puts there; with SORVANTO_LONG=1 also the package
  tests/package/install_test.py --deb PACKAGE   what a Debian package brings, installed and removed by dpkg

The first start lays out the user's folder; a batch is made on a simulated mixer; a folder of the first release is
taken over with its records, wording and open mixes; after the removal everything that is the user's is still there.
"""
import gzip
import hashlib
import os
import pathlib
import re
import shutil
import sqlite3
import struct
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree

from desk import FRESH, Desk, has_passed, sweep_port_locks, until

HERE = pathlib.Path(__file__).resolve().parent
SOURCE = HERE.parent.parent
TOOLS = ["sorvanto", "sorvanto-db", "sorvanto-report", "sorvanto-mixersim"]
PANEL = 1210  # across the panel's button, the window filling the screen
MAIN = "Sorvanto Control Panel: "
QUERIES = {table: f"SELECT * FROM {table} ORDER BY 1" for table in
           ["Chemical", "Formula", "FormChem", "Log", "LogChem", "Patient", "RXs"]}

scratch = root = desk = program_files = None


class Build:
    """The program as a build installs it."""

    def __init__(self, folder):
        self.folder = folder

    def install(self):
        said_by("cmake", "--install", self.folder, "--prefix", root / "usr")

    def remove(self):
        for name in (pathlib.Path(self.folder) / "install_manifest.txt").read_text().splitlines():
            pathlib.Path(name).unlink()


class Package:
    """The program as dpkg installs it, in a system of its own that has no other package."""

    def __init__(self, file):
        self.file = file

    def dpkg(self, *words):
        said_by("dpkg", f"--root={root}", "--force-not-root", "--force-depends", "--force-script-chrootless", *words)

    def install(self):
        for folder in ["info", "updates"]:
            (root / "var/lib/dpkg" / folder).mkdir(parents=True, exist_ok=True)
        (root / "var/lib/dpkg/status").touch()
        self.dpkg("--install", self.file)

    def remove(self):
        self.dpkg("--purge", "sorvanto")


def setUpModule():
    global scratch, root, desk, program_files
    scratch = pathlib.Path(tempfile.mkdtemp(prefix="sorvanto-install-"))
    scratch.chmod(0o755)
    root = scratch / "root"
    root.mkdir()
    program_files = Package(ARGUMENTS[1]) if ARGUMENTS[0] == "--deb" else Build(ARGUMENTS[0])
    program_files.install()
    desk = Desk(scratch / "home", root / "usr/bin")


def tearDownModule():
    if desk:
        desk.close()
    shutil.rmtree(scratch)


def said_by(*command):
    run = subprocess.run(command, capture_output=True, text=True)
    if run.returncode:
        raise RuntimeError(f"{' '.join(map(str, command))} ended with {run.returncode}:\n{run.stdout}{run.stderr}")
    return run.stdout


def completions(tool, *words):
    """What bash offers for the last of the words."""
    ask = ('source "$0"; compopt() { :; }; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); "_${1//-/_}"; '
           'printf "%s\\n" "${COMPREPLY[@]}"')
    script = root / "usr/share/bash-completion/completions" / tool
    return said_by("bash", "-c", ask, script, tool, *words).split("\n")[:-1]


def rows(folder, query):
    with sqlite3.connect(f"file:{folder}/sorvanto.mdb?mode=ro", uri=True) as file:
        return file.execute(query).fetchall()


def contents(folder):
    """Every file below the folder with its checksum."""
    return {str(path.relative_to(folder)): hashlib.sha256(path.read_bytes()).hexdigest()
            for path in folder.rglob("*") if path.is_file() and not path.is_symlink()}


class WhatIsInstalled(unittest.TestCase):
    """The pieces that a desktop expects of a program, each read by its own judge."""

    def test_the_menu_entry_and_the_catalogue_are_valid(self):
        said_by("desktop-file-validate", root / "usr/share/applications/sorvanto.desktop")
        said_by("appstreamcli", "validate", "--no-net", root / "usr/share/metainfo/org.sorvanto.ControlPanel.metainfo.xml")

    def test_every_picture_of_the_catalogue_is_in_the_manual(self):
        entry = ElementTree.parse(root / "usr/share/metainfo/org.sorvanto.ControlPanel.metainfo.xml")
        pictures = [image.text.split("/pictures/")[1] for image in entry.iter("image")]
        self.assertGreaterEqual(len(pictures), 3)
        for picture in pictures:
            self.assertTrue((root / "usr/share/doc/sorvanto/pictures" / picture).is_file(), picture)

    def test_the_manual_has_all_its_pages_and_pictures(self):
        installed = root / "usr/share/doc/sorvanto/manual"
        delivered = [file for file in (SOURCE / "docs/manual").rglob("*") if file.is_file()]
        self.assertGreater(len(delivered), 30)
        for file in delivered:
            self.assertTrue((installed / file.relative_to(SOURCE / "docs/manual")).is_file(), file)

    def test_the_icons_have_the_size_of_their_folder(self):
        icons = sorted((root / "usr/share/icons/hicolor").glob("*/apps/sorvanto.png"))
        self.assertGreaterEqual(len(icons), 8)
        for icon in icons:
            width, height = struct.unpack(">II", icon.read_bytes()[16:24])
            self.assertEqual(f"{width}x{height}", icon.parent.parent.name)
        self.assertTrue((root / "usr/share/icons/hicolor/scalable/apps/sorvanto.svg").is_file())

    def test_one_version_everywhere(self):
        version = re.search(r"project\(sorvanto VERSION (\S+)", (SOURCE / "CMakeLists.txt").read_text()).group(1)
        for tool in TOOLS:
            self.assertEqual(said_by(root / "usr/bin" / tool, "--version"), f"{tool} {version}\n")
            page = gzip.decompress((root / f"usr/share/man/man1/{tool}.1.gz").read_bytes()).decode()
            self.assertIn(f'"sorvanto {version}"', page)
        manual = (root / "usr/share/doc/sorvanto/manual/README.md").read_text()
        self.assertTrue(manual.splitlines()[0].endswith(f"version {version}"), manual.splitlines()[0])
        self.assertIn(f'version="{version}"', (root / "usr/share/metainfo/org.sorvanto.ControlPanel.metainfo.xml").read_text())

    def test_each_command_and_option_is_in_the_manual_page_and_completed(self):
        for tool in TOOLS:
            told = said_by(root / "usr/bin" / tool, "--help")
            options = set(re.findall(r"--[a-z-]+\b", told)) - {"--help-all"}
            self.assertGreaterEqual(len(options), 2)
            commands = set(re.findall(rf"^  (?:{tool} )?([a-z][a-z-]*)(?: [A-Z]|  |$)", told, re.M)) - {tool}
            if tool in ["sorvanto-db", "sorvanto-report"]:
                self.assertGreaterEqual(len(commands), 7, tool)
            page = gzip.decompress((root / f"usr/share/man/man1/{tool}.1.gz").read_bytes()).decode().replace("\\-", "-")
            completed = {*completions(tool, ""), *completions(tool, "--"), *completions(tool, "first", "--")}
            for word in sorted(options | commands):
                self.assertRegex(page, rf"(?<![a-z-]){word}(?![a-z-])", tool)
                self.assertIn(word, completed, tool)

    def test_what_was_begun_is_completed(self):
        self.assertEqual(completions("sorvanto-report", "work"), ["worksheet"])
        self.assertEqual(completions("sorvanto-db", "fo"), ["forget"])

    def test_the_notices_name_each_library_that_is_used(self):
        notices = (root / "usr/share/doc/sorvanto/copyright").read_text()
        of_the_system = r"lib(c|m|gcc_s|stdc\+\+)\.so|ld-linux"
        linked = {name for tool in TOOLS
                  for name in re.findall(r"NEEDED.*\[(\S+)\]", said_by("readelf", "-d", root / "usr/bin" / tool))
                  if not re.match(of_the_system, name)}
        self.assertGreaterEqual(len(linked), 10)
        linked.add("libpq.so.5")  # loaded when a server is first asked
        names = {"glib": "GLib", "gobject": "GLib", "gsf": "libgsf", "zint": "Zint", "sqlite3": "SQLite", "pq": "libpq"}
        for library in sorted(linked):
            name = re.match(r"lib(?:Qt6)?([A-Za-z]+3?)", library).group(1)
            self.assertRegex(notices, rf"\b{names.get(name, name)}\b", library)

    def test_the_serial_adapter_is_the_seated_users(self):
        rule = (root / "usr/lib/udev/rules.d/70-sorvanto.rules").read_text()
        self.assertIn('KERNEL=="ttyUSB[0-9]*|ttyACM[0-9]*", TAG+="uaccess"', rule)


class TheUsersFolder(unittest.TestCase):
    def tearDown(self):
        desk.picture(scratch.parent / "sorvanto-install-last.png")
        desk.end_all()

    def simulator(self, folder):
        desk.start("sorvanto-mixersim", "--link", str(folder / "ports/COM1"), "--speed", "200")
        until("the simulated mixer", (folder / "ports/COM1").exists)

    def no_failure(self, folder):
        """A slow machine's blocks are noted in the log; they are no failures."""
        log = folder / "errors.log"
        lines = log.read_text().splitlines() if log.exists() else []
        self.assertEqual([line for line in lines if "  stood still for " not in line], [])

    def start_the_mix(self, folder):
        """Presses the panel's one filled button, once: pressed again it would stop the mix."""
        def is_running():
            journals = [path.read_text() for path in (folder / "mixes").glob("*.xml")]
            return any('State="loaded"' not in journal for journal in journals)

        def button():
            sweep_port_locks()
            return desk.filled_button(PANEL)
        desk.click(PANEL, until("the button that starts", button))
        until("the mix", is_running)

    def make_a_batch(self, folder):
        before = rows(folder, "SELECT count(*) FROM Log")[0][0]
        program = desk.start("sorvanto")
        desk.window(MAIN + "Formulas")
        desk.keys("ctrl+m")
        desk.window("Quantity to Make")
        desk.keys("Return")
        desk.window(MAIN + "Current Formula")

        self.start_the_mix(folder)
        desk.window("Log Initials")
        until("its keys", has_passed(FRESH))
        for initials in ["AB", "CD"]:
            desk.type(initials)
            desk.keys("Return")
        until("the log", lambda: rows(folder, "SELECT count(*) FROM Log")[0][0] == before + 1)
        desk.window(MAIN + "Formulas")
        desk.leave(program)
        self.assertEqual(rows(folder, "SELECT log_Initials, log_Verified FROM Log ORDER BY LogID DESC LIMIT 1"),
                         [("AB", "CD")])

    def test_a_first_start_a_batch_and_the_removal(self):
        folder = desk.home / ".local/share/sorvanto"
        program = desk.start("sorvanto")
        desk.window("Sorvanto Language")
        desk.keys("space")  # the first one: English
        desk.window(MAIN + "Formulas")
        self.assertEqual(desk.leave(program), "")
        self.assertEqual(folder.stat().st_mode & 0o777, 0o700)
        self.assertEqual(rows(folder, "SELECT count(*) FROM Formula"), [(0,)])
        self.no_failure(folder)

        (folder / "sorvanto.mdb").unlink()
        desk.run("sorvanto-db", "sample", str(folder / "sorvanto.mdb"))
        self.simulator(folder)
        self.make_a_batch(folder)
        self.no_failure(folder)
        desk.run("sorvanto-report", "chemicals", "--database", str(folder / "sorvanto.mdb"), "--pdf", "chemicals.pdf")
        self.assertTrue((desk.home / "chemicals.pdf").read_bytes().startswith(b"%PDF"))

        before = contents(desk.home)
        self.addCleanup(program_files.install)
        program_files.remove()
        self.assertEqual(contents(root / "usr"), {})
        self.assertEqual(contents(desk.home), before)
        program_files.install()
        program = desk.start("sorvanto")
        desk.window(MAIN + "Formulas")
        desk.leave(program)
        self.no_failure(folder)

    def test_a_folder_of_the_first_release_is_taken_over(self):
        folder = desk.home / "pharmacy"
        shutil.copytree(SOURCE / "tests/version-1.0", folder)
        with sqlite3.connect(folder / "sorvanto.mdb") as file:
            file.executescript((folder / "sorvanto.sql").read_text())
        options = (folder / "options.xml").read_text().replace("@FOLDER@", str(folder))
        (folder / "options.xml").write_text(options)
        desk.own(folder)
        records = {table: rows(folder, query) for table, query in QUERIES.items()}
        journal = (folder / "mixes/3FA21C09.xml").read_bytes()

        program = desk.start("sorvanto", "--folder", "pharmacy")
        desk.window("Sorvanto-Steuerung: Rezepturen")
        desk.leave(program, question="Speichern?")

        self.assertEqual({table: rows(folder, query) for table, query in QUERIES.items()}, records)
        self.assertEqual(rows(folder, "SELECT count(*) FROM FileIdentity"), [(1,)])
        self.assertEqual(rows(folder, "SELECT hst_What FROM History"), [("begun",)])
        self.assertEqual((folder / "options.xml").read_text(), options)
        self.assertEqual((folder / "mixes/3FA21C09.xml").read_bytes(), journal)
        self.assertTrue(list((folder / "backups").glob("*.mdb")))
        self.assertEqual((folder / "dbupdate.xml").read_bytes(), (SOURCE / "data/dbupdate.xml").read_bytes())
        self.assertEqual((folder / "dbupdate.xml.before").read_bytes(), (SOURCE / "tests/version-1.0/dbupdate.xml").read_bytes())
        self.check_wording(folder)
        self.no_failure(folder)

    def check_wording(self, folder):
        def texts(path):
            return {entry.get("English"): entry.get("Translated") for entry in ElementTree.parse(path).getroot()}
        own, delivered = texts(folder / "GermanTranslation.xml"), texts(SOURCE / "languages/GermanTranslation.xml")
        self.assertEqual(own.pop("Strength"), "Gehalt")
        self.assertEqual(own.pop("Our own shelf"), "Unser Regal")
        delivered.pop("Strength")
        self.assertEqual({english: own.get(english) for english in delivered}, delivered)


def main():
    """The tests on what the build installs, then, where there is time, on the package."""
    global ARGUMENTS
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    ARGUMENTS = sys.argv[1:3] if sys.argv[1] == "--deb" else sys.argv[1:2]
    run = unittest.main(argv=sys.argv[:1] + sys.argv[1 + len(ARGUMENTS):], exit=False)
    good = run.result.wasSuccessful()
    if good and ARGUMENTS[0] != "--deb" and os.environ.get("SORVANTO_LONG") == "1":
        package = said_by(SOURCE / "scripts/make-package.sh").splitlines()[-1]
        good = subprocess.run([sys.executable, __file__, "--deb", package]).returncode == 0
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main())
