#include "screens/BoxValue.h"

#include "platform/basic/Dates.h"
#include "platform/basic/LocalMarks.h"
#include "platform/widgets/Boxes.h"
#include "shared/Context.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

QString plainNumber(const QVariant& value) {
    return value.isValid() ? QString::number(value.toDouble(), 'f', QLocale::FloatingPointShortest) : u"0"_s;
}

QString dateOf(const QVariant& value) {
    const QDateTime date = platform::fromStoredDate(value.toString());
    return value.isValid() && date.isValid() ? platform::dateText(date) : QString();
}

/// The jar and the type of a mix are stored as the place in a table.
QString choiceOf(const Context& context, const QString& column, const QVariant& value) {
    if (column == "frm_jarsize"_L1)
        return context.jarSizes.value(value.toInt());
    if (column == "frm_formtype"_L1)
        return context.mixTypes.value(value.toInt());
    return value.toString();
}

}  // namespace

QString columnOfBox(const QString& control) {
    if (control == "cbofrm_Type"_L1)
        return u"frm_formtype"_s;
    const bool isBox = control.startsWith("txt"_L1) || control.startsWith("cbo"_L1);
    return isBox ? control.mid(3).toLower() : QString();
}

std::optional<QString> boxTextOf(const Context& context, const QWidget& box, const QString& column,
                                 const QVariant& value) {
    if (const auto* lockable = dynamic_cast<const platform::Lockable*>(&box);
        !lockable || lockable->isReadOnlyBox())
        return std::nullopt;
    if (const auto* number = qobject_cast<const platform::NumberBox*>(&box))
        return platform::withLocalMarks(plainNumber(value), number->locale());
    if (qobject_cast<const platform::DateBox*>(&box))
        return dateOf(value);
    const auto* choice = qobject_cast<const platform::ChoiceBox*>(&box);
    if (!choice)
        return value.toString();
    const QString entry = choiceOf(context, column, value);
    return choice->findText(entry, Qt::MatchExactly | Qt::MatchCaseSensitive) < 0 ? std::nullopt
                                                                                  : std::optional(entry);
}

}  // namespace sorvanto
