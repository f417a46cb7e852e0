// A print service of the test's own: a real CUPS scheduler on a socket in a temporary folder, whose queues
// print into PDF files. The computer's own queues are neither seen nor touched.
#pragma once

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

namespace e2e {

class PrintService {
public:
    PrintService() = default;
    ~PrintService();
    PrintService(const PrintService&) = delete;
    PrintService& operator=(const PrintService&) = delete;

    /// Why there can't be one on this computer; empty when there can.
    static QString obstacle();
    /// Waits for another test's to end. False, with the log on standard error, when the scheduler does not come up.
    bool start();
    /// Adds a queue that writes PDF files.
    bool addQueue(const QString& name);
    /// From now on the queue takes no jobs.
    bool refuseJobs(const QString& queue);
    /// As "Counter-1", oldest first, done or not.
    QStringList jobs(const QString& which = "all") const;
    /// Waits until that many jobs are done; gives the PDF files that came of them, in the order of their names.
    QStringList printed(int count);

    /// What a program needs in its environment to see this service and no other.
    QProcessEnvironment environment(QProcessEnvironment base) const;

private:
    void writeConfiguration() const;
    QString path(const QString& name) const { return m_folder.filePath(name); }
    bool run(const QString& program, const QStringList& arguments, QString* out = nullptr) const;
    QFileInfoList results() const;

    QTemporaryDir m_folder;
    /// Held while it runs: all services of the computer share the folder that the PDF files come into.
    QLockFile m_turn{QDir::temp().filePath(QStringLiteral("sorvanto-print-service.lock"))};
    QProcess m_scheduler;
    QDateTime m_begin;
};

}  // namespace e2e
