"""The words of a PDF with their boxes, and whether what must stand on paper stands there whole."""
import re
import subprocess
import xml.etree.ElementTree as ElementTree

ELLIPSIS = "…"
HIDDEN = "####"
STRENGTH = re.compile(r"[\d.,]+ ?(?:%|(?:mg|mcg|g|ml|mL)\b(?:/[\d.,]*(?:ml|mL|g))?)")
LEAST_GAP = 1.2        # points between two texts on one line
LEAST_POINTS = 5.0     # of type
TWIPS_OF_POINT = 20


class Word:
    def __init__(self, page, left, top, right, bottom, text):
        self.page, self.left, self.top, self.right, self.bottom, self.text = page, left, top, right, bottom, text
        self.used = False

    def __repr__(self):
        return f"{self.text!r} at {self.left:.0f},{self.top:.0f} on page {self.page}"


class Page:
    def __init__(self, number, width, height, words):
        self.number, self.width, self.height, self.words = number, width, height, words
        self.lines = lines_of(words)


def read(pdf):
    """The pages of a PDF by pdftotext, an independent reader."""
    told = subprocess.run(["pdftotext", "-bbox", pdf, "-"], capture_output=True, check=True).stdout.decode()
    told = re.sub(r'\sxmlns="[^"]*"', "", told)
    told = re.sub(r"<!DOCTYPE[^>]*>", "", told)
    root = ElementTree.fromstring(re.sub(r"[\x00-\x08\x0b\x0c\x0e-\x1f]", "", told))
    pages = []
    for number, page in enumerate(root.iter("page"), 1):
        words = []
        for word in page.iter("word"):
            box = [float(word.get(side)) for side in ("xMin", "yMin", "xMax", "yMax")]
            parts = (word.text or "").split()
            words += [Word(number, *box, part) for part in parts]
        pages.append(Page(number, float(page.get("width")), float(page.get("height")), words))
    return pages


def lines_of(words):
    """Words that stand on one line, from left to right. Type of different sizes may share a line."""
    lines = []
    for word in sorted(words, key=lambda each: (each.top + each.bottom) / 2):
        middle = (word.top + word.bottom) / 2
        for line in lines[-6:]:
            first = line[0]
            if abs((first.top + first.bottom) / 2 - middle) < 0.35 * min(first.bottom - first.top, word.bottom - word.top) + 0.6:
                line.append(word)
                break
        else:
            lines.append([word])
    for line in lines:
        line.sort(key=lambda each: each.left)
    return lines


def packed(text):
    return "".join(text.split())


def narrowest(text):
    """At least so wide is a text in type of five points, in points: thin letters are counted as the thinnest."""
    thin = set("iljtfI.,:;-/' ()|!")
    return LEAST_POINTS * sum(0.22 if letter in thin else 0.5 if letter.isdigit() or letter in "$€R" else
                              0.55 if letter in "ABCDEFGHKLMNOPQSTUVWXYZ" else 0.33 for letter in text)


def may_hide(field):
    wider = 1.11 if field.sans else 1  # digits of the sans serif type
    return field.width is not None and all(narrowest(text) * wider > 0.95 * field.width / TWIPS_OF_POINT
                                           for text in field.texts)


def is_shortened(shown, whole, kind):
    """Whether a text with an ellipsis is a fair rest of the whole."""
    before, mark, behind = shown.partition(ELLIPSIS)
    whole = packed(whole)
    if not mark or not whole.startswith(before) or not whole.endswith(behind):
        return False
    if before and len(before) < len(whole) and before[-1].isdigit() and whole[len(before)].isdigit():
        return False  # a number that lost digits
    return kind == "name" or not behind


def strengths_kept(shown, whole):
    return all(packed(strength) in shown for strength in STRENGTH.findall(whole))


def fit(words, field):
    """How many words from the first of these on are the field; 0 when they are not."""
    longest = max(len(text.split()) for text in field.texts) + 2
    for text in field.texts:
        parts = text.split()
        if [word.text for word in words[:len(parts)]] == parts:
            return len(parts)
    if field.kind == "value":
        return 1 if words and words[0].text == HIDDEN and may_hide(field) else 0
    shown = ""
    best = 0
    for count, word in enumerate(words[:longest], 1):
        shown += word.text
        if ELLIPSIS in shown and any(is_shortened(shown, text, field.kind) and
                                     (field.kind != "name" or strengths_kept(shown, text)) for text in field.texts):
            best = count
    return best


def placed(line, fields):
    """The words of the line that are the fields, in order and unused; None when one is missing."""
    free = [word for word in line if not word.used]

    def from_(start, left):
        if not left:
            return []
        for at in range(start, len(free)):
            count = fit(free[at:], left[0])
            if count:
                rest = from_(at + count, left[1:])
                if rest is not None:
                    return [free[at:at + count]] + rest
        return None

    return from_(0, fields)


def find_row(pages, fields):
    """Marks the words of the fields as used; the fault as a text, or None."""
    for page in pages:
        for line in page.lines:
            found = placed(line, fields)
            if found is None:
                continue
            for words in found:
                for word in words:
                    word.used = True
            return touching(line, found)
    return missing(pages, fields)


def touching(line, found):
    for words in found:
        last = words[-1]
        after = [word for word in line if word.left > last.left and word not in words]
        if after and after[0].left - last.right < LEAST_GAP:
            return f"{last} touches {after[0]}"
        before = [word for word in line if word.left < words[0].left]
        if before and words[0].left - before[-1].right < LEAST_GAP:
            return f"{before[-1]} touches {words[0]}"
    return None


def missing(pages, fields):
    """Names the fields of a row that no line has whole, or the row when only their order is wrong."""
    alone = [field for field in fields if not any(placed(line, [field]) for page in pages for line in page.lines)]
    if not alone:
        return f"no line has all of {fields}"
    lines = [line for page in pages for line in page.lines]
    best = max(lines, key=lambda line: sum(bool(placed(line, [field])) for field in fields), default=[])
    return f"{alone} not whole; nearest line: {' '.join(word.text for word in best)!r}"


def find_running(pages, field):
    """A text that goes on over lines and pages: all its words in order, each line of it alone or behind its
    caption."""
    wanted = field.texts[0].split()
    done = 0
    for page in pages:
        for line in page.lines:
            texts = [word.text for word in line]
            for start in range(len(texts) if done == 0 else 1):
                if texts[start:] == wanted[done:done + len(texts) - start]:
                    done += len(texts) - start
                    break
            if done == len(wanted):
                return None
    return f"{len(wanted) - done} of {len(wanted)} words are missing from {' '.join(wanted[done:done + 6])!r} on"


def find_in_column(pages, field):
    """A text that takes as many lines as it needs in its column (left and right edge in twips of the page), long words
    broken where they must."""
    left, right = (edge / TWIPS_OF_POINT for edge in field.column)
    for page in pages:
        told = "".join(word.text for line in page.lines for word in line if left - 0.5 <= word.left and word.right <= right + 0.5)
        if any(packed(text) in told for text in field.texts):
            return None
    return f"{field} is not whole in its column"


def overlaps(page):
    """Pairs of words drawn over one another; heights are those of the letters, not of the line."""
    found = []
    words = sorted(page.words, key=lambda word: word.left)
    for index, word in enumerate(words):
        for other in words[index + 1:]:
            if other.left >= word.right - 0.4:
                break
            inset = 0.22
            top = max(word.top + inset * (word.bottom - word.top), other.top + inset * (other.bottom - other.top))
            bottom = min(word.bottom - inset * (word.bottom - word.top), other.bottom - inset * (other.bottom - other.top))
            if bottom - top > 0.5:
                found.append(f"{word} lies over {other}")
    return found


def outside(page):
    return [f"{word} leaves its page" for word in page.words
            if word.left < 0 or word.top < 0 or word.right > page.width or word.bottom > page.height]


def outside_dies(page, pitch):
    """Words of labels that lie on no label: three across of 2.625 inches, 2.75 apart; the rows by their pitch."""
    found = []
    for word in page.words:
        left, right = word.left * TWIPS_OF_POINT, word.right * TWIPS_OF_POINT
        columns = [270 + 3960 * column for column in range(3)]
        row = max(0, ((word.top + word.bottom) / 2 * TWIPS_OF_POINT - 720) // pitch)
        top = 720 + row * pitch
        inside = any(left >= edge - 1 and right <= edge + 3781 for edge in columns)
        if not inside or word.top * TWIPS_OF_POINT < top - 40 or word.bottom * TWIPS_OF_POINT > top + pitch + 40:
            found.append(f"{word} leaves its label")
    return found


def faults(pages, sheet):
    """All that is wrong with a paper that must show the sheet."""
    found = []
    for row in sheet.rows:
        if row[0].kind == "column":
            told = [find_in_column(pages, field) for field in row]
        else:
            told = [find_running(pages, row[0]) if row[0].kind == "running" else find_row(pages, row)]
        found += [fault for fault in told if fault]
    for page in pages:
        found += overlaps(page) + outside(page)
        if sheet.labels:
            found += outside_dies(page, sheet.labels[2])
        if any(word.text == HIDDEN for word in page.words) and not has_footnote(page):
            found.append(f"#### without a footnote on page {page.number}")
    return found


def has_footnote(page):
    """A line that begins with the marks and says what they stand for."""
    return any(line[0].text == HIDDEN and len(line) > 2 for line in page.lines)
