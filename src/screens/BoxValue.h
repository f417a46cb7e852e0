// A stored value as the text that a box shows of it.
#pragma once

#include <QString>
#include <QVariant>
#include <optional>

class QWidget;

namespace sorvanto {

struct Context;

/// The column of the record that the box of this name holds, in lower case: "txtFrm_NDC" is frm_ndc's. Empty for none.
QString columnOfBox(const QString& control);

/// As typeIntoBox takes it; nothing for a value that the box can't show, or that nobody can type there: the box is locked, or
/// a choice has no entry of it.
std::optional<QString> boxTextOf(const Context& context, const QWidget& box, const QString& column,
                                 const QVariant& value);

}  // namespace sorvanto
