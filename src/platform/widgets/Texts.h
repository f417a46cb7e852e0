// The few words that the widgets themselves say (hints, button captions), open to translation from above.
#pragma once

#include <QString>
#include <functional>

namespace platform {

using TextTranslator = std::function<QString(const QString&)>;

/// How English texts of the widgets are turned into the user's language; empty: they stay.
void setTextTranslator(TextTranslator translator);
/// The text in the user's language.
QString widgetText(const QString& english);

}  // namespace platform
