// The list holds the choices; a text outside it is kept apart and only painted.
#include "platform/widgets/Boxes.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QStylePainter>
#include <QToolTip>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

namespace platform {

ChoiceBox::ChoiceBox(QWidget* parent) : QComboBox(parent) {
    // With a placeholder the first row added is not chosen by itself.
    setPlaceholderText(u" "_s);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(8);
    setMaxVisibleItems(14);
    connect(this, &QComboBox::activated, this, &ChoiceBox::chooseByUser);
}

int ChoiceBox::listIndex() const { return currentIndex(); }

void ChoiceBox::setListIndex(int index) {
    m_foreignText.clear();
    setCurrentIndex(index >= 0 && index < count() ? index : -1);
    update();
    emit clicked();
}

QString ChoiceBox::boxText() const { return currentIndex() >= 0 ? currentText() : m_foreignText; }

void ChoiceBox::setBoxText(const QString& text) {
    const int row = findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
    m_foreignText = row < 0 ? text : QString();
    setCurrentIndex(row);
    update();
}

void ChoiceBox::setReadOnlyBox(bool on) {
    if (on == m_locked)
        return;
    m_locked = on;
    update();
}

void ChoiceBox::chooseByUser() {
    m_foreignText.clear();
    emit clicked();
}

void ChoiceBox::showPopup() {
    if (!m_locked)
        QComboBox::showPopup();
}

void ChoiceBox::wheelEvent(QWheelEvent* event) { event->ignore(); }

void ChoiceBox::keyPressEvent(QKeyEvent* event) {
    if (m_locked)
        event->ignore();
    else
        QComboBox::keyPressEvent(event);
}

void ChoiceBox::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    option.currentText = shownText();
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

QString ChoiceBox::shownText() const {
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QRect room =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    return fontMetrics().elidedText(boxText(), Qt::ElideRight, room.width() - 2);
}

bool ChoiceBox::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty() && shownText() != boxText()) {
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                           u"<p>%1</p>"_s.arg(boxText().toHtmlEscaped()), this);
        return true;
    }
    return QComboBox::event(event);
}

}  // namespace platform
