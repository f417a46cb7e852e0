// The link row: the mark is full when the mixer answers and hollow when it doesn't.
#include "mixer/LinkRow.h"

#include "platform/widgets/Spoken.h"
#include "platform/widgets/Theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace sorvanto {

LinkRow::LinkRow(QWidget* parent) : QWidget(parent), m_text(new QLabel(this)), m_badge(new QLabel(this)) {
    m_text->setTextFormat(Qt::PlainText);
    platform::setLook(*m_text, "quiet");
    platform::setLook(*m_badge, "badge");
    m_badge->hide();
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(16, 0, 0, 0);
    layout->setSpacing(platform::grid);
    layout->addWidget(m_text);
    layout->addWidget(m_badge);
    layout->addStretch(1);
    setMinimumHeight(20);
}

void LinkRow::show(Kind kind, const QString& text, const QString& badge) {
    m_text->setText(text);
    m_badge->setText(badge);
    m_badge->setVisible(!badge.isEmpty());
    platform::setSpokenName(*this, badge.isEmpty() ? text : text + u", "_s + badge);
    if (m_kind != kind) {
        m_kind = kind;
        update();
    }
}

QString LinkRow::text() const { return m_text->text(); }

QString LinkRow::badge() const { return m_badge->isHidden() ? QString() : m_badge->text(); }

void LinkRow::paintEvent(QPaintEvent*) {
    const platform::Theme& theme = platform::theme();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF dot(0.75, height() / 2.0 - 4.25, 8.5, 8.5);
    if (m_kind == Kind::Good) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(theme.good);
    } else {
        painter.setPen(QPen(m_kind == Kind::Off ? theme.secondaryText : theme.warning, 1.6));
    }
    painter.drawEllipse(dot);
}

}  // namespace sorvanto
