// A plain number is the one text that means the same to the person and to the statement.
#include "records/QuantityNote.h"

#include "platform/basic/LocalMarks.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/SystemLocale.h"
#include "platform/basic/Text.h"
#include "shared/Translator.h"

#include <QRegularExpression>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

namespace sorvanto {

using namespace platform;

namespace {

/// A sign, digits and at most one of this mark between or around them.
bool isPlain(const QString& line, QChar mark) {
    const QRegularExpression pattern(
        u"^ *[-+]?([0-9]+%1?[0-9]*|%1[0-9]+) *$"_s.arg(QRegularExpression::escape(mark)));
    return pattern.match(line).hasMatch();
}

QString withPoint(const QString& line) {
    if (systemLocale().decimalPoint() != u","_s || !isPlain(line, u','))
        return line;
    return QString(line).replace(u',', u'.');
}

LineNote noteFor(const QString& line, const QString& chemical, const QString& units) {
    const QString name = units.isEmpty() ? chemical : u"%1 (%2)"_s.arg(chemical, units);
    if (line.isEmpty())
        return {name};
    const LineNote doubt{
        name + u": "_s + translated(u"This is not a plain number: the database will work it out."_s), true};
    if (!isPlain(line, u'.'))
        return doubt;
    try {
        const QString stored = shownNumber(numberText(toDouble(line)));
        return {trimmed(u"%1: %2 %3"_s.arg(chemical, stored, units))};
    } catch (const RuntimeError&) {
        return doubt;  // more digits than a number can have
    }
}

}  // namespace

LineGuide quantityGuide(const QString& chemical, const std::function<QString()>& units) {
    const auto known = std::make_shared<std::optional<QString>>();
    return {withPoint, [=](const QString& line) {
                if (!*known)
                    *known = units();
                return noteFor(line, chemical, **known);
            }};
}

}  // namespace sorvanto
