#!/usr/bin/env python3
"""Small faults for scripts/mutants.py: finds the places of a C++ file where one fits.

  scripts/faults.py --self-test     the operators over small examples

Works on the text as the formatter leaves it: an operator between spaces, a statement on lines of its own.
Comments and, but for the words in statements of SQL, literals are left alone.
"""
import collections
import random
import re
import sys

# A fault: the characters from start to end of the file at path become new.
Fault = collections.namedtuple("Fault", "path line operator start end new")

LITERAL = re.compile(r'R"\((?:.|\n)*?\)"|"(?:\\.|[^"\\\n])*"|(?<![0-9a-fA-F])\'(?:\\.|[^\'\\\n])+\'')
COMMENT = re.compile(r"//[^\n]*|/\*(?:.|\n)*?\*/|^[ \t]*#[^\n]*", re.M)
NAME = r"(?:[\w:]+(?:\(\))?(?:\.|->))*(?:::)?[\w:]+"
SIMPLE = r"[\w.]+(?:->\w+)?(?:\(\))?"
BLANK = "\x01"
NOTHING = "{}"
SWAPS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "==", "&&": "||", "||": "&&",
         "+": "-", "-": "+", "*": "/", "/": "*", "true": "false", "false": "true"}
WORDS = {"FULL": "OFF", "ON": "OFF", "OFF": "ON", "ROLLBACK": "COMMIT", "COMMIT": "ROLLBACK", "ASC": "DESC",
         "DESC": "ASC", "AND": "OR", "DISTINCT": "ALL", "NOT": ""}


# ---- the operators: each gives (start, end, new text) for every place that it fits ---------------------

def swapped(pattern):
    def operator(code, _text):
        for match in re.finditer(pattern, code):
            yield match.start(1), match.end(1), SWAPS[match.group(1)]
    return operator


def constants(code, _text):
    for match in re.finditer(r"(?<![\w.'])(\d(?:[\d']*\d)?)(?=[^\w.'])", code):
        yield match.start(1), match.end(1), str(int(match.group(1).replace("'", "")) + 1)


def negations(code, _text):
    for match in re.finditer(r"(?<=[ (])!(?=[\w(])", code):
        yield match.start(), match.end(), ""


def swapped_arguments(code, _text):
    for match in re.finditer(rf"\w\(({SIMPLE}), ({SIMPLE})(?=[,)])", code):
        if match.group(1) != match.group(2):
            yield match.start(1), match.end(2), f"{match.group(2)}, {match.group(1)}"


def dropped_calls(code, _text):
    for match in re.finditer(rf"^[ ]+(?:emit )?({NAME}\((?:[^;{{}}]*)\);)$", code, re.M):
        if not match.group(1).startswith(("return", "if", "for", "while", "switch", "throw")):
            yield match.start(1), match.end(1), NOTHING


def dropped_assignments(code, _text):
    for match in re.finditer(rf"^[ ]+({NAME} = [^;{{}}]*;)$", code, re.M):
        yield match.start(1), match.end(1), NOTHING


def ignored_answers(code, _text):
    for match in re.finditer(r"\bif \(", code):
        end = closing(code, match.end() - 1)
        start = match.end() + code[match.end():end].rfind(";") + 1
        condition = code[start:end]
        if "(" in condition and " = " not in condition:
            yield start, end, f"({condition.strip()}) && false"


def dropped_syncs(code, _text):
    for match in re.finditer(r"::f?sync\(", code):
        yield match.start(), closing(code, match.end() - 1) + 1, "0"


def dropped_terms(code, _text):
    for match in re.finditer(r" (?:&&|\|\|) ", code):
        yield match.start(), term_end(code, match.end()), ""


def words(_code, text):
    for literal in LITERAL.finditer(text):
        for match in re.finditer(r"\b(" + "|".join(WORDS) + r")\b", literal.group()):
            yield literal.start() + match.start(), literal.start() + match.end(), WORDS[match.group()]


def closing(code, opening):
    """Place of the bracket that closes the one at that place."""
    depth = 0
    for place in range(opening, len(code)):
        depth += {"(": 1, ")": -1}.get(code[place], 0)
        if depth == 0:
            return place
    return len(code)


def term_end(code, start):
    """End of the term of a condition that begins there."""
    depth = 0
    for place in range(start, len(code)):
        if depth == 0 and (code[place] in "),;?{}" or code.startswith((" &&", " ||", " ?"), place)):
            return place
        depth += {"(": 1, "[": 1, ")": -1, "]": -1}.get(code[place], 0)
    return len(code)


OPERATORS = {
    "border": swapped(r" (<=|>=|<|>) "),
    "equality": swapped(r" (==|!=) "),
    "logic": swapped(r" (&&|\|\|) "),
    "arithmetic": swapped(r" ([-+*/]) "),
    "truth": swapped(r"\b(true|false)\b"),
    "constant": constants,
    "negation": negations,
    "arguments": swapped_arguments,
    "call": dropped_calls,
    "assignment": dropped_assignments,
    "answer": ignored_answers,
    "sync": dropped_syncs,
    "term": dropped_terms,
    "word": words,
}


def blanked(text, pattern):
    return pattern.sub(lambda match: re.sub(r"[^\n]", BLANK, match.group()), text)


def faults_of(path, text):
    without_comments = blanked(text, COMMENT)
    code = blanked(without_comments, LITERAL)
    for name, operator in OPERATORS.items():
        for start, end, new in operator(code, without_comments):
            # A condition was rebuilt from blanked code: what stands in its literals comes back.
            if BLANK in new:
                new = new.replace(code[start:end].strip(), text[start:end].strip())
            yield Fault(path, text.count("\n", 0, start) + 1, name, start, end, new)


def sample(texts, seed):
    """All faults of the files (path: text) in the order of the seed, each operator in its turn."""
    by_operator = {name: [] for name in OPERATORS}
    for path, text in sorted(texts.items()):
        for fault in faults_of(path, text):
            by_operator[fault.operator].append(fault)
    chance = random.Random(seed)
    for faults in by_operator.values():
        chance.shuffle(faults)
    turns = max(map(len, by_operator.values()))
    return [faults[turn] for turn in range(turns) for faults in by_operator.values() if turn < len(faults)]


def change(fault, text):
    """What stands there and what takes its place, shortened, on one line."""
    def short(part):
        part = " ".join(part.split())
        return f"[{part if len(part) <= 60 else part[:57] + '...'}]"
    return f"{short(text[fault.start:fault.end])} -> {short('' if fault.new == NOTHING else fault.new)}"


def told(fault, text):
    """One line about a fault, for people."""
    return f"{fault.path}:{fault.line} {fault.operator}: {change(fault, text)}"


def self_test():
    examples = [
        ("border", "    if (a < b)\n", ["    if (a <= b)\n"]),
        ("border", "    std::vector<int> a; // a < b\n", []),
        ("equality", '    return a == 1 || b != "x == y";\n',
         ['    return a != 1 || b != "x == y";\n', '    return a == 1 || b == "x == y";\n']),
        ("logic", "    return a && b;\n", ["    return a || b;\n"]),
        ("arithmetic", "    a = b + 1;\n", ["    a = b - 1;\n"]),
        ("truth", "    m_on = true;\n", ["    m_on = false;\n"]),
        ("constant", "    int a1 = 57'600; double b = 1.5;\n", ["    int a1 = 57601; double b = 1.5;\n"]),
        ("constant", "    f(10, 'x', \"10\");\n", ["    f(11, 'x', \"10\");\n"]),
        ("negation", "    if (!open(path))\n", ["    if (open(path))\n"]),
        ("arguments", "    f(from, m_to);\n", ["    f(m_to, from);\n"]),
        ("arguments", "void f(int a, int b)\n", []),
        ("call", "    m_link.send(\n        a, b);\n    return f();\n    QString s(t);\n",
         ["    {}\n    return f();\n    QString s(t);\n"]),
        ("assignment", "    m_a = b;\n    int c = d;\n", ["    {}\n    int c = d;\n"]),
        ("answer", '    if (!write("x") || b)\n', ['    if ((!write("x") || b) && false)\n']),
        ("answer", "    if (const auto a = f())\n", []),
        ("sync", "    ok = a && ::fsync(file.number()) == 0;\n", ["    ok = a && 0 == 0;\n"]),
        ("term", "    return a && b(c, d) && e;\n", ["    return a && e;\n", "    return a && b(c, d);\n"]),
        ("word", '    run("PRAGMA synchronous = FULL");\n', ['    run("PRAGMA synchronous = OFF");\n']),
        ("word", '    // "ROLLBACK"\n    sql = "ROLLBACK";\n', ['    // "ROLLBACK"\n    sql = "COMMIT";\n']),
    ]
    failed = 0
    for name, text, expected in examples:
        found = [text[:f.start] + f.new + text[f.end:] for f in faults_of("a.cpp", text) if f.operator == name]
        if found != expected:
            failed += 1
            print(f"self-test: {name}: {found}, expected {expected}")
    print(f"faults self-test: {len(examples)} examples, {failed} failed")
    return failed == 0


if __name__ == "__main__":
    if sys.argv[1:] != ["--self-test"]:
        sys.exit(__doc__)
    sys.exit(0 if self_test() else 1)
