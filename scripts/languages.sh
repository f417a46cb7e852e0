#!/usr/bin/env bash
# For a translator: compares the files in languages/ with the texts that the program asks for.
#   scripts/languages.sh --check            counts for each language; 1 when a text is missing
#   scripts/languages.sh --list German      one language with its missing, unused, blank and English texts
# A text is added or changed in the file by hand; "Translated" holds what is shown.
set -euo pipefail
exec python3 "$(dirname "$0")/languages.py" "$@"
