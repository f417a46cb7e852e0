// Column and place rules of the search list.
#include "records/SearchColumns.h"

namespace sorvanto {

namespace {

// Type numbers of fields.
constexpr int doubleType = 5;
constexpr int flagType = 11;
constexpr int textTypes[] = {202, 129, 200};

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
    if (std::find(std::begin(textTypes), std::end(textTypes), field.type) != std::end(textTypes)) {
        column.width = static_cast<int>(textWidth(field.definedSize) * measure.characterWidth);
    } else if (field.type == doubleType) {
        column.numberFormat = "Currency";
        column.width = 10 * measure.characterWidth;
    } else if (field.type == flagType) {
        column.numberFormat = "Yes/No";
        column.width = static_cast<int>(field.name.size()) * measure.characterWidth;
    }
    return column;
}

int searchPlace(int wished, int size, int screen) {
    return wished > 0 && size + wished <= screen ? wished : (screen - size) / 2;
}

}  // namespace sorvanto
