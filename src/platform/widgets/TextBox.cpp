// One line of text, and the several lines of a memo: a locked box is a quiet surface.
#include "platform/widgets/Boxes.h"

#include <QMimeData>
#include <QStyle>

namespace platform {

namespace {

constexpr int longestNormalWord = 1000;

int longestWord(const QString& text) {
    int longest = 0;
    int length = 0;
    for (const QChar character : text) {
        length = character.isSpace() ? 0 : length + 1;
        longest = qMax(longest, length);
    }
    return longest;
}

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

MemoBox::MemoBox(QWidget* parent) : QPlainTextEdit(parent) {
    setTabChangesFocus(true);
    connect(this, &QPlainTextEdit::textChanged, this, [this] { breakLongWords(toPlainText()); });
}

// The way back to whole words comes when the long one is gone, with the change of the text.
void MemoBox::setText(const QString& text) {
    if (longestWord(text) > longestNormalWord)
        breakLongWords(text);
    setPlainText(text);
}

void MemoBox::breakLongWords(const QString& text) {
    const auto mode = longestWord(text) > longestNormalWord ? QTextOption::WrapAnywhere
                                                            : QTextOption::WrapAtWordBoundaryOrAnywhere;
    if (mode != wordWrapMode())
        setWordWrapMode(mode);
}

void MemoBox::insertFromMimeData(const QMimeData* source) {
    if (!source || source->formats().isEmpty())
        return;
    breakLongWords(toPlainText() + source->text());
    QPlainTextEdit::insertFromMimeData(source);
}

void MemoBox::setReadOnlyBox(bool on) {
    if (on == isReadOnly())
        return;
    setReadOnly(on);
    restyle(*this);
}

}  // namespace platform
