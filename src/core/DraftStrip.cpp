#include "core/DraftStrip.h"

#include "platform/widgets/Theme.h"
#include "shared/Translator.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace sorvanto {

DraftStrip::DraftStrip(QWidget* parent)
    : QFrame(parent), m_text(new QLabel(this)), m_bringBack(new QPushButton(this)),
      m_discard(new QPushButton(this)) {
    setObjectName(u"draftStrip"_s);
    m_text->setObjectName(u"lblDraft"_s);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_text->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_bringBack->setObjectName(u"cmdBringBack"_s);
    m_discard->setObjectName(u"cmdDiscard"_s);
    auto* picture = new QLabel(this);
    picture->setPixmap(platform::icon(u"warning"_s).pixmap(24, 24));

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(3 * platform::grid, platform::grid, 3 * platform::grid, platform::grid);
    row->setSpacing(platform::grid);
    row->addWidget(picture);
    row->addWidget(m_text, 1);
    row->addWidget(m_bringBack);
    row->addWidget(m_discard);

    const auto& colors = platform::theme();
    setStyleSheet(u"#draftStrip { background: %1; border-bottom: 1px solid %2; }"_s.arg(
        colors.surface.name(), colors.warning.name()));
    connect(m_bringBack, &QPushButton::clicked, this, &DraftStrip::bringBack);
    connect(m_discard, &QPushButton::clicked, this, &DraftStrip::discard);
    hide();
}

void DraftStrip::offer(const QString& text, bool readOnly) {
    m_text->setText(text);
    setAccessibleName(text);
    m_bringBack->setText(readOnly ? translated(u"Read"_s) : translated(u"Bring back"_s));
    m_discard->setText(translated(u"Discard"_s));
    show();
}

}  // namespace sorvanto
