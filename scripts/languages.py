#!/usr/bin/env python3
"""Compares the delivered language files with what the program asks for.

A text is asked for where the sources hand a literal to translated(), widgetText() or reportText(), where
a table of such a source holds it, or as a PANEL_TEXT of the panel's list. Called by languages.sh, which tells the options.
"""
import argparse
import pathlib
import re
import sys
import xml.etree.ElementTree as ElementTree

ROOT = pathlib.Path(__file__).resolve().parent.parent
CALL = re.compile(r"\b(?:translated|widgetText|reportText|(?<!define )PANEL_TEXT)\(")
ALIASES = "aliasedColumns("  # translates the table that it is given
TOKEN = re.compile(r'//[^\n]*|/\*.*?\*/|(?:\bu)?"((?:\\.|[^"\\])*)"(?:_s|_L1|_ba)?|\'(?:\\.|[^\'\\])\'', re.S)
ESCAPES = {"n": "\n", "r": "\r", "t": "\t"}
# A table's literal that is no text for a reader: names of controls and columns, statements, formats.
NO_TEXT = re.compile(r"^$|^[a-z]+[A-Z]\w*$|_|^SELECT|^ |^%\d$|^[a-z]+$|^\W*$")


def literals(source):
    """(start, end, text) of each string literal; comments are passed over, neighbours are one."""
    found = []
    for match in TOKEN.finditer(source):
        if match.group(1) is None:
            continue
        text = re.sub(r"\\(.)", lambda escape: ESCAPES.get(escape.group(1), escape.group(1)), match.group(1))
        if found and not source[found[-1][1]:match.start()].strip():
            start, _, before = found.pop()
            found.append((start, match.end(), before + text))
        else:
            found.append((match.start(), match.end(), text))
    return found


def closing(source, start, strings):
    """Where the bracket that opens before start is closed; brackets in literals don't count."""
    inside = {place for begin, end, _ in strings for place in range(begin, end)}
    depth = 1
    for place in range(start, len(source)):
        if place in inside:
            continue
        depth += {"(": 1, ")": -1}.get(source[place], 0)
        if depth == 0:
            return place
    return len(source)


def without_comments(source):
    return TOKEN.sub(lambda match: match.group(0) if match.group(1) is not None
                     or match.group(0)[0] == "'" else " " * len(match.group(0)), source)


class Asked:
    """What the sources ask for."""

    def __init__(self):
        self.certain = set()   # literals within a call
        self.possible = set()  # literals that may reach a call with a variable
        self.tables = set()    # those of them that stand in a table
        self.columns = set()   # texts that become names of columns
        self.words = set()     # every literal, whatever it is for
        for kind in ("*.cpp", "*.h", "*.inc"):
            for path in sorted((ROOT / "src").rglob(kind)):
                self.read(path)

    def read(self, path):
        source = without_comments(path.read_text(encoding="utf-8"))
        name = str(path.relative_to(ROOT))
        strings = literals(source)
        self.words.update(text.strip(" ") for _, _, text in strings)
        has_variable = ALIASES in source
        taken = []
        for call in CALL.finditer(source):
            end = closing(source, call.end(), strings)
            own = [string for string in strings if call.end() <= string[0] < end]
            taken += own
            has_variable |= not own and not source[call.end():end].startswith(("QString ", "const "))
            for _, _, text in own:
                self.certain.add(text.strip(" "))
                self.note_column(name, text)
        if has_variable:
            self.read_tables(name, source, [string for string in strings if string not in taken])

    def read_tables(self, name, source, strings):
        for start, end, text in strings:
            before, after = source[:start].rstrip()[-1:], source[end:].lstrip()[:1]
            if before not in tuple("{,:(") or after not in tuple("},:)"):
                continue
            text = text.strip(" ")
            self.possible.add(text)
            self.note_column(name, text)
            if before != "(" and after != ")" and not NO_TEXT.search(text):
                self.tables.add(text)

    def note_column(self, name, text):
        if name.startswith("src/records/") and text.isalnum():
            self.columns.add(text)


class File:
    """One language file."""

    def __init__(self, path):
        self.path = path
        self.faults = []
        root = ElementTree.parse(path).getroot()
        self.language = root.get("Language", "")
        if root.tag != "Translations" or path.name != self.language + "Translation.xml":
            self.faults.append("the root element does not tell the language of the file's name")
        self.texts = {}
        for entry in root:
            key, text = entry.get("English"), entry.get("Translated")
            if entry.tag != "Translate" or set(entry.attrib) != {"English", "Translated"}:
                self.faults.append(f"not an entry: {entry.tag} {dict(entry.attrib)}")
                continue
            if key in self.texts:
                self.faults.append(f"twice: {key}")
            if "'" in key:
                self.faults.append(f"never found because of its apostrophe: {key}")
            if "]" in text:
                self.faults.append(f"a bracket would end a column's name: {text}")
            if set(re.findall(r"%\d", key)) != set(re.findall(r"%\d", text)) and text:
                self.faults.append(f"other parts than in English: {text}")
            if text and ("&" in key) != ("&" in text):
                self.faults.append(f"access key missing or too many: {text}")
            self.texts[key] = text


def report(file, asked, english, show):
    faults = file.faults + [f"a full stop would split a column's name: {file.texts[key]}"
                            for key in sorted(asked.columns & set(file.texts)) if "." in file.texts[key]]
    wanted = asked.certain | english
    missing = sorted(wanted - set(file.texts))
    unused = sorted(key for key in file.texts if key not in asked.words)
    blank = sorted(key for key, text in file.texts.items() if not text.strip())
    same = sorted(key for key, text in file.texts.items() if text == key and any(map(str.isalpha, key)))
    if file.language == "English":
        same = []
    print(f"{file.language:<11} {len(file.texts):>4} texts {len(missing):>4} missing {len(unused):>4} unused "
          f"{len(blank):>4} blank {len(same):>4} as in English {len(faults):>4} faults")
    lists = [("missing", missing), ("fault", faults)]
    if show:
        lists += [("unused", unused), ("blank", blank), ("as in English", same)]
    for name, texts in lists:
        for text in texts:
            print(f"  {name}: {text!r}")
    return bool(missing or faults)


def main():
    parser = argparse.ArgumentParser(prog="languages.sh")
    parser.add_argument("--check", action="store_true", help="compare every file; 1 when a text is missing")
    parser.add_argument("--list", metavar="LANGUAGE", help="one language with its doubtful texts, by name")
    parser.add_argument("--folder", type=pathlib.Path, default=ROOT / "languages", help="where the files are")
    options = parser.parse_args()
    if not options.check and not options.list:
        parser.error("--check or --list LANGUAGE")

    asked = Asked()
    files = []
    for path in sorted(options.folder.glob("*Translation.xml")):
        try:
            files.append(File(path))
        except ElementTree.ParseError as error:
            print(f"{path.name}: can not be read: {error}")
            return 1
    languages = {file.language: file for file in files}
    if "English" not in languages:
        print(f"no EnglishTranslation.xml in {options.folder}")
        return 1
    english = set(languages["English"].texts)
    english |= {text for text in asked.possible if any(text in file.texts for file in files)}

    failed = False
    for file in files:
        if options.check or file.language == options.list:
            failed |= report(file, asked, english, file.language == options.list)
    if options.list and options.list not in languages:
        parser.error(f"no language {options.list}: " + ", ".join(languages))
    known = {text.lower() for text in english}
    doubtful = sorted(text for text in asked.tables
                      if text.lower() not in known and not re.search(r"^[A-Z][a-z]+[A-Z]|[\[\d:.+]", text))
    if options.check and doubtful:
        print("In a table of texts, but in no file:", ", ".join(repr(text) for text in doubtful))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
