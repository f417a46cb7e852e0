#include "core/NewsList.h"

#include "core/NewsButtons.h"
#include "platform/basic/Dates.h"
#include "platform/basic/TimeOfDay.h"
#include "platform/widgets/Theme.h"
#include "shared/Translator.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {

constexpr int widestItem = 420;  // pixels

/// Of today the time alone.
QString timeText(const QDateTime& when) {
    return when.date() == platform::today().date() ? platform::timeOfDay(when.time())
                                                   : platform::dateText(when);
}

}  // namespace

NewsList::NewsList(News& news, QWidget* parent)
    : QFrame(parent, Qt::Popup), m_news(news), m_rows(new QGridLayout) {
    setObjectName(u"newsList"_s);
    platform::setLook(*this, "panel");
    setAttribute(Qt::WA_DeleteOnClose);
    setAccessibleName(translated(u"Recent messages"_s));
    auto* head = new QLabel(accessibleName(), this);
    platform::setLook(*head, "heading");
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(2 * platform::grid, platform::grid, platform::grid, platform::grid);
    column->setSpacing(platform::grid);
    column->addWidget(head);
    column->addLayout(m_rows);
    m_rows->setHorizontalSpacing(2 * platform::grid);
    m_rows->setVerticalSpacing(platform::grid / 2);
    fill();
}

void NewsList::fill() {
    int row = 0;
    for (const News::Item& item : m_news.items())
        addRow(row++, item);
}

void NewsList::addRow(int row, const News::Item& item) {
    auto* time = new QLabel(timeText(item.when), this);
    time->setObjectName(u"lblNewsTime%1"_s.arg(row));
    platform::setLook(*time, "quiet");
    auto* text = new QLabel(this);
    text->setObjectName(u"lblNews%1"_s.arg(row));
    text->setTextFormat(Qt::PlainText);
    text->setText(text->fontMetrics().elidedText(item.happening.text, Qt::ElideMiddle, widestItem));
    text->setToolTip(item.happening.text);
    text->setAccessibleName(item.happening.text);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(platform::grid / 2);
    setNewsButtons(*buttons, NewsLook::Words, m_news, &item, [this] { close(); });
    m_rows->addWidget(time, row, 0);
    m_rows->addWidget(text, row, 1);
    m_rows->addLayout(buttons, row, 2, Qt::AlignLeft);
}

void NewsList::open(News& news, QWidget& above) {
    auto* list = new NewsList(news, above.window());
    list->adjustSize();
    const QPoint corner = above.mapToGlobal(QPoint(0, -platform::grid));
    list->move(corner.x(), corner.y() - list->height());
    list->show();
    if (auto* first = list->findChild<QPushButton*>())
        first->setFocus(Qt::PopupFocusReason);
    else
        list->setFocus(Qt::PopupFocusReason);
}

}  // namespace sorvanto
