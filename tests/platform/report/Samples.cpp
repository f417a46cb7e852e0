// The sample reports' layouts and events.
#include "Samples.h"

#include "support/TestDatabase.h"

#include <QFile>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace samples {

using namespace platform;

StockFile::StockFile() {
    QFile file(path());
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    support::runSql(path(), "CREATE TABLE Stock (ID INTEGER PRIMARY KEY, name TEXT(80), form TEXT(10), "
                            "quantity DOUBLE, cost CURRENCY, made DATETIME, lot TEXT(50))");
    m_connection = std::make_shared<Connection>();
    m_connection->open("Provider=file;Data Source=" + path() + ";");
}

void StockFile::add(const QString& values) {
    support::runSql(path(),
                    "INSERT INTO Stock (name, form, quantity, cost, made, lot) VALUES (" + values + ")");
}

void StockFile::addMany(int count) {
    support::runSql(path(),
                    u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
                    u"INSERT INTO Stock (name, form, quantity, cost, made, lot) SELECT 'Item ' || i, "
                    u"'Cream', i * 1.5, i * 0.25, '2026-03-07 14:05:09', 'L' || i FROM n"_s.arg(count));
}

RecordsetPtr StockFile::rows(const QString& columns) {
    auto set = Recordset::create();
    set->open("SELECT " + columns + " FROM Stock ORDER BY ID", m_connection, LockType::ReadOnly);
    return set;
}

ReportDefinition StockList::layout() {
    ReportDefinition d;
    d.name = "StockList";
    d.margins = {720, 720, 720, 720};
    d.sections = {
        {SectionKind::ReportHeader,
         900,
         {box("shadow", 0, 90, 5130, 540).background(0xC0C0C0),
          box("frame", 90, 180, 5130, 540).background(0xFFFFFF),
          label("title", 90, 180, 4950, 360, "Stock List").bold().points(15.75),
          field("madeOn", 8370, 180, 2430, 270).right()}},
        {SectionKind::PageHeader,
         600,
         {field("heading", 0, 0, 10800, 270), label("lblName", 0, 300, 2700, 270, "Name"),
          label("lblQuantity", 4500, 300, 1260, 270, "Quantity").right(), line("rule", 0, 590, 10800)}},
        {SectionKind::GroupHeader, 300, {label("groupTitle", 0, 0, 5400, 270, "Items").italic()}},
        {SectionKind::Detail,
         300,
         {field("name", 0, 0, 2700, 270).bound("name").bold(),
          field("form", 2700, 0, 900, 270).bound("form").centre(),
          field("quantity", 4500, 0, 1260, 270).bound("quantity", "#0.000").right(),
          field("cost", 5760, 0, 1260, 270).bound("cost", "$ ###,##0.00").right(),
          field("made", 7110, 0, 1890, 270).bound("made"), field("lot", 9090, 0, 1260, 270).bound("lot"),
          field("lacking", 10350, 0, 450, 270, "layout").bound("noSuchColumn")}},
        {SectionKind::GroupFooter,
         600,
         {label("remark", 0, 0, 3000, 540, "A remark that is long enough to need the second line.")}},
        {SectionKind::PageFooter,
         500,
         {line("footRule", 0, 0, 10800), field("page", 7650, 90, 3150, 270).right(),
          label("lastName", 0, 90, 3000, 270)}},
        {SectionKind::ReportFooter,
         400,
         {field("last", 0, 90, 3000, 270).bound("name"),
          field("total", 5760, 90, 1260, 270, "0.00").right()}},
    };
    return d;
}

StockList::StockList(RecordsetPtr rows) : Report(layout()) {
    caption = "Stock List";
    setRows(std::move(rows));
}

void StockList::pageHeaderFormat() {
    *events << u"pageHeader %1"_s.arg(pageNumber());
    if (rows() && !rows()->eof())
        setText("heading", "From " + rows()->value("name").toString() + "\ton");
}

void StockList::detailFormat() {
    *events << "detail";
    if (onDetail)
        onDetail(*this);
}

void StockList::pageFooterFormat() {
    *events << u"pageFooter %1"_s.arg(pageNumber());
    setText("page", u"Page %1"_s.arg(pageNumber()));
}

ReportDefinition StripLabels::layout() {
    ReportDefinition d;
    d.name = "StripLabels";
    d.margins = {0, 0, 720, 720};
    d.detailColumns = 3;
    d.stock = LabelStock{};
    d.font = {"Arial", 8.5};
    d.sections = {{SectionKind::Detail,
                   1440,
                   {field("number", 360, 180, 2520, 180).bold(), field("side", 2880, 180, 900, 180, "side"),
                    label("lblLot", 360, 810, 540, 180, "Lot #"), field("lot", 1080, 810, 2700, 180),
                    barCode("bars", 360, 990, 3420, 180, "0303A0000100")}}};
    return d;
}

StripLabels::StripLabels(int skipped, int count, const QString& lot)
    : Report(layout()), m_skipped(skipped), m_count(count), m_lot(lot) {
    caption = "Strip Labels";
}

void StripLabels::fetchData(bool& eof) { eof = m_passed == m_skipped + m_count; }

void StripLabels::detailFormat() {
    ++m_passed;
    setText("number", u"Label %1"_s.arg(m_passed));
    setText("lot", m_lot);
    setText("bars", m_lot);
    for (const char* name : {"number", "side", "lblLot", "lot", "bars"})
        setVisible(name, m_passed > m_skipped);
}

std::unique_ptr<Report> onePage(std::vector<Control> controls, int height) {
    ReportDefinition d;
    d.name = "OnePage";
    d.sections.push_back({SectionKind::PageHeader, height, std::move(controls)});
    auto report = std::make_unique<Report>(std::move(d));
    report->caption = "One page";
    return report;
}

std::unique_ptr<ReportRun> finished(std::unique_ptr<Report> report) {
    auto run = std::make_unique<ReportRun>(std::move(report));
    EXPECT_TRUE(run->makeAll());
    return run;
}

}  // namespace samples
