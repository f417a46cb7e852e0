// No value on paper is ever cut: the hostile data of a busy pharmacy, read back from what the pages show.
#include "Child.h"
#include "ReportTest.h"
#include "platform/basic/SystemLocale.h"
#include "platform/report/PreviewNotices.h"
#include "platform/report/Tools.h"

#include <QImage>
#include <QLabel>

using namespace Qt::StringLiterals;

using namespace platform;
using namespace sorvanto;

namespace {

class WholeValuesTest : public ReportTest {
protected:
    void SetUp() override {
        ReportTest::SetUp();
        seedPharmacy();
    }
    void TearDown() override {
        setSystemLocale(std::nullopt);
        ReportTest::TearDown();
    }
    /// What the pages show of a control, piece by piece.
    static QStringList shown(const ReportRun& run, const QString& control) {
        QStringList pieces;
        for (const Page& page : run.document().pages) {
            for (const PageBand& band : page.bands) {
                for (std::uint32_t i = band.firstItem; i < band.firstItem + band.itemCount; ++i) {
                    const PageItem& item = page.items[i];
                    if (run.document().controlOf(band, item).name != control)
                        continue;
                    for (std::uint32_t r = item.firstRun; r < item.firstRun + item.runCount; ++r)
                        pieces << page.runs[r].text;
                }
            }
        }
        return pieces;
    }
    static std::string one(const ReportRun& run, const QString& control) {
        return str(shown(run, control).join('|'));
    }
    /// Words of the paper, page after page, a blank between them.
    QString paper(const ReportRun& run, const QString& name) const {
        QStringList words;
        for (const tools::Word& word : tools::words(pdf(run, name)))
            words << word.text;
        return words.join(' ');
    }
};

}  // namespace

TEST_F(WholeValuesTest, QuantitiesOfAPrescriptionLabelAreWhole) {
    for (const auto& [stored, printed] : {std::pair{"100000", "100000"},
                                          {"112.75", "112.75"},
                                          {"0.0625", "0.0625"},
                                          {"1234.625", "1234.625"}}) {
        sql(u"UPDATE RXs SET rxs_QTY = %1 WHERE RXsID = 31;"_s.arg(stored));
        EXPECT_EQ(one(*finished(prescriptionLabels(31, "1", 1)), "txtQTY"), printed);
    }
}

TEST_F(WholeValuesTest, NameIsShortenedInFrontOfItsStrength) {
    sql("UPDATE Log SET log_Name = 'Diclofenac Sodium Powder for Oral Suspension', log_Strength = '1000 mcg/ml' "
        "WHERE LogID = 2; UPDATE RXs SET rxs_QTY = 100 WHERE RXsID = 31;");
    const RunPtr run = finished(prescriptionLabels(31, "1", 1));
    const QString drug = shown(*run, "txtDrug").join('|');
    EXPECT_TRUE(drug.startsWith("Diclofenac Sodium")) << str(drug);
    EXPECT_TRUE(drug.endsWith(u"… 1000 mcg/ml"_s)) << str(drug);
    EXPECT_TRUE(paper(*run, "label").contains("mcg/ml 100")) << "the quantity stands apart";
    sql("UPDATE Log SET log_Name = '" + QString(200, 'M') + "', log_Strength = '1000 mcg/ml';");
    EXPECT_TRUE(one(*finished(formulaLog(2)), "txtFormulaName").ends_with("… 1000 mcg/ml"));
    EXPECT_TRUE(one(*finished(logReport(1, day(2026, 1, 1), day(2026, 3, 7))), "txtName")
                    .ends_with("… 1000 mcg/ml|Custom|777-01"))
        << one(*finished(logReport(1, day(2026, 1, 1), day(2026, 3, 7))), "txtName");
}

TEST_F(WholeValuesTest, StrengthInsideANameIsKeptBesideItsOwn) {
    sql("UPDATE Log SET log_Name = 'Magic Mouthwash Compounded Oral Suspension 1000 mcg/ml', log_Strength = "
        "'12.5mg/1.25ml' WHERE LogID = 2; UPDATE RXs SET rxs_QTY = 100 WHERE RXsID = 31;");
    EXPECT_TRUE(one(*finished(formulaLog(2)), "txtFormulaName").ends_with("… 1000 mcg/ml 12.5mg/1.25ml"));
    EXPECT_TRUE(
        one(*finished(prescriptionLabels(31, "1", 1)), "txtDrug").ends_with("… 1000 mcg/ml 12.5mg/1.25ml"));
}

TEST_F(WholeValuesTest, ACaptionAloneIsNoName) {
    sql("UPDATE Log SET log_Name = 'Magic Mouthwash', log_Strength = '1234567890.12345 mg / 1234567890.123 mL';");
    const std::string shown = one(*finished(formulaLog(2)), "txtFormulaName");
    EXPECT_NE(shown.find("Magi"), std::string::npos) << shown;
    EXPECT_TRUE(shown.ends_with("1234567890.12345 mg / 1234567890.123 mL")) << shown;
}

TEST_F(WholeValuesTest, StrengthInsideANameIsKept) {
    sql("UPDATE Chemical SET chm_Name = 'Diclofenac Sodium Micronized Powder in Hydrogel 12.5 mg/ml' WHERE "
        "ChemicalID = 3; UPDATE LogChem SET lch_Name = 'Testosterone Propionate 2.5% in an Anhydrous Base of White "
        "Petrolatum' WHERE ChemicalID = 3;");
    EXPECT_TRUE(one(*finished(chemicals()), "txtChemical_chm_Name").find("… 12.5 mg/ml") !=
                std::string::npos);
    const QStringList names = shown(*finished(formulaLog(2)), "txtchm_Name");
    EXPECT_TRUE(names.first().startsWith("Testosterone Propionate 2.5%") && names.first().endsWith(u"…"_s))
        << str(names.first());
}

TEST_F(WholeValuesTest, StrengthOfABatchLabelIsWhole) {
    sql("UPDATE Log SET log_Strength = '12.5mg/1.25ml', log_AWP = 123456789.5, log_Lot = "
        "'SV26-000123456789-XYZ-000001-00000017' WHERE LogID = 2;");
    const RunPtr run = finished(batchLabels(2, "1", 1));
    EXPECT_EQ(one(*run, "txtfrm_Strength"), "12.5mg/1.25ml");
    EXPECT_EQ(one(*run, "txtlog_AWP"), "$123,456,789.50");
    EXPECT_EQ(one(*run, "txtlog_Lot"), "SV26-000123456789-XYZ-000001-00000017");
}

TEST_F(WholeValuesTest, AUnitIsWholeWhereverItStands) {
    sql("UPDATE Chemical SET chm_Units = 'MILLILITRES'; UPDATE Formula SET frm_Units = 'MILLILITRES'; UPDATE Log SET "
        "log_Units = 'CAPSULES';");
    const auto expectUnit = [&](const ReportRun& run, const char* control, const char* unit) {
        const QStringList units = shown(run, control);
        EXPECT_FALSE(units.isEmpty()) << control;
        EXPECT_EQ(units.count(unit), units.size()) << control << " " << str(units.join('|'));
    };
    expectUnit(*finished(chemicals()), "txtChemical_chm_Units", "MILLILITRES");
    const RunPtr sheet = finished(worksheet(1, 10)), log = finished(formulaLog(2));
    expectUnit(*sheet, "txtfrm_Units", "MILLILITRES");
    expectUnit(*log, "txtlog_Units", "CAPSULES");
}

TEST_F(WholeValuesTest, MoneyOfTheWorksheetIsWhole) {
    sql("UPDATE Chemical SET chm_Cost = 30000 WHERE ChemicalID = 3;");
    const RunPtr run = finished(worksheet(1, 10));
    EXPECT_EQ(one(*run, "txtfrm_Cost"), "$37,040.52");
    EXPECT_EQ(str(shown(*run, "txtchm_Cost").first()), "$37,050.00");
}

TEST_F(WholeValuesTest, PricesNeverTouchTheSupplier) {
    sql("UPDATE Chemical SET chm_AWP = 15.8, chm_Supplier = 'Quill & Co.' WHERE ChemicalID = 1; UPDATE Chemical SET "
        "chm_AWP = 1234.56 WHERE ChemicalID = 2; UPDATE Chemical SET chm_AWP = 98765432.1 WHERE ChemicalID = 3;");
    setOption("DefCurrency", "CHF");
    EXPECT_TRUE(paper(*finished(chemicals()), "francs").contains("CHF 15.80 Quill & Co."));
    setOption("DefCurrency", "R$");
    const QString reals = paper(*finished(chemicals()), "reals");
    EXPECT_TRUE(reals.contains("R$ 1,234.56 Northfield")) << str(reals);
    EXPECT_TRUE(reals.contains("R$ 98,765,432.10")) << str(reals);
}

TEST_F(WholeValuesTest, NumbersHaveTheMarksOfTheSystem) {
    sql("UPDATE FormChem SET fch_Qty = 18.104 WHERE FormChemID = 11; UPDATE Chemical SET chm_Cost = 1234.5 WHERE "
        "ChemicalID = 1; UPDATE RXs SET rxs_QTY = 112.75 WHERE RXsID = 31; UPDATE LogChem SET lch_QTY = 18.104 WHERE "
        "LogChemID = 23;");
    const struct {
        QLocale system;
        const char *quantity, *made, *price, *dispensed, *batch;
    } customs[] = {
        {QLocale("de_DE"), "18,104", "10,00", "€ 1.234,50", "112,75", "€1.225,20"},
        {QLocale("ru_RU"), "18,104", "10,00", "€ 1 234,50", "112,75", "€1 225,20"},
        {QLocale("fr_CH"), "18,104", "10,00", "€ 1 234,50", "112,75", "€1 225,20"},
        {QLocale("en_US"), "18.104", "10.00", "€ 1,234.50", "112.75", "€1,225.20"},
    };
    setOption("DefCurrency", u"€"_s);
    const auto plain = [](QStringList texts) {
        return str(texts.first().replace(QChar(0x202F), ' ').replace(QChar(0x00A0), ' '));
    };
    for (const auto& [system, quantity, made, price, dispensed, batch] : customs) {
        setSystemLocale(system);
        const RunPtr sheet = finished(worksheet(1, 10));
        EXPECT_EQ(plain(shown(*sheet, "txtchm_QTY")), quantity) << str(system.name());
        EXPECT_EQ(plain(shown(*sheet, "txtfrm_Qty")), made) << str(system.name());
        const RunPtr log = finished(formulaLog(2));
        EXPECT_EQ(plain(shown(*log, "txtchm_QTY")), quantity) << str(system.name());
        EXPECT_EQ(plain(shown(*log, "txtfrm_Cost")), batch) << str(system.name());
        EXPECT_EQ(plain(shown(*finished(chemicals()), "txtChemical_chm_Cost")), price) << str(system.name());
        EXPECT_EQ(plain(shown(*finished(prescriptionLabels(31, "1", 1)), "txtQTY")), dispensed);
        const RunPtr history = finished(patient(1, day(2026, 1, 1), day(2026, 3, 7)));
        EXPECT_TRUE(shown(*history, "txtrxs_QTY").contains(dispensed)) << str(system.name());
    }
}

TEST_F(WholeValuesTest, CurrencyKeepsItsOwnMarks) {
    setSystemLocale(QLocale("de_DE"));
    setOption("DefCurrency", "Fr.");
    EXPECT_EQ(one(*finished(formulaLog(2)), "txtfrm_Cost"), "Fr.1.225,20");
    EXPECT_EQ(str(shown(*finished(chemicals()), "txtChemical_chm_Cost").first()), "Fr. 0,50");
    EXPECT_EQ(one(*finished(logReport(1, day(2026, 1, 1), day(2026, 3, 7))), "txtTotalCost"), "Fr.1255,40");
    EXPECT_EQ(one(*finished(patient(1, day(2026, 1, 1), day(2026, 3, 7))), "txtTotalPrice"), "Fr.12,5");
}

TEST_F(WholeValuesTest, EveryLineOfTheInstructionsIsPrinted) {
    sql("UPDATE Formula SET frm_Instructions = 'Weigh.\nMix.\nFill.\n"
        "CAUTION: protect from light.' WHERE FormulaID = 1;");
    EXPECT_EQ(one(*finished(worksheet(1, 25)), "txtfrm_Instructions"),
              "Weigh.|Mix.|Fill.|CAUTION: protect from light.");
    EXPECT_EQ(one(*finished(formulaLog(2)), "txtfrm_Instructions"),
              "Weigh.|Mix.|Fill.|CAUTION: protect from light.");
}

TEST_F(WholeValuesTest, LongInstructionsGoOnOverPages) {
    QStringList steps;
    for (int step = 1; step <= 130; ++step)
        steps << u"Step-%1."_s.arg(step);
    sql("UPDATE Formula SET frm_Desc = 'First line\nSecond line\nThird line', "
        "frm_Instructions = '" +
        steps.join('\n') + "' WHERE FormulaID = 1;");
    const RunPtr run = finished(worksheet(1, 25));
    ASSERT_EQ(run->document().pages.size(), 3u);
    kept(*run, "long-instructions");
    const QString words = paper(*run, "long");
    EXPECT_TRUE(words.contains("First line Second line Third line")) << str(words);
    for (int step = 1; step <= 130; ++step)
        EXPECT_EQ(words.count(u"Step-%1."_s.arg(step)), 1) << step;
    EXPECT_EQ(words.count("Kelmar"), 3) << "the foot stands on every page";
}

TEST_F(WholeValuesTest, LabelWithAValueThatHasNoRoomIsNotPrinted) {
    sql("UPDATE RXs SET rxs_QTY = 123456789.0625 WHERE RXsID = 31;");
    const RunPtr run = finished(prescriptionLabels(31, "4", 2));
    EXPECT_EQ(str(paper(*run, "white")), "Lot# AB0012") << "the position that is passed over, and no label";
    EXPECT_EQ(run->document().leftOutLabels, 4);
    ASSERT_EQ(run->document().warnings.size(), 1u);
    const PageWarning& warning = run->document().warnings[0];
    EXPECT_EQ(warning.kind, WarningKind::LabelLeftOut);
    EXPECT_EQ(str(warning.title), "QTY");
    EXPECT_EQ(str(warning.text), "123456789.0625");
    EXPECT_EQ(warning.count, 4);
    EXPECT_EQ(text(*run, "txtQTY"), "123456789.0625") << "the spreadsheet has room";
    PreviewNotices notices(nullptr);
    notices.update(run->document(), {});
    EXPECT_EQ(str(support::child<QLabel>(notices, "noticeLine")->text()),
              "The label is not printed: \"QTY\" has no room for \"123456789.0625\".  (4 times)");
}

TEST_F(WholeValuesTest, BatchLabelWithAValueThatHasNoRoomIsNotPrinted) {
    sql("UPDATE Log SET log_Strength = '" + QString(60, '7') + "' WHERE LogID = 2;");
    const RunPtr run = finished(batchLabels(2, "3", 1));
    EXPECT_EQ(run->document().leftOutLabels, 3);
    const QImage page = tools::picture(pdf(*run, "white"), 1, 72);
    for (int y = 0; y < page.height(); ++y)
        for (int x = 0; x < page.width(); ++x)
            ASSERT_EQ(qGray(page.pixel(x, y)), 255) << x << "," << y;
}

TEST_F(WholeValuesTest, ReportWithAHiddenValueHasAFootnoteOnThatPageAlone) {
    sql("UPDATE LogChem SET lch_Lot = '" + QString(60, '7') + "' WHERE LogChemID = 23;");
    const RunPtr run = finished(formulaLog(2));
    EXPECT_EQ(str(shown(*run, "txtchm_Lot").first()), "####");
    EXPECT_EQ(run->document().hiddenValues, 1);
    PreviewNotices notices(nullptr);
    notices.update(run->document(), {});
    EXPECT_EQ(str(support::child<QLabel>(notices, "noticeLine")->text()),
              "Page 1: no room even in small type, printed as ####: \"" + std::string(60, '7') + "\"");
    const QString words = paper(*run, "footnote");
    EXPECT_EQ(words.count("#### stands for a value that has no room in its place."), 1) << str(words);
    EXPECT_FALSE(paper(*finished(formulaLog(1)), "plain").contains("####"));
    EXPECT_EQ(finished(formulaLog(1))->document().hiddenValues, 0);
}

TEST_F(WholeValuesTest, TextsThatFitMoveNothing) {
    const QString before = dumped(finished(worksheet(1, 25))->document());
    sql("UPDATE Formula SET frm_Instructions = 'Mix hot.' WHERE FormulaID = 1;");
    EXPECT_EQ(str(dumped(finished(worksheet(1, 25))->document()).replace("Mix hot.", "Mix cold.")),
              str(before));
}

TEST_F(WholeValuesTest, ListsSayWhyTheirTotalsDiffer) {
    sql("UPDATE Log SET log_Date = '2026-03-07 10:00:00' WHERE LogID = 2;");
    const RunPtr run = finished(logReport(1, day(2026, 1, 1), day(2026, 3, 7, {14, 5, 9})));
    PreviewNotices notices(nullptr);
    notices.update(run->document(), {});
    EXPECT_TRUE(support::child<QLabel>(notices, "noticeLine")
                    ->text()
                    .startsWith("The list shows 2 batches, the totals count 3: "));
    EXPECT_FALSE(notices.isHidden());
}

TEST_F(WholeValuesTest, LongDataIsWholeInFourSystems) {
    sql("UPDATE Log SET log_Name = 'Testosterone Propionate in Anhydrous Base', log_Strength = '12.5mg/1.25ml', "
        "log_Cost = 98765432.1, log_AWP = 123456789.5, log_Lot = 'SV26-0001-000012345'; UPDATE Formula SET frm_Desc = "
        "'Keep cool and dry.\nShake before use.', frm_Instructions = 'Weigh 12.5 mg.\n"
        "Triturate 10 minutes.\nFill up to 100 ml.\nCAUTION: protect from light.'; "
        "UPDATE Chemical SET chm_Name = chm_Name || ' Sodium Micronized Powder for Suspension 1000 mcg/ml', chm_Cost = "
        "9876.5 + chm_Cost, chm_AWP = 123456.78, chm_NDC = '12345-6789-01', chm_Lot = 'LOT-2026-000123', chm_Supplier "
        "= 'Quill & Co. Pharmaceutical Wholesale Ltd.'; UPDATE LogChem SET lch_Cost = 1234567.89, lch_Lot = "
        "'LOT-2026-000123', lch_Name = lch_Name || ' Sodium Micronized Powder for Suspension 1000 mcg/ml'; UPDATE RXs "
        "SET rxs_QTY = 112.75, rxs_Price = 98765.4;");
    const QDateTime begin = day(2026, 1, 1), end = day(2026, 12, 31, {22, 58, 59});
    for (const auto& [language, system, currency] : {std::tuple{"German", "de_DE", u"€"_s},
                                                     {"Swiss", "fr_CH", u"CHF"_s},
                                                     {"Russian", "ru_RU", u"R$"_s},
                                                     {"English", "en_US", u"$"_s}}) {
        speak(language);
        setOption("DefCurrency", currency);
        setSystemLocale(QLocale(system));
        const auto look = [&](std::unique_ptr<Report> report, const char* name) {
            const RunPtr run = finished(std::move(report));
            kept(*run, u"long-%1-%2"_s.arg(name, system));
            EXPECT_EQ(run->document().hiddenValues + run->document().leftOutLabels, 0) << name << system;
            for (const PageWarning& warning : run->document().warnings)
                EXPECT_NE(warning.kind, WarningKind::ValueHidden) << system << str(warning.text);
        };
        look(worksheet(1, 250), "worksheet");
        look(formulaLog(2), "formula-log");
        look(batchLabels(2, "3", 6), "batch-labels");
        look(prescriptionLabels(31, "3", 6), "rx-labels");
        look(logReport(1, begin, end), "log-report");
        look(chemicals(), "chemicals");
        look(patient(1, begin, end), "patient");
        look(jarUsage(begin, end), "jar-usage");
    }
}
