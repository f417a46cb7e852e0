#include "db/CopyCommand.h"

#include "db/Archive.h"
#include "db/DatabaseCheck.h"
#include "db/HistoryEnd.h"
#include "db/RecordsCopy.h"
#include "db/ScratchFolder.h"
#include "history/HistoryChain.h"
#include "platform/data/Connection.h"
#include "platform/data/DataLocation.h"

#include <QElapsedTimer>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

/// Writes "43 %" over itself, once a moment has passed.
class ProgressLine {
public:
    explicit ProgressLine(QTextStream& stream) : m_stream(stream) { m_running.start(); }
    ~ProgressLine() {
        if (m_shown >= 0)
            m_stream << '\n' << Qt::flush;
    }
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    void show(std::int64_t done, std::int64_t all) {
        constexpr qint64 moment = 1000;  // milliseconds
        const auto percent = all > 0 ? static_cast<int>(100 * done / all) : 0;
        if (percent == m_shown || !m_running.hasExpired(moment))
            return;
        m_shown = percent;
        m_stream << '\r' << percent << " %" << Qt::flush;
    }

private:
    QTextStream& m_stream;
    QElapsedTimer m_running;
    int m_shown = -1;
};

QStringList fileProblems(const QString& file, const QString& archive, const QStringList& folders) {
    const QStringList problems = checkDatabase(file) + historyEndProblems(file, folders);
    return archive.isEmpty() ? problems : problems + formerProblems(file, archive);
}

QStringList serverProblems(const QString& address, const QString& archive) {
    const ScratchFolder scratch;
    const QString moment = scratch.filePath(u"records.mdb"_s);
    copyToFile(address, moment);
    platform::Connection server;
    server.open(u"Data Source="_s + address);
    return server.engine().problems({}) + chainProblems(server.engine()) +
           fileProblems(moment, archive, possibleFolders(address));
}

}  // namespace

int copyCommand(const QString& from, const QString& to, QTextStream& out, QTextStream& err,
                const platform::Cancelled& cancelled) {
    ProgressLine line(err);
    const CopiedRecords copied = copyRecords(from, to, [&](std::int64_t done, std::int64_t all) {
        line.show(done, all);
        return !cancelled || !cancelled();
    });
    const QString name = platform::DataLocation(to).shownName();
    if (!copied.whole) {
        err << "sorvanto-db: stopped; nothing was changed at " << name << '\n';
        return 1;
    }
    for (const QString& table : copied.leftOut)
        out << "Table " << table << " is no table of the records, and was not copied.\n";
    out << name << ": " << copied.rows << " records with their history, compared with "
        << platform::DataLocation(from).shownName() << '\n';
    return 0;
}

QStringList problemsOf(const QString& location, const QString& archive) {
    if (platform::DataLocation(location).isServer())
        return serverProblems(location, archive);
    return fileProblems(location, archive, possibleFolders(location));
}

}  // namespace sorvanto
