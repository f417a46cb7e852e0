// Texts are plain, can be selected and copied (Ctrl+C takes the whole message), and scroll when long.
#include "platform/widgets/AskDialog.h"

#include "platform/widgets/AccessKeys.h"
#include "platform/widgets/OneLine.h"
#include "platform/widgets/Texts.h"
#include "platform/widgets/Theme.h"

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr int textWidth = 420;
constexpr int longText = 600;  // characters from which a message scrolls
constexpr int pictureSize = 36;
constexpr int lowGap = 48;        // below a box that stands low: frame and air
constexpr int roomOfFrame = 130;  // picture and buttons of a title bar, in pixels

QIcon pictureOf(Icon kind) {
    switch (kind) {
    case Icon::Critical:
        return icon(u"error"_s, theme().danger);
    case Icon::Exclamation:
        return icon(u"warning"_s, theme().warning);
    case Icon::Information:
        return icon(u"info"_s, theme().accent);
    case Icon::None:
        break;
    }
    return {};
}

/// The layout looks for the blanks of a word at each of its lines, which takes seconds for one of 200,000
/// characters. Its beginning tells what is meant; Ctrl+C takes the whole.
QString withShortWords(QString text) {
    static const QRegularExpression longWord(u"(\\S{200})\\S{800,}"_s);
    return text.replace(longWord, u"\\1..."_s);
}

/// So wide that a frame of the desktop shows the title whole beside its buttons.
int widthOfTitle(const QWidget& window) {
    QFont font = window.font();
    font.setBold(true);
    const int title = QFontMetrics(font).horizontalAdvance(window.windowTitle()) + roomOfFrame;
    return qMin(title, window.screen()->availableGeometry().width() / 2);
}

QWidget* messageText(const QString& prompt, QWidget* parent) {
    auto* label = new QLabel(withShortWords(prompt), parent);
    label->setObjectName(u"prompt"_s);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setWordWrap(label->sizeHint().width() > textWidth);
    if (label->wordWrap())
        label->setMinimumWidth(textWidth);
    if (prompt.size() < longText && prompt.count(u'\n') < 20)
        return label;
    auto* scroll = new QScrollArea(parent);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidget(label);
    scroll->setMinimumSize(textWidth + 24, 240);
    return scroll;
}

}  // namespace

AskDialog::AskDialog(const QString& prompt, const BoxStyle& style, const QString& title, QWidget* parent)
    : QDialog(parent) {
    m_low = style.low;
    build(prompt, style.icon, title);
    if (!style.note.isEmpty())
        addRemark(style.note);
    if (style.systemModal)
        setWindowFlag(Qt::WindowStaysOnTopHint);
    if (style.buttons == Buttons::Ok) {
        m_answer = Answer::Ok;
        addButton(u"OK"_s, Answer::Ok, true);
        return;
    }
    addButton(u"Yes"_s, Answer::Yes, !style.secondIsDefault);
    addButton(u"No"_s, Answer::No, style.secondIsDefault);
    m_escapable = style.buttons == Buttons::YesNoCancel;
    if (m_escapable)
        addButton(u"Cancel"_s, Answer::Cancel, false);
    else
        setWindowFlag(Qt::WindowCloseButtonHint, false);
}

AskDialog::AskDialog(const QString& prompt, const QString& title, const QString& preset,
                     const LineGuide& guide, QWidget* parent)
    : QDialog(parent), m_guide(guide) {
    build(prompt, Icon::None, title);
    m_line = new QLineEdit(preset, this);
    m_line->setObjectName(u"line"_s);
    m_line->setAccessibleName(prompt);
    m_line->setMinimumWidth(textWidth);
    keepOneLine(*m_line);
    m_column->insertWidget(1, m_line);
    if (m_guide.note)
        addNote();
    else
        m_column->insertSpacing(2, grid);
    addButton(u"OK"_s, Answer::Ok, true);
    addButton(u"Cancel"_s, Answer::Cancel, false);
    connect(m_line, &QLineEdit::textEdited, this, &AskDialog::correctLine);
    connect(m_line, &QLineEdit::textChanged, this, &AskDialog::showNote);
    m_line->selectAll();
    m_line->setFocus();
}

void AskDialog::build(const QString& prompt, Icon kind, const QString& title) {
    m_prompt = prompt;
    setModal(true);
    // A window without a title would bear the application's name; a blank is no title.
    setWindowTitle(title.isEmpty() ? u" "_s : title);
    m_column = new QVBoxLayout(this);
    m_column->setContentsMargins(3 * grid, 3 * grid, 3 * grid, 2 * grid);
    m_column->setSpacing(2 * grid);
    m_column->setSizeConstraint(QLayout::SetMinimumSize);
    auto* row = new QHBoxLayout;
    row->setSpacing(2 * grid);
    if (kind != Icon::None) {
        auto* picture = new QLabel(this);
        picture->setObjectName(u"picture"_s);
        picture->setPixmap(pictureOf(kind).pixmap(QSize(pictureSize, pictureSize), devicePixelRatioF()));
        row->addWidget(picture, 0, Qt::AlignTop);
    }
    m_text = new QVBoxLayout;
    m_text->setSpacing(grid);
    m_text->addStretch();
    m_text->addWidget(messageText(prompt, this));
    m_text->addStretch();
    row->addLayout(m_text, 1);
    m_column->addLayout(row);
    m_column->addStretch();
    m_buttons = new QHBoxLayout;
    m_buttons->setSpacing(grid);
    m_buttons->addStretch();
    m_column->addLayout(m_buttons);
    m_column->addStrut(widthOfTitle(*this));  // an item too: the line of an input box counts from the top
}

void AskDialog::addRemark(const QString& text) {
    auto* remark = new QLabel(text, this);
    remark->setObjectName(u"remark"_s);
    remark->setTextFormat(Qt::PlainText);
    remark->setWordWrap(true);
    remark->setProperty("quiet", true);
    m_text->addWidget(remark);
}

/// Two lines of room, so that the window stays as it is while the note changes.
void AskDialog::addNote() {
    m_note = new QLabel(this);
    m_note->setObjectName(u"note"_s);
    m_note->setTextFormat(Qt::PlainText);
    m_note->setWordWrap(true);
    m_note->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_note->setMinimumHeight(2 * m_note->fontMetrics().lineSpacing());
    m_column->insertWidget(2, m_note);
    showNote();
}

void AskDialog::showNote() {
    if (!m_note)
        return;
    const LineNote note = m_guide.note(m_line->text());
    m_note->setText(note.text);
    setLook(*m_note, "caution", note.doubtful);
    m_line->setAccessibleDescription(note.text);
    QAccessibleEvent told(m_line, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&told);
}

void AskDialog::correctLine() {
    if (!m_guide.corrected)
        return;
    const QString corrected = m_guide.corrected(m_line->text());
    if (corrected == m_line->text())
        return;
    const int place = m_line->cursorPosition();
    m_line->setText(corrected);
    m_line->setCursorPosition(place);
}

// The letter alone, without Alt, answers nothing.
void AskDialog::addButton(const QString& caption, Answer answer, bool isDefault) {
    const QString shown = widgetText(caption);
    auto* button = new QPushButton(answer == Answer::Ok ? shown : withAccessKey(shown, m_accessKeys), this);
    button->setObjectName(caption);
    button->setMinimumWidth(88);
    button->setDefault(isDefault);
    if (isDefault && !m_line)
        button->setFocus();
    connect(button, &QPushButton::clicked, this, [this, answer] {
        m_answer = answer;
        done(answer == Answer::Cancel ? Rejected : Accepted);
    });
    m_buttons->addWidget(button);
}

QString AskDialog::line() const { return m_line && m_answer == Answer::Ok ? m_line->text() : QString(); }

void AskDialog::reject() {
    if (!m_escapable)
        return;
    if (m_answer != Answer::Ok)
        m_answer = Answer::Cancel;
    QDialog::reject();
}

void AskDialog::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    const QWidget* owner = parentWidget();
    if (!m_low || !owner)
        return;
    const QRect around = owner->window()->frameGeometry();
    const int below = around.bottom() - frameGeometry().height() - lowGap;
    move(around.center().x() - frameGeometry().width() / 2, qMax(around.top(), below));
}

void AskDialog::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy))
        QGuiApplication::clipboard()->setText(m_prompt);
    else
        QDialog::keyPressEvent(event);
}

}  // namespace platform
