// How many characters the columns of the open database hold.
#pragma once

#include <QString>

class QWidget;

namespace platform {
class TextBox;
}

namespace sorvanto {

struct Context;

/// Of a column of text; 0 where it holds any number, or where no database is open.
int columnSize(const Context& context, const QString& table, const QString& column);

/// Each text box of the form that is named after a column of the table ("txtfrm_Name") takes no more than it holds.
void keepToColumns(const Context& context, const QWidget& form, const QString& table);

}  // namespace sorvanto
