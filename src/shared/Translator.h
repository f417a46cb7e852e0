// English literal in, the user's language out. Implemented by the language store.
#pragma once

#include <QString>

namespace sorvanto {

class Translator {
public:
    virtual ~Translator() = default;
    /// Looks the text up; the caller's text comes back trimmed. Never throws.
    virtual void translate(QString& text, QString& result) = 0;
    /// What the language file holds for a text; empty where it holds nothing. Adds nothing to it.
    virtual QString known(const QString& text) const = 0;
    /// Path of the language file.
    virtual QString translationPath() = 0;
};

/// The text in the user's language; before the language store exists, the text as it is (untrimmed).
QString translated(QString text);

}  // namespace sorvanto
