// What a list would change: how its rows find chemicals, what they cost then, and what is ticked by itself.
#include "prices/PriceProposals.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;
using platform::Currency;

StockedChemical chemical(std::int64_t key, const QString& name, const QString& ndc, const QString& lot,
                         const char* cost = "1", const char* awp = "2", const QString& units = u"GMS"_s) {
    return {key,
            name,
            ndc,
            lot,
            units,
            Currency::fromText(QLatin1String(cost)),
            Currency::fromText(QLatin1String(awp))};
}

class PriceProposalsTest : public testing::Test {
protected:
    /// Rows of "name|NDC|lot|price|AWP|size|unit".
    PriceProposals& propose(const QStringList& rows, DecimalMark mark = DecimalMark::point) {
        table = {};
        for (const QString& row : rows) {
            table.rows.emplace_back();
            for (const QString& cell : row.split(u'|'))
                table.rows.back().push_back({cell, false});
        }
        columns.column = {0, 1, 2, 3, 4, 5, 6};
        columns.mark.fill(mark);
        stock.emplace(chemicals);
        return proposals.emplace(table, columns, *stock);
    }
    /// Row, state, chemical, cost and AWP; a star for those ticked by themselves.
    std::string told(const QStringList& rows, DecimalMark mark = DecimalMark::point) {
        static const char* const states[] = {"change", "unchanged", "repeated",   "unknown",
                                             "many",   "no price",  "unreadable", "no way"};
        QStringList lines;
        for (const PriceProposal& each : propose(rows, mark).all()) {
            QString line =
                QString::number(each.row + 1) + u' ' + QLatin1String(states[static_cast<int>(each.state)]);
            if (each.found)
                line += u' ' + QString::number(stock->at(each.place).key) +
                        QStringList{u"n"_s, u"l"_s, u"a"_s}.at(static_cast<int>(each.by));
            if (each.cost.price)
                line += u' ' + each.cost.price->toText();
            if (each.awp.price)
                line += u'/' + each.awp.price->toText();
            lines << line + (each.ticked ? u" *"_s : QString());
        }
        return lines.join(u"; "_s).toStdString();
    }

    std::vector<StockedChemical> chemicals{chemical(1, u"Zinc oxide"_s, u"0338-0049-04"_s, u"L1"_s),
                                           chemical(2, u"Talc"_s, u""_s, u"L2"_s)};
    PriceTable table;
    PriceColumns columns;
    std::optional<PriceStock> stock;
    std::optional<PriceProposals> proposals;
};

TEST_F(PriceProposalsTest, APackBecomesThePriceOfAUnit) {
    EXPECT_EQ(told({u"x|0338-0049-04||120||100|g"_s}), "1 change 1n 1.2 *");
    EXPECT_EQ(told({u"x|0338-0049-04||1200|2400|1|kg"_s}), "1 change 1n 1.2/2.4 *");
    EXPECT_EQ(told({u"x|0338-0049-04||1.200,00|€ 2.400,50|1,0|kg"_s}, DecimalMark::comma),
              "1 change 1n 1.2/2.4005 *");
    EXPECT_EQ(told({u"x|0338-0049-04||120||100 g|"_s}), "1 change 1n 1.2 *") << "size and unit in one cell";
    EXPECT_EQ(told({u"x|0338-0049-04||120||100 g|G"_s}), "1 change 1n 1.2 *");
    EXPECT_EQ(told({u"x|0338-0049-04||120||100 g|ml"_s}), "1 unreadable 1n") << "which of the two units?";
    EXPECT_EQ(told({u"x|0338-0049-04||100|200|100|g"_s}), "1 unchanged 1n 1/2");
    EXPECT_EQ(told({u"x|0338-0049-04||100|0|100|g"_s}), "1 unchanged 1n 1") << "an AWP of 0 is none";
}

TEST_F(PriceProposalsTest, ByNdcElseByLotElseByName) {
    EXPECT_EQ(told({u"Talc|0338004904|L2|120||100|g"_s}), "1 change 1n 1.2 *");
    EXPECT_EQ(told({u"Zinc oxide|999|l2|120||100|g"_s}), "1 change 2l 1.2");
    EXPECT_EQ(told({u"ZINC  oxide|||120||100|g"_s}), "1 change 1a 1.2");
    EXPECT_EQ(told({u"Zinc|77|L9|120||100|g"_s}), "1 unknown");
    EXPECT_EQ(told({u"|||120||100|g"_s}), "1 unknown");
    EXPECT_EQ(told({u"||||||"_s, u"  ||||||"_s}), "") << "an empty row is none";
}

TEST_F(PriceProposalsTest, DashesAndTheElevenDigitFormMakeNoDifference) {
    EXPECT_EQ(ndcKeys(u"0338-0049-04"_s).join(u' '), u"0338004904 00338004904"_s);
    EXPECT_EQ(ndcKeys(u"50338-049-04"_s).join(u' '), u"5033804904 50338004904"_s);
    EXPECT_EQ(ndcKeys(u"50338-0049-4"_s).join(u' '), u"5033800494 50338004904"_s);
    EXPECT_EQ(ndcKeys(u"00338-0049-04"_s).join(u' '), u"00338004904"_s);
    EXPECT_EQ(ndcKeys(u" ab-1 2 "_s).join(u' '), u"ab12"_s);
    EXPECT_TRUE(ndcKeys(u" - "_s).isEmpty());
    EXPECT_EQ(told({u"x|00338-0049-04||120||100|g"_s}), "1 change 1n 1.2 *");
    EXPECT_EQ(told({u"x|00338004904||120||100|g"_s}), "1 change 1n 1.2 *");
    EXPECT_EQ(told({u"x|338004904||120||100|g"_s}), "1 unknown") << "no digit is made up";
}

TEST_F(PriceProposalsTest, RowsWithoutPackOrUnitAreNeverTickedByThemselves) {
    EXPECT_EQ(told({u"x|0338-0049-04||1.2|||"_s}), "1 change 1n 1.2") << "taken as the price of one unit";
    EXPECT_EQ(told({u"x|0338-0049-04||120||100|"_s}), "1 change 1n 1.2") << "of the chemical's own unit";
    EXPECT_EQ(told({u"x|0338-0049-04||1200|||kg"_s}), "1 change 1n 1.2") << "of one of that unit";
    EXPECT_EQ(told({u"x|0338-0049-04||1200||kg|"_s}), "1 change 1n 1.2");
    EXPECT_EQ(told({u"x|0338-0049-04||120||100|ml"_s}), "1 no way 1n");
    EXPECT_EQ(told({u"x|0338-0049-04||120||6 x 10 g|"_s}), "1 unreadable 1n");
    EXPECT_EQ(told({u"x|0338-0049-04||120||0|g"_s}), "1 no way 1n");
}

TEST_F(PriceProposalsTest, WhatIsNoPriceIsTakenForNone) {
    EXPECT_EQ(told({u"x|0338-0049-04||||100|g"_s}), "1 no price 1n");
    EXPECT_EQ(told({u"x|0338-0049-04||0.00||100|g"_s}), "1 no price 1n");
    EXPECT_EQ(told({u"x|0338-0049-04||on request||100|g"_s}), "1 unreadable 1n");
    EXPECT_EQ(told({u"x|0338-0049-04||1,20||100|g"_s}), "1 unreadable 1n") << "not in this column's way";
    EXPECT_EQ(told({u"x|0338-0049-04||120|?|100|g"_s}), "1 unreadable 1n");
    EXPECT_EQ(told({u"x|0338-0049-04||-5||100|g"_s}), "1 no way 1n");
    EXPECT_EQ(told({u"x|0338-0049-04||0.001||1|kg"_s}), "1 no way 1n") << "would be kept as 0";
}

TEST_F(PriceProposalsTest, AFactorAboveTwoOrBelowHalfIsLeftToTheUser) {
    const auto money = [](const char* text) { return Currency::fromText(QLatin1String(text)); };
    EXPECT_FALSE(isDoubtful(money("2"), money("1")));
    EXPECT_TRUE(isDoubtful(money("2.0001"), money("1")));
    EXPECT_FALSE(isDoubtful(money("0.5"), money("1")));
    EXPECT_TRUE(isDoubtful(money("0.4999"), money("1")));
    EXPECT_FALSE(isDoubtful(money("5"), money("0"))) << "nothing to compare with";
    EXPECT_FALSE(
        isDoubtful(Currency::fromTenThousandths(INT64_MAX), Currency::fromTenThousandths(INT64_MAX)));
    EXPECT_EQ(told({u"x|0338-0049-04||200||100|g"_s}), "1 change 1n 2 *");
    EXPECT_EQ(told({u"x|0338-0049-04||200.01||100|g"_s}), "1 change 1n 2.0001");
    EXPECT_EQ(told({u"x|0338-0049-04||49||100|g"_s}), "1 change 1n 0.49");
    EXPECT_EQ(told({u"x|0338-0049-04||120|401|100|g"_s}), "1 change 1n 1.2/4.01") << "the AWP as well";
}

TEST_F(PriceProposalsTest, OfRowsThatDisagreeAboutAChemicalNoneIsTicked) {
    EXPECT_EQ(told({u"x|0338004904||120||100|g"_s, u"x|0338-0049-04||130||100|g"_s}),
              "1 change 1n 1.2; 2 change 1n 1.3");
    EXPECT_EQ(proposals->all()[0].rivals, std::vector<int>{1});
    EXPECT_EQ(told({u"x|0338004904||120||100|g"_s, u"x|0338-0049-04||1200||1|kg"_s}),
              "1 change 1n 1.2 *; 2 repeated 1n 1.2");
    EXPECT_EQ(proposals->all()[1].sameAs, 0);
    EXPECT_EQ(told({u"Zinc oxide|||130||100|g"_s, u"x|0338-0049-04||120||100|g"_s}),
              "1 change 1a 1.3; 2 change 1n 1.2 *")
        << "a name says less than an NDC";
    EXPECT_EQ(told({u"x|0338004904||100||100|g"_s, u"x|0338-0049-04||130||100|g"_s}),
              "2 change 1n 1.3; 1 unchanged 1n 1");
}

TEST_F(PriceProposalsTest, ARowThatDisagreesIsNoticedHoweverManyStandBeforeIt) {
    QStringList rows(60, u"x|0338-0049-04||120||100|g"_s);
    rows << u"x|0338-0049-04||130||100|g"_s << u"x|0338-0049-04||130|250|100|g"_s;
    propose(rows);
    EXPECT_EQ(proposals->ticked(), 0);
    EXPECT_EQ(proposals->all()[0].rivals, (std::vector<int>{60, 61}));
    EXPECT_EQ(proposals->all()[1].rivals, (std::vector<int>{0, 61})) << "row 61; a price is named once";
    EXPECT_EQ(proposals->all()[2].rivals, (std::vector<int>{0, 60})) << "the same cost, another AWP";
    EXPECT_EQ(proposals->count(PriceState::repeated), 59);
    EXPECT_EQ(proposals->all()[60].sameAs, 0);
}

TEST_F(PriceProposalsTest, OneRowMayBeMeantForSeveralLots) {
    chemicals.push_back(chemical(3, u"Zinc oxide"_s, u"0338004904"_s, u"L3"_s));
    EXPECT_EQ(told({u"x|0338-0049-04||120||100|g"_s}), "1 change 1n 1.2 *; 1 change 3n 1.2 *");
    EXPECT_EQ(proposals->all()[0].alike, 2);
    EXPECT_EQ(told({u"x|0338-0049-04|L3|120||100|g"_s}), "1 change 3n 1.2 *") << "the row names its lot";
    for (int key = 10; key < 70; ++key)
        chemicals.push_back(chemical(key, u"Base"_s, u""_s, u""_s));
    EXPECT_EQ(told({u"Base|||120||100|g"_s}), "1 many");
}

TEST_F(PriceProposalsTest, ChangesComeFirstAndAreCounted) {
    chemicals.push_back(chemical(3, u"Urea"_s, u"3"_s, u""_s));
    EXPECT_EQ(
        told({u"a|7||1||1|g"_s, u"x|3||100||100|g"_s, u"Talc|||150||100|g"_s, u"x|0338004904||120||100|g"_s}),
        "3 change 2a 1.5; 4 change 1n 1.2 *; 2 unchanged 3n 1; 1 unknown");
    EXPECT_EQ(proposals->count(PriceState::change), 2);
    EXPECT_EQ(proposals->count(PriceState::unchanged), 1);
    EXPECT_EQ(proposals->count(PriceState::unknown), 1);
    EXPECT_EQ(proposals->ticked(), 1);
}

TEST_F(PriceProposalsTest, OneTickAChemicalAndNoneForWhatCantBeTaken) {
    propose({u"x|0338004904||120||100|g"_s, u"x|0338-0049-04||130||100|g"_s, u"a|7||1||1|g"_s});
    proposals->tick(0, true);
    EXPECT_TRUE(proposals->all()[0].ticked);
    proposals->tick(1, true);
    EXPECT_FALSE(proposals->all()[0].ticked);
    EXPECT_TRUE(proposals->all()[1].ticked);
    proposals->tick(2, true);
    EXPECT_FALSE(proposals->all()[2].ticked);
    proposals->tick(1, false);
    EXPECT_EQ(proposals->ticked(), 0);
}

TEST_F(PriceProposalsTest, AnotherNdcIsSaid) {
    propose({u"Zinc oxide|999|||||"_s, u"Zinc oxide|999||120||100|g"_s, u"Talc|5||120||100|g"_s});
    EXPECT_TRUE(proposals->all()[0].otherNdc);
    EXPECT_FALSE(proposals->all()[1].otherNdc) << "it has none";
}

TEST_F(PriceProposalsTest, NumbersOfASpreadsheetNeedNoMark) {
    propose({u"x|0338-0049-04||120||100|g"_s}, DecimalMark::comma);
    table.rows[0][3] = {u"1.234"_s, true};
    table.rows[0][5] = {u"1"_s, true};
    EXPECT_EQ(proposals.emplace(table, columns, *stock).all()[0].cost.price->toText(), u"1.234"_s);
}

TEST_F(PriceProposalsTest, WhatWasStoppedSaysSo) {
    propose(QStringList(1000, u"x|0338-0049-04||120||100|g"_s));
    EXPECT_FALSE(proposals->stopped());
    std::vector<double> done;
    proposals.emplace(table, columns, *stock, [&](double part) {
        done.push_back(part);
        return done.size() < 3;
    });
    EXPECT_TRUE(proposals->stopped());
    ASSERT_EQ(done.size(), 3U);
    EXPECT_LT(done[1], done[2]);
    EXPECT_GE(done[0], 0);
    EXPECT_LT(done[2], 1);
}

}  // namespace
