// The program's folder, paths, and writing a file whole or not at all.
#include "platform/basic/Paths.h"

#include "platform/basic/Descriptor.h"
#include "platform/basic/RuntimeError.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <limits>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

QString& chosenFolder() {
    static QString folder;
    return folder;
}

QString folderOfExecutable() {
    std::error_code failure;
    const auto executable = std::filesystem::read_symlink("/proc/self/exe", failure);
    return QString::fromStdString(executable.parent_path().string());
}

std::int32_t numberOf(int code) {
    if (code == EACCES || code == EPERM || code == EROFS)
        return error::permissionDenied;
    return code == ENOSPC || code == EDQUOT || code == EFBIG ? error::diskFull : error::deviceIo;
}

QString reasonOf(int code) { return QString::fromLocal8Bit(std::strerror(code)); }

[[noreturn]] void throwWriteError(int code, const QString& path) {
    throw RuntimeError(numberOf(code), u"Can't write %1: %2"_s.arg(path, reasonOf(code)));
}

bool writeAll(int file, const QByteArray& content) {
    qsizetype done = 0;
    while (done < content.size()) {
        const auto count =
            ::write(file, content.constData() + done, static_cast<std::size_t>(content.size() - done));
        if (count < 0 && errno != EINTR)
            return false;
        done += std::max<qsizetype>(count, 0);
    }
    return true;
}

/// A device, pipe or the like is written straight: there is nothing to be renamed over. Never waits for a reader.
void writeStraight(const QString& path, const QByteArray& target, const QByteArray& content) {
    Descriptor file(::open(target.constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC));
    if (file.number() < 0 || !writeAll(file.number(), content) || !file.close())
        throwWriteError(errno, path);
}

/// The temporary file takes over what the old file had: its rights and, where allowed, its owner.
void takeOver(int file, const struct stat* old, Readers readers) {
    mode_t rights = 0600;
    if (old) {
        [[maybe_unused]] const int owner = ::fchown(file, old->st_uid, old->st_gid);
        rights = old->st_mode & (readers == Readers::Owner ? 0700 : 07777);
    } else if (readers == Readers::UsersChoice) {
        const mode_t mask = ::umask(0);
        ::umask(mask);
        rights = 0666 & ~mask;
    }
    ::fchmod(file, rights);
}

/// What others could read until now is its owner's alone from now on; where that isn't allowed it stays as it is.
void keepToOwner(int file) {
    struct stat known {};
    if (::fstat(file, &known) == 0 && (S_ISREG(known.st_mode) || S_ISDIR(known.st_mode)) &&
        (known.st_mode & 077) != 0)
        ::fchmod(file, known.st_mode & 0700);
}

/// Makes the new name itself last; a file system that can't do that has done what it can.
void flushFolder(const QByteArray& target) {
    const QByteArray folder = target.left(std::max<qsizetype>(target.lastIndexOf('/'), 0)) + '/';
    Descriptor descriptor(::open(target.contains('/') ? folder.constData() : ".", O_RDONLY | O_CLOEXEC));
    if (descriptor.number() >= 0)
        ::fsync(descriptor.number());
}

void writeBeside(const QString& path, const QByteArray& target, const QByteArray& content,
                 const struct stat* old, Readers readers) {
    QByteArray temporary = target + ".XXXXXX";
    Descriptor file(::mkostemp(temporary.data(), O_CLOEXEC));
    if (file.number() < 0)
        throwWriteError(errno, path);
    takeOver(file.number(), old, readers);
    const bool written = writeAll(file.number(), content) && ::fsync(file.number()) == 0 && file.close();
    if (!written || ::rename(temporary.constData(), target.constData()) != 0) {
        const int code = errno;
        ::unlink(temporary.constData());
        throwWriteError(code, path);
    }
    flushFolder(target);
}

QByteArray readAll(int file, qint64 size) {
    QByteArray content(size, Qt::Uninitialized);
    qint64 done = 0;
    while (done < size) {
        const auto count = ::read(file, content.data() + done, static_cast<std::size_t>(size - done));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            throw RuntimeError(error::deviceIo, reasonOf(errno));
        if (count == 0)
            break;
        done += count;
    }
    content.truncate(done);
    return content;
}

QString megabytes(qint64 bytes) { return QString::number((bytes + 999'999) / 1'000'000); }

/// Empty when it may be opened.
QString unfitness(const struct stat& known, qint64 largest) {
    if (!S_ISREG(known.st_mode))
        return u"it is no regular file"_s;
    if (known.st_size > largest)
        return u"it has %1 MB, at most %2 are read"_s.arg(megabytes(known.st_size), megabytes(largest));
    return {};
}

/// A link by which a file of another folder would be written.
bool leadsElsewhere(const QFileInfo& file) {
    return file.isSymLink() && file.exists() &&
           QFileInfo(file.canonicalFilePath()).path() != QFileInfo(file.path()).canonicalFilePath();
}

/// With its parents. The system's number of the failure; 0 when the folder is there at the end.
int makeFolder(const QString& path) {
    const QString native = platformPath(path);
    if (QFileInfo(native).isDir())
        return 0;
    const QFileInfo parent(QFileInfo(native).path());
    if (const int code = parent.isDir() ? 0 : makeFolder(parent.filePath()); code != 0)
        return code;
    const QByteArray name = QFile::encodeName(native);
    if (::mkdir(name.constData(), 0700) != 0) {
        const int code = errno;  // another program may have been quicker
        return code == EEXIST && QFileInfo(native).isDir() ? 0 : code;
    }
    flushFolder(name);
    return 0;
}

}  // namespace

QByteArray readFile(const QString& path, qint64 largest) {
    const Descriptor file(
        ::open(QFile::encodeName(platformPath(path)).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (file.number() < 0)
        throw RuntimeError(errno == ENOENT ? error::fileNotFound : error::permissionDenied, reasonOf(errno));
    struct stat known {};
    ::fstat(file.number(), &known);
    if (const QString why = unfitness(known, largest); !why.isEmpty())
        throw RuntimeError(error::deviceIo, why);
    return readAll(file.number(), known.st_size);
}

QString unfitness(const QString& path, qint64 largest) {
    const QString native = platformPath(path);
    if (leadsElsewhere(QFileInfo(native)))
        return u"it is a link to another folder"_s;
    struct stat known {};
    return ::stat(QFile::encodeName(native).constData(), &known) == 0 ? unfitness(known, largest) : QString();
}

void appendToFile(const QString& path, const QByteArray& content) {
    const QString native = platformPath(path);
    if (const QString why = unfitness(native, std::numeric_limits<qint64>::max()); !why.isEmpty())
        throw RuntimeError(error::deviceIo, u"Can't write %1: %2"_s.arg(path, why));
    Descriptor file(::open(QFile::encodeName(native).constData(),
                           O_WRONLY | O_APPEND | O_CREAT | O_NONBLOCK | O_CLOEXEC, 0600));
    if (file.number() < 0)
        throwWriteError(errno, path);
    keepToOwner(file.number());
    if (!writeAll(file.number(), content) || !file.close())
        throwWriteError(errno, path);
}

void keepFolderToOwner(const QString& path) {
    const Descriptor folder(::open(QFile::encodeName(platformPath(path)).constData(),
                                   O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (folder.number() >= 0)
        keepToOwner(folder.number());
}

void replaceFile(const QString& finished, const QString& path) {
    const QByteArray target = QFile::encodeName(platformPath(path));
    if (::rename(QFile::encodeName(platformPath(finished)).constData(), target.constData()) != 0)
        throwWriteError(errno, path);
    flushFolder(target);
}

bool giveSecondName(const QString& path, const QString& name) {
    const QByteArray second = QFile::encodeName(platformPath(name));
    if (::link(QFile::encodeName(platformPath(path)).constData(), second.constData()) != 0)
        return false;
    flushFolder(second);
    return true;
}

bool makePrivateFolder(const QString& path) { return makeFolder(path) == 0; }

void needPrivateFolder(const QString& path) {
    if (const int code = makeFolder(path); code != 0)
        throw RuntimeError(numberOf(code), u"The folder %1 can't be made: %2"_s.arg(path, reasonOf(code)));
}

QString programFolder() {
    static const QString own = folderOfExecutable();
    return chosenFolder().isEmpty() ? own : chosenFolder();
}

void setProgramFolder(const QString& folder) {
    chosenFolder() = folder;
    while (chosenFolder().size() > 1 && chosenFolder().endsWith(u'/'))
        chosenFolder().chop(1);
}

QString platformPath(const QString& path) {
    QString result = path;
    return result.replace(u'\\', u'/');
}

bool fileExists(const QString& path) {
    const QFileInfo info(platformPath(path));
    return info.exists() && !info.isDir();
}

void writeFile(const QString& path, const QByteArray& content, Readers readers) {
    const QString native = platformPath(path);
    const QFileInfo info(native);
    if (readers == Readers::Owner && leadsElsewhere(info))
        throw RuntimeError(error::permissionDenied,
                           u"Can't write %1: it is a link to another folder"_s.arg(path));
    // Through a link, so that the file it names is replaced and not the link.
    const QByteArray target = QFile::encodeName(info.exists() ? info.canonicalFilePath() : native);
    struct stat old {};
    const bool exists = ::stat(target.constData(), &old) == 0;
    if (exists && S_ISDIR(old.st_mode))
        throwWriteError(EISDIR, path);
    if (exists && !S_ISREG(old.st_mode))
        return writeStraight(path, target, content);
    // A rename would get past a file that is meant to be read only.
    if (exists && ::faccessat(AT_FDCWD, target.constData(), W_OK, AT_EACCESS) != 0)
        throwWriteError(errno, path);
    writeBeside(path, target, content, exists ? &old : nullptr, readers);
}

}  // namespace platform
