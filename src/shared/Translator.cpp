// The way of every caption and message to the language store.
#include "shared/Translator.h"

#include "shared/basMain.h"

namespace sorvanto {

QString translated(QString text) {
    const auto language = basMain::Language;
    if (!language)
        return text;
    QString result;
    language->translate(text, result);
    return result;
}

}  // namespace sorvanto
