#include "core/NewsCard.h"

#include "core/CardParts.h"
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
    m_close->setObjectName(u"cmdCloseNews"_s);
    layOutCard(*this, {m_picture, m_text, m_close})->insertLayout(afterText, m_actions);
    connect(m_close, &QToolButton::clicked, this, &NewsCard::dismiss);
    connect(&news, &News::heard, this, &NewsCard::hear);
    connect(&news, &News::changed, this, &NewsCard::showActions);
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
    nameClose(*m_close);
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
