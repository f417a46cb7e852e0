// Which form a count takes, on the samples of the Unicode Common Locale Data Repository.
#include "platform/basic/Plurals.h"
#include "platform/basic/SystemLocale.h"

#include <QLocale>
#include <gtest/gtest.h>
#include <vector>

using namespace Qt::StringLiterals;

using namespace platform;

namespace {

struct Samples {
    const char* languages;
    PluralRule rule;
    std::vector<std::vector<std::int64_t>> forms;  ///< the samples of each form
};

const Samples samples[] = {
    {"en de es it pt-PT",
     PluralRule::One,
     {{1}, {0, 2, 3, 10, 11, 16, 17, 21, 100, 101, 1000, 10000, 100000, 1000000}}},
    {"fr", PluralRule::ZeroOrOne, {{0, 1}, {2, 3, 10, 11, 17, 21, 100, 101, 1000, 10000, 100000}}},
    {"ru",
     PluralRule::Slavic,
     {{1, 21, 31, 41, 51, 61, 71, 81, 101, 1001},
      {2, 3, 4, 22, 23, 24, 32, 33, 34, 42, 43, 44, 52, 53, 54, 62, 102, 1002},
      {0,  5,  6,   10,  11,  12,  13,  14,   15,    16,     17,
       18, 19, 100, 111, 112, 113, 114, 1000, 10000, 100000, 1000000}}},
};

class Plurals : public testing::Test {
protected:
    void SetUp() override { setSystemLocale(QLocale(u"en_US"_s)); }
    void TearDown() override {
        setPluralRule(PluralRule::One);
        setSystemLocale(std::nullopt);
    }
};

}  // namespace

TEST_F(Plurals, AreThoseOfTheRepository) {
    for (const Samples& sample : samples)
        for (std::size_t form = 0; form < sample.forms.size(); ++form)
            for (const std::int64_t count : sample.forms[form])
                EXPECT_EQ(pluralForm(sample.rule, count), static_cast<int>(form))
                    << sample.languages << " " << count;
}

TEST_F(Plurals, ATextTakesTheFormOfItsCount) {
    const QString pages = u"%1 page | %1 pages"_s;
    EXPECT_EQ(counted(pages, 1), u"1 page"_s);
    EXPECT_EQ(counted(pages, 0), u"0 pages"_s);
    EXPECT_EQ(counted(pages, 1186), u"1,186 pages"_s);
    setPluralRule(PluralRule::ZeroOrOne);
    EXPECT_EQ(counted(pages, 0), u"0 page"_s);
    setPluralRule(PluralRule::Slavic);
    const QString russian = u"%1 страница | %1 страницы | %1 страниц"_s;
    EXPECT_EQ(counted(russian, 21), u"21 страница"_s);
    EXPECT_EQ(counted(russian, 3), u"3 страницы"_s);
    EXPECT_EQ(counted(russian, 12), u"12 страниц"_s);
}

TEST_F(Plurals, ATextOfFewerFormsGivesItsLastOne) {
    EXPECT_EQ(counted(u"%1 pages"_s, 1), u"1 pages"_s);
    setPluralRule(PluralRule::Slavic);
    EXPECT_EQ(counted(u"%1 page | %1 pages"_s, 5), u"5 pages"_s);
    EXPECT_EQ(counted(QString(), 5), QString());
}

TEST_F(Plurals, OtherPlacesAreTheCallersOwn) {
    EXPECT_EQ(counted(u"%1 of %2 | %1 more of %2"_s, 3), u"3 more of %2"_s);
}
