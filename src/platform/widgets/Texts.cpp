// Keeps the translator in force.
#include "platform/widgets/Texts.h"

namespace platform {

namespace {

TextTranslator& translator() {
    static TextTranslator current;
    return current;
}

}  // namespace

void setTextTranslator(TextTranslator function) { translator() = std::move(function); }

QString widgetText(const QString& english) { return translator() ? translator()(english) : english; }

}  // namespace platform
