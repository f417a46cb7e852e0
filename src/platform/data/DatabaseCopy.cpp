// The unfinished copy bears a name of its own until it is checked.
#include "platform/data/DatabaseCopy.h"

#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/Backup.h"
#include "platform/data/sqlite/FileEngine.h"
#include "platform/data/sqlite/PageCopy.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

const QString source = u"Database"_s;

/// The file under its provisional name; goes with the object unless it has taken its place.
class UnfinishedFile {
public:
    /// Only the owner may read it: it holds patients. Never through a link that lies there.
    explicit UnfinishedFile(const QString& target) : m_target(target), m_path(target + u".part"_s) {
        needPrivateFolder(QFileInfo(m_target).path());
        clear();  // a journal that a killed run has left would be played into the new file
        QFile file(m_path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly, QFile::ReadOwner | QFile::WriteOwner))
            throw RuntimeError(error::permissionDenied, file.errorString() + u": "_s + m_path, source);
    }
    ~UnfinishedFile() {
        if (!m_finished)
            clear();
    }
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;

    const QString& path() const { return m_path; }
    void takePlace() {
        replaceFile(m_path, m_target);
        m_finished = true;
    }

private:
    void clear() const {
        QFile::remove(m_path);
        QFile::remove(m_path + u"-journal"_s);
    }

    QString m_target, m_path;
    bool m_finished = false;
};

}  // namespace

bool copyDatabase(const QString& file, const QString& target, const Cancelled& cancelled) {
    return makeCheckedFile(
        target,
        [&](const QString& copy) {
            const auto source = sqlite::openFile(platformPath(file));
            return sqlite::copyPages(sqlite::handleOf(*source), copy, cancelled);
        },
        cancelled);
}

bool makeCheckedFile(const QString& target, const std::function<bool(const QString& file)>& fill,
                     const Cancelled& cancelled) {
    UnfinishedFile unfinished(platformPath(target));
    if (!fill(unfinished.path()))
        return false;
    const QStringList problems = integrityProblems(unfinished.path(), cancelled);
    if (cancelled && cancelled())
        return false;
    if (!problems.isEmpty())
        throw RuntimeError(error::general, u"The copy is not sound: "_s + problems.first(), source);
    unfinished.takePlace();
    return true;
}

}  // namespace platform
