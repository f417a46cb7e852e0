// Finding words on the pages of a document.
#include "Samples.h"

#include "platform/report/TextSearch.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

using namespace platform;
using namespace samples;

namespace {

class Search : public testing::Test {
protected:
    Search() { file.addMany(100); }

    StockFile file;
    std::unique_ptr<ReportRun> run;
    QString found(TextSearch& search, const QString& words, bool backward = false, int page = 0) {
        const TextSearch::Place place = search.find(words, backward, page);
        if (place.page < 0)
            return {};
        const PageItem& item = run->document()
                                   .pages[static_cast<std::size_t>(place.page)]
                                   .items[static_cast<std::size_t>(place.item)];
        EXPECT_TRUE(QRect(item.x - 20, item.y - 20, item.width + 40, item.height + 40).contains(place.rect));
        return u"%1: %2"_s.arg(place.page + 1).arg(item.text);
    }
};

}  // namespace

TEST_F(Search, GoesOnAndRoundAgain) {
    run = finished(std::make_unique<StockList>(file.rows()));
    TextSearch search(run->document());
    EXPECT_EQ(found(search, "item 9"), "1: Item 9");
    EXPECT_EQ(found(search, "item 9"), "3: Item 90");
    for (int i = 91; i <= 99; ++i)
        EXPECT_EQ(found(search, "item 9"), u"3: Item %1"_s.arg(i));
    EXPECT_EQ(found(search, "item 9"), "1: Item 9");
}

TEST_F(Search, GoesBack) {
    run = finished(std::make_unique<StockList>(file.rows()));
    TextSearch search(run->document());
    EXPECT_EQ(found(search, "Item 99", true), "3: Item 99");
    EXPECT_EQ(found(search, "Item 41", true, 2), "2: Item 41");
    EXPECT_EQ(found(search, "Item 41", true), "2: From Item 41\ton");
    EXPECT_EQ(found(search, "Item 41"), "2: Item 41");
}

TEST_F(Search, FindsNothingWhereThereIsNothing) {
    run = finished(std::make_unique<StockList>(file.rows()));
    TextSearch search(run->document());
    EXPECT_EQ(found(search, "nowhere"), QString());
    EXPECT_EQ(found(search, ""), QString());
    const PageDocument empty;
    TextSearch none(empty);
    EXPECT_EQ(none.find("x", false, 0).page, -1);
}
