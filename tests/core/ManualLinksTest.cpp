// The pages of the manual: each is reached from the first one, and each link and picture is there.
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QString folder = QLatin1String(SORVANTO_SOURCE_DIR) + u"/docs/manual"_s;

/// Files that the page links to or shows.
QStringList links(const QString& page) {
    QFile file(page);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(page);
    QStringList found;
    auto all = QRegularExpression(u"\\]\\(([^)#:]+)"_s).globalMatch(QString::fromUtf8(file.readAll()));
    while (all.hasNext())
        found << QDir::cleanPath(QFileInfo(page).path() + '/'_L1 + all.next().captured(1));
    return found;
}

TEST(ManualLinksTest, EachLinkAndPictureIsThere) {
    const QStringList pages = QDir(folder).entryList({"*.md"});
    EXPECT_GT(pages.size(), 8);
    for (const QString& page : pages) {
        for (const QString& link : links(folder + '/'_L1 + page))
            EXPECT_TRUE(QFileInfo::exists(link)) << qPrintable(page + ": " + link);
    }
}

TEST(ManualLinksTest, EachPageIsReachedFromTheFirst) {
    QSet<QString> seen;
    QStringList waiting{folder + u"/README.md"_s};
    while (!waiting.isEmpty()) {
        const QString page = waiting.takeLast();
        if (seen.contains(page))
            continue;
        seen << page;
        for (const QString& link : links(page)) {
            if (link.endsWith(".md"_L1))
                waiting << link;
        }
    }
    for (const QString& page : QDir(folder).entryList({"*.md"}))
        EXPECT_TRUE(seen.contains(folder + '/'_L1 + page)) << qPrintable(page);
}

}  // namespace
