"""Spreadsheets: cells by one reader, what another shows of them on paper.

Each value of the data is in a cell as a number, a date or a text; the office program shows each cell whole,
on pages one sheet wide.
"""
import concurrent.futures
import csv
import datetime
import queue
import subprocess

import xlrd

import pages

HIDDEN_NUMBER = "###"
TOO_MANY_COLUMNS = 2  # a page that begins with the right part of a sheet
AT_ONCE = 40          # files that the office program converts in one go; it loses some of very many


def check(desk, made):
    """The spreadsheets of these combinations by number; faults and how many cells were looked at."""
    if not made:
        return [], 0
    files = [desk.folder / f"{number}.xls" for number in made]
    convert_all(desk.folder, files)
    faults, cells = [], 0
    for number, combination in made.items():
        stem = desk.folder / str(number)
        if not is_converted(stem):
            faults.append(f"{combination} spreadsheet: the office program doesn't open it")
            continue
        sheet = desk.wanted(combination)
        found, count = faults_of(stem, sheet)
        cells += count
        faults += [f"{combination} spreadsheet: {fault}" for fault in found]
    return faults, cells


def is_converted(stem):
    return all(stem.with_suffix(kind).exists() for kind in (".pdf", ".csv"))


def convert_all(folder, files):
    """Two office programs side by side; what one of them has left out is asked for once more, alone."""
    lots = [files[at:at + AT_ONCE] for at in range(0, len(files), AT_ONCE)]
    free = queue.SimpleQueue()
    for name in ("one", "two"):
        free.put(folder / f"profile-{name}")

    def work(lot):
        profile = free.get()
        try:
            convert(profile, folder, lot)
            for file in lot:
                if not is_converted(file.with_suffix("")):
                    convert(profile, folder, [file])
        finally:
            free.put(profile)

    with concurrent.futures.ThreadPoolExecutor(max_workers=2) as pool:
        list(pool.map(work, lots))


def convert(profile, folder, files):
    for kind in ("pdf", "csv:Text - txt - csv (StarCalc):44,34,76,1,,0,false,true,true"):
        subprocess.run(["soffice", "--headless", f"-env:UserInstallation=file://{profile}", "--convert-to", kind,
                        "--outdir", folder, *files], check=True, capture_output=True)


def faults_of(stem, sheet):
    book = xlrd.open_workbook(f"{stem}.xls", formatting_info=True)
    cells = book.sheet_by_index(0)
    with open(f"{stem}.csv", encoding="utf-8", newline="") as file:
        shown = list(csv.reader(file))
    found = missing_values(cells, sheet)
    paper = pages.read(f"{stem}.pdf")
    count = 0
    for row in range(cells.nrows):
        texts = shown[row] if row < len(shown) else []
        for column in range(cells.ncols):
            cell = cells.cell(row, column)
            if cell.ctype in (xlrd.XL_CELL_EMPTY, xlrd.XL_CELL_BLANK):
                continue
            count += 1
            text = texts[column] if column < len(texts) else ""
            if cell.ctype == xlrd.XL_CELL_TEXT and "\r" in cell.value:
                found.append(f"carriage return in {cell.value!r}")
            if not stands(paper, text):
                found.append(f"row {row + 1} column {column + 1}: {text!r} isn't shown whole")
    for page in paper:
        found += pages.overlaps(page) + pages.outside(page)
        found += [f"a number too wide for its column: {word}" for word in page.words if word.text.startswith(HIDDEN_NUMBER)
                  and len(set(word.text)) == 1 and word.text != pages.HIDDEN]
    return found, count


def stands(paper, text):
    """Whether all of a cell's text is on paper in its order, on one line or on the lines of a wrapped cell."""
    wanted = pages.packed(text)
    if not wanted:
        return True
    return any(follows(page.lines[at:], start, wanted) for page in paper for at, line in enumerate(page.lines)
               for start, word in enumerate(line) if wanted.startswith(word.text))


def follows(lines, start, wanted):
    """The text from this word on, and below it in the next lines where the cell has several. A code may break at its
    hyphens there."""
    left = right = None
    for line in lines:
        at = start if left is None else next((i for i, word in enumerate(line) if word.left < right and word.right > left and
                                              wanted.startswith(word.text)), None)
        if at is None:
            continue
        left = line[at].left if left is None else left
        while wanted and at < len(line) and wanted.startswith(line[at].text):
            wanted = wanted[len(line[at].text):]
            right = line[at].right if right is None else max(right, line[at].right)
            at += 1
        if not wanted:
            return True
    return False


def missing_values(cells, sheet):
    """Values of the data that no cell holds."""
    numbers, dates, texts = [], [], []
    for row in range(cells.nrows):
        for cell in cells.row(row):
            if cell.ctype == xlrd.XL_CELL_NUMBER:
                numbers.append(cell.value)
            elif cell.ctype == xlrd.XL_CELL_DATE:
                dates.append(xlrd.xldate_as_datetime(cell.value, 0))
            elif cell.ctype == xlrd.XL_CELL_TEXT:
                texts.append(" ".join(cell.value.split()))
    found = []
    for field in (field for row in sheet.rows for field in row):
        if isinstance(field.number, str):
            wanted = datetime.datetime.strptime(field.number, "%Y-%m-%d %H:%M:%S")
            held = any(abs((date - wanted).total_seconds()) < 1 for date in dates)
        elif field.number is not None:
            wanted = float(field.number)
            held = any(abs(number - wanted) <= max(abs(wanted) * 1e-12, 6e-5) for number in numbers)
        else:
            held = False
        held = held or any(" ".join(text.split()) in cell for text in field.texts for cell in texts)
        if not held:
            found.append(f"no cell holds {field}")
    return found
