// Records of names, page set-up and window, and the drawing that each filter button is.
#include "platform/report/XlsTable.h"

#include "platform/report/XlsRecords.h"

#include <QString>
#include <initializer_list>

namespace platform::xls {

namespace {

constexpr int lastSheetColumn = 255;
constexpr int repeatedRowsName = 0x07, filterName = 0x0D;  // the application's own names
constexpr int buttonShape = 201;

/// Each drawing has a range of numbers for its shapes.
constexpr std::uint32_t firstShape(int drawing) { return 0x400 * static_cast<std::uint32_t>(drawing); }

QByteArray words(std::initializer_list<int> all) {
    QByteArray bytes;
    for (const int word : all)
        put16(bytes, word);
    return bytes;
}

/// One of the application's own names for an area of a sheet, counted from 0.
void putName(QByteArray& out, int sheet, int name, bool hidden, const QByteArray& area) {
    constexpr int builtIn = 0x20;
    QByteArray data = words({builtIn | (hidden ? 1 : 0)});
    put8(data, 0);
    put8(data, 1);  // one character
    put16(data, static_cast<int>(area.size()) + 3);
    put16(data, 0);
    put16(data, sheet + 1);
    put32(data, 0);
    put8(data, 0);
    put8(data, name);
    put8(data, 0x3B);  // an area of a sheet
    put16(data, sheet);
    record(out, Name, data + area);
}

/// A piece of a drawing: a header, then its content.
QByteArray piece(int instance, int version, int kind, const QByteArray& content) {
    QByteArray bytes = words({instance << 4 | version, kind});
    put32(bytes, static_cast<std::uint32_t>(content.size()));
    return bytes + content;
}

QByteArray longs(const std::vector<std::uint32_t>& all) {
    QByteArray bytes;
    for (const std::uint32_t number : all)
        put32(bytes, number);
    return bytes;
}

std::uint32_t shapes(const Table& table) { return static_cast<std::uint32_t>(table.columns()) + 1; }

/// All drawings of the workbook, one for each sheet with a filter, each with its count of shapes.
QByteArray drawingCounts(const std::vector<Table>& tables) {
    std::vector<std::uint32_t> each;
    std::uint32_t drawings = 0, all = 0, last = 0;
    for (const Table& table : tables) {
        if (!table.filtered())
            continue;
        last = firstShape(static_cast<int>(++drawings)) + shapes(table);
        all += shapes(table);
        each.insert(each.end(), {drawings, shapes(table)});
    }
    each.insert(each.begin(), {last, drawings + 1, all, drawings});
    return piece(0, 0xF, 0xF000, piece(0, 0, 0xF006, longs(each)));
}

/// The button of one column as a shape over its heading.
QByteArray button(const Table& table, int drawing, int column) {
    const auto number = static_cast<std::uint32_t>(column - table.firstColumn + 1);
    QByteArray properties;  // can't be grouped, no text, no fill, no line, hidden from print
    for (const auto& [id, value] : std::initializer_list<std::pair<int, std::uint32_t>>{
             {0x7F, 0x01040104}, {0xBF, 0x00080008}, {0x1BF, 0x10000}, {0x1FF, 0x80000}, {0x3BF, 0xA0000}}) {
        put16(properties, id);
        put32(properties, value);
    }
    const QByteArray anchor =
        words({1, column, 0, table.headingRow, 0, column + 1, 0, table.headingRow + 1, 0});
    return piece(0, 0xF, 0xF004,
                 piece(buttonShape, 2, 0xF00A, longs({firstShape(drawing) + number, 0xA00})) +
                     piece(5, 3, 0xF00B, properties) + piece(0, 0, 0xF010, anchor) + piece(0, 0, 0xF011, {}));
}

/// The object behind a button's shape: a drop-down list of the filter.
QByteArray buttonObject(int number) {
    constexpr int dropDown = 0x14, flags = 0x2101;
    return words({0x15, 18, dropDown, number, flags, 0, 0, 0, 0, 0, 0}) +
           words({0x0C, 20, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}) +
           words({0x13, 16, 0, 0, 0x0301, 0, 2, 20, 130, 0}) + words({0, 0});
}

}  // namespace

QByteArray tableNames(const std::vector<Table>& tables) {
    QByteArray out, sheets, names;
    bool any = false, filtered = false;
    const int count = static_cast<int>(tables.size());
    for (int sheet = 0; sheet < count; ++sheet) {
        sheets += words({0, sheet, sheet});
        const Table& table = tables[static_cast<std::size_t>(sheet)];
        const int row = table.headingRow;
        if (row < 0)
            continue;
        any = true;
        filtered = filtered || table.filtered();
        if (table.filtered())
            putName(names, sheet, filterName, true,
                    words({row, table.lastFiltered, table.firstColumn, table.lastColumn}));
        putName(names, sheet, repeatedRowsName, false, words({row, row, 0, lastSheetColumn}));
    }
    if (!any)
        return out;
    record(out, SupBook, words({count, 0x0401}));
    record(out, ExternSheet, words({count}) + sheets);
    out += names;
    if (filtered)
        record(out, DrawingGroup, drawingCounts(tables));
    return out;
}

QByteArray pageSetup(const Table& table) {
    QByteArray out;
    record(out, SheetOptions, words({0x05C1}));  // fits its pages; the other bits are those of any sheet
    QByteArray footer = words({7});
    put8(footer, 0);
    record(out, Footer, footer + "&P / &N");
    for (const Id margin : {LeftMargin, RightMargin, TopMargin, BottomMargin}) {
        QByteArray inches;
        putDouble(inches, margin == BottomMargin ? 0.75 : 0.5);
        record(out, margin, inches);
    }
    constexpr int letter = 1, onePageWide = 1, anyPagesHigh = 0, portrait = 2;
    QByteArray setup = words({letter, 100, 1, onePageWide, anyPagesHigh, portrait, 600, 600});
    putDouble(setup, 0.3);
    putDouble(setup, 0.3);
    record(out, Setup, setup + words({1}));
    if (table.filtered())
        record(out, FilterInfo, words({table.columns()}));
    return out;
}

QByteArray filterButtons(const Table& table, int drawing) {
    QByteArray out;
    if (!table.filtered())
        return out;
    const std::uint32_t count = shapes(table);
    QByteArray group;  // the shape that all others lie in
    group += piece(0, 1, 0xF009, QByteArray(16, 0)) + piece(0, 2, 0xF00A, longs({firstShape(drawing), 5}));
    QByteArray all = piece(0, 0xF, 0xF004, group);
    qsizetype firstSize = 0;
    for (int column = table.firstColumn; column <= table.lastColumn; ++column) {
        all += button(table, drawing, column);
        if (column == table.firstColumn)
            firstSize = all.size();
    }
    // The whole drawing is said with the first shape; each further one is a record of its own.
    const qsizetype rest = all.size() - firstSize;
    const QByteArray whole =
        piece(0, 0xF, 0xF002,
              piece(drawing, 0, 0xF008, longs({count, firstShape(drawing) + count - 1})) +
                  piece(0, 0xF, 0xF003, all));
    const qsizetype buttonSize = button(table, drawing, table.firstColumn).size();
    record(out, Drawing, whole.left(whole.size() - rest));
    record(out, Object, buttonObject(1));
    for (int i = 1; i < table.columns(); ++i) {
        record(out, Drawing, all.mid(firstSize + (i - 1) * buttonSize, buttonSize));
        record(out, Object, buttonObject(i + 1));
    }
    return out;
}

QByteArray sheetWindow(const Table& table, bool shown) {
    constexpr int plain = 0x00B6, onShow = 0x0600, frozenPanes = 0x0108, lowerPane = 2;
    QByteArray out;
    const bool frozen = table.frozen && table.headingRow >= 0;
    record(out, Window2,
           words({plain | (shown ? onShow : 0) | (frozen ? frozenPanes : 0), 0, 0, 0x40, 0, 0, 0, 0, 0}));
    if (!frozen)
        return out;
    const int first = table.headingRow + 1;
    record(out, Pane, words({0, first, first, 0, lowerPane}));
    QByteArray selected;
    put8(selected, lowerPane);
    selected += words({first, 0, 0, 1, first, first});
    put16(selected, 0);
    record(out, Selection, selected);
    return out;
}

}  // namespace platform::xls
