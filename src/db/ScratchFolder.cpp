#include "db/ScratchFolder.h"

#include "platform/basic/RuntimeError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

const QString prefix = u"sorvanto-records-"_s;

/// Below 0 where another one holds it.
int lockFolder(const QString& path) {
    const int folder =
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NOFOLLOW);
    if (folder >= 0 && ::flock(folder, LOCK_EX | LOCK_NB) == 0)
        return folder;
    ::close(folder);
    return -1;
}

/// An empty one may just have been made, and its maker be about to lock it.
bool isLeft(const QFileInfo& folder) {
    return folder.ownerId() == ::getuid() &&
           !QDir(folder.filePath())
                .isEmpty(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

void clearLeftOnes() {
    for (const QFileInfo& each :
         QDir(QDir::tempPath()).entryInfoList({prefix + u'*'}, QDir::Dirs | QDir::NoSymLinks)) {
        if (!isLeft(each))
            continue;
        if (const int lock = lockFolder(each.filePath()); lock >= 0) {
            QDir(each.filePath()).removeRecursively();
            ::close(lock);
        }
    }
}

}  // namespace

ScratchFolder::ScratchFolder() : m_folder(QDir::tempPath() + u'/' + prefix + u"XXXXXX"_s) {
    if (!m_folder.isValid())
        throw platform::RuntimeError(platform::error::permissionDenied, m_folder.errorString(), u"Copy"_s);
    m_lock = lockFolder(m_folder.path());
    clearLeftOnes();
}

ScratchFolder::~ScratchFolder() { ::close(m_lock); }

}  // namespace sorvanto
