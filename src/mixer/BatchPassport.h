// The short line that names a batch wherever the program speaks of one:
// "Magic Mouthwash · 240 MLS in 300 ml · lot SV04260013".
#pragma once

#include "platform/xml/XmlDocument.h"

#include <QString>

namespace sorvanto {

/// The words of the line in the user's language: "%1 in %2" and "lot %1".
struct PassportWords {
    QString amountInJar, lot;
};

/// What is not known is empty and left out of the line.
struct BatchPassport {
    QString name, quantity, unit, jar, lot;

    /// Of a formula document, which knows no unit.
    static BatchPassport of(const platform::XmlDocumentPtr& formula, const QString& unit);
    /// "240 MLS".
    QString amount() const;
    QString line(const PassportWords& words) const;
};

}  // namespace sorvanto
