// One line of text, and the several lines of a memo: a locked box is a quiet surface.
#include "platform/widgets/Boxes.h"

#include "platform/widgets/CutText.h"
#include "platform/widgets/Hint.h"
#include "platform/widgets/OneLine.h"
#include "platform/widgets/Texts.h"
#include "platform/widgets/Theme.h"

#include <QHelpEvent>
#include <QMimeData>
#include <QPainter>
#include <QValidator>
#include <functional>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr int longestNormalWord = 1000;
constexpr double countShare = 0.85;  // of the box's own size of type
constexpr int countGap = 8;

QFont countFont(const QWidget& box) {
    QFont small = box.font();
    small.setPixelSize(qRound(box.fontInfo().pixelSize() * countShare));
    return small;
}

/// Refuses a text that is too long as a whole: nothing of what was pasted is dropped unseen.
class LengthValidator : public QValidator {
public:
    LengthValidator(QObject* parent, std::function<int()> most)
        : QValidator(parent), m_most(std::move(most)) {}
    State validate(QString& text, int&) const override {
        return text.size() > m_most() ? Invalid : Acceptable;
    }

private:
    std::function<int()> m_most;
};

int longestWord(const QString& text) {
    int longest = 0;
    int length = 0;
    for (const QChar character : text) {
        length = character.isSpace() ? 0 : length + 1;
        longest = qMax(longest, length);
    }
    return longest;
}

}  // namespace

TextBox::TextBox(QWidget* parent) : QLineEdit(parent) {
    keepOneLine(*this);
    // A text set by the program shows its beginning, however long it is.
    connect(this, &QLineEdit::textChanged, this, [this] {
        if (!isModified() && !hasFocus())
            setCursorPosition(0);
        makeRoomForCount();
    });
    connect(this, &QLineEdit::inputRejected, this, &TextBox::tellFull);
    connect(this, &QLineEdit::textEdited, this, [this] {
        if (m_columnSize > 0 && !Hint::textOf(*this).isEmpty())
            Hint::tell(*this, {});
    });
}

void TextBox::setText(const QString& text) {
    m_longestSet = static_cast<int>(text.size());
    QLineEdit::setText(text);
}

void TextBox::setColumnSize(int characters) {
    m_columnSize = characters;
    if (characters > 0 && !validator())
        setValidator(new LengthValidator(this, [this] { return m_columnSize > 0 ? most() : maxLength(); }));
    makeRoomForCount();
}

QString TextBox::countText() const {
    const auto length = static_cast<int>(text().size());
    if (m_columnSize == 0 || isReadOnly() || length < most() - qMin(10, most() / 4))
        return {};
    return u"%1 / %2"_s.arg(length).arg(most());
}

void TextBox::makeRoomForCount() {
    const QString count = hasFocus() ? countText() : QString();
    const int room =
        count.isEmpty() ? 0 : QFontMetrics(countFont(*this)).horizontalAdvance(count) + 2 * countGap;
    if (textMargins().right() != room)
        setTextMargins(0, 0, room, 0);
}

void TextBox::tellFull() {
    if (m_columnSize > 0)
        Hint::warn(*this, widgetText(u"No more than %1 characters fit here."_s).arg(most()));
}

void TextBox::setReadOnlyBox(bool on) {
    if (on == isReadOnly())
        return;
    setReadOnly(on);
    if (on && !hasFocus())
        setCursorPosition(0);
    update();
}

void TextBox::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    if (isReadOnly())
        deselect();
    makeRoomForCount();
}

void TextBox::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    makeRoomForCount();
    if (isReadOnly() && event->reason() != Qt::PopupFocusReason)
        setCursorPosition(0);
}

void TextBox::paintEvent(QPaintEvent* event) {
    if (paintCut(*this))
        return;
    QLineEdit::paintEvent(event);
    const QString count = hasFocus() ? countText() : QString();
    if (count.isEmpty())
        return;
    QPainter painter(this);
    painter.setFont(countFont(*this));
    painter.setPen(theme().secondaryText);
    painter.drawText(rect().adjusted(0, 0, -countGap, 0), Qt::AlignRight | Qt::AlignVCenter, count);
}

bool TextBox::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip && tellCut(*this, static_cast<QHelpEvent&>(*event)))
        return true;
    return QLineEdit::event(event);
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
    update();
}

}  // namespace platform
