// Pages, their order, places and languages, and what is found in them.
#include "manual/Manual.h"
#include "TempProgramFolder.h"
#include "manual/ManualSearch.h"

#include <QDir>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;

class ManualTest : public testing::Test {
protected:
    ManualTest() {
        for (const char* place : {"German", "pictures/german"})
            QDir(folder.path()).mkpath(QLatin1String(place));
        folder.write(u"README.md"_s,
                     "# The whole\n\nSee [labels](labels.md) and [more](more.md#second-thing).\n");
        folder.write(u"more.md"_s,
                     "# More\n\nFirst, [hidden](hidden.md).\n\n## First thing\n\nA jar of crème.\n\n"
                     "## Second thing, isn't it?\n\n| a | b |\n|---|---|\n| Straße | jars |\n");
        folder.write(u"labels.md"_s, "# Labels\n\nA label for each jar.\n");
        folder.write(u"hidden.md"_s, "# Behind the others\n");
        folder.write(u"alone.md"_s, "# Nobody links here\n");
        folder.write(u"German/more.md"_s,
                     "# Mehr\n\nErst dies.\n\n## Das erste\n\nEine Kruke.\n\n## Das zweite\n");
        folder.write(u"pictures/a.png"_s, "english");
        folder.write(u"pictures/b.png"_s, "english");
        folder.write(u"pictures/german/a.png"_s, "german");
    }
    Manual manual(const char* language) const { return {folder.path(), QLatin1String(language)}; }
    static std::string places(const std::vector<ManualHit>& hits) {
        QStringList found;
        for (const ManualHit& hit : hits)
            found << hit.page + '/'_L1 + hit.heading;
        return found.join(' '_L1).toStdString();
    }

    support::TempProgramFolder folder;
};

TEST_F(ManualTest, PagesComeInTheOrderInWhichTheyAreLinked) {
    const Manual pages = manual("English");
    QStringList names;
    for (const ManualPage& page : pages.pages())
        names << page.name;
    EXPECT_EQ(names.join(' '_L1).toStdString(), "README.md labels.md more.md hidden.md");
}

TEST_F(ManualTest, APageThatALanguageLacksIsInEnglish) {
    const Manual german = manual("German");
    EXPECT_EQ(german.find(u"more.md"_s)->title(), u"Mehr"_s);
    EXPECT_EQ(german.find(u"more.md"_s)->language, u"German"_s);
    EXPECT_EQ(german.find(u"labels.md"_s)->title(), u"Labels"_s);
    EXPECT_EQ(german.find(u"labels.md"_s)->language, u"English"_s);
    EXPECT_EQ(manual("Klingon").find(u"more.md"_s)->title(), u"More"_s);
}

TEST_F(ManualTest, AnAnchorLeadsToTheSamePlaceInEachLanguage) {
    for (const char* language : {"English", "German"}) {
        const Manual pages = manual(language);
        const ManualPage& more = *pages.find(u"more.md"_s);
        ASSERT_EQ(more.sections().size(), 3U);
        EXPECT_EQ(more.sectionOf(u"second-thing-isnt-it"_s), 2) << language;
        EXPECT_EQ(more.sectionOf(u"nothing-like-it"_s), 0) << language;
    }
    EXPECT_EQ(manual("German").find(u"more.md"_s)->sections()[2].heading, u"Das zweite"_s);
}

TEST_F(ManualTest, APictureIsThatOfTheLanguageAndElseTheEnglishOne) {
    EXPECT_EQ(manual("German").picture(u"pictures/a.png"_s), folder.path(u"pictures/german/a.png"_s));
    EXPECT_EQ(manual("German").picture(u"pictures/b.png"_s), folder.path(u"pictures/b.png"_s));
    EXPECT_EQ(manual("English").picture(u"pictures/a.png"_s), folder.path(u"pictures/a.png"_s));
    EXPECT_EQ(manual("English").picture(u"pictures/c.png"_s), QString());
    EXPECT_EQ(manual("English").picture(u"https://elsewhere.example/"_s), QString());
}

TEST_F(ManualTest, AFolderWithoutPagesIsAnEmptyManual) {
    EXPECT_TRUE(Manual(folder.path(u"nowhere"_s), u"German"_s).pages().empty());
    EXPECT_TRUE(searchManual(Manual(QString(), QString()), u"jar"_s).empty());
}

TEST_F(ManualTest, AllWordsAreFoundWhateverTheirCaseAndAccents) {
    const Manual pages = manual("English");
    EXPECT_EQ(places(searchManual(pages, u"JAR"_s)), "labels.md/Labels more.md/First thing "
                                                     "more.md/Second thing, isn't it?");
    EXPECT_EQ(places(searchManual(pages, u"creme jar"_s)), "more.md/First thing");
    EXPECT_EQ(places(searchManual(pages, u"strasse"_s)), "more.md/Second thing, isn't it?");
    EXPECT_EQ(places(searchManual(pages, u"isn’t"_s)), "more.md/Second thing, isn't it?");
    EXPECT_EQ(places(searchManual(pages, u"creme nowhere"_s)), "");
    EXPECT_EQ(places(searchManual(pages, u"  "_s)), "");
}

TEST_F(ManualTest, WhereAHeadingHasTheWordsThatComesFirst) {
    EXPECT_EQ(places(searchManual(manual("English"), u"labels"_s)), "labels.md/Labels README.md/The whole");
}

TEST_F(ManualTest, AHitHasTheTextAroundIt) {
    const QString filler = u"nothing of it "_s.repeated(20);
    folder.write(u"labels.md"_s, ("# Labels\n\n" + filler + "the needle here " + filler).toUtf8());
    const auto hits = searchManual(manual("English"), u"needle"_s);
    ASSERT_EQ(hits.size(), 1U);
    EXPECT_TRUE(hits.front().context.contains(u"the needle here"_s)) << qPrintable(hits.front().context);
    EXPECT_TRUE(hits.front().context.startsWith(u"… "_s));
    EXPECT_TRUE(hits.front().context.endsWith(u" …"_s));
    EXPECT_LT(hits.front().context.size(), 140);
}

TEST_F(ManualTest, StretchesStandWhereTheWordsStandInTheTextItself) {
    const QString text = u"Die Straße, die STRASSE"_s;
    const auto found = stretchesOf({u"strasse"_s}, text);
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(text.mid(found[0].start, found[0].length), u"Straße"_s);
    EXPECT_EQ(text.mid(found[1].start, found[1].length), u"STRASSE"_s);
}

}  // namespace
