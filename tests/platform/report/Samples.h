// Made-up reports that use every part of the engine, and rows for them from a real file.
#pragma once

#include "platform/data/Recordset.h"
#include "platform/report/Report.h"
#include "platform/report/ReportRun.h"

#include <QStringList>
#include <QTemporaryDir>
#include <functional>
#include <memory>

namespace samples {

/// A file with one table, Stock: name, form, quantity, cost, made, lot.
class StockFile {
public:
    StockFile();
    void add(const QString& values);
    /// So many rows "Item 1", "Item 2" ...
    void addMany(int count);
    platform::RecordsetPtr rows(const QString& columns = "*");
    QString path() const { return m_folder.filePath("stock.db"); }

private:
    QTemporaryDir m_folder;
    platform::ConnectionPtr m_connection;
};

/// A stock list with all seven sections. Every event writes its name into `events`.
class StockList : public platform::Report {
public:
    explicit StockList(platform::RecordsetPtr rows);
    static platform::ReportDefinition layout();

    std::shared_ptr<QStringList> events = std::make_shared<QStringList>();
    /// Called in detailFormat, for tests that let an event fail.
    std::function<void(StockList&)> onDetail;

protected:
    void reportStart() override { *events << "reportStart"; }
    void reportHeaderFormat() override { *events << "reportHeader"; }
    void pageHeaderFormat() override;
    void groupHeaderFormat() override { *events << "groupHeader"; }
    void detailFormat() override;
    void groupFooterFormat() override { *events << "groupFooter"; }
    void reportFooterFormat() override { *events << "reportFooter"; }
    void pageFooterFormat() override;
    void terminate() override { *events << "terminate"; }
};

/// Labels in three columns that count themselves; the first `skipped` places stay white.
class StripLabels : public platform::Report {
public:
    StripLabels(int skipped, int count, const QString& lot);
    static platform::ReportDefinition layout();

protected:
    void fetchData(bool& eof) override;
    void detailFormat() override;

private:
    int m_skipped, m_count, m_passed = 0;
    QString m_lot;
};

/// One page with the given controls in its page header.
std::unique_ptr<platform::Report> onePage(std::vector<platform::Control> controls, int height = 12000);

/// Runs a report to its end and gives the run.
std::unique_ptr<platform::ReportRun> finished(std::unique_ptr<platform::Report> report);

}  // namespace samples
