// Column and place rules of the search list.
#include "records/SearchColumns.h"

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {

constexpr int narrowest = 48;
constexpr int shortOfGiving = 90;
constexpr int longName = 240;

/// In characters, halves included.
double textWidth(int definedSize) {
    if (definedSize >= 20)
        return definedSize * 0.5;
    return definedSize >= 5 ? definedSize : 5;
}

}  // namespace

platform::GridColumn searchColumn(const platform::FieldInfo& field, const ListMeasure& measure) {
    platform::GridColumn column;
    column.field = field.name;
    column.caption = field.name;
    column.width = measure.defaultWidth;
    switch (field.kind) {
    case platform::FieldKind::Text:  // a long text keeps the default width
        column.width = static_cast<int>(textWidth(field.definedSize) * measure.characterWidth);
        break;
    case platform::FieldKind::Double:
        column.numberFormat = u"Currency"_s;
        column.width = 10 * measure.characterWidth;
        break;
    case platform::FieldKind::Flag:
        column.numberFormat = u"Yes/No"_s;
        column.width = static_cast<int>(field.name.size()) * measure.characterWidth;
        break;
    default:
        break;
    }
    return column;
}

std::vector<int> fittedWidths(const std::vector<ColumnNeed>& columns, int room) {
    std::vector<int> fitted;
    for (const ColumnNeed& column : columns)
        fitted.push_back(column.designed);
    const auto sum = [&] { return std::accumulate(fitted.begin(), fitted.end(), 0); };
    /// No column of these is wider than the limit, nor than its texts.
    const auto narrow = [&](int limit, bool onlyThoseThatGive) {
        for (std::size_t i = 0; i < fitted.size(); ++i) {
            const int needed = std::max(columns[i].needed, narrowest);
            if (columns[i].gives || !onlyThoseThatGive)
                fitted[i] = std::min({fitted[i], needed, std::max(limit, columns[i].least)});
        }
    };
    if (sum() <= room)
        return fitted;
    const int widest = *std::max_element(fitted.begin(), fitted.end());
    narrow(widest, false);
    for (int limit = widest; limit >= shortOfGiving && sum() > room; --limit)
        narrow(limit, true);
    const std::vector<int> whole = fitted;
    for (int limit = widest; limit >= narrowest - 1 && sum() > room; --limit)
        narrow(limit, false);
    if (sum() <= room)
        return fitted;
    fitted = whole;  // what scrolls in any case is not cut for it
    narrow(longName, false);
    narrow(narrowest, true);
    return fitted;
}

int searchPlace(int wished, int size, int screen) {
    return wished > 0 && size + wished <= screen ? wished : (screen - size) / 2;
}

}  // namespace sorvanto
