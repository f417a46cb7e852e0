// Rows of a list whose texts need more lines than their places hold: they grow, stay whole, and long ones go on.
#include "Samples.h"

#include "platform/report/Report.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

using namespace platform;
using namespace samples;

namespace {

QString lines(int count, const QString& word) {
    QStringList all;
    for (int line = 1; line <= count; ++line)
        all << word + QString::number(line);
    return all.join(u'\n');
}

/// Rows of two growing texts side by side above a line. Row and page are 400 and 4,000 twips high.
class Rows : public Report {
public:
    struct Row {
        QString left, right;
    };
    explicit Rows(std::vector<Row> rows, int breakBefore = 0)
        : Report([] {
              ReportDefinition d;
              d.name = u"Rows"_s;
              d.margins = {0, 0, 0, 0};
              d.paperHeight = 4000;
              d.sections = {
                  {SectionKind::Detail,
                   400,
                   {field(u"left"_s, 0, 50, 3000, 270).growing(),
                    field(u"right"_s, 4000, 50, 3000, 270).growing(), line(u"end"_s, 0, 390, 8000)}}};
              return d;
          }()),
          m_rows(std::move(rows)), m_breakBefore(breakBefore) {}

protected:
    bool startsPage() const override { return m_row == m_breakBefore; }
    void fetchData(bool& eof) override { eof = ++m_row > static_cast<int>(m_rows.size()); }
    void detailFormat() override {
        setText(u"left"_s, m_rows.at(static_cast<std::size_t>(m_row - 1)).left);
        setText(u"right"_s, m_rows.at(static_cast<std::size_t>(m_row - 1)).right);
    }

private:
    std::vector<Row> m_rows;
    int m_row = 0, m_breakBefore;
};

struct Placed {
    std::size_t page;
    int y, height;
    QString text;
    int lines;
};
std::vector<Placed> placed(const ReportRun& run, const QString& control) {
    std::vector<Placed> all;
    const PageDocument& document = run.document();
    for (std::size_t number = 0; number < document.pages.size(); ++number) {
        const Page& page = document.pages[number];
        for (const PageItem& item : page.items) {
            const Section& section = document.definition.sections.at(0);
            if (section.controls.at(item.control).name == control)
                all.push_back({number + 1, item.y, item.height, item.text, static_cast<int>(item.runCount)});
        }
    }
    return all;
}

}  // namespace

TEST(GrownRows, SideBySideTheLongerOneDecides) {
    const auto run = finished(std::make_unique<Rows>(
        std::vector<Rows::Row>{{lines(4, u"a"_s), lines(3, u"b"_s)}, {u"next"_s, u"one"_s}}));
    const auto left = placed(*run, u"left"_s), right = placed(*run, u"right"_s), end = placed(*run, u"end"_s);
    ASSERT_EQ(left.size(), 2U);
    ASSERT_EQ(right.size(), 2U) << "each text once";
    EXPECT_EQ(left[0].lines, 4);
    EXPECT_EQ(right[0].lines, 3);
    const int growth = end[0].y - 390;
    EXPECT_GT(growth, 0);
    EXPECT_LT(growth, 4 * 270) << "three lines more, not five";
    EXPECT_EQ(left[1].y, 400 + growth + 50);
    EXPECT_EQ(end[1].y - left[1].y, 340) << "a row that fits keeps its height";
}

TEST(GrownRows, ARowThatDoesNotFitGoesToTheNextPageWhole) {
    const auto run = finished(std::make_unique<Rows>(
        std::vector<Rows::Row>{{lines(8, u"a"_s), {}}, {lines(9, u"b"_s), {}}, {u"c"_s, {}}}));
    const auto left = placed(*run, u"left"_s);
    ASSERT_EQ(left.size(), 3U);
    EXPECT_EQ(left[1].page, 2U);
    EXPECT_EQ(left[1].y, 50);
    EXPECT_EQ(left[1].lines, 9);
    EXPECT_EQ(left[2].page, 2U);
}

TEST(GrownRows, ARowThatFillsMoreThanAPageGoesOn) {
    const auto run = finished(
        std::make_unique<Rows>(std::vector<Rows::Row>{{u"a"_s, {}}, {lines(40, u"b"_s), {}}, {u"c"_s, {}}}));
    const auto left = placed(*run, u"left"_s);
    int shown = 0;
    for (const Placed& one : left)
        shown += one.lines;
    EXPECT_EQ(shown, 42) << "every line is somewhere";
    EXPECT_GE(run->document().pages.size(), 3U);
    for (const Placed& one : left)
        EXPECT_LE(one.y + one.height, 4000);
    EXPECT_EQ(left.back().text, u"c"_s);
}

TEST(GrownRows, ARowCanAskForAPage) {
    const auto run =
        finished(std::make_unique<Rows>(std::vector<Rows::Row>{{u"a"_s, {}}, {u"b"_s, {}}, {u"c"_s, {}}}, 2));
    const auto left = placed(*run, u"left"_s);
    EXPECT_EQ(left[0].page, 1U);
    EXPECT_EQ(left[1].page, 2U);
    EXPECT_EQ(left[2].page, 2U);
    EXPECT_EQ(
        finished(std::make_unique<Rows>(std::vector<Rows::Row>{{u"a"_s, {}}}, 1))->document().pages.size(),
        1U)
        << "an empty page is none";
}
