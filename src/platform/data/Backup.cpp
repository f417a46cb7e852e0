// Copies by the engine's own backup interface; a file is complete and checked before it gets its name.
#include "platform/data/Backup.h"

#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/Connection.h"
#include "platform/data/Engine.h"

#include <QFile>
#include <fcntl.h>
#include <optional>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

[[noreturn]] void fail(std::int32_t number, const QString& reason) {
    throw RuntimeError(number, reason, u"Database"_s);
}

/// "name.before-restore", with a number behind it where that is taken.
QString freeName(const QString& file) {
    QString name = file + u".before-restore"_s;
    for (int number = 2; QFile::exists(name); ++number)
        name = file + u".before-restore-%1"_s.arg(number);
    return name;
}

/// The file's unfinished journal goes along: beside another file it would spoil that.
bool moveWithJournal(const QString& from, const QString& to) {
    const QString journal = u"-journal"_s;
    if (!QFile::rename(from, to))
        return false;
    return !QFile::exists(from + journal) || QFile::rename(from + journal, to + journal);
}

/// A journal that outlived its file would be played into whatever takes the file's place.
void putJournalAside(const QString& file) {
    const QString journal = u"-journal"_s;
    if (QFile::exists(file + journal) && !QFile::rename(file + journal, freeName(file) + journal))
        fail(error::permissionDenied, u"\"%1\" can't be put aside"_s.arg(file + journal));
}

/// What was at the file's place, kept under a name of its own.
class PutAside {
public:
    /// Where the file system can, the file has both names until another takes its place, so that there is a database
    /// at every moment. One with an unfinished change can't: its journal would be taken for the other's.
    explicit PutAside(const QString& file) : m_file(file) {
        if (!QFile::exists(file)) {
            putJournalAside(file);
            return;
        }
        refuseInUse(file);
        m_name = freeName(file);
        m_hasBoth = !QFile::exists(file + u"-journal"_s) && giveSecondName(file, m_name);
        if (!m_hasBoth && !moveWithJournal(file, m_name))
            fail(error::permissionDenied, u"\"%1\" can't be put aside"_s.arg(file));
    }
    void putBack() const {
        if (m_hasBoth)
            QFile::remove(m_name);
        else if (!m_name.isEmpty())
            moveWithJournal(m_name, m_file);
    }
    /// Another has taken the place: what was there holds the same patients, and is its owner's alone as well.
    void keepToOwner() const {
        for (const QString& file : {m_name, m_name + u"-journal"_s}) {
            if (!m_name.isEmpty() && QFile::exists(file))
                QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner);
        }
    }
    /// Empty when there was nothing.
    const QString& name() const { return m_name; }

private:
    QString m_file, m_name;
    bool m_hasBoth = false;
};

}  // namespace

/// Asked without opening the file as a database: that would roll an unfinished change back.
void refuseInUse(const QString& file) {
    constexpr off_t lockBytes = 0x40000000;  // where the engine's locks lie, whatever is in the file
    constexpr off_t lockCount = 512;
    const int descriptor = ::open(QFile::encodeName(platformPath(file)).constData(), O_RDWR | O_CLOEXEC);
    if (descriptor < 0)
        return;
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = lockBytes;
    lock.l_len = lockCount;
    const bool known = ::fcntl(descriptor, F_GETLK, &lock) == 0;
    ::close(descriptor);
    if (known && lock.l_type != F_UNLCK)
        fail(error::permissionDenied, u"\"%1\" is in use by another program"_s.arg(file));
}

void backupDatabase(const QString& file, const QString& target) {
    const QString path = platformPath(target);
    if (QFile::exists(path))
        fail(error::permissionDenied, u"\"%1\" exists already"_s.arg(path));
    copyDatabase(file, path);
}

SoleUse::SoleUse(const QString& file) : m_lock(lockPathOf(file)) {
    const ProcessLock::Outcome outcome = m_lock.take();
    if (outcome == ProcessLock::Outcome::Held)
        fail(error::permissionDenied, u"\"%1\" is in use by another program"_s.arg(platformPath(file)));
    if (outcome == ProcessLock::Outcome::OtherComputer)
        fail(error::permissionDenied,
             u"\"%1\" was locked on the computer %2. If the program does not run there, delete the file %3."_s
                 .arg(platformPath(file), m_lock.computer(), m_lock.path()));
}

QString restoreDatabase(const QString& backup, const QString& file,
                        const std::function<void(const QString& restored)>& finish) {
    const QString path = platformPath(file);
    const SoleUse sole(path);
    const QString restored = path + u".restored"_s;
    copyDatabase(backup, restored);
    std::optional<PutAside> aside;
    try {
        if (finish)
            finish(restored);
        aside.emplace(path);
        replaceFile(restored, path);
    } catch (const RuntimeError&) {
        if (aside)
            aside->putBack();
        QFile::remove(restored);
        QFile::remove(restored + u"-journal"_s);
        throw;
    }
    aside->keepToOwner();
    return aside->name();
}

QStringList integrityProblems(const QString& file, const Cancelled& cancelled) {
    Connection connection;
    connection.open(u"Data Source="_s + file);
    return connection.engine().problems(cancelled);
}

}  // namespace platform
