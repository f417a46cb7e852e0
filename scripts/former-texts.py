#!/usr/bin/env python3
"""Before a release: notes the texts that were delivered at a revision and read differently now.

  scripts/former-texts.py REV

They go into languages/former.json. By it an upgrade knows which texts of a user's language file nobody changed
(src/setup/LanguageMerge.h) and brings them up to date.
"""
import json
import pathlib
import subprocess
import sys
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


def note(revision):
    former = json.loads(FORMER.read_text(encoding="utf-8"))
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


if __name__ == "__main__":
    if len(sys.argv) != 2 or sys.argv[1].startswith("-"):
        sys.exit(__doc__)
    note(sys.argv[1])
