// Labels on part-used sheets: which positions print, what shows at those passed over, whether every text and bar
// lies on its label, and whether the bars can be read.
#include "Golden.h"
#include "ReportTest.h"
#include "platform/basic/RuntimeError.h"
#include "platform/report/Tools.h"
#include "reports/LabelPositions.h"
#include "reports/rptLogAvery8160.h"
#include "shared/basMain.h"

#include <QImage>

using namespace Qt::StringLiterals;

using namespace platform;
using namespace sorvanto;

namespace {

class LabelsTest : public ReportTest {
protected:
    void SetUp() override {
        ReportTest::SetUp();
        seedPharmacy();
    }
};

/// The labels of the stock in points: 2 5/8 by 1 inch.
QRectF die(int position) {
    static const double left[] = {13.5, 211.5, 409.5};
    return {left[position % 3], 36.0 + 72.0 * (position / 3), 189, 72};
}

/// Walks a sheet: "." where a position is passed over, "x" where a label prints.
QString walked(std::int16_t row, std::int16_t column, std::int16_t labels) {
    LabelPositions positions(row, column, labels);
    QString walk;
    while (!positions.done())
        walk += positions.step() ? 'x' : '.';
    return walk;
}

int labelsOf(const ReportRun& run, std::size_t page) {
    int count = 0;
    for (const PageItem& item : run.document().pages[page].items)
        count += item.kind == ItemKind::BarCode;
    return count;
}

}  // namespace

TEST_F(LabelsTest, PositionsAreStepped) {
    EXPECT_EQ(str(walked(1, 1, 1)), "x");
    EXPECT_EQ(str(walked(1, 1, 3)), "xxx");
    EXPECT_EQ(str(walked(2, 3, 3)), ".....xxx");
    EXPECT_EQ(str(walked(10, 3, 2)), str(QString(29, '.') + "xx"));
    EXPECT_EQ(walked(1, 2, 32767).size(), 32768) << "far past the tenth row without harm";
    for (int row = 1; row <= 10; ++row) {
        for (int column = 1; column <= 3; ++column) {
            const QString walk = walked(static_cast<std::int16_t>(row), static_cast<std::int16_t>(column), 4);
            EXPECT_EQ(str(walk), str(QString((row - 1) * 3 + column - 1, '.') + "xxxx"));
        }
    }
}

TEST_F(LabelsTest, BatchLabelsFromRowTwoColumnThree) {
    const RunPtr run = finished(batchLabels(2, "3", 6));
    kept(*run, "small-batch-labels");
    support::expectGolden("reports/batch_labels.txt", dumped(run->document()));
    EXPECT_TRUE(cut(*run).isEmpty()) << str(cut(*run).join('\n'));
}

TEST_F(LabelsTest, PrescriptionLabelsFromRowTwoColumnThree) {
    const RunPtr run = finished(prescriptionLabels(31, "3", 6));
    kept(*run, "small-rx-labels");
    support::expectGolden("reports/prescription_labels.txt", dumped(run->document()));
    EXPECT_TRUE(cut(*run).isEmpty()) << str(cut(*run).join('\n'));
}

TEST_F(LabelsTest, OneLabelIsOneLabel) {
    const RunPtr run = finished(batchLabels(2, "1", 1));
    ASSERT_EQ(run->document().pages.size(), 1u);
    EXPECT_EQ(labelsOf(*run, 0), 1);
}

TEST_F(LabelsTest, SecondLabelAfterTheLastPositionStartsANewSheet) {
    const RunPtr run = finished(batchLabels(2, "2", 30));
    ASSERT_EQ(run->document().pages.size(), 2u);
    EXPECT_EQ(labelsOf(*run, 0), 1);
    EXPECT_EQ(labelsOf(*run, 1), 1);
    const Page& second = run->document().pages[1];
    ASSERT_FALSE(second.items.empty());
    EXPECT_EQ(second.items[0].x, 360);
    EXPECT_EQ(second.items[0].y, 720 + 180);
}

TEST_F(LabelsTest, PrescriptionSheetHoldsNineRows) {
    const RunPtr run = finished(prescriptionLabels(31, "28", 1));
    ASSERT_EQ(run->document().pages.size(), 2u);
    EXPECT_EQ(run->document().pages[0].bands.size(), 27u);
    EXPECT_EQ(run->document().pages[1].bands.size(), 1u);
    EXPECT_EQ(finished(batchLabels(2, "30", 1))->document().pages.size(), 1u);
}

TEST_F(LabelsTest, AllLabelsOfARunAreEqual) {
    const RunPtr run = finished(batchLabels(2, "45", 1));
    for (const auto& [control, content] : {std::pair{"txtfrm_Name", "Cooling Gel"},
                                           {"txtfrm_Strength", "2 %"},
                                           {"txtlog_QTY", "25"},
                                           {"txtfrm_Form", "Custom"},
                                           {"txtlog_Initials", "RK"},
                                           {"txtlog_Verified", "LM"},
                                           {"lbllog_Cost", "Cost"},
                                           {"txtlog_Cost", "$1,225.20"},
                                           {"lbllog_AWP", "AWP"},
                                           {"txtlog_AWP", "$41.50"},
                                           {"lbllog_Lot", "Lot #"},
                                           {"txtlog_Lot", "AB0012"}})
        EXPECT_EQ(texts(*run, control).count(content), 45) << control;
    EXPECT_EQ(texts(*run, "lbllog_LotbarCode").count("AB0012"), 45);
}

TEST_F(LabelsTest, PassedOverBatchPositionsAreWhite) {
    const RunPtr run = finished(batchLabels(2, "1", 30));
    EXPECT_EQ(run->document().pages[0].items.size(), 13u) << "the thirteen controls of the one label";
    const QImage page = tools::picture(pdf(*run, "labels"), 1, 72);
    for (int y = 0; y < 684; ++y)
        for (int x = 0; x < page.width(); ++x)
            ASSERT_EQ(qGray(page.pixel(x, y)), 255) << x << "," << y;
}

TEST_F(LabelsTest, PassedOverPrescriptionPositionsShowTheLotAlone) {
    const RunPtr run = finished(prescriptionLabels(31, "1", 5));
    EXPECT_EQ(texts(*run, "lblLot").count("Lot#"), 5);
    EXPECT_EQ(texts(*run, "txtLot").count("AB0012"), 5);
    for (const char* hidden : {"txtPharmacy", "txtContact", "txtConsult", "txtDate", "txtDoctor", "txtDrug",
                               "txtName", "txtQTY", "txtRXNum", "lblDR"})
        EXPECT_EQ(texts(*run, hidden).size(), 1) << hidden;
}

TEST_F(LabelsTest, PrescriptionLabelTexts) {
    const RunPtr run = finished(prescriptionLabels(31, "1", 1));
    EXPECT_EQ(str(text(*run, "txtPharmacy")), "Kelmar Systems");
    EXPECT_EQ(str(text(*run, "txtContact")), "418 Larkspur Ct. Fenwick, ZZ 54321 (555)010-0188");
    EXPECT_EQ(str(text(*run, "txtRXNum")), "# 31");
    EXPECT_EQ(str(text(*run, "lblDR")), "DR");
    EXPECT_EQ(str(text(*run, "txtDoctor")), "Dr. Helen Marsh");
    EXPECT_EQ(str(text(*run, "txtName")), "Mara Quist");
    EXPECT_EQ(str(text(*run, "txtDate")), "3/2/2026");
    EXPECT_EQ(str(text(*run, "txtConsult")), "Ask about other creams");
    EXPECT_EQ(str(text(*run, "txtDrug")), "Cooling Gel 2 %");
    EXPECT_EQ(str(text(*run, "txtQTY")), "25");
    EXPECT_FALSE(run->report().isUnloaded());
}

TEST_F(LabelsTest, LabelWordsAreAsTranslated) {
    speak("German");
    const RunPtr run = finished(batchLabels(2, "1", 1));
    EXPECT_EQ(str(text(*run, "lbllog_Cost")), "Kosten");
    EXPECT_EQ(str(text(*run, "lbllog_Lot")), "Lot #") << "as it stands in the layout";
}

TEST_F(LabelsTest, EveryTextAndBarLiesOnItsLabel) {
    sql("UPDATE Log SET log_Name = 'Hydrocortisone in Vanishing Cream', log_Strength = '12.5 mg/ml', log_Lot = "
        "'SV260001XY' WHERE LogID = 2;");
    const RunPtr run = finished(batchLabels(2, "30", 1));
    const Page& page = run->document().pages[0];
    ASSERT_EQ(page.bands.size(), 30u);
    for (int position = 0; position < 30; ++position) {
        const auto& band = page.bands[static_cast<std::size_t>(position)];
        for (std::uint32_t i = band.firstItem; i < band.firstItem + band.itemCount; ++i) {
            const PageItem& item = page.items[i];
            const QRectF place(item.x / 20.0, item.y / 20.0, item.width / 20.0, item.height / 20.0);
            EXPECT_TRUE(die(position).contains(place)) << position << " " << str(item.text);
        }
    }
    const QString path = pdf(*run, "labels");
    for (const tools::Word& word : tools::words(path)) {
        bool inside = false;
        for (int position = 0; position < 30 && !inside; ++position)
            inside = die(position).contains(
                QRectF(QPointF(word.left, word.top), QPointF(word.right, word.bottom)));
        EXPECT_TRUE(inside) << str(word.text);
    }
    const QImage ink = tools::picture(path, 1, 144);
    for (int y = 0; y < ink.height(); ++y) {
        for (int x = 0; x < ink.width(); ++x) {
            if (qGray(ink.pixel(x, y)) > 250)
                continue;
            const QPointF point((x + 0.5) / 2, (y + 0.5) / 2);
            bool inside = false;
            for (int position = 0; position < 30 && !inside; ++position)
                inside = die(position).contains(point);
            ASSERT_TRUE(inside) << point.x() << "," << point.y();
        }
    }
}

TEST_F(LabelsTest, EveryBarCodeOfASheetIsReadAtBothResolutions) {
    const QString path = pdf(*finished(batchLabels(2, "30", 1)), "labels");
    for (const int dots : {300, 600}) {
        const QImage page = tools::picture(path, 1, dots);
        std::vector<QImage> labels;
        for (int position = 0; position < 30; ++position) {
            const QRectF place = die(position);
            const double scale = dots / 72.0;
            labels.push_back(page.copy(QRectF(place.topLeft() * scale, place.size() * scale).toRect()));
        }
        EXPECT_EQ(tools::barCodes(labels).count("AB0012"), 30) << dots;
    }
}

TEST_F(LabelsTest, BarsCarryTheLotInUpperCase) {
    sql("UPDATE Log SET log_Lot = 'sv26-0042' WHERE LogID = 2;");
    const RunPtr run = finished(batchLabels(2, "1", 1));
    EXPECT_EQ(str(text(*run, "txtlog_Lot")), "sv26-0042");
    const QImage page = tools::picture(pdf(*run, "labels"), 1, 300);
    EXPECT_EQ(tools::barCodes({page}), QStringList("SV26-0042"));
}

TEST_F(LabelsTest, LotThatBarsCannotCarryPrintsAsTextWithAWarning) {
    sql("UPDATE Log SET log_Lot = 'Ж_17#é' WHERE LogID = 2;");
    const RunPtr run = finished(batchLabels(2, "2", 1));
    EXPECT_EQ(texts(*run, "txtlog_Lot").count(u"Ж_17#é"_s), 2);
    EXPECT_EQ(run->document().missingBarCodes, 2);
    EXPECT_EQ(run->document().warnings[0].kind, WarningKind::NoBarCode);
}

TEST_F(LabelsTest, TooLongNameIsCutWithAWarning) {
    sql("UPDATE Log SET log_Name = '" + QString(100, 'M') +
        "', log_Strength = '100000000 mg per 1 ml' WHERE LogID = 2;");
    const RunPtr run = finished(batchLabels(2, "1", 1));
    const QString joined = cut(*run).join('\n');
    EXPECT_TRUE(joined.contains("txtfrm_Name"));
    EXPECT_TRUE(joined.contains("txtfrm_Strength"));
}

TEST_F(LabelsTest, TheSampleOfTheLayoutNeverPrints) {
    const RunPtr run = finished(batchLabels(2, "30", 4));
    EXPECT_FALSE(dumped(run->document()).contains("0303A0000100"));
}

TEST_F(LabelsTest, TwoRunsDoNotKnowOfEachOther) {
    const QString first = dumped(finished(batchLabels(2, "2", 5))->document());
    EXPECT_EQ(str(dumped(finished(batchLabels(2, "2", 5))->document())), str(first));
}

TEST_F(LabelsTest, UnknownTypeIsAnErrorOfTheTable) {
    sql("UPDATE Log SET log_FormType = 55 WHERE LogID = 2;");
    ReportRun run(batchLabels(2, "1", 1));
    EXPECT_THROW(run.makeAll(), RuntimeError);
}

TEST_F(LabelsTest, LogIsReleasedAtTheEnd) {
    const clsLogPtr log = batch(2);
    auto report = std::make_unique<rptLogAvery8160>(context);
    expectLabels("1", 1);
    report->setLog(log);
    const RunPtr run = finished(std::move(report));
    EXPECT_EQ(log.use_count(), 1);
    EXPECT_TRUE(run->report().isUnloaded());
}

TEST_F(LabelsTest, ThreeThousandLabels) {
    const RunPtr run = finished(batchLabels(2, "3000", 1));
    EXPECT_EQ(run->document().pages.size(), 100u);
    EXPECT_EQ(labelsOf(*run, 99), 30);
}
