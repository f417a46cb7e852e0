// What a report means to the pharmacist: what happened, what is kept, what to do. The report itself, with its number,
// its tag and the engine's words, is untouched; errors.log has it as it is.
#pragma once

#include "shared/ErrorReporter.h"

#include <QStringList>

namespace sorvanto {

/// One or two sentences in the user's language; never empty. Before there is a language, in English.
QString problemText(const ErrorReport& report);

/// Whether the table tells what a failure under this tag leaves behind, beyond the sentence for all the others.
bool hasProblemText(const QString& tag);

/// All English sentences that problemText() may be put together from; the keys in the language files.
QStringList problemSentences();

/// All tags of the table, in the shapes "frmLog:saveForm", "*:saveForm", "frmOptions:*" and "*:move*".
QStringList problemTags();

}  // namespace sorvanto
