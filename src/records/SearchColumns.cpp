// Column and place rules of the search list.
#include "records/SearchColumns.h"

namespace sorvanto {

namespace {

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
        column.numberFormat = "Currency";
        column.width = 10 * measure.characterWidth;
        break;
    case platform::FieldKind::Flag:
        column.numberFormat = "Yes/No";
        column.width = static_cast<int>(field.name.size()) * measure.characterWidth;
        break;
    default:
        break;
    }
    return column;
}

int searchPlace(int wished, int size, int screen) {
    return wished > 0 && size + wished <= screen ? wished : (screen - size) / 2;
}

}  // namespace sorvanto
