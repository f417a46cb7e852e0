// Which seal a row is linked to: where each bench has its own chain, also behind what one chain held before.
#include "history/HistoryLinks.h"

#include <gtest/gtest.h>

namespace {

using namespace sorvanto;

struct Walk {
    HistoryLinks links;
    std::int64_t number = 0;

    /// The seal before the next row; its own is its number.
    std::string next(const char* person, const char* what = "changed", const char* note = "") {
        const QByteArray own = QByteArray::number(qint64{++number});
        return links
            .follow({number, QString::fromLatin1(what), QString::fromLatin1(note),
                     QString::fromLatin1(person), own})
            .toStdString();
    }
};

TEST(HistoryLinks, InOneChainEachRowFollowsTheOneBefore) {
    Walk walk;
    EXPECT_EQ(walk.next("", "begun"), "");
    EXPECT_EQ(walk.next("a@bench1"), "1");
    EXPECT_EQ(walk.next("b@bench2"), "2");
    EXPECT_FALSE(walk.links.isOfBench());
    EXPECT_TRUE(walk.links.ends().isEmpty());
}

TEST(HistoryLinks, EachBenchFollowsItsOwnFromWhereTheChainsPart) {
    Walk walk;
    walk.next("", "begun");
    walk.next("a@bench1");
    EXPECT_EQ(walk.next("", "begun", chainOfEachBench), "2") << "the one chain ends in it";
    EXPECT_TRUE(walk.links.isOfBench());
    EXPECT_EQ(walk.next("a@bench1"), "3");
    EXPECT_EQ(walk.next("b@bench2"), "3");
    EXPECT_EQ(walk.next("c@bench1"), "4") << "the bench counts, not who sits there";
    EXPECT_EQ(walk.next(""), "3") << "other programs";
    EXPECT_EQ(walk.next("b@bench2"), "5");
    EXPECT_EQ(walk.next("", "begun", chainOfEachBench), "7");
    EXPECT_EQ(walk.next("d@bench3"), "9") << "a bench that comes later begins there";
    EXPECT_EQ(walk.next("b@bench2"), "8") << "the others go on";
    EXPECT_EQ(walk.links.ends().value(QStringLiteral("bench2")).number, 11);
    EXPECT_EQ(walk.links.ends().size(), 4);
}

TEST(HistoryLinks, BehindTheChainsThereCanBeOneAgain) {
    Walk walk;
    walk.next("", "begun", chainOfEachBench);
    walk.next("a@bench1");
    EXPECT_EQ(walk.next("b@bench2"), "1");
    EXPECT_EQ(walk.links.before(), "2");
    walk.links.join();
    EXPECT_EQ(walk.next("a@bench1"), "3");
    EXPECT_FALSE(walk.links.isOfBench());
    EXPECT_EQ(walk.next("", "begun", chainOfEachBench), "4");
    EXPECT_EQ(walk.next("b@bench2"), "5") << "not where it once ended";
}

TEST(HistoryLinks, OneChainGoesOnFromTheLastRowOfAllAndPartsOnceMore) {
    Walk walk;
    walk.next("", "begun", chainOfEachBench);
    walk.next("a@bench1");
    walk.next("b@bench2");
    EXPECT_EQ(walk.next("a@bench1", "begun"), "3") << "of whichever bench";
    EXPECT_FALSE(walk.links.isOfBench());
    EXPECT_EQ(walk.next("b@bench2"), "4");
    EXPECT_EQ(walk.next("", "begun", chainOfEachBench), "5");
    EXPECT_EQ(walk.next("a@bench1"), "6") << "what it had before is over";
    EXPECT_EQ(walk.links.ends().size(), 2);
}

}  // namespace
