// Keeps the reports of this run and appends them to errors.log: the first of a kind in full,
// each repeat as one line.
#include "shared/ErrorReporter.h"

#include "platform/basic/Dates.h"
#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

/// No text of a report takes more room in the file than this.
constexpr qsizetype longestText = 20'000;

bool sameReport(const ErrorReport& left, const ErrorReport& right) {
    return left.tag == right.tag && left.number == right.number && left.description == right.description &&
           left.source == right.source && left.statement == right.statement;
}

/// One line "Name: text"; further lines of the text are indented below it.
QString line(const QString& name, const QString& text) {
    if (text.isEmpty())
        return {};
    QString shown = text.left(longestText);
    if (shown.size() < text.size())
        shown += u"..."_s;
    shown.replace(u"\r\n"_s, u"\n"_s);
    shown.replace('\r'_L1, '\n'_L1);
    shown.replace('\n'_L1, u"\n               "_s);
    return u"  %1%2\n"_s.arg((name + ':'_L1).leftJustified(13), shown);
}

QString logName(const QString& folder, int number) {
    const auto name = number == 0 ? u"errors.log"_s : u"errors.%1.log"_s.arg(number);
    return platform::platformPath(folder + u"\\"_s + name);
}

void putAside(const QString& folder) {
    QFile::remove(logName(folder, ErrorReporter::keptLogs));
    for (int number = ErrorReporter::keptLogs - 1; number >= 0; --number)
        QFile::rename(logName(folder, number), logName(folder, number + 1));
}

}  // namespace

void ErrorReporter::ReportPath(const QString& folder) { m_path = folder; }
void ErrorReporter::ReportProduct(const QString& product) { m_product = product; }
void ErrorReporter::ReportVersion(const QString& version) { m_version = version; }
void ErrorReporter::ReportNote(const QString& note) { m_note = note; }
void ErrorReporter::ReportStore(const QString& store) { m_store = store; }
void ErrorReporter::ReportPhone(const QString& phone) { m_phone = phone; }

void ErrorReporter::onReport(std::function<void(const ErrorReport&)> callback) {
    m_callbacks.push_back(std::move(callback));
}

void ErrorReporter::setFailedStatement(const QString& statement) noexcept { m_failedStatement = statement; }

void ErrorReporter::ReportError(const QString& description, const QString& number, const QString& source,
                                std::int32_t, const QString& tag, const QString&, bool, bool, bool,
                                bool) noexcept {
    try {
        const ErrorReport report{platform::now(), description, number,
                                 source,          tag,         std::exchange(m_failedStatement, QString())};
        if (const auto repeated = countRepeat(report))
            return announce(*repeated);
        if (m_reports.size() >= keptReports)
            m_reports.erase(m_reports.begin());
        m_reports.push_back(report);
        append(report);
        announce(report);
    } catch (...) {
        std::fputs("An error report could not be kept.\n", stderr);
    }
}

void ErrorReporter::note(const QString& text) noexcept {
    try {
        write(u"%1  %2\n"_s.arg(platform::storedDate(platform::now()), text));
    } catch (...) {
        std::fputs("A note could not be kept.\n", stderr);
    }
}

std::optional<ErrorReport> ErrorReporter::countRepeat(const ErrorReport& report) {
    const auto found = std::find_if(m_reports.begin(), m_reports.end(),
                                    [&](const ErrorReport& kept) { return sameReport(kept, report); });
    if (found == m_reports.end())
        return {};
    ++found->count;
    write(u"%1  %2  error %3, for the %4. time in this run\n"_s
              .arg(platform::storedDate(report.time), report.tag, report.number)
              .arg(found->count));
    return *found;
}

void ErrorReporter::announce(const ErrorReport& report) {
    const auto callbacks = m_callbacks;  // one of them may add another
    for (const auto& callback : callbacks) {
        try {
            callback(report);
        } catch (...) {
            std::fputs("A listener of error reports failed.\n", stderr);
        }
    }
}

void ErrorReporter::append(const ErrorReport& report) {
    write(u"%1  %2  error %3\n"_s.arg(platform::storedDate(report.time), report.tag, report.number) +
          line(u"Description"_s, report.description) + line(u"Source"_s, report.source) +
          line(u"Statement"_s, report.statement) + head());
}

QString ErrorReporter::head() const {
    return line(u"Product"_s, m_product) + line(u"Version"_s, m_version) + line(u"Note"_s, m_note) +
           line(u"Store"_s, m_store) + line(u"Phone"_s, m_phone);
}

void ErrorReporter::write(const QString& text) {
    const QString folder = m_path.isEmpty() ? platform::programFolder() : m_path;
    const QByteArray bytes = text.toUtf8();
    const QString log = logName(folder, 0);
    if (const qint64 size = QFileInfo(log).size(); size > 0 && size + bytes.size() > logLimit)
        putAside(folder);
    m_logFailure.clear();
    try {
        platform::appendToFile(log, bytes);
    } catch (const platform::RuntimeError& failure) {
        m_logFailure = failure.description();
    }
}

}  // namespace sorvanto
