// A pack's price becomes the price of one unit, exactly, or nothing is calculated at all.
#include "prices/PackPrice.h"

#include "prices/PackUnits.h"

#include <QFile>
#include <QRegularExpression>
#include <gtest/gtest.h>
#include <random>

namespace sorvanto {
namespace {

using namespace Qt::StringLiterals;
using platform::Decimal;

Pack pack(const char* price, const char* size, const QString& unit) {
    return {*Decimal::fromText(price), *Decimal::fromText(size), unit};
}

std::string priced(const char* price, const char* size, const QString& unit, const QString& chemicalUnit) {
    const PackPrice result = packPrice(pack(price, size, unit), chemicalUnit);
    return result.price ? result.price->toText().toStdString() : "none";
}

std::string said(const char* price, const char* size, const QString& unit, const QString& chemicalUnit) {
    const Pack one = pack(price, size, unit);
    return packPriceText(one, chemicalUnit, packPrice(one, chemicalUnit)).toStdString();
}

PackTrouble trouble(const char* price, const char* size, const QString& unit, const QString& chemicalUnit) {
    const PackPrice result = packPrice(pack(price, size, unit), chemicalUnit);
    EXPECT_EQ(result.price.has_value(), result.trouble == PackTrouble::none);
    return result.trouble;
}

TEST(PackPriceTest, ABottleOfAHundredGramsIsNotAHundredfold) {
    EXPECT_EQ(priced("28.50", "100", u"g"_s, u"GMS"_s), "0.285");
    EXPECT_EQ(said("28.50", "100", u"g"_s, u"GMS"_s), "28.50 for 100 g = 0.285 a GMS");
    EXPECT_EQ(said("28.5", "0.25", u" KG "_s, u"GMS"_s), "28.50 for 0.25 KG = 0.114 a GMS");
    EXPECT_EQ(said("12.34567", "1e2", u"ml"_s, u"MLS"_s), "12.34567 for 100 ml = 0.1235 a MLS");
}

TEST(PackPriceTest, WeightsAndVolumesConvertByPowersOfTen) {
    EXPECT_EQ(priced("285", "1", u"kg"_s, u"GMS"_s), "0.285");
    EXPECT_EQ(priced("28.50", "100", u"g"_s, u"MGS"_s), "0.0003");
    EXPECT_EQ(priced("5", "10", u"mg"_s, u"MCG"_s), "0.0005");
    EXPECT_EQ(priced("5", "10", u"mg"_s, u"GMS"_s), "500");
    EXPECT_EQ(priced("7", "250", u"\u00b5g"_s, u"MGS"_s), "28");
    EXPECT_EQ(priced("12", "2.5", u"L"_s, u"MLS"_s), "0.0048");
    EXPECT_EQ(priced("12", "500", u"ml"_s, u"LITR"_s), "24");
    EXPECT_EQ(priced("12", "75", u"cl"_s, u"CC"_s), "0.016");
}

TEST(PackPriceTest, AGrainIsExactlyItsWeight) {
    EXPECT_EQ(priced("6479.891", "100", u"g"_s, u"GRAIN"_s), "4.1989");  // 6479.891 / 100 * 0.06479891
    EXPECT_EQ(priced("6.479891", "1", u"grain"_s, u"GMS"_s), "100");
}

TEST(PackPriceTest, AHalfGoesUpAndWhatLiesBelowDoesNot) {
    EXPECT_EQ(priced("0.00005", "1", u"g"_s, u"GMS"_s), "0.0001");
    EXPECT_EQ(priced("0.00025", "1", u"g"_s, u"GMS"_s), "0.0003") << "not to the even neighbour";
    EXPECT_EQ(priced("0.000149999", "1", u"g"_s, u"GMS"_s), "0.0001");
    EXPECT_EQ(priced("1", "3", u"g"_s, u"GMS"_s), "0.3333");
    EXPECT_EQ(priced("2", "3", u"g"_s, u"GMS"_s), "0.6667");
    EXPECT_EQ(priced("0", "3", u"g"_s, u"GMS"_s), "0");
}

TEST(PackPriceTest, GrIsAGrainToSomeAndAGramToOthers) {
    for (const QString& unit : {u"gr"_s, u"GR"_s, u"Gr."_s, u"oz"_s, u"fl oz"_s, u"lb"_s, u"gal"_s}) {
        EXPECT_EQ(trouble("28.50", "100", unit, u"GMS"_s), PackTrouble::ambiguousUnit) << unit.toStdString();
        EXPECT_EQ(trouble("28.50", "100", unit, unit), PackTrouble::ambiguousUnit) << unit.toStdString();
    }
    EXPECT_EQ(trouble("28.50", "100", u"g"_s, u"GR"_s), PackTrouble::ambiguousUnit);
    EXPECT_EQ(said("28.50", "100", u"g"_s, u"GR"_s),
              "\"GR\" can mean different units, so the price can’t be calculated.");
}

TEST(PackPriceTest, NothingIsGuessed) {
    EXPECT_EQ(trouble("1", "1", u"ml"_s, u"GMS"_s), PackTrouble::weightAndVolume);
    EXPECT_EQ(trouble("1", "1", u"g"_s, u"LIT"_s), PackTrouble::weightAndVolume);
    EXPECT_EQ(trouble("1", "1", u"each"_s, u"CAPS"_s), PackTrouble::unknownConversion);
    EXPECT_EQ(trouble("1", "1", u"drop"_s, u"MLS"_s), PackTrouble::unknownConversion);
    EXPECT_EQ(trouble("1", "1", u"IU"_s, u"MGS"_s), PackTrouble::unknownConversion);
    EXPECT_EQ(trouble("1", "1", u"bottle"_s, u"GMS"_s), PackTrouble::unknownConversion);
    EXPECT_EQ(trouble("1", "1", u" "_s, u"GMS"_s), PackTrouble::noPackUnit);
    EXPECT_EQ(trouble("1", "1", u"g"_s, QString()), PackTrouble::noChemicalUnit);
    EXPECT_EQ(trouble("1", "0", u"g"_s, u"GMS"_s), PackTrouble::noSize);
    EXPECT_EQ(trouble("1", "-5", u"g"_s, u"GMS"_s), PackTrouble::noSize);
    EXPECT_EQ(trouble("-1", "5", u"g"_s, u"GMS"_s), PackTrouble::negativePrice);
    EXPECT_EQ(trouble("1", "1", u"kg"_s, u"MCG"_s), PackTrouble::tooSmall);
    EXPECT_EQ(trouble("99999999999", "0.001", u"mg"_s, u"LIT"_s), PackTrouble::weightAndVolume);
    EXPECT_EQ(trouble("99999999999", "0.001", u"mg"_s, u"GMS"_s), PackTrouble::tooLarge);
    EXPECT_EQ(trouble("1.23456789012", "1", u"g"_s, u"GMS"_s), PackTrouble::tooManyDigits);
    EXPECT_EQ(trouble("1", "1.23456789012", u"g"_s, u"GMS"_s), PackTrouble::tooManyDigits);
    EXPECT_EQ(trouble("1e-90000", "1e90000", u"g"_s, u"GMS"_s), PackTrouble::tooManyDigits);
}

TEST(PackPriceTest, TheSameTextIsTheSameUnitWhateverItSays) {
    EXPECT_EQ(priced("12", "30", u"Sachet"_s, u" SACHET"_s), "0.4");
    EXPECT_EQ(priced("12", "30", u"caps"_s, u"CAPS"_s), "0.4");
    EXPECT_EQ(priced("12", "30", u"capsules"_s, u"KAPS"_s), "0.4");
}

TEST(PackPriceTest, EveryRefusalHasASentence) {
    for (int one = static_cast<int>(PackTrouble::negativePrice);
         one <= static_cast<int>(PackTrouble::tooLarge); ++one) {
        const QString text =
            packPriceText(pack("1", "1", u"g"_s), u"ml"_s, {{}, static_cast<PackTrouble>(one)});
        EXPECT_TRUE(text.endsWith(u'.')) << one;
        EXPECT_FALSE(text.contains(u"%"_s)) << text.toStdString();
    }
}

/// The units that the program offers, by language: what a database may hold.
QHash<QString, QStringList> offeredUnits() {
    QHash<QString, QStringList> offered;
    const QRegularExpression row(u"English=\"([^\"]+)\" Translated=\"([^\"]+)\""_s);
    for (const char* language :
         {"English", "German", "French", "Swiss", "Italian", "Spanish", "Portuguese", "Russian"}) {
        QFile file(QStringLiteral(SORVANTO_SOURCE_DIR) +
                   u"/languages/%1Translation.xml"_s.arg(QLatin1String(language)));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << language;
        for (auto match = row.globalMatch(QString::fromUtf8(file.readAll())); match.hasNext();) {
            const QRegularExpressionMatch one = match.next();
            offered[one.captured(1)] << one.captured(2);
        }
    }
    return offered;
}

TEST(PackPriceTest, EachOfferedUnitIsTheSameInEachLanguage) {
    const QHash<QString, QStringList> offered = offeredUnits();
    for (const char* name : {"AMP", "CAPS", "CC", "DROP", "EACH", "GMS", "GTTS", "IU", "LIT", "LITR", "MCG",
                             "MEQ", "MGS", "MLS", "TABS", "VIAL"}) {
        const QString unit = QLatin1String(name);
        ASSERT_EQ(offered[unit].size(), 8) << name;
        for (const QString& other : offered[unit])
            EXPECT_EQ(priced("7", "2", other, unit), "3.5") << name << " " << other.toStdString();
    }
    for (const QString& other : offered[u"GR"_s])
        if (other != u"GR"_s) {
            EXPECT_EQ(priced("7", "2", other, u"grain"_s), "3.5") << other.toStdString();
        }
}

// ---- against whole numbers of 128 bits -----------------------------------------------------------

__extension__ using Wide = unsigned __int128;

struct Drawn {
    const char* unit;
    std::uint64_t nanograms;  ///< or nanolitres
};
constexpr std::array masses{Drawn{"kg", 1'000'000'000'000}, Drawn{"GMS", 1'000'000'000},
                            Drawn{"mg", 1'000'000}, Drawn{"mcg", 1'000}, Drawn{"GRAIN", 64'798'910}};

std::string decimalText(std::uint64_t count, unsigned decimals) {
    std::string digits = std::to_string(count);
    if (digits.size() <= decimals)
        digits.insert(0, decimals + 1 - digits.size(), '0');
    return decimals == 0 ? digits : digits.insert(digits.size() - decimals, ".");
}

Wide tenTo(unsigned exponent) {
    Wide power = 1;
    while (exponent-- > 0)
        power *= 10;
    return power;
}

TEST(PackPriceTest, EveryDrawnPackEqualsTheFractionItself) {
    std::mt19937_64 draw(20261122);  // the same packs in every run
    const auto below = [&draw](std::uint64_t limit) { return draw() % limit; };
    int calculated = 0;
    for (int round = 0; round < 100'000; ++round) {
        const auto priceDecimals = static_cast<unsigned>(below(5)),
                   sizeDecimals = static_cast<unsigned>(below(4));
        const std::uint64_t price = below(10'000'000), size = 1 + below(1'000'000);
        const Drawn from = masses[below(masses.size())], to = masses[below(masses.size())];
        const std::string priceText = decimalText(price, priceDecimals),
                          sizeText = decimalText(size, sizeDecimals);
        const Wide dividend = Wide(price) * to.nanograms * tenTo(sizeDecimals + 4);
        const Wide divisor = Wide(size) * from.nanograms * tenTo(priceDecimals);
        const Wide expected = (2 * dividend + divisor) / (2 * divisor);
        const PackPrice result = packPrice(
            pack(priceText.c_str(), sizeText.c_str(), QLatin1String(from.unit)), QLatin1String(to.unit));
        SCOPED_TRACE(priceText + " for " + sizeText + " " + from.unit + " a " + to.unit);
        if (expected == 0 && price != 0) {
            ASSERT_EQ(result.trouble, PackTrouble::tooSmall);
        } else if (expected >= tenTo(18)) {
            ASSERT_EQ(result.trouble, PackTrouble::tooLarge);
        } else {
            ASSERT_EQ(result.trouble, PackTrouble::none);
            ASSERT_EQ(result.price->tenThousandths(), static_cast<std::int64_t>(expected));
            ++calculated;
        }
    }
    EXPECT_GT(calculated, 50'000);
}

}  // namespace
}  // namespace sorvanto
