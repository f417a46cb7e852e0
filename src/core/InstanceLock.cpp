#include "core/InstanceLock.h"

#include "mixer/PanelTexts.h"
#include "platform/basic/Paths.h"
#include "shared/Translator.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::ProcessLock;

/// what: the folder or the database, as the user knows it.
InstanceState take(ProcessLock& lock, const QString& what) {
    const QString shown = QDir::toNativeSeparators(platform::platformPath(what));
    InstanceState state;
    switch (lock.take()) {
    case ProcessLock::Outcome::Taken:
        break;
    case ProcessLock::Outcome::Held:
        state.runs = true;
        break;
    case ProcessLock::Outcome::OtherComputer:
        state.readingOnly =
            filledIn(translated(u"%1 was locked on the computer %2. If the program does not run "
                                "there, delete the file %3."_s),
                     {shown, lock.computer(), lock.path()});
        break;
    case ProcessLock::Outcome::Impossible:
        state.readingOnly = filledIn(
            translated(u"%1 can not be locked, since the file %2 can not be made."_s), {shown, lock.path()});
        break;
    }
    return state;
}

}  // namespace

InstanceLock::~InstanceLock() {
    wait();
    if (m_firstVersion >= 0)
        ::close(m_firstVersion);
}

// Held as well, so that such a program is kept out in its turn.
bool InstanceLock::firstVersionRuns(const QString& folder) {
    if (m_firstVersion >= 0)
        return false;
    const QByteArray path = QFile::encodeName(platform::platformPath(folder) + u"/sorvanto.lock"_s);
    const int file = ::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0600);
    if (file < 0)
        return false;
    if (::flock(file, LOCK_EX | LOCK_NB) == 0) {
        m_firstVersion = file;
        return false;
    }
    const bool held = errno == EWOULDBLOCK;
    ::close(file);
    return held;
}

ProcessLock& InstanceLock::folderLock(const QString& folder) {
    if (!m_folder)
        m_folder.emplace(folder + u"/running.lock"_s);
    return *m_folder;
}

ProcessLock& InstanceLock::databaseLock(const QString& file) {
    const QString path = platform::lockPathOf(file);
    if (!m_database || m_database->path() != path)
        m_database.emplace(path);
    return *m_database;
}

ProcessLock* InstanceLock::identityLock(const QString& identity) {
    const QString place = qEnvironmentVariable("XDG_RUNTIME_DIR");
    const QString path = u"%1/sorvanto-%2.lock"_s.arg(place, identity);
    if (m_identity && m_identity->path() != path)
        m_identity.reset();
    if (identity.isEmpty() || !QFileInfo(place).isDir())
        return nullptr;
    if (!m_identity)
        m_identity.emplace(path);
    return &*m_identity;
}

// Nothing is kept of the answers: who asks for a lock that this process holds already is told so.
void InstanceLock::begin(const QString& folder, const QString& database, const QString& identity) {
    wait();
    ProcessLock& ofFolder = folderLock(folder);
    ProcessLock* const ofDatabase = database.isEmpty() ? nullptr : &databaseLock(database);
    ProcessLock* const ofIdentity = identityLock(identity);
    m_begun = std::async(std::launch::async, [this, &ofFolder, ofDatabase, ofIdentity, folder] {
        if (ofFolder.take() != ProcessLock::Outcome::Taken || firstVersionRuns(folder))
            return;
        std::future<ProcessLock::Outcome> beside;
        if (ofIdentity)
            beside = std::async(std::launch::async, [ofIdentity] { return ofIdentity->take(); });
        if (ofDatabase)
            ofDatabase->take();
    });
}

// What the threads could not do is done by who asks for it.
void InstanceLock::wait() {
    if (m_begun.valid())
        m_begun.wait();
}

InstanceState InstanceLock::takeFolder(const QString& folder) {
    wait();
    const InstanceState state = take(folderLock(folder), folder);
    return !state.runs && firstVersionRuns(folder) ? InstanceState(true) : state;
}

InstanceState InstanceLock::takeDatabase(const QString& file) {
    wait();
    return take(databaseLock(file), file);
}

InstanceState InstanceLock::takeIdentity(const QString& identity) {
    wait();
    ProcessLock* const lock = identityLock(identity);
    InstanceState state;
    if (lock && lock->take() == ProcessLock::Outcome::Held)
        state.readingOnly =
            translated(u"Another program has this database open under another name, or a copy of it."_s);
    return state;
}

}  // namespace sorvanto
