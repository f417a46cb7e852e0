#include "core/NewsCard.h"

#include "core/News.h"
#include "core/NewsButtons.h"
#include "platform/widgets/Theme.h"
#include "shared/Translator.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr int signSize = 20;

}  // namespace

NewsCard::NewsCard(News& news, QWidget* parent)
    : QFrame(parent), m_news(news), m_text(new QLabel(this)), m_actions(new QHBoxLayout),
      m_picture(new QLabel(this)), m_close(new QToolButton(this)) {
    setObjectName(u"newsCard"_s);
    m_text->setObjectName(u"lblNewsCard"_s);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_close->setObjectName(u"cmdCloseNews"_s);
    m_close->setIcon(platform::icon(u"close"_s));
    m_close->setAutoRaise(true);
    m_close->setFocusPolicy(Qt::TabFocus);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(2 * platform::grid, platform::grid / 2, platform::grid, platform::grid / 2);
    row->setSpacing(platform::grid);
    row->addWidget(m_picture);
    row->addWidget(m_text, 1);
    row->addLayout(m_actions);
    row->addWidget(m_close);
    platform::makeBar(*this, Qt::BottomEdge);
    connect(m_close, &QToolButton::clicked, this, &NewsCard::dismiss);
    connect(&news, &News::heard, this, &NewsCard::hear);
    connect(&news, &News::changed, this, &NewsCard::showActions);
    hide();
}

void NewsCard::hear() {
    const News::Item& newest = m_news.items().front();
    if (!newest.happening.card)
        return;
    m_item = newest.id;
    const platform::Theme& colors = platform::theme();
    const bool caution = newest.happening.caution;
    m_picture->setPixmap(
        platform::icon(caution ? u"warning"_s : u"check"_s, caution ? colors.warning : colors.good)
            .pixmap(signSize, signSize));
    m_text->setText(newest.happening.text);
    setAccessibleName(newest.happening.text);
    m_close->setToolTip(translated(u"Close"_s));
    m_close->setAccessibleName(m_close->toolTip());
    showActions();
    show();
}

void NewsCard::showActions() {
    if (m_item == 0)
        return;
    const News::Item* item = m_news.find(m_item);
    setNewsButtons(*m_actions, NewsLook::Buttons, m_news, item, [this] { dismiss(); });
    if (!item)
        dismiss();
}

void NewsCard::dismiss() {
    m_item = 0;
    hide();
}

}  // namespace sorvanto
