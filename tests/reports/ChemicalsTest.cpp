// The price list of all chemicals.
#include "Golden.h"
#include "ReportTest.h"
#include "platform/report/Tools.h"

using namespace Qt::StringLiterals;

using namespace platform;

namespace {
class ChemicalsTest : public ReportTest {};
}  // namespace

TEST_F(ChemicalsTest, PageWithEveryTextAtItsPlace) {
    seedPharmacy();
    const RunPtr run = finished(chemicals());
    kept(*run, "small-chemicals");
    support::expectGolden("reports/chemicals.txt", dumped(run->document()));
    EXPECT_TRUE(cut(*run).isEmpty()) << str(cut(*run).join('\n'));
}

TEST_F(ChemicalsTest, TextsAndPrices) {
    seedPharmacy();
    auto report = chemicals();
    EXPECT_EQ(str(report->caption), "Chemicals Report");
    const RunPtr run = finished(std::move(report));
    EXPECT_EQ(str(text(*run, "lblReportTitle")), "Chemical List - Sorvanto");
    EXPECT_EQ(str(text(*run, "lblDate")), "3/7/2026 2:05:09 PM");
    EXPECT_EQ(str(texts(*run, "txtChemical_chm_Name").join('|')), "Aspirin|Borax|Camphor|Menthol");
    EXPECT_EQ(str(texts(*run, "txtChemical_chm_Cost").join('|')), "$ 0.50|$ 0.03|$ 2.00|$ 1.10")
        << "with a blank";
    EXPECT_EQ(str(texts(*run, "txtChemical_chm_AWP").join('|')), "$ 1.25|$ 0.08|$ 4.50|$ 2.20");
    EXPECT_EQ(str(text(*run, "txtPage")), "Page 1");
    EXPECT_FALSE(dumped(run->document()).contains("keep dry")) << "notes are fetched and not shown";
}

TEST_F(ChemicalsTest, EmptyTablePrintsAnEmptyList) {
    const RunPtr run = finished(chemicals());
    EXPECT_EQ(run->document().pages.size(), 1u);
    EXPECT_EQ(texts(*run, "lblchm_Name").size(), 1);
    EXPECT_TRUE(texts(*run, "txtChemical_chm_Name").isEmpty());
    EXPECT_EQ(str(text(*run, "txtPage")), "Page 1");
}

TEST_F(ChemicalsTest, LongListHasHeadAndNumberOnEveryPage) {
    QString many = "BEGIN;";
    for (int i = 0; i < 100; ++i)
        many += u"INSERT INTO Chemical (chm_Name) VALUES ('C%1');"_s.arg(i, 3, 10, '0'_L1);
    sql(many + "COMMIT;");
    const RunPtr run = finished(chemicals());
    EXPECT_EQ(texts(*run, "txtChemical_chm_Name").size(), 100);
    EXPECT_EQ(static_cast<std::size_t>(texts(*run, "lblchm_NDC").size()), run->document().pages.size());
    EXPECT_EQ(str(texts(*run, "txtPage").last()), str(u"Page %1"_s.arg(run->document().pages.size())));
    EXPECT_EQ(str(texts(*run, "txtChemical_chm_Cost")[0]), "") << "a missing price is empty";
}

TEST_F(ChemicalsTest, RowsAreSetInTheSerifOfTheLayout) {
    seedPharmacy();
    const QString path = pdf(*finished(chemicals()), "chemicals");
    EXPECT_NEAR(tools::wordOf(tools::words(path), "Aspirin").left, 36, 0.15);
    EXPECT_TRUE(tools::output("pdffonts", {path}).contains(QRegularExpression("Serif|Times")));
}
