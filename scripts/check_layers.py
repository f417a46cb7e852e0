#!/usr/bin/env python3
"""Checks that the layers of the house stand: an #include only ever runs downward.

  scripts/check_layers.py --check       prints each offending line; exit code 1 if there is one
  scripts/check_layers.py --self-test   runs the checker over small examples of its own

Also refused: the C interface of a database engine (its header, and the names of its types and functions) outside the
folder of that engine below src/platform/data, the collective header <QtWidgets>, outside src/platform everything that asks the user or
reads the clock past the program's own ports (QMessageBox, QFileDialog, QInputDialog, currentDateTime ...), and above the
records every program-wide value that is reached by its name in basMain: those layers are handed a Context.
"""
import pathlib
import re
import sys

# Lowest first; layers of one line stand side by side and do not see each other.
LAYERS = [
    ["platform/basic"],
    ["platform/ask", "platform/xml", "platform/data", "platform/serial"],
    ["history"],
    ["db", "trace", "platform/widgets"],
    ["platform/report"],
    ["setup"],
    ["mixer/protocol"],
    ["mixer"],
    ["shared"],
    ["config", "manual", "prices"],
    ["records"],
    ["reports"],
    ["mixing"],
    ["screens"],
    ["core"],
    ["app", "tools"],
]
RANK = {layer: rank for rank, layers in enumerate(LAYERS) for layer in layers}

# Narrower than their place in the house: what these see at most.
ONLY = {
    "setup": {"platform/basic", "platform/xml"},
    "mixer/protocol": {"platform/basic"},
    "mixer": {"platform/basic", "platform/xml", "platform/ask", "platform/serial", "platform/widgets",
              "mixer/protocol"},
    "tools/mixersim": {"platform/basic", "platform/serial", "mixer/protocol"},
    "manual": {"platform/basic", "platform/widgets", "shared"},
    "prices": {"platform/basic", "platform/data", "history", "shared"},
    "history": {"platform/basic", "platform/data"},
    "db": {"platform/basic", "platform/data", "platform/xml", "history"},
    "trace": {"platform/basic", "platform/data"},
    "tools/db": {"platform/basic", "platform/data", "platform/xml", "db", "history"},
}

# The C interface of each engine belongs to one folder.
ENGINES = {
    "src/platform/data/sqlite/": (re.compile(r"sqlite3(ext)?\.h"), re.compile(r"\bsqlite3(_\w+)?\b|\bSQLITE_[A-Z]+")),
    "src/platform/data/postgres/": (re.compile(r"(.*/)?(libpq-\w+|libpq/.*)\.h"),
                                    re.compile(r"\bPQ[a-z]\w+\b|\bPG(conn|result)\b")),
}

INCLUDE = re.compile(r'^\s*#\s*include\s*(["<])([^">]+)[">]')
PORTS = re.compile(r"\b(QMessageBox|QFileDialog|QInputDialog|currentDateTime|currentDateTimeUtc|currentDate"
                   r"|currentTime)\b")
GLOBALS = re.compile(r"\bbasMain::")
WITH_CONTEXT = {"config", "reports", "mixing", "screens", "core"}
SUFFIXES = {".h", ".cpp"}


def layer_of(path):
    """The layer that a path below src/ lies on, or None for a header of another world."""
    parts = path.split("/")
    for depth in (2, 1):
        if len(parts) > depth and "/".join(parts[:depth]) in RANK:
            return "/".join(parts[:depth])
    return None


def place_of(path):
    """(layer, tool or layer) of a file given from the top of the tree."""
    parts = path.split("/")
    if parts[0] == "src":
        layer = layer_of("/".join(parts[1:]))
        return layer, layer
    return parts[0], "/".join(parts[:2]) if parts[0] == "tools" else parts[0]


def without_comments(text):
    """The text with comments blanked, line by line as before."""
    text = re.sub(r"/\*.*?\*/", lambda match: re.sub(r"[^\n]", " ", match.group()), text, flags=re.S)
    return re.sub(r"(?m)//.*$", "", text)


def offences(path, text):
    """What is wrong in one file: a list of (line number, line, why)."""
    found = []
    layer, place = place_of(path)
    if layer is None:
        return [(0, "", "lies on no layer")]
    for number, line in enumerate(without_comments(text).splitlines(), 1):
        why = include_offence(layer, place, INCLUDE.match(line)) or engine_offence(path, line)
        if why is None and not path.startswith("src/platform/") and PORTS.search(line):
            why = "asks or reads the clock past platform/ask and platform/basic"
        if why is None and layer in WITH_CONTEXT and GLOBALS.search(line):
            why = "reaches past the Context that it is handed"
        if why:
            found.append((number, line.strip(), why))
    return found


def engine_offence(path, line):
    for folder, (header, names) in ENGINES.items():
        include = INCLUDE.match(line)
        found = header.fullmatch(include.group(2)) if include else names.search(line)
        if found and not path.startswith(folder):
            return f"only {folder} may use this engine"
    return None


def include_offence(layer, place, match):
    if not match:
        return None
    quote, name = match.groups()
    if name == "QtWidgets" or name.startswith("QtWidgets/"):
        return "includes all widgets at once"
    target = layer_of(name) if quote == '"' else None
    if target is None or target == layer:
        return None
    if place in ONLY:
        return None if target in ONLY[place] else f"{place} may not see {target}"
    if RANK[target] >= RANK[layer]:
        return f"{layer} may not see {target}"
    return None


def check(top):
    bad = 0
    files = [file for folder in ("src", "app", "tools") for file in sorted((top / folder).rglob("*"))
             if file.suffix in SUFFIXES]
    for file in files:
        path = file.relative_to(top).as_posix()
        for number, line, why in offences(path, file.read_text(encoding="utf-8")):
            print(f"{path}:{number}: {line}   <- {why}")
            bad += 1
    print(f"layers: {len(files)} files, {bad} offending lines")
    return bad == 0


def self_test():
    examples = [
        ("src/records/clsLog.cpp", '#include "shared/Guard.h"\n#include <QString>\n', 0),
        ("src/records/clsLog.cpp", '#include "screens/frmLog.h"\n', 1),
        ("src/records/clsLog.cpp", '// #include "screens/frmLog.h"\n/* QMessageBox\n QFileDialog */\n', 0),
        ("src/platform/data/Recordset.cpp", '#include "platform/xml/XmlDocument.h"\n', 1),
        ("src/platform/data/Recordset.cpp", '#include "platform/data/Connection.h"\n', 0),
        ("src/platform/basic/Text.cpp", '#include "shared/basMain.h"\n', 1),
        ("src/mixer/protocol/Frame.cpp", '#include "platform/serial/Port.h"\n', 1),
        ("src/mixer/ctlSorvanto.cpp", '#include "mixer/protocol/Frame.h"\n', 0),
        ("src/mixer/ctlSorvanto.cpp", '#include "shared/basMain.h"\n', 1),
        ("src/screens/frmLog.cpp", "#include <QtWidgets>\nQMessageBox::warning(this);\n", 2),
        ("src/core/frmMain.cpp", "auto now = QDateTime::currentDateTime();\n", 1),
        ("src/platform/basic/Dates.cpp", "return QDateTime::currentDateTime();\n", 0),
        ("tools/mixersim/main.cpp", '#include "records/clsLog.h"\n', 1),
        ("app/main.cpp", '#include "core/frmMain.h"\n', 0),
        ("src/screens/frmLog.cpp", "basMain::Main->refreshForm();\nm_context.window->refreshForm();\n", 1),
        ("src/records/clsLog_add.cpp", "const auto connection = basMain::gConnection;\n", 0),
        ("src/core/ProblemTable.cpp", '{"basMain:announce", "The status line"},\n', 0),
        ("src/nowhere/Thing.h", "", 1),
        ("src/platform/data/sqlite/Guard.cpp", "#include <sqlite3.h>\nsqlite3* database;\nsqlite3_close(nullptr);\n", 0),
        ("src/platform/data/Recordset.cpp", "#include <sqlite3.h>\n", 1),
        ("src/core/DatabaseUpdater.cpp", "sqlite3* database;\nreturn sqlite3_changes(database) == SQLITE_OK;\n", 2),
        ("src/core/DatabaseUpdater.cpp", "// sqlite3_close is the engine's\nauto engine = sqlite::openFile(path);\n", 0),
        ("tools/tour/RawDatabase.h", "struct sqlite3;\n", 1),
        ("tools/db/main.cpp", '#include "platform/data/sqlite/Backup.h"\n', 0),
        ("src/platform/data/sqlite/OpenFile.cpp", "#include <libpq-fe.h>\nPGconn* connection;\n", 2),
        ("src/platform/data/Connection.cpp", "#include <postgresql/libpq-fe.h>\n", 1),
    ]
    failed = 0
    for path, text, expected in examples:
        found = offences(path, text)
        if len(found) != expected:
            failed += 1
            print(f"self-test: {path}: {found}, expected {expected} offences in:\n{text}")
    print(f"layers self-test: {len(examples)} examples, {failed} failed")
    return failed == 0


def main(arguments):
    if arguments == ["--self-test"]:
        return 0 if self_test() else 1
    if arguments in ([], ["--check"]):
        return 0 if check(pathlib.Path(__file__).resolve().parent.parent) else 1
    print(__doc__, file=sys.stderr)
    return 2


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
