#include "core/DraftStrip.h"

#include "platform/widgets/Spoken.h"
#include "platform/widgets/Theme.h"
#include "shared/Translator.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace sorvanto {

DraftStrip::DraftStrip(QWidget* parent)
    : QFrame(parent), m_text(new QLabel(this)), m_others(new QWidget(this)),
      m_newer(addArrow("cmdNewerDraft", "previous", -1)), m_older(addArrow("cmdOlderDraft", "next", 1)),
      m_count(new QLabel(this)), m_bringBack(new QPushButton(this)), m_discard(new QPushButton(this)),
      m_discardAll(new QPushButton(this)) {
    setObjectName(u"draftStrip"_s);
    m_text->setObjectName(u"lblDraft"_s);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_text->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_count->setObjectName(u"lblDraftCount"_s);
    platform::setLook(*m_count, "quiet");
    m_bringBack->setObjectName(u"cmdBringBack"_s);
    m_discard->setObjectName(u"cmdDiscard"_s);
    m_discardAll->setObjectName(u"cmdDiscardAll"_s);
    auto* picture = new QLabel(this);
    picture->setPixmap(platform::icon(u"warning"_s).pixmap(24, 24));

    auto* others = new QHBoxLayout(m_others);
    others->setContentsMargins(0, 0, platform::grid, 0);
    others->setSpacing(platform::grid / 2);
    for (QWidget* part :
         {static_cast<QWidget*>(m_newer), static_cast<QWidget*>(m_count), static_cast<QWidget*>(m_older)})
        others->addWidget(part);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(3 * platform::grid, platform::grid, 3 * platform::grid, platform::grid);
    row->setSpacing(platform::grid);
    row->addWidget(picture);
    row->addWidget(m_text, 1);
    row->addWidget(m_others);
    for (QPushButton* button : {m_bringBack, m_discard, m_discardAll})
        row->addWidget(button);

    platform::setLook(*this, "caution");
    platform::makeBar(*this, Qt::BottomEdge);
    connect(m_bringBack, &QPushButton::clicked, this, &DraftStrip::bringBack);
    connect(m_discard, &QPushButton::clicked, this, &DraftStrip::discard);
    connect(m_discardAll, &QPushButton::clicked, this, &DraftStrip::discardAll);
    hide();
}

QToolButton* DraftStrip::addArrow(const char* name, const char* icon, int direction) {
    auto* button = new QToolButton(this);
    button->setObjectName(QLatin1String(name));
    button->setIcon(platform::icon(QLatin1String(icon)));
    button->setIconSize({20, 20});
    button->setAutoRaise(true);
    connect(button, &QToolButton::clicked, this, [this, direction] { emit step(direction); });
    return button;
}

void DraftStrip::offer(const QString& text, bool readOnly, int number, int count) {
    const bool isNew = isHidden() || accessibleName() != text;
    m_text->setText(text);
    setAccessibleName(text);
    m_others->setVisible(count > 1);
    m_discardAll->setVisible(count > 1);
    m_count->setText(translated(u"%1 of %2"_s).arg(number).arg(count));
    m_newer->setEnabled(number > 1);
    m_older->setEnabled(number < count);
    const std::pair<QToolButton*, QString> tips[] = {{m_newer, translated(u"Newer text"_s)},
                                                     {m_older, translated(u"Older text"_s)}};
    for (const auto& [button, tip] : tips) {
        button->setToolTip(tip);
        button->setAccessibleName(tip);
    }
    m_bringBack->setText(readOnly ? translated(u"Read"_s) : translated(u"Bring back"_s));
    m_discard->setText(translated(u"Discard"_s));
    m_discardAll->setText(translated(u"Discard all"_s));
    show();
    if (isNew)
        platform::sayAloud(*this);
}

}  // namespace sorvanto
