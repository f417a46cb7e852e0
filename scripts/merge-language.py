#!/usr/bin/env python3
"""Brings a language file of a program folder up to date and keeps its user's own wording.

  scripts/merge-language.py DELIVERED TARGET   adds new texts to TARGET; replaces texts that nobody changed
  scripts/merge-language.py --note REV         before a release: notes the texts that were delivered at REV and
                                               read differently now, in languages/former.json
  scripts/merge-language.py --self-test        runs it over small examples

A text is unchanged by its user when it is one that was delivered before. A file that can't be read is left alone.
"""
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

LANGUAGES = pathlib.Path(__file__).resolve().parent.parent / "languages"
FORMER = LANGUAGES / "former.json"


def texts_of(source):
    """(language, {English: text}) of a file's content, the first entry of a key counting."""
    root = ElementTree.fromstring(source)
    texts = {}
    for entry in root.findall("Translate"):
        texts.setdefault(entry.get("English", ""), entry.get("Translated", ""))
    return root.get("Language", ""), texts


def escaped(text):
    for sign, reference in (("&", "&amp;"), ("<", "&lt;"), (">", "&gt;"), ('"', "&quot;"), ("\t", "&#9;"),
                            ("\n", "&#10;"), ("\r", "&#13;")):
        text = text.replace(sign, reference)
    return text


def merged(delivered, target, former):
    """The texts of target brought up to date. former: {English: [texts delivered before]}."""
    result = dict(target)
    for english, text in delivered.items():
        if english not in target or target[english] in former.get(english, []):
            result[english] = text
    return result


def write(path, language, texts):
    lines = [f'<Translations Language="{escaped(language)}">']
    lines += [f'<Translate English="{escaped(english)}" Translated="{escaped(text)}"/>'
              for english, text in texts.items()]
    handle, temporary = tempfile.mkstemp(dir=path.parent, prefix=path.name)
    with os.fdopen(handle, "w", encoding="utf-8", newline="\n") as file:
        file.write("\n".join(lines) + "\n</Translations>\n")
        file.flush()
        os.fsync(file.fileno())
    os.replace(temporary, path)


def former_texts():
    return json.loads(FORMER.read_text(encoding="utf-8")) if FORMER.exists() else {}


def merge(delivered_path, target_path):
    language, delivered = texts_of(delivered_path.read_bytes())
    try:
        _, target = texts_of(target_path.read_bytes())
    except (ElementTree.ParseError, OSError) as failure:
        print(f"Left as it is, since it can't be read: {target_path} ({failure})")
        return
    result = merged(delivered, target, former_texts().get(language, {}))
    if result != target:
        write(target_path, language, result)


def note(revision):
    former = former_texts()
    for path in sorted(LANGUAGES.glob("*.xml")):
        language, now = texts_of(path.read_bytes())
        before = subprocess.run(["git", "show", f"{revision}:languages/{path.name}"], capture_output=True,
                                cwd=LANGUAGES.parent, check=True).stdout
        for english, text in texts_of(before)[1].items():
            known = former.setdefault(language, {}).setdefault(english, [])
            if text != now.get(english, text) and text not in known:
                known.append(text)
            if not known:
                del former[language][english]
    FORMER.write_text(json.dumps(former, ensure_ascii=False, indent=0, sort_keys=True) + "\n", encoding="utf-8")


def self_test():
    delivered = {"Save": "Speichern", "New": "Neu", "Lot": "Charge"}
    former = {"Save": ["Sichern", "Ablegen"]}
    examples = [
        ("a new text is added", {"Save": "Speichern", "Lot": "Charge"}, delivered),
        ("an unchanged one is brought up to date", {**delivered, "Save": "Sichern"}, delivered),
        ("also from an older version", {**delivered, "Save": "Ablegen"}, delivered),
        ("a user's own wording stays", {**delivered, "Save": "Los!"}, {**delivered, "Save": "Los!"}),
        ("so does a user's own text", {**delivered, "x": "y"}, {**delivered, "x": "y"}),
        ("an emptied text stays empty", {**delivered, "Lot": ""}, {**delivered, "Lot": ""}),
    ]
    failed = [name for name, target, expected in examples if merged(delivered, target, former) != expected]
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder) / "x.xml"
        hard = {'a "b" <c> & d': "Zeile 1\r\nZeile 2\t\u00a0Ende"}
        write(path, "German", hard)
        if texts_of(path.read_bytes()) != ("German", hard):
            failed.append("what is written reads back")
    print(f"language merge self-test: {len(examples) + 1} examples, {len(failed)} failed")
    for name in failed:
        print("  failed:", name)
    return 1 if failed else 0


def main(arguments):
    if arguments == ["--self-test"]:
        return self_test()
    if len(arguments) == 2 and arguments[0] == "--note":
        note(arguments[1])
        return 0
    if len(arguments) != 2:
        print(__doc__)
        return 2
    merge(pathlib.Path(arguments[0]), pathlib.Path(arguments[1]))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
