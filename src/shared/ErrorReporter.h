// Where every unforeseen failure ends: a line of reports beside the program (errors.log) and in the
// main window's strip. Reporting never throws, never blocks and never ends the program.
#pragma once

#include <QDateTime>
#include <QString>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace sorvanto {

/// One report as the user sees it in the list.
struct ErrorReport {
    QDateTime time;
    QString description;
    QString number;
    QString source;
    QString tag;        ///< "frmLog:saveForm"
    QString statement;  ///< failed database statement, if any
    int count = 1;      ///< how often the same report came in this run
};

class ErrorReporter {
public:
    /// Size in bytes at which errors.log is put aside as errors.1.log (and that as errors.2.log ...).
    static constexpr std::int64_t logLimit = 1'000'000;
    /// How many files put aside are kept.
    static constexpr int keptLogs = 3;
    /// How many different reports of one run are kept in memory; the oldest go first.
    static constexpr std::size_t keptReports = 500;

    virtual ~ErrorReporter() = default;

    // Write-only texts of the report's head, set once after the options exist.
    void ReportPath(const QString& folder);
    void ReportProduct(const QString& product);
    void ReportVersion(const QString& version);
    void ReportNote(const QString& note);
    void ReportStore(const QString& store);
    void ReportPhone(const QString& phone);

    virtual void ReportError(const QString& description, const QString& number, const QString& source,
                             std::int32_t statementNumber, const QString& tag, const QString& empty,
                             bool flag1, bool flag2, bool flag3, bool flag4) noexcept;

    /// The statement that the next report belongs to; taken by that report.
    virtual void setFailedStatement(const QString& statement) noexcept;

    /// A line in errors.log that is no report: nobody is told.
    void note(const QString& text) noexcept;

    const std::vector<ErrorReport>& reports() const { return m_reports; }
    /// Called for each report; one that came before in this run has its count, and the time of the first.
    void onReport(std::function<void(const ErrorReport&)> callback);
    /// Why errors.log could not be written, empty while it can.
    QString logFailure() const { return m_logFailure; }

private:
    /// The counted report; nothing when it is a new one.
    std::optional<ErrorReport> countRepeat(const ErrorReport& report);
    void announce(const ErrorReport& report);
    void append(const ErrorReport& report);
    void write(const QString& text);
    QString head() const;

    QString m_path, m_product, m_version, m_note, m_store, m_phone, m_failedStatement, m_logFailure;
    std::vector<ErrorReport> m_reports;
    std::vector<std::function<void(const ErrorReport&)>> m_callbacks;
};

}  // namespace sorvanto
