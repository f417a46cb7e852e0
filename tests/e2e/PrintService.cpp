// The queues' PDF files come into the one folder that their back end has for users it does not know; what is
// newer than the service is its own, and is taken away with it.
#include "PrintService.h"

#include <QDir>
#include <QFile>
#include <QThread>
#include <cstdio>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

const QString scheduler = u"/usr/sbin/cupsd"_s;
const QString backEnd = u"/usr/lib/cups/backend/cups-pdf"_s;
const QString driver = u"/usr/share/ppd/cups-pdf/CUPS-PDF_noopt.ppd"_s;
const QString resultsFolder = u"/var/spool/cups-pdf/ANONYMOUS"_s;
const QString unknownUser = u"pharmacist-of-a-test"_s;
constexpr int patience = 120'000, longestTurn = 900'000;  // milliseconds

const char* const rules = R"(Listen %1/service
Browsing Off
BrowseLocalProtocols none
DefaultAuthType None
WebInterface No
LogLevel info
<Location />
  Order allow,deny
  Allow all
</Location>
<Policy default>
  <Limit All>
    Order allow,deny
    Allow all
  </Limit>
</Policy>
)";

const char* const places = R"(ServerRoot %1
RequestRoot %1/spool
CacheDir %1/cache
StateDir %1/state
TempDir %1/spool/tmp
AccessLog %1/log
ErrorLog %1/log
PageLog %1/log
User lp
Group lp
SystemGroup root
)";

bool write(const QString& path, const QString& text) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text.toUtf8()) > 0;
}

}  // namespace

QString PrintService::obstacle() {
    for (const QString& part : {scheduler, backEnd, driver, resultsFolder}) {
        if (!QFile::exists(part))
            return u"%1 is missing: cups-daemon, cups-filters and printer-driver-cups-pdf bring it."_s.arg(
                part);
    }
    return ::geteuid() == 0 ? QString() : u"The scheduler only runs the PDF back end as root."_s;
}

PrintService::~PrintService() {
    m_scheduler.terminate();
    if (!m_scheduler.waitForFinished(patience))
        m_scheduler.kill();
    m_scheduler.waitForFinished();
    for (const QFileInfo& file : results())
        QFile::remove(file.filePath());
}

bool PrintService::start() {
    m_turn.setStaleLockTime(0);  // only the death of its holder ends it
    if (!m_turn.tryLock(longestTurn))
        return false;
    m_begin = QDateTime::currentDateTime().addSecs(-1);
    QDir folder(m_folder.path());
    // The filters run as another user and must get at the job's file.
    QFile::setPermissions(m_folder.path(),
                          QFile::permissions(m_folder.path()) | QFile::ExeGroup | QFile::ExeOther);
    if (!folder.mkpath("spool/tmp") || !folder.mkpath("cache") || !folder.mkpath("state") ||
        !write(path("rules"), QString::fromLatin1(rules).arg(m_folder.path())) ||
        !write(path("places"), QString::fromLatin1(places).arg(m_folder.path())))
        return false;
    m_scheduler.setProcessChannelMode(QProcess::ForwardedChannels);
    m_scheduler.start(scheduler, {"-f", "-c", path("rules"), "-s", path("places")});
    for (int waited = 0; waited < patience && m_scheduler.state() != QProcess::NotRunning; waited += 50) {
        if (QFile::exists(path("service")) && run("lpstat", {"-r"}))
            return true;
        m_scheduler.waitForFinished(50);
    }
    QFile log(path("log"));
    if (log.open(QIODevice::ReadOnly))
        std::fputs(log.readAll().constData(), stderr);
    return false;
}

bool PrintService::addQueue(const QString& name) {
    return run("lpadmin", {"-p", name, "-v", "cups-pdf:/", "-P", driver, "-E"});
}

bool PrintService::refuseJobs(const QString& queue) { return run("cupsreject", {queue}); }

QStringList PrintService::jobs(const QString& which) const {
    QString lines;
    run("lpstat", {"-W", which, "-o"}, &lines);
    QStringList names;
    for (const QString& line : lines.split('\n', Qt::SkipEmptyParts))
        names << line.section(' ', 0, 0);
    return names;
}

QStringList PrintService::printed(int count) {
    for (int waited = 0; waited < patience && jobs("completed").size() < count; waited += 100)
        QThread::msleep(100);
    QStringList paths;
    for (const QFileInfo& file : results())
        paths << file.filePath();
    return paths;
}

QFileInfoList PrintService::results() const {
    QFileInfoList found = QDir(resultsFolder).entryInfoList({"*.pdf"}, QDir::Files, QDir::Name);
    found.removeIf([this](const QFileInfo& file) { return file.lastModified() < m_begin; });
    return found;
}

QProcessEnvironment PrintService::environment(QProcessEnvironment base) const {
    base.insert("CUPS_SERVER", path("service"));
    base.insert("CUPS_USER", unknownUser);
    return base;
}

bool PrintService::run(const QString& program, const QStringList& arguments, QString* out) const {
    QProcess process;
    process.setProcessEnvironment(environment(QProcessEnvironment::systemEnvironment()));
    process.start(program, arguments);
    if (!process.waitForFinished(patience))
        return false;
    if (out)
        *out = QString::fromUtf8(process.readAllStandardOutput());
    return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

}  // namespace e2e
