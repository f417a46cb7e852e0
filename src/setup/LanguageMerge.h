// Brings a language file of a program folder up to date and keeps its user's own wording.
#pragma once

#include "platform/xml/XmlDocument.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

namespace sorvanto {

/// For each English text what was delivered for it by earlier versions.
using FormerTexts = QHash<QString, QStringList>;

/// The texts of one language in the delivered "former.json"; none when it can't be read.
FormerTexts formerTexts(const QByteArray& json, const QString& language);

/// Adds the delivered texts that the target lacks and replaces those that nobody changed: the ones that read as
/// an earlier version delivered them. A user's own wording and texts of his own stay, an emptied text stays
/// empty. Of two entries for one text the first counts. True when the target was changed. Throws objectNotSet
/// when the target is no language file.
bool mergeLanguage(const platform::XmlDocument& delivered, platform::XmlDocument& target,
                   const FormerTexts& former);

}  // namespace sorvanto
