// Putting the line together.
#include "mixer/BatchPassport.h"

#include "mixer/LoadedFormula.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace sorvanto {

BatchPassport BatchPassport::of(const platform::XmlDocumentPtr& formula, const QString& unit) {
    return {formulaName(formula), formulaQuantity(formula), unit, formulaJar(formula), {}};
}

QString BatchPassport::amount() const {
    return unit.isEmpty() || quantity.isEmpty() ? quantity : quantity + ' '_L1 + unit;
}

QString BatchPassport::line(const PassportWords& words) const {
    QStringList pieces{name};
    pieces << (amount().isEmpty() || jar.isEmpty() ? amount() : filledIn(words.amountInJar, {amount(), jar}));
    if (!lot.isEmpty())
        pieces << filledIn(words.lot, {lot});
    pieces.removeAll(QString());
    return pieces.join(u" \u00B7 "_s);
}

}  // namespace sorvanto
