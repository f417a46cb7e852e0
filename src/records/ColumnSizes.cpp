#include "records/ColumnSizes.h"

#include "platform/data/ColumnType.h"
#include "platform/widgets/Boxes.h"
#include "shared/Context.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

int columnSize(const Context& context, const QString& table, const QString& column) {
    const platform::ConnectionPtr& connection = context.connection;
    if (!connection || connection->state() == 0)
        return 0;
    const auto type = platform::ColumnType::fromDeclaration(connection->declaredType(table, column));
    return type.kind == platform::FieldKind::Text ? type.size : 0;
}

void keepToColumns(const Context& context, const QWidget& form, const QString& table) {
    for (platform::TextBox* box : form.findChildren<platform::TextBox*>()) {
        if (box->objectName().startsWith("txt"_L1))
            box->setColumnSize(columnSize(context, table, box->objectName().mid(3)));
    }
}

}  // namespace sorvanto
