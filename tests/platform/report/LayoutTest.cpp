// The order of sections on pages, the events, binding, columns, failures and the end of a run.
#include "Samples.h"
#include "support/Golden.h"

#include "platform/basic/RuntimeError.h"
#include "platform/report/LabelTestSheet.h"

#include <QFontInfo>
#include <QRect>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

using namespace platform;
using namespace samples;

TEST(Layout, TheFontsOfReportsAreInstalled) {
    // Without them every measure would be that of another face, and every glyph perhaps a box.
    for (const auto& [asked, had] :
         {std::pair{"Arial", "Liberation Sans"}, std::pair{"Times New Roman", "Liberation Serif"},
          std::pair{"MS Serif", "Liberation Serif"}}) {
        const QString family = QFontInfo(reportFont({asked, 10})).family();
        EXPECT_TRUE(family == asked || family == had) << asked << " gives " << qPrintable(family);
    }
}

TEST(Layout, EverySectionStandsAtItsPlace) {
    StockFile file;
    file.add("'Zinc oxide', 'Powder', 12.5, 3.2, '2026-03-07 14:05:09', '0303A00001'");
    file.add("'Water', 'Liquid', 1000, 1234.5, '2026-03-01 00:00:00', NULL");
    file.add("NULL, NULL, NULL, NULL, NULL, '=SUM(A1)'");
    auto report = std::make_unique<StockList>(file.rows());
    report->setText("madeOn", "3/7/2026");
    const auto run = finished(std::move(report));
    support::expectGolden("report/stock_list.txt", dumped(run->document()));
    EXPECT_TRUE(run->document().warnings.empty());
}

TEST(Layout, LaterPagesHaveHeaderAndFooterOfTheirOwn) {
    StockFile file;
    file.addMany(100);
    auto report = std::make_unique<StockList>(file.rows());
    const auto events = report->events;
    const auto run = finished(std::move(report));
    support::expectGolden("report/stock_list_pages.txt", dumped(run->document()));
    QStringList expected{"reportStart", "reportHeader", "pageHeader 1", "groupHeader"};
    // Letter less margins, headers and footer leaves room for 40 rows on page one and 44 on others.
    for (int i = 0; i < 100; ++i) {
        if (i == 40 || i == 84)
            expected << u"pageFooter %1"_s.arg(i == 40 ? 1 : 2) << u"pageHeader %1"_s.arg(i == 40 ? 2 : 3);
        expected << "detail";
    }
    expected << "groupFooter"
             << "reportFooter"
             << "pageFooter 3"
             << "terminate";
    EXPECT_EQ(events->join('\n').toStdString(), expected.join('\n').toStdString());
}

TEST(Layout, WithoutRowsHeadersAndFootersStand) {
    StockFile file;
    const auto run = finished(std::make_unique<StockList>(file.rows()));
    support::expectGolden("report/stock_list_empty.txt", dumped(run->document()));
}

TEST(Layout, FootersShowTheLastRowAlsoWhereItIsTheOnlyOne) {
    for (const int count : {1, 3}) {
        StockFile file;
        file.addMany(count);
        ReportDefinition definition;
        definition.sections = {
            {SectionKind::Detail, 270, {field("name", 0, 0, 2000, 270).bound("name")}},
            {SectionKind::GroupFooter, 270, {field("last", 0, 0, 2000, 270).bound("name")}},
            {SectionKind::ReportFooter, 270, {field("end", 0, 0, 2000, 270).bound("name")}}};
        auto report = std::make_unique<Report>(definition);
        report->setRows(file.rows());
        const auto run = finished(std::move(report));
        QStringList texts;
        for (const PageItem& item : run->document().pages.at(0).items)
            texts << item.text;
        const QString last = u"Item %1"_s.arg(count);
        EXPECT_EQ(texts.mid(count - 1), (QStringList{last, last, last})) << texts.join(' ').toStdString();
    }
}

TEST(Layout, PagesComeOneByOne) {
    StockFile file;
    file.addMany(100);
    auto report = std::make_unique<StockList>(file.rows());
    const auto events = report->events;
    ReportRun run(std::move(report));
    EXPECT_EQ(run.document().pages.size(), 0u);
    EXPECT_TRUE(run.makePage());
    EXPECT_EQ(run.document().pages.size(), 1u);
    EXPECT_EQ(events->count("detail"), 40);
    EXPECT_NEAR(run.progress(), 0.40, 1e-9);
    EXPECT_TRUE(run.makePage());
    EXPECT_TRUE(run.makePage());
    EXPECT_EQ(events->last(), "terminate");
    EXPECT_FALSE(run.makePage());
    EXPECT_TRUE(run.isOver());
    EXPECT_EQ(run.document().pages.size(), 3u);
    EXPECT_EQ(events->count("terminate"), 1);
}

TEST(Layout, CancelKeepsThePagesMadeAndTerminatesOnce) {
    StockFile file;
    file.addMany(200);
    auto report = std::make_unique<StockList>(file.rows());
    const auto events = report->events;
    ReportRun run(std::move(report));
    int asked = 0;
    EXPECT_FALSE(run.makeAll([&](double progress) {
        EXPECT_GT(progress, 0);
        return ++asked < 2;
    }));
    EXPECT_TRUE(run.wasCancelled());
    EXPECT_EQ(run.document().pages.size(), 2u);
    EXPECT_EQ(events->count("terminate"), 1);
    EXPECT_FALSE(run.makePage());
}

TEST(Layout, ARunThatIsDroppedTerminatesToo) {
    StockFile file;
    file.addMany(100);
    auto report = std::make_unique<StockList>(file.rows());
    const auto events = report->events;
    {
        ReportRun run(std::move(report));
        run.makePage();
    }
    EXPECT_EQ(events->count("terminate"), 1);
}

TEST(Layout, AFailingEventEndsTheReportOnce) {
    StockFile file;
    file.addMany(100);
    auto report = std::make_unique<StockList>(file.rows());
    const auto events = report->events;
    report->onDetail = [](StockList& list) {
        if (list.control("name").text == "Item 50")
            throw RuntimeError(error::divisionByZero, "Division by zero");
    };
    ReportRun run(std::move(report));
    EXPECT_TRUE(run.makePage());
    try {
        run.makePage();
        FAIL() << "The failure of the event must come out";
    } catch (const RuntimeError& failure) {
        EXPECT_EQ(failure.number(), error::divisionByZero);
    }
    EXPECT_EQ(run.document().pages.size(), 1u) << "the unfinished page is dropped";
    EXPECT_TRUE(run.isOver());
    EXPECT_FALSE(run.makePage());
    EXPECT_EQ(events->count("terminate"), 1);
}

TEST(Layout, AnyStandardExceptionOfAnEventEndsTheReportToo) {
    StockFile file;
    file.addMany(3);
    auto report = std::make_unique<StockList>(file.rows());
    report->onDetail = [](StockList&) { throw std::out_of_range("vector"); };
    ReportRun run(std::move(report));
    EXPECT_THROW(run.makePage(), std::out_of_range);
    EXPECT_TRUE(run.document().pages.empty());
}

TEST(Layout, LabelsGoAcrossThenDownOverSheets) {
    const auto run = finished(std::make_unique<StripLabels>(5, 27, "0303A0000100"));
    const PageDocument& document = run->document();
    ASSERT_EQ(document.pages.size(), 2u);
    EXPECT_EQ(document.pages[0].bands.size(), 30u) << "skipped places take their room";
    EXPECT_EQ(document.pages[1].bands.size(), 2u);
    const Page& first = document.pages[0];
    EXPECT_EQ(first.bands[5].x, 8160);
    EXPECT_EQ(first.bands[5].y, 720 + 1440);
    EXPECT_EQ(first.bands[4].itemCount, 0u) << "a skipped label is white";
    EXPECT_EQ(first.bands[5].itemCount, 5u);
    EXPECT_EQ(first.items[0].text, "Label 6");
    EXPECT_EQ(first.bands[29].y, 720 + 9 * 1440);
    EXPECT_EQ(document.pages[1].bands[1].x, 4080);
    EXPECT_EQ(document.pages[1].items[0].text, "Label 31");
}

TEST(Layout, ALabelOneTooHighLeavesNineRows) {
    auto definition = StripLabels::layout();
    definition.sections[0].height = 1470;
    struct Counting : Report {
        using Report::Report;
        int passed = 0;
        void fetchData(bool& eof) override { eof = passed == 30; }
        void detailFormat() override { ++passed; }
    };
    const auto run = finished(std::make_unique<Counting>(definition));
    ASSERT_EQ(run->document().pages.size(), 2u);
    EXPECT_EQ(run->document().pages[0].bands.size(), 27u);
}

TEST(Layout, AHalfFullRowOfColumnsStillTakesItsHeight) {
    auto definition = StripLabels::layout();
    definition.sections.push_back({SectionKind::ReportFooter, 300, {label("end", 0, 0, 900, 270, "End")}});
    struct Four : Report {
        using Report::Report;
        int passed = 0;
        void fetchData(bool& eof) override { eof = passed == 4; }
        void detailFormat() override { ++passed; }
    };
    const auto run = finished(std::make_unique<Four>(definition));
    EXPECT_EQ(run->document().pages[0].bands.back().y, 720 + 2 * 1440);
}

TEST(Layout, AReportWithoutRowsAndFetchHasNoDetail) {
    const auto run = finished(std::make_unique<Report>(StockList::layout()));
    EXPECT_EQ(run->document().pages.size(), 1u);
    EXPECT_FALSE(dumped(run->document()).contains("layout")) << "no detail stands";
}

TEST(Layout, AReportWithoutEndIsStopped) {
    struct Endless : Report {
        Endless()
            : Report([] {
                  ReportDefinition d;
                  d.sections = {{SectionKind::Detail, 14000, {}}};
                  return d;
              }()) {}
        void fetchData(bool& eof) override { eof = false; }
    };
    ReportRun run(std::make_unique<Endless>());
    EXPECT_THROW(run.makeAll(), RuntimeError);
}

TEST(Layout, ASectionHigherThanThePageStandsAloneAndEndsNothing) {
    struct Two : Report {
        Two()
            : Report([] {
                  ReportDefinition d;
                  d.sections = {{SectionKind::Detail, 20000, {label("a", 0, 0, 900, 270, "a")}}};
                  return d;
              }()) {}
        int passed = 0;
        void fetchData(bool& eof) override { eof = passed == 2; }
        void detailFormat() override { ++passed; }
    };
    EXPECT_EQ(finished(std::make_unique<Two>())->document().pages.size(), 2u);
}

TEST(Layout, AnUnknownControlIsAnError) {
    StockList list(nullptr);
    EXPECT_THROW(list.setText("nothing", "x"), RuntimeError);
    EXPECT_THROW(list.control("nothing"), RuntimeError);
}

TEST(Layout, TextsWrittenByAnEventOverwriteTheColumn) {
    StockFile file;
    file.addMany(2);
    auto report = std::make_unique<StockList>(file.rows());
    report->onDetail = [](StockList& list) { list.setText("quantity", "by hand"); };
    const auto run = finished(std::move(report));
    EXPECT_TRUE(dumped(run->document()).contains("by hand"));
    EXPECT_FALSE(dumped(run->document()).contains("1.500"));
}

TEST(Layout, AnOutputFormatCanBeSetAtTheStart) {
    StockFile file;
    file.addMany(1);
    auto report = std::make_unique<StockList>(file.rows());
    report->setFormat("cost", "Kc ###,##0.00");
    EXPECT_TRUE(dumped(finished(std::move(report))->document()).contains("Kc 0.25"));
}

TEST(Layout, TheTestSheetDrawsEveryLabelOfTheStock) {
    const auto run = finished(labelTestSheet(StripLabels::layout(), "Label test sheet"));
    const Page& page = run->document().pages.at(0);
    ASSERT_EQ(run->document().pages.size(), 1u);
    std::vector<QRect> labels;
    for (const PageItem& item : page.items) {
        if (item.kind == ItemKind::Box && item.width > 0)
            labels.emplace_back(item.x, item.y, item.width, item.height);
    }
    ASSERT_EQ(labels.size(), 30u);
    EXPECT_EQ(labels[0], QRect(270, 720, 3780, 1440)) << "3/16 by 1/2 inch from the corner, 2 5/8 by 1 inch";
    EXPECT_EQ(labels[1].x(), 4230);
    EXPECT_EQ(labels[2].x(), 8190);
    EXPECT_EQ(labels[29], QRect(8190, 13680, 3780, 1440));
    EXPECT_THROW(labelTestSheet(StockList::layout(), ""), RuntimeError);
}

TEST(Layout, UnloadIsRemembered) {
    StockList list(nullptr);
    EXPECT_FALSE(list.isUnloaded());
    list.unload();
    EXPECT_TRUE(list.isUnloaded());
}
