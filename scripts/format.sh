#!/usr/bin/env bash
# Lays out all C++ by .clang-format.
#   scripts/format.sh           rewrites what differs
#   scripts/format.sh --check   names the files that differ; exit code 1 if there is one
set -uo pipefail
cd "$(dirname "$0")/.." || exit 1

files() { git ls-files --cached --others --exclude-standard -z '*.cpp' '*.h'; }

case "${1:-}" in
  "") files | xargs -0 clang-format -i ;;
  --check)
    differing=$(files | xargs -0 clang-format --dry-run 2>&1 | sed -n 's/^\([^:]*\):.*clang-format-violations.*/\1/p' | sort -u)
    [ -z "$differing" ] && exit 0
    echo "Not laid out by .clang-format (scripts/format.sh mends it):"
    echo "$differing"
    exit 1 ;;
  *) echo "usage: $0 [--check]" >&2; exit 2 ;;
esac
