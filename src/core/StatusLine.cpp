#include "core/StatusLine.h"

#include "config/ServerTexts.h"
#include "core/CopyShelf.h"
#include "core/News.h"
#include "core/NewsLine.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Paths.h"
#include "platform/basic/Plurals.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/SystemLocale.h"
#include "platform/basic/TimeOfDay.h"
#include "platform/data/Connection.h"
#include "platform/widgets/Theme.h"
#include "shared/Context.h"
#include "shared/Happening.h"
#include "shared/ListedScreen.h"
#include "shared/RecordScreen.h"
#include "shared/Translator.h"
#include "shared/databaseInUse.h"

#include <QFileInfo>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStatusBar>

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {

constexpr QSize dividerSize(1, 12);
constexpr int copySignSize = 14;
constexpr int daysOfACopy = 1;  // that of yesterday is replaced soon after the start

QWidget* divider(QStatusBar& bar) {
    auto* line = new QFrame(&bar);
    line->setObjectName(u"divider"_s);
    platform::makeRule(*line);
    line->setFixedSize(dividerSize);
    return line;
}

QString optionsPath(const Context& context) {
    try {
        return context.databaseLocation ? context.databaseLocation().replace('\\'_L1, '/'_L1) : QString();
    } catch (const platform::RuntimeError&) {
        return {};  // options without a location: reported where the database is opened
    }
}

/// With a copy in its place, the server's own.
QString openedPath(const Context& context) {
    if (context.standIn)
        return context.standIn->server;
    const auto connection = context.connection;
    return connection ? connection->location() : QString();
}

bool isSameFile(const QString& one, const QString& other) {
    return one == other || QFileInfo(platform::platformPath(one)) == QFileInfo(platform::platformPath(other));
}

}  // namespace

StatusLine::StatusLine(const Context& context, QStatusBar& bar, News& news)
    : QObject(&bar), m_context(context), m_bar(bar), m_place(addLabel(u"lblPlace"_s)),
      m_beforeNews(divider(bar)), m_readingOnly(addLabel(u"lblReadingOnly"_s)),
      m_keysLeft(new QPushButton(&bar)), m_database(addLabel(u"lblDatabase"_s)),
      m_copyPicture(addLabel(u"lblCopyPicture"_s)), m_copy(addLabel(u"lblCopy"_s)) {
    bar.setSizeGripEnabled(false);
    m_readingOnly->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    platform::setLook(*m_readingOnly, "caution");
    m_readingOnly->hide();
    m_keysLeft->setObjectName(u"cmdKeysLeft"_s);
    platform::setLook(*m_keysLeft, "caution");
    m_keysLeft->hide();
    connect(m_keysLeft, &QPushButton::clicked, this, &StatusLine::keysLeftClicked);
    bar.addWidget(m_place);
    m_beforeNews->hide();
    connect(&news, &News::heard, this, [this] {
        m_hasNews = true;
        follow();
    });
    bar.addWidget(m_beforeNews);
    bar.addWidget(new NewsLine(news, &bar));
    bar.addWidget(m_readingOnly, 1);
    bar.addPermanentWidget(m_keysLeft);
    bar.addPermanentWidget(m_database);
    bar.addPermanentWidget(divider(bar));
    bar.addPermanentWidget(m_copyPicture);
    bar.addPermanentWidget(m_copy);
}

QLabel* StatusLine::addLabel(const QString& name) {
    auto* label = new QLabel(&m_bar);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    return label;
}

void StatusLine::setScreen(RecordScreen* screen) {
    m_screen = dynamic_cast<ListedScreen*>(screen);
    if (m_screen) {
        const ListedTable table = m_screen->listedTable();
        m_placeText = table.placeText;
        m_countText = table.countText;
    }
    follow();
}

// A record that was found by a search, or has just been made, is not where the set stands.
void StatusLine::follow() {
    const SetPlace place = m_screen ? m_screen->setPlace() : SetPlace();
    QString text;
    if (place.number > 0) {
        const QLocale locale = platform::systemLocale();
        text = QString(m_placeText)
                   .replace(u"%2"_s, locale.toString(place.count))
                   .replace(u"%1"_s, locale.toString(place.number));
    } else if (m_screen) {
        text = platform::counted(m_countText, place.count);
    }
    m_place->setText(text);
    m_beforeNews->setVisible(m_hasNews && !text.isEmpty());  // between the two
}

// The file that is open, whatever the options say by now. The caption of the window is the screen's alone, so what tells
// two databases of one name apart stands here, in the eight digits that the names of its copies bear.
void StatusLine::showDatabase() {
    const QString opened = openedPath(m_context);
    const QString wanted = optionsPath(m_context);
    const QString path = opened.isEmpty() ? wanted : opened;
    QStringList tip{shownLocation(path)};
    if (m_context.standIn)
        tip << m_context.standIn->file;
    if (const QString identity = databaseIdentity(m_context); !identity.isEmpty())
        tip << translated(u"Identity %1"_s).replace(u"%1"_s, identity.left(8));
    const bool another = !opened.isEmpty() && !wanted.isEmpty() && !isSameFile(opened, wanted);
    const QString next = another ? wanted : QString();
    if (another)
        tip.insert(0, translated(u"At the next start: %1"_s).replace(u"%1"_s, shownLocation(next)));
    if (another && next != m_next)
        announce(translated(u"The database changes at the next start"_s));
    m_next = next;
    m_database->setText(shortLocation(path));
    m_database->setToolTip(tip.join('\n'_L1));
}

void StatusLine::showCopy() {
    const auto copies =
        CopyShelf(platform::programFolder() + u"\\backups"_s, databaseIdentity(m_context)).copies();
    bool good = false;
    QString text = translated(u"No copy yet"_s);
    if (!copies.empty()) {
        const QDateTime made = copies.front().made;
        const qint64 days = made.date().daysTo(platform::today().date());
        good = days <= daysOfACopy;
        text =
            days == 0
                ? translated(u"Copy of today %1 checked"_s).replace(u"%1"_s, platform::timeOfDay(made.time()))
                : translated(u"Copy of %1 checked"_s)
                      .replace(u"%1"_s, platform::dateText(QDateTime(made.date(), QTime(0, 0), Qt::UTC)));
    }
    const platform::Theme& colors = platform::theme();
    m_copyPicture->setPixmap(
        platform::icon(good ? u"check"_s : u"warning"_s, good ? colors.good : colors.warning)
            .pixmap(copySignSize, copySignSize));
    platform::setLook(*m_copy, "caution", !good);
    m_copy->setText(text);
    m_copy->setToolTip(copies.empty() ? QString() : copies.front().path);
}

void StatusLine::setReadingOnly(const QString& why) {
    m_readingOnly->setText(why);
    m_readingOnly->setToolTip(why);
    m_readingOnly->setVisible(!why.isEmpty());
}

void StatusLine::setKeysLeft(const QString& text) {
    m_keysLeft->setText(text);
    m_keysLeft->setVisible(!text.isEmpty());
}

}  // namespace sorvanto
