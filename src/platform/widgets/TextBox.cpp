// One line of text, and the several lines of a memo: a locked box is a quiet surface.
#include "platform/widgets/Boxes.h"

#include <QMimeData>
#include <QStyle>

namespace platform {

namespace {

/// The style sheet looks at the read-only state only when told to.
void restyle(QWidget& box) {
    box.style()->unpolish(&box);
    box.style()->polish(&box);
}

}  // namespace

TextBox::TextBox(QWidget* parent) : QLineEdit(parent) {
    // A text set by the program shows its beginning, however long it is.
    connect(this, &QLineEdit::textChanged, this, [this] {
        if (!isModified() && !hasFocus())
            setCursorPosition(0);
    });
}

void TextBox::setReadOnlyBox(bool on) {
    if (on == isReadOnly())
        return;
    setReadOnly(on);
    restyle(*this);
}

void TextBox::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    if (isReadOnly())
        deselect();
}

MemoBox::MemoBox(QWidget* parent) : QPlainTextEdit(parent) { setTabChangesFocus(true); }

void MemoBox::insertFromMimeData(const QMimeData* source) {
    if (source && !source->formats().isEmpty())
        QPlainTextEdit::insertFromMimeData(source);
}

void MemoBox::setReadOnlyBox(bool on) {
    if (on == isReadOnly())
        return;
    setReadOnly(on);
    restyle(*this);
}

}  // namespace platform
