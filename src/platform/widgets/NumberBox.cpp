// Keeps the number as text with a point; what the user sees is made from it, and judged on every key.
#include "platform/basic/Format.h"
#include "platform/basic/LocalMarks.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/Plurals.h"
#include "platform/basic/RuntimeError.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/CutText.h"
#include "platform/widgets/Hint.h"
#include "platform/widgets/NumberInput.h"
#include "platform/widgets/Texts.h"

#include <QFocusEvent>
#include <QHelpEvent>
#include <QKeyEvent>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr double widest = 9.2e14;
constexpr int moneyDecimals = 4;  // what an amount holds, however few are shown

/// The picture's digits alone: no currency, no thousands, first section.
QString digitsOf(const QString& picture) {
    QString digits;
    for (const QChar c : picture.section(u';', 0, 0))
        if (c == u'0' || c == u'#' || (c == u'.' && !digits.isEmpty()))
            digits += c;
    return digits;
}

int decimalsOf(const QString& digits) {
    const auto point = digits.indexOf(u'.');
    return point < 0 ? 0 : static_cast<int>(digits.size() - point - 1);
}

/// How many decimals may be typed for an edit format.
int typableDecimals(const QString& digits) {
    const int shown = decimalsOf(digits);
    return shown == 0 ? 0 : qMax(shown, moneyDecimals);
}

}  // namespace

NumberBox::NumberBox(QWidget* parent) : QLineEdit(parent), m_minimum(-widest), m_maximum(widest) {
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    connect(this, &QLineEdit::textEdited, this, &NumberBox::takeTyped);
    connect(this, &QLineEdit::textChanged, this, &NumberBox::takeForeignText);
}

QString NumberBox::text() const { return m_problem.isEmpty() ? m_number : QString(); }

void NumberBox::setText(const QString& text) {
    setNumber(text.trimmed().isEmpty() ? QString() : numberText(platform::toDouble(text)));
}

QVariant NumberBox::value() const {
    requireAcceptable();
    return m_number.isEmpty() ? QVariant() : QVariant(toDouble());
}

void NumberBox::setValue(double value) { setNumber(numberText(value)); }

void NumberBox::setValue(Currency value) { setNumber(value.toText()); }

double NumberBox::toDouble() const {
    requireAcceptable();
    return m_number.isEmpty() ? 0.0 : platform::toDouble(m_number);
}

Currency NumberBox::toCurrency() const {
    requireAcceptable();
    if (m_number.isEmpty())
        return {};
    return m_number.contains(u'E') ? Currency::fromDouble(toDouble()) : Currency::fromText(m_number);
}

void NumberBox::requireAcceptable() const {
    if (!m_problem.isEmpty())
        throw RuntimeError(error::typeMismatch, m_problem, objectName());
}

void NumberBox::setFormats(const QString& editFormat, const QString& displayFormat) {
    m_editFormat = editFormat;
    m_displayFormat = displayFormat;
    if (!m_typed)
        showNumber(hasFocus() && !isReadOnly());
}

void NumberBox::setBounds(double minimum, double maximum) {
    m_minimum = minimum;
    m_maximum = maximum;
}

bool NumberBox::acceptable() {
    if (m_problem.isEmpty())
        return true;
    setFocus();
    Hint::tell(*this, m_problem);
    return false;
}

void NumberBox::setReadOnlyBox(bool on) {
    if (on == isReadOnly())
        return;
    setReadOnly(on);
    if (!m_typed)
        showNumber(hasFocus() && !on);
}

void NumberBox::setNumber(const QString& number) {
    m_number = number;
    m_stored = number;
    m_problem.clear();
    m_typed = false;
    Hint::tell(*this, {});
    showNumber(hasFocus() && !isReadOnly());
}

QString NumberBox::editText() const {
    if (m_number.isEmpty())
        return {};
    const double value = platform::toDouble(m_number);
    const QString digits = digitsOf(m_editFormat);
    const QString formatted = digits.isEmpty() ? m_number : format(value, digits);
    const bool exact = !digits.isEmpty() && leadingNumber(formatted) == value;
    return withLocalMarks(exact ? formatted : m_number, locale());
}

QString NumberBox::displayText() const {
    const QString picture = m_displayFormat.isEmpty() ? m_editFormat : m_displayFormat;
    if (m_number.isEmpty())
        return picture.isEmpty() ? QString() : format(QVariant(), picture);
    const double value = platform::toDouble(m_number);
    return withLocalMarks(picture.isEmpty() ? m_number : format(value, picture), locale());
}

void NumberBox::showNumber(bool editing) {
    m_showing = true;
    QLineEdit::setText(editing ? editText() : displayText());
    if (!editing)
        setCursorPosition(0);
    m_showing = false;
}

QString NumberBox::problemOf(const QString& number, int decimals) const {
    const double value = platform::toDouble(number);
    const QString digits = digitsOf(m_editFormat);
    const int allowed = qMax(typableDecimals(digits), decimalsOf(m_number));
    if (!digits.isEmpty() && decimals > allowed)
        return allowed == 0
                   ? widgetText(u"Whole numbers only."_s)
                   : counted(widgetText(u"No more than %1 decimal. | No more than %1 decimals."_s), allowed);
    if (value > m_maximum)
        return widgetText(u"At most %1."_s).arg(withLocalMarks(numberText(m_maximum), locale()));
    if (value < m_minimum)
        return widgetText(u"At least %1."_s).arg(withLocalMarks(numberText(m_minimum), locale()));
    return {};
}

QString NumberBox::ambiguity(const QStringList& readings) const {
    if (readings.isEmpty())
        return widgetText(u"This can be read in two ways. Leave out the thousands mark and "
                          u"use \"%1\" for decimals."_s)
            .arg(locale().decimalPoint());
    QStringList shown;
    for (const QString& reading : readings)
        shown << withLocalMarks(reading, locale());
    return shown.size() == 1
               ? widgetText(u"Write %1."_s).arg(shown[0])
               : widgetText(u"This can be read in two ways. Write %1 or %2."_s).arg(shown[0], shown[1]);
}

void NumberBox::tellState(bool tellNow) {
    if (!m_problem.isEmpty())
        Hint::tell(*this, tellNow ? m_problem : QString());
    else if (differByTens(m_stored, m_number))
        Hint::warn(*this, widgetText(u"Please check: %1 before, %2 now."_s)
                              .arg(withLocalMarks(m_stored, locale()), withLocalMarks(m_number, locale())));
    else
        Hint::tell(*this, {});
}

void NumberBox::takeTyped() {
    m_typed = true;
    const TypedNumber typed = readTypedNumber(QLineEdit::text(), locale());
    const QString before = m_number;
    bool tellNow = true;
    switch (typed.kind) {
    case TypedNumber::Kind::Empty:
        m_number.clear();
        m_problem.clear();
        break;
    case TypedNumber::Kind::Number:
        m_problem = problemOf(typed.number, typed.decimals);
        tellNow = leadingNumber(typed.number) >= m_minimum;
        if (m_problem.isEmpty())
            m_number = typed.number;
        break;
    case TypedNumber::Kind::Ambiguous:
        m_problem = ambiguity(typed.readings);
        break;
    case TypedNumber::Kind::Incomplete:
    case TypedNumber::Kind::NotANumber:
        m_problem = widgetText(u"Please type a number, such as %1."_s)
                        .arg(decimalsOf(digitsOf(m_editFormat)) > 0 || m_editFormat.isEmpty()
                                 ? withLocalMarks(u"12.5"_s, locale())
                                 : u"12"_s);
        tellNow = typed.kind == TypedNumber::Kind::NotANumber;
        break;
    }
    tellState(tellNow);
    if (m_problem.isEmpty() && m_number != before)
        emit valueEdited();
}

void NumberBox::takeForeignText() {
    if (m_showing || isModified())
        return;
    const TypedNumber typed = readTypedNumber(QLineEdit::text(), locale());
    m_number = typed.number;
    m_stored = m_number;
    m_problem.clear();
    m_typed = false;
}

void NumberBox::focusInEvent(QFocusEvent* event) {
    // A form may have selected the whole number before the focus came: it stays selected.
    const bool whole = hasSelectedText() && selectedText() == QLineEdit::text();
    if (event->reason() != Qt::PopupFocusReason && !isReadOnly() && !m_typed)
        showNumber(true);
    QLineEdit::focusInEvent(event);
    if (whole)
        selectAll();
    if (isReadOnly())
        deselect();
    tellState(true);
}

void NumberBox::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (event->reason() == Qt::PopupFocusReason)
        return;
    if (!m_problem.isEmpty()) {
        Hint::tell(*this, m_problem);
        return;
    }
    m_typed = false;
    showNumber(false);
}

void NumberBox::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && !m_problem.isEmpty()) {
        const QString stored = m_stored;
        setNumber(m_number);
        m_stored = stored;
        tellState(true);
        selectAll();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void NumberBox::changeEvent(QEvent* event) {
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::LocaleChange && !m_typed)
        showNumber(hasFocus() && !isReadOnly());
}

void NumberBox::paintEvent(QPaintEvent* event) {
    if (!paintCut(*this))
        QLineEdit::paintEvent(event);
}

bool NumberBox::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip && tellCut(*this, static_cast<QHelpEvent&>(*event)))
        return true;
    return QLineEdit::event(event);
}

}  // namespace platform
