// The bubble is a child of the field's window, so that it never becomes a window of its own.
#include "platform/widgets/Hint.h"

#include "platform/widgets/Theme.h"

#include <QAccessible>
#include <QEvent>
#include <QLineEdit>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr int tip = 6;      // height of the pointed end
constexpr int stay = 6000;  // milliseconds after the field is left
const char* const hintProperty = "platformHint";

}  // namespace

Hint::Hint(QLineEdit& field, QWidget& window) : QLabel(&window), m_field(&field) {
    setObjectName(u"hintBubble"_s);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setWordWrap(true);
    setContentsMargins(10, 7 + tip, 10, 7);
    setFocusPolicy(Qt::NoFocus);
    QPalette colors = palette();
    colors.setColor(QPalette::WindowText, theme().onFill);
    setPalette(colors);
    m_leaving.setSingleShot(true);
    m_leaving.setInterval(stay);
    connect(&m_leaving, &QTimer::timeout, this, &QWidget::hide);
    field.installEventFilter(this);
    window.installEventFilter(this);
    connect(&field, &QObject::destroyed, this, [this] {
        hide();
        deleteLater();
    });
}

Hint* Hint::of(const QLineEdit& field) {
    return field.property(hintProperty).value<QPointer<QObject>>()
               ? static_cast<Hint*>(field.property(hintProperty).value<QPointer<QObject>>().data())
               : nullptr;
}

void Hint::tell(QLineEdit& field, const QString& text) { show(field, text, true); }

void Hint::warn(QLineEdit& field, const QString& text) { show(field, text, false); }

void Hint::show(QLineEdit& field, const QString& text, bool refused) {
    setLook(field, "invalid", refused && !text.isEmpty());
    setLook(field, "caution", !refused && !text.isEmpty());
    field.setAccessibleDescription(text);
    Hint* hint = of(field);
    if (text.isEmpty() || !field.isVisible()) {
        delete hint;
        return;
    }
    if (!hint) {
        hint = new Hint(field, *field.window());
        field.setProperty(hintProperty, QVariant::fromValue(QPointer<QObject>(hint)));
    }
    hint->setText(text);
    hint->m_refused = refused;
    hint->place();
    hint->setVisible(true);
    hint->raise();
    QAccessibleEvent told(&field, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&told);
}

QString Hint::textOf(const QLineEdit& field) {
    const Hint* hint = of(field);
    return hint && hint->isVisible() ? hint->text() : QString();
}

void Hint::place() {
    if (!m_field)
        return;
    const int room = qMin(320, window()->width() - 2 * grid);
    const int natural = fontMetrics().horizontalAdvance(text()) + 24;
    setFixedWidth(qMin(room, natural));
    setFixedHeight(heightForWidth(width()));
    QPoint corner = m_field->mapTo(window(), QPoint(0, m_field->height() - 2));
    corner.setX(qBound(grid, corner.x(), qMax(grid, window()->width() - width() - grid)));
    move(corner);
}

bool Hint::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_field && event->type() == QEvent::Hide)
        hide();
    else if (watched == m_field && event->type() == QEvent::FocusOut)
        m_leaving.start();
    else if (watched == m_field && event->type() == QEvent::FocusIn)
        m_leaving.stop();
    else if (event->type() == QEvent::Resize || event->type() == QEvent::Move)
        place();
    return false;
}

void Hint::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_refused ? theme().danger : theme().warning);
    painter.drawRoundedRect(QRectF(0, tip, width(), height() - tip), 6, 6);
    painter.drawPolygon(QPolygonF({QPointF(16, tip), QPointF(22, 0), QPointF(28, tip)}));
    painter.end();
    QLabel::paintEvent(event);
}

}  // namespace platform
