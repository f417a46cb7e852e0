// Counts, positions and pages of labels against a second calculator: plain division instead of a walk, asked
// about 100,000 drawn and hostile runs; some of them as whole reports, some through the dialog.
#include "Child.h"
#include "ReportTest.h"
#include "platform/widgets/Boxes.h"
#include "reports/LabelPositions.h"
#include "reports/frmSelPrint.h"

#include <QPushButton>
#include <bit>
#include <limits>
#include <random>

using namespace Qt::StringLiterals;

using namespace sorvanto;

namespace {

constexpr int most = std::numeric_limits<std::int16_t>::max();

/// One run of labels, worked out from its first position (from 0) and its count.
struct Labels {
    int first, labels;

    int positions() const { return first + std::max(labels, 1); }
    bool prints(int position) const { return position >= first; }
    int pages(int rows) const { return (positions() + 3 * rows - 1) / (3 * rows); }
};

/// Where a position lies on its sheet of so many rows, in twips.
QPoint placeOf(int position, int rows, int height) {
    return {position % 3 * 4080, 720 + position % (3 * rows) / 3 * height};
}

/// Counts at the edges as often as drawn ones, small ones as often as large.
class Drawn {
public:
    explicit Drawn(unsigned seed) : m_random(seed) {}
    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(m_random); }
    int count(int limit) {
        static const int edges[] = {1, 2, 3, 26, 27, 28, 29, 30, 31, 54, 60, 61};
        if (below(4) == 0)
            return edges[below(static_cast<int>(std::size(edges)))];
        return 1 + below(1 << below(std::bit_width(static_cast<unsigned>(limit))));
    }

private:
    std::mt19937 m_random;
};

class LabelCountsTest : public ReportTest {
protected:
    void SetUp() override {
        ReportTest::SetUp();
        seedPharmacy();
    }
    /// Every label of the report stands where the calculator says, and nowhere else.
    static void expectRun(const platform::ReportRun& run, const Labels& expected, int rows, int height,
                          const char* stepped) {
        const auto& pages = run.document().pages;
        ASSERT_EQ(pages.size(), static_cast<std::size_t>(expected.pages(rows)));
        int position = 0;
        for (std::size_t page = 0; page < pages.size(); ++page) {
            for (const platform::PageBand& band : pages[page].bands) {
                ASSERT_EQ(page, static_cast<std::size_t>(position / (3 * rows)));
                ASSERT_EQ(QPoint(band.x, band.y), placeOf(position, rows, height)) << position;
                bool printed = false;
                for (std::uint32_t i = band.firstItem; i < band.firstItem + band.itemCount; ++i)
                    printed = printed || run.document().controlOf(band, pages[page].items[i]).name == stepped;
                ASSERT_EQ(printed, expected.prints(position)) << position;
                ++position;
            }
        }
        ASSERT_EQ(position, expected.positions());
    }
};

}  // namespace

TEST_F(LabelCountsTest, AHundredThousandRunsAgreeWithASecondCalculator) {
    Drawn drawn(20261122);
    for (int i = 0; i < 100000; ++i) {
        Labels run{drawn.below(30), drawn.count(4096)};
        // What no dialog lets through: nothing, less than nothing, the most, a row below the sheet.
        switch (drawn.below(500)) {
        case 0:
            run.labels = 0;
            break;
        case 1:
            run.labels = -1 - drawn.below(most);
            break;
        case 2:
            run.labels = most - drawn.below(3);
            break;
        case 3:
            run.first = drawn.below(3 * 2000);
            break;
        default:
            break;
        }
        LabelPositions positions(static_cast<std::int16_t>(run.first / 3 + 1),
                                 static_cast<std::int16_t>(run.first % 3 + 1),
                                 static_cast<std::int16_t>(run.labels));
        int position = 0;
        for (; !positions.done(); ++position) {
            ASSERT_LT(position, run.positions()) << run.first << " " << run.labels;
            ASSERT_EQ(positions.step(), run.prints(position)) << run.first << " " << run.labels;
        }
        ASSERT_EQ(position, run.positions()) << run.first << " " << run.labels;
    }
}

TEST_F(LabelCountsTest, WholeReportsHaveTheirLabelsAndPagesWhereTheCalculatorSays) {
    Drawn drawn(7);
    for (int i = 0; i < 120; ++i) {
        const Labels run{drawn.below(30), drawn.count(256)};
        SCOPED_TRACE(testing::Message() << run.labels << " labels from position " << run.first + 1);
        const QString count = QString::number(run.labels);
        expectRun(*finished(batchLabels(2, count, run.first + 1)), run, 10, 1440, "txtlog_Lot");
        expectRun(*finished(prescriptionLabels(31, count, run.first + 1)), run, 9, 1470, "txtQTY");
        if (HasFatalFailure())
            return;
    }
}

TEST_F(LabelCountsTest, TheDialogTakesACountWhereTheCalculatorDoes) {
    Drawn drawn(11);
    static const char* const hostile[] = {"0",     "-1",     "32767", "32768", "40000", "65537",
                                          "99999", "100000", "1.5",   "1,250", "1.250", "5/2",
                                          "&H10",  "1e3",    " 12 ",  "007"};
    int taken = 0;
    for (int i = 0; i < 400; ++i) {
        const QString text = drawn.below(3) == 0 ? QString(hostile[drawn.below(std::size(hostile))])
                                                 : QString::number(drawn.count(131072));
        // Whole numbers from 1 to what 16 bits hold, in plain digits; blanks around them say nothing.
        const QString digits = text.trimmed();
        bool plain = !digits.isEmpty() && digits.size() < 9;
        for (const QChar c : digits)
            plain = plain && c >= '0' && c <= '9';
        const int wanted = plain && digits.toInt() >= 1 && digits.toInt() <= most ? digits.toInt() : 0;
        const int position = 1 + drawn.below(30);
        asker.expectModal("frmSelPrint", [&](QWidget& form) {
            auto* box = support::child<platform::NumberBox>(form, "txtLabels");
            box->selectAll();
            box->insert(text);
            auto* button = support::child<QPushButton>(form, u"cmdPosition_%1"_s.arg(position));
            button->click();
            EXPECT_EQ(form.isVisible(), wanted == 0) << str(text);
            if (form.isVisible())
                form.close();
        });
        frmSelPrint form(context);
        form.showModal();
        if (wanted > 0) {
            EXPECT_EQ(form.NumLabels(), wanted) << str(text);
            EXPECT_EQ((form.Row() - 1) * 3 + form.Column(), position);
            ++taken;
        } else {
            EXPECT_EQ(form.Row(), 0) << str(text);
        }
    }
    EXPECT_GT(taken, 150);
    EXPECT_LT(taken, 350);
}
