// Scaling against a computation of its own: whole numbers of 128 bits, no floating point. Only such values
// are drawn whose products stay within the fifteen digits that the decimal text holds.
#include "RecordsTest.h"

#include "platform/basic/Values.h"

#include <random>

using namespace Qt::StringLiterals;

using namespace sorvanto;
using platform::nullText;

namespace {

__extension__ using Wide = __int128;

/// numerator / denominator in units of 10^-decimals, half away from zero.
std::int64_t rounded(Wide numerator, Wide denominator, int decimals) {
    for (int i = 0; i < decimals; ++i)
        numerator *= 10;
    return static_cast<std::int64_t>((2 * numerator + denominator) / (2 * denominator));
}

/// As above, a tie to the even neighbour.
std::int64_t roundedToEven(Wide numerator, Wide denominator, int decimals) {
    for (int i = 0; i < decimals; ++i)
        numerator *= 10;
    const Wide whole = numerator / denominator;
    const Wide rest = 2 * (numerator - whole * denominator);
    const bool up = rest > denominator || (rest == denominator && whole % 2 == 1);
    return static_cast<std::int64_t>(whole + (up ? 1 : 0));
}

/// A count of 10^-decimals as decimal text without zeros at its end.
std::string decimal(std::int64_t count, int decimals) {
    QString digits = QString::number(count).rightJustified(decimals + 1, '0');
    digits.insert(digits.size() - decimals, '.');
    while (digits.endsWith('0'))
        digits.chop(1);
    if (digits.endsWith('.'))
        digits.chop(1);
    return digits.toStdString();
}

struct Line {
    std::int64_t quantity;  ///< ten-thousandths
    std::int64_t cost;      ///< ten-thousandths
    std::int64_t awp;       ///< ten-thousandths
};

class ScalingPropertyTest : public RecordsTest {
protected:
    void SetUp() override {
        RecordsTest::SetUp();
        sql("INSERT INTO Formula (FormulaID, frm_Name, frm_Mix) VALUES (1, 'F', '')");
    }
    void store(int base, const std::vector<Line>& lines) {
        QStringList chemicals, rows;
        for (std::size_t i = 0; i < lines.size(); ++i) {
            const auto& line = lines[i];
            const QString key = QString::number(i + 1);
            chemicals << u"(%1, %2, %3)"_s.arg(key, QString::fromStdString(decimal(line.cost, 4)),
                                               QString::fromStdString(decimal(line.awp, 4)));
            rows << u"(%1, 1, %1, %2)"_s.arg(key, QString::fromStdString(decimal(line.quantity, 4)));
        }
        place().runInBulk(
            databasePath(),
            u"BEGIN; DELETE FROM FormChem; DELETE FROM Chemical; UPDATE Formula SET frm_Quantity = %1; "
            "INSERT INTO Chemical (ChemicalID, chm_Cost, chm_AWP) VALUES %2; "
            "INSERT INTO FormChem (FormChemID, FormulaID, ChemicalID, fch_Qty) VALUES %3; COMMIT;"_s.arg(
                QString::number(base), chemicals.join(u','), rows.join(u',')));
    }
};

/// The current row is that line, scaled by whole numbers alone.
void expectScaled(platform::Recordset& rows, const Line& line, std::int64_t make, std::int64_t base) {
    const std::int64_t quantity = rounded(Wide(line.quantity) * make, Wide(10000) * base, 3);
    ASSERT_EQ(str(nullText(rows.value("fch_Qty"))), decimal(quantity, 3));
    ASSERT_EQ(str(nullText(rows.value("chm_Cost"))),
              decimal(rounded(Wide(quantity) * line.cost, 10000000, 2), 2));
    ASSERT_EQ(str(nullText(rows.value("chm_AWP"))),
              decimal(rounded(Wide(quantity) * line.awp, 10000000, 2), 2));
}

TEST_F(ScalingPropertyTest, AgreesWithWholeNumbersOnDrawnFormulas) {
    std::mt19937 random(20260307);
    const auto draw = [&](std::int64_t most) {
        return std::uniform_int_distribution<std::int64_t>(0, most)(random);
    };
    // Bases whose quotient is a short decimal, so that a tie is a tie in both computations.
    const int bases[] = {1,  2,  4,  5,   8,   10,  16,  20,  25,  32,  40,
                         50, 64, 80, 100, 125, 160, 200, 250, 500, 1000};
    for (int round = 0; round < 120; ++round) {
        const int base = bases[draw(std::size(bases) - 1)];
        const auto make = static_cast<std::int16_t>(draw(1000));
        std::vector<Line> lines;
        for (int i = 0; i < 12; ++i)
            lines.push_back({draw(99999), draw(999999), draw(999999)});
        store(base, lines);
        const auto formula = scaled(1, make);
        SCOPED_TRACE(testing::Message() << "base " << base << ", make " << make);
        platform::Recordset& rows = *formula->Chemical;
        ASSERT_EQ(rows.recordCount(), static_cast<std::int64_t>(lines.size()));
        Wide totalCost = 0;
        for (std::size_t i = 0; i < lines.size(); ++i) {
            const Line& line = lines[i];
            rows.setPosition(static_cast<std::int64_t>(i));
            ASSERT_NO_FATAL_FAILURE(expectScaled(rows, line, make, base));
            totalCost += Wide(line.quantity) * line.cost;
        }
        const std::int64_t stored = roundedToEven(totalCost, 100000000, 4);
        ASSERT_EQ(str(formula->frm_Cost.toText()),
                  decimal(roundedToEven(Wide(stored) * make, Wide(10000) * base, 4), 4));
    }
}

TEST_F(ScalingPropertyTest, AnyBaseIsWithinHalfAStep) {
    std::mt19937 random(7);
    for (int round = 0; round < 60; ++round) {
        const int base = std::uniform_int_distribution<int>(1, 32767)(random);
        const auto make = static_cast<std::int16_t>(std::uniform_int_distribution<int>(0, 1000)(random));
        const std::int64_t amount = std::uniform_int_distribution<std::int64_t>(0, 9999999)(random);
        store(base, {{amount, 10000, 0}});
        const auto formula = scaled(1, make);
        const double exact = static_cast<double>(amount) / 10000 * make / base;
        EXPECT_NEAR(formula->Chemical->valueAt(0, 2).toDouble(), exact, 0.0005 + 1e-9);
    }
}

TEST_F(ScalingPropertyTest, AHundredThousandLinesAndTheirCostSumsAgree) {
    std::mt19937 random(20261122);
    const auto draw = [&](std::int64_t most) {
        return std::uniform_int_distribution<std::int64_t>(0, most)(random);
    };
    const int bases[] = {1, 2, 4, 5, 8, 10, 16, 20, 25, 40, 50, 80, 100, 125, 200, 250, 500, 1000};
    // Values at the edges as often as drawn ones: nothing, the least, round ones, rows of nines.
    const std::int64_t edges[] = {0, 1, 5, 50, 500, 5000, 10000, 12345, 50000, 99999};
    const auto hostile = [&](std::int64_t most) {
        return draw(1) ? draw(most) : edges[draw(std::size(edges) - 1)];
    };
    constexpr int rounds = 50, lineCount = 2000;
    for (int round = 0; round < rounds; ++round) {
        const int base = bases[draw(std::size(bases) - 1)];
        const auto make = static_cast<std::int16_t>(draw(1000));
        std::vector<Line> lines;
        for (int i = 0; i < lineCount; ++i)
            lines.push_back({hostile(99999), hostile(999999), hostile(999999)});
        store(base, lines);
        const auto formula = scaled(1, make);
        SCOPED_TRACE(testing::Message() << "base " << base << ", make " << make);
        platform::Recordset& rows = *formula->Chemical;
        Wide cost = 0, awp = 0;
        for (std::size_t i = 0; i < lines.size(); ++i) {
            const Line& line = lines[i];
            rows.setPosition(static_cast<std::int64_t>(i));
            ASSERT_NO_FATAL_FAILURE(expectScaled(rows, line, make, base));
            cost += Wide(line.quantity) * line.cost;
            awp += Wide(line.quantity) * line.awp;
        }
        const auto total = [&](Wide sum) {
            const std::int64_t stored = roundedToEven(sum, 100000000, 4);
            return decimal(roundedToEven(Wide(stored) * make, Wide(10000) * base, 4), 4);
        };
        ASSERT_EQ(str(formula->frm_Cost.toText()), total(cost));
        ASSERT_EQ(str(formula->frm_AWP.toText()), total(awp));
    }
}

}  // namespace
