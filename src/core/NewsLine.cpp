#include "core/NewsLine.h"

#include "core/News.h"
#include "core/NewsButtons.h"
#include "core/NewsList.h"
#include "platform/widgets/Spoken.h"
#include "platform/widgets/Theme.h"
#include "shared/Translator.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {

constexpr int widestText = 480;  // pixels
constexpr int pictureSize = 14;

}  // namespace

NewsLine::NewsLine(News& news, QWidget* parent)
    : QWidget(parent), m_news(news), m_text(new QPushButton(this)), m_actions(new QHBoxLayout) {
    setObjectName(u"newsLine"_s);
    m_text->setObjectName(u"cmdNews"_s);
    m_text->setIcon(platform::icon(u"recent"_s, platform::theme().secondaryText));
    m_text->setIconSize({pictureSize, pictureSize});
    m_text->setFocusPolicy(Qt::TabFocus);  // a click leaves the keys where they are
    platform::setLook(*m_text, "inLine");
    platform::setLook(*m_text, "quiet");
    m_text->hide();
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(platform::grid / 2);
    row->addWidget(m_text);
    m_actions->setSpacing(platform::grid / 2);
    row->addLayout(m_actions);
    m_shown.setSingleShot(true);
    m_shown.callOnTimeout(this, &NewsLine::fade);
    connect(m_text, &QPushButton::clicked, this, &NewsLine::openList);
    connect(&news, &News::heard, this, &NewsLine::show);
    connect(&news, &News::changed, this, &NewsLine::showActions);
}

void NewsLine::show() {
    const News::Item& newest = m_news.items().front();
    const QString& text = newest.happening.text;
    const QString cut = m_text->fontMetrics().elidedText(text, Qt::ElideMiddle, widestText);
    m_text->show();
    m_text->setAccessibleName(text);
    m_text->setText(QString(cut).replace('&'_L1, "&&"_L1));
    m_text->setToolTip(text);
    showActions();
    alert();
    m_shown.start(newest.happening.actions.empty() ? m_times.read : m_times.act);
}

void NewsLine::showActions() {
    const bool current = !m_text->text().isEmpty() && !m_news.items().empty();
    setNewsButtons(*m_actions, NewsLook::Words, m_news, current ? &m_news.items().front() : nullptr);
}

// Screen readers say what a status line is named when its name changes, and an alert where they know of it.
void NewsLine::alert() { platform::sayAloud(*m_text); }

// Not while somebody is about to click.
void NewsLine::fade() {
    if (underMouse() || isAncestorOf(QApplication::focusWidget())) {
        m_shown.start(m_times.read);
        return;
    }
    const QString name = translated(u"Recent messages"_s);
    m_text->setAccessibleName(name);
    m_text->setText({});
    m_text->setToolTip(name);
    showActions();
}

void NewsLine::openList() { NewsList::open(m_news, *m_text); }

}  // namespace sorvanto
