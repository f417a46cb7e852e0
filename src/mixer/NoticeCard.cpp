// The notice card. Its kind shows by the mark as well as by the color.
#include "mixer/NoticeCard.h"

#include "platform/widgets/Spoken.h"
#include "platform/widgets/Theme.h"

#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

QColor kindColor(NoticeCard::Kind kind) {
    const platform::Theme& theme = platform::theme();
    switch (kind) {
    case NoticeCard::Kind::Warning:
        return theme.warning;
    case NoticeCard::Kind::Problem:
        return theme.danger;
    case NoticeCard::Kind::Information:
        break;
    }
    return theme.accent;
}

}  // namespace

NoticeCard::NoticeCard(QWidget* parent)
    : QFrame(parent), m_label(new QLabel(this)), m_layout(new QVBoxLayout(this)) {
    m_label->setWordWrap(true);
    m_label->setTextFormat(Qt::PlainText);
    m_label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_layout->setContentsMargins(36, 9, 10, 9);
    m_layout->addWidget(m_label);
    hide();
}

QPushButton* NoticeCard::addButton(const char* name) {
    auto* button = new QPushButton;
    button->setObjectName(QLatin1String(name));
    platform::setLook(*button, "primary");
    m_layout->setContentsMargins(36, 9, 12, 12);
    m_layout->setSpacing(platform::grid);
    m_layout->addWidget(button, 0, Qt::AlignLeft);
    return button;
}

void NoticeCard::show(Kind kind, const QString& text) {
    const bool changed = m_kind != kind || m_label->text() != text;
    const bool isNew = !text.isEmpty() && (changed || isHidden());
    setVisible(!text.isEmpty());
    if (changed) {
        m_kind = kind;
        m_label->setText(text);
        setAccessibleName(text);
        update();
    }
    if (isNew)
        platform::sayAloud(*this);
}

QString NoticeCard::text() const { return isHidden() ? QString() : m_label->text(); }

void NoticeCard::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor color = kindColor(m_kind);
    QPainterPath card;
    card.addRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 8, 8);
    QColor soft = color;
    soft.setAlphaF(platform::theme().dark ? 0.16F : 0.09F);
    painter.fillPath(card, soft);
    QColor edge = color;
    edge.setAlphaF(0.45F);
    painter.setPen(edge);
    painter.drawPath(card);

    const QRectF mark(11, 11, 16, 16);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(mark);
    QFont bold = font();
    bold.setPixelSize(12);
    bold.setWeight(QFont::Bold);
    painter.setFont(bold);
    painter.setPen(platform::theme().onFill);
    painter.drawText(mark, Qt::AlignCenter, m_kind == Kind::Information ? u"i"_s : u"!"_s);
}

}  // namespace sorvanto
