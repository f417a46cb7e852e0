// Hands every question to the asker in force; keeps the application's title.
#include "platform/ask/Ask.h"

#include "platform/basic/RuntimeError.h"

#include <utility>

namespace platform {

namespace {

Asker* current = nullptr;

QString& title() {
    static QString text;
    return text;
}

}  // namespace

void setAsker(Asker* asker) { current = asker; }

Asker& asker() { return deref(current); }

void setApplicationTitle(const QString& text) { title() = text; }

QString applicationTitle() { return title(); }

Answer MsgBox(const QString& prompt, BoxStyle style, const std::optional<QString>& ownTitle) {
    return asker().messageBox(prompt, std::move(style), ownTitle.value_or(title()));
}

QString InputBox(const QString& prompt, const std::optional<QString>& ownTitle, const QString& preset,
                 const LineGuide& guide) {
    return asker().inputBox(prompt, ownTitle.value_or(title()), preset, guide);
}

}  // namespace platform
