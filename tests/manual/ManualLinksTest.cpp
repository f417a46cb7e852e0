// The delivered pages in all languages: each is reached from the first one, each link and picture leads somewhere, and
// headings stand in the same order, so that a place means the same in every language.
#include "manual/Manual.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;

const QString folder = QLatin1String(SORVANTO_SOURCE_DIR) + u"/docs/manual"_s;
const QStringList languages{u"English"_s, u"German"_s,  u"French"_s,     u"Swiss"_s,
                            u"Italian"_s, u"Spanish"_s, u"Portuguese"_s, u"Russian"_s};

QString folderOf(const QString& language) {
    return language == "English"_L1 ? folder : folder + '/'_L1 + language;
}

QStringList pagesOf(const QString& language) { return QDir(folderOf(language)).entryList({"*.md"}); }

QString textOf(const QString& language, const QString& page) {
    QFile file(folderOf(language) + '/'_L1 + page);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(file.fileName());
    return QString::fromUtf8(file.readAll());
}

/// What the page links to and shows, as it is written there.
QStringList targets(const QString& markdown) {
    static const QRegularExpression target(u"\\]\\(([^)]*)\\)"_s);
    QStringList found;
    for (auto all = target.globalMatch(markdown); all.hasNext();)
        found << all.next().captured(1);
    return found;
}

bool hasAnchor(const Manual& manual, const QString& page, const QString& anchor) {
    const ManualPage* found = manual.find(page);
    return found && (anchor.isEmpty() ||
                     found->sections()[static_cast<std::size_t>(found->sectionOf(anchor))].anchor == anchor);
}

/// Why a target of a page leads nowhere; empty when it leads somewhere.
QString whyNot(const Manual& manual, const QString& page, const QString& target) {
    static const QRegularExpression english(u"^pictures/[\\w-]+\\.png$"_s),
        other(u"^\\.\\./pictures/[\\w-]+\\.png$"_s);
    const QRegularExpression& picture = manual.language() == "English"_L1 ? english : other;
    if (target.endsWith(".png"_L1))
        return !picture.match(target).hasMatch()  ? u"is not written [../]pictures/NAME.png"_s
               : manual.picture(target).isEmpty() ? u"there is no such picture"_s
                                                  : QString();
    const ManualPlace place = ManualPlace::of(target);
    return hasAnchor(manual, place.page.isEmpty() ? page : place.page, place.anchor)
               ? QString()
               : u"there is no such page or heading"_s;
}

class ManualLinksTest : public testing::TestWithParam<QString> {};

TEST_P(ManualLinksTest, EachLinkAndPictureLeadsSomewhere) {
    const Manual manual(folder, GetParam());
    for (const QString& page : pagesOf(GetParam())) {
        for (const QString& target : targets(textOf(GetParam(), page))) {
            const QString why = whyNot(manual, page, target);
            EXPECT_TRUE(why.isEmpty()) << qPrintable(page + ": "_L1 + target + ": "_L1 + why);
        }
    }
}

TEST_P(ManualLinksTest, HeadingsStandAsInEnglish) {
    const Manual english(folder, u"English"_s), own(folder, GetParam());
    for (const QString& page : pagesOf(GetParam())) {
        const ManualPage *there = english.find(page), *here = own.find(page);
        ASSERT_TRUE(there && here) << qPrintable(page) << " is no page of the English manual";
        ASSERT_EQ(here->sections().size(), there->sections().size()) << qPrintable(page);
        for (std::size_t i = 0; i < here->sections().size(); ++i)
            EXPECT_EQ(here->sections()[i].level, there->sections()[i].level)
                << qPrintable(page + ": "_L1 + here->sections()[i].heading);
    }
}

INSTANTIATE_TEST_SUITE_P(Languages, ManualLinksTest, testing::ValuesIn(languages),
                         [](const auto& test) { return test.param.toStdString(); });

TEST(ManualPages, EachIsReachedFromTheFirst) {
    const Manual manual(folder, u"English"_s);
    EXPECT_GT(pagesOf(u"English"_s).size(), 8);
    for (const QString& page : pagesOf(u"English"_s))
        EXPECT_TRUE(manual.find(page)) << qPrintable(page);
}

TEST(ManualPages, WhatTheProgramDoesNotDoIsSaidAndLinkedFromTheFirst) {
    const Manual manual(folder, u"English"_s);
    const ManualPage* limits = manual.find(u"limits.md"_s);
    ASSERT_TRUE(limits);
    for (const char* said : {"No beyond-use date.", "No electronic signature.", "Stop is no emergency stop."})
        EXPECT_TRUE(limits->sections().front().text.contains(QLatin1String(said))) << said;
    EXPECT_TRUE(linkedPages(manual.find(u"README.md"_s)->markdown).contains(u"limits.md"_s));
}

/// The paths of all pictures below the folder of the manual.
QStringList allPictures() {
    QStringList found;
    const QDir pictures(folder + u"/pictures"_s);
    QStringList places{QString()};
    places << pictures.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString& place : places) {
        for (const QString& name : QDir(pictures.filePath(place)).entryList({"*.png"}))
            found << pictures.filePath(place.isEmpty() ? name : place + '/'_L1 + name);
    }
    return found;
}

TEST(ManualPictures, EachIsShownByAPageAndAllAreSmallEnoughToBeDelivered) {
    constexpr qint64 mostBytes = 6'000'000;
    QSet<QString> shown;
    for (const QString& page : pagesOf(u"English"_s)) {
        for (const QString& target : targets(textOf(u"English"_s, page)))
            shown << target.section('/'_L1, -1);
    }
    qint64 bytes = 0;
    for (const QString& path : allPictures()) {
        bytes += QFileInfo(path).size();
        EXPECT_TRUE(shown.contains(QFileInfo(path).fileName())) << qPrintable(path) << " is on no page";
    }
    EXPECT_GT(bytes, 0);
    EXPECT_LT(bytes, mostBytes);
}

TEST(ManualPictures, EachLanguageHasItsOwn) {
    const QDir english(folder + u"/pictures"_s);
    for (const char* language :
         {"spanish", "german", "french", "russian", "portuguese", "italian", "swiss"}) {
        const QDir own(english.filePath(QLatin1String(language)));
        EXPECT_EQ(own.entryList({u"*.png"_s}).join(u' ').toStdString(),
                  english.entryList({u"*.png"_s}).join(u' ').toStdString())
            << language;
    }
}

}  // namespace
