// The reports of the sample pharmacy in every delivered language: no caption is cut or touches its value.
#include "ReportTest.h"
#include "platform/report/TextMeasure.h"
#include "shared/Translator.h"
#include "shared/basMain.h"

#include <algorithm>

using namespace Qt::StringLiterals;

using namespace platform;
using namespace sorvanto;

namespace {

class LanguagesTest : public ReportTest, public ::testing::WithParamInterface<const char*> {
protected:
    void SetUp() override {
        ReportTest::SetUp();
        seedSample();
        clock.set(day(2026, 12, 31, {12, 55, 59}));
        speak(GetParam());
    }
    /// Captions alone: what is the pharmacy's own may be too long for its place.
    static QStringList cutCaptions(const ReportRun& run) {
        QStringList names;
        for (const PageWarning& warning : run.document().warnings) {
            const bool own = warning.control.startsWith("txt") && warning.control != "txtTitle" &&
                             warning.control != "txtPage" && !warning.control.startsWith("txtTotal") &&
                             warning.control != "txtReportDate" && warning.control != "txtpat_BDay" &&
                             warning.control != "txtpat_Phone";
            if (!own)
                names << warning.control + ": " + warning.text;
        }
        return names;
    }
    /// A piece of writing on the paper.
    struct Written {
        QString control, text;
        int left, right, baseline;
    };
    static std::vector<Written> writingOf(const ReportRun& run, const Page& page) {
        const auto measure = fontMeasure();
        std::vector<Written> all;
        for (const PageBand& band : page.bands) {
            for (std::uint32_t i = band.firstItem; i < band.firstItem + band.itemCount; ++i) {
                const PageItem& item = page.items[i];
                const TextStyle& style = run.document().styles[item.drawn];
                for (std::uint32_t r = item.firstRun; r < item.firstRun + item.runCount; ++r) {
                    const TextRun& text = page.runs[r];
                    all.push_back({run.document().controlOf(band, item).name, text.text, text.x,
                                   text.x + measure->width(style, text.text), text.baseline});
                }
            }
        }
        return all;
    }
    /// Neighbours on a line that a reader can't tell apart: less than half a blank lies between them, or less than
    /// a quarter behind a mark such as "#".
    static QStringList touching(const ReportRun& run) {
        constexpr int line = 60;
        const auto leastGap = [](const Written& caption) {
            return caption.text.back().isLetterOrNumber() ? 25 : 12;
        };
        QStringList pairs;
        for (const Page& page : run.document().pages) {
            const std::vector<Written> all = writingOf(run, page);
            for (const Written& a : all)
                for (const Written& b : all)
                    if (a.left < b.left && std::abs(a.baseline - b.baseline) < line &&
                        b.left - a.right < leastGap(a))
                        pairs << u"%1 %2: %3|%4"_s.arg(a.control).arg(b.left - a.right).arg(a.text, b.text);
        }
        pairs.removeDuplicates();
        return pairs;
    }
    static void look(std::unique_ptr<Report> report, const QString& name) {
        const RunPtr run = finished(std::move(report));
        kept(*run, u"%1-%2"_s.arg(name, GetParam()));
        EXPECT_TRUE(cutCaptions(*run).isEmpty()) << str(name) << "\n" << str(cutCaptions(*run).join('\n'));
        EXPECT_TRUE(touching(*run).isEmpty()) << str(name) << "\n" << str(touching(*run).join('\n'));
    }
};

}  // namespace

TEST_P(LanguagesTest, EveryCaptionFitsItsPlace) {
    const QDateTime begin = day(2025, 12, 31, {12, 55, 59}), end = day(2027, 12, 31, {12, 55, 59});
    look(worksheet(3, 250), "worksheet");
    look(formulaLog(4), "formula-log");
    look(batchLabels(1, "3", 6), "batch-labels");
    look(prescriptionLabels(1, "3", 6), "rx-labels");
    look(logReport(1, begin, end), "log-report");
    look(jarUsage(begin, end), "jar-usage");
    look(chemicals(), "chemicals");
    look(patient(1, begin, end), "patient");
}

// A unit that lost its end could be another one.
TEST_P(LanguagesTest, EveryUnitStandsWholeOnTheSheets) {
    for (const char* key : {"AMP", "CAPS", "CC", "DROP", "EACH", "GMS", "GR", "GTTS", "IU", "LIT", "LITR",
                            "MCG", "MEQ", "MGS", "MLS", "TABS", "VIAL"}) {
        const QString unit = translated(key);
        sql(u"UPDATE Chemical SET chm_Units = '%1'; UPDATE LogChem SET lch_Units = '%1';"_s.arg(unit));
        const RunPtr sheet = finished(worksheet(3, 250)), log = finished(formulaLog(4));
        EXPECT_TRUE(texts(*sheet, "txtchm_Unit").contains(unit))
            << str(unit) << str(text(*sheet, "txtchm_Unit"));
        EXPECT_TRUE(texts(*log, "txtchm_Units").contains(unit)) << str(unit);
        EXPECT_TRUE(cut(*sheet).filter("txtchm_Unit").isEmpty()) << str(unit);
        EXPECT_TRUE(cut(*log).filter("txtchm_Units").isEmpty()) << str(unit);
    }
}

INSTANTIATE_TEST_SUITE_P(Delivered, LanguagesTest,
                         ::testing::Values("English", "Spanish", "German", "French", "Italian", "Portuguese",
                                           "Russian", "Swiss"),
                         [](const auto& row) { return std::string(row.param); });
