// The system's file calls of this test program, and what is kept of them.
#include "Disk.h"

#include <QDir>
#include <cerrno>
#include <cstdarg>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <mutex>
#include <optional>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>

using namespace Qt::StringLiterals;

namespace fault {
namespace {

std::recursive_mutex guard;
Disk* active = nullptr;
thread_local int unseen = 0;

/// The watched disk for the length of one call; empty when nothing is watched here.
class Watched {
public:
    Watched() : m_lock(guard, std::defer_lock) {
        if (unseen > 0 || !active)
            return;
        m_lock.lock();
        m_disk = active;
    }
    Disk* operator->() const { return m_disk; }
    explicit operator bool() const { return m_disk != nullptr; }

private:
    std::unique_lock<std::recursive_mutex> m_lock;
    Disk* m_disk = nullptr;
};

bool needsRoom(Act act) {
    return act == Act::Create || act == Act::Write || act == Act::Truncate || act == Act::MakeFolder;
}

}  // namespace

const char* nameOf(Act act) {
    constexpr const char* names[]{"open",   "create", "write",  "truncate",    "sync", "sync folder",
                                  "rename", "link",   "remove", "make folder", "lock"};
    return names[static_cast<int>(act)];
}

Disk::Unseen::Unseen() { ++unseen; }
Disk::Unseen::~Unseen() { --unseen; }

Disk::Disk(QString folder) : m_folder(std::move(folder)) {
    const Unseen own;
    m_start = Image::of(m_folder);
    m_names = m_start.names;
    m_files = static_cast<int>(m_names.size());
    const std::scoped_lock lock(guard);
    active = this;
}

Disk::~Disk() {
    const std::scoped_lock lock(guard);
    active = nullptr;
}

QString Disk::below(const char* path) const {
    const QString clean = QDir::cleanPath(QString::fromLocal8Bit(path));
    if (clean == m_folder)
        return u""_s;
    return clean.startsWith(m_folder + '/'_L1) ? clean.mid(m_folder.size() + 1) : QString();
}

int Disk::fileOf(const QString& name) {
    const auto known = m_names.find(name);
    if (known != m_names.end())
        return known->second;
    return m_names[name] = m_files++;
}

void Disk::keep(int descriptor, const QString& name, bool folder) {
    m_open[descriptor] = {name, folder ? -1 : fileOf(name)};
}

/// One that was opened before the watching began is known by the name that it has now.
const Disk::Open* Disk::opened(int descriptor) {
    if (const auto known = m_open.find(descriptor); known != m_open.end())
        return &known->second;
    char path[4096];
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    const ssize_t length = ::readlink(link.c_str(), path, sizeof path - 1);
    if (length <= 0)
        return nullptr;
    path[length] = '\0';
    const QString name = below(path);
    if (name.isNull() || !m_names.contains(name))
        return nullptr;
    keep(descriptor, name, false);
    return &m_open[descriptor];
}

bool Disk::failsToo(Act act) const {
    if (!m_plan.lasting)
        return false;
    if (m_plan.code == ENOSPC)
        return needsRoom(act);
    return act == m_refused;
}

bool Disk::refuses(Act act) {
    const bool planned = calls() == m_plan.call;
    m_calls.push_back(act);
    if (!planned && !(m_struck && failsToo(act)))
        return false;
    if (!m_struck)
        m_refused = act;
    m_struck = true;
    errno = m_plan.code;
    return true;
}

void Disk::done(Operation operation) {
    operation.call = calls() - 1;
    if (operation.act == Act::Rename || operation.act == Act::Link) {
        operation.file = fileOf(operation.name);
        m_names[operation.to] = operation.file;
        if (operation.act == Act::Rename)
            m_names.erase(operation.name);
    } else if (operation.act == Act::Remove) {
        m_names.erase(operation.name);
    }
    m_operations.push_back(std::move(operation));
}

// ---- what the system's calls become ----------------------------------------------------------------------

namespace {

int realOpen(const char* path, int flags, unsigned mode) {
    return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

int watchedOpen(const char* path, int flags, unsigned mode) {
    const Watched disk;
    const QString name = disk ? disk->below(path) : QString();
    if (name.isNull())
        return realOpen(path, flags, mode);
    if ((flags & O_TMPFILE) == O_TMPFILE) {
        errno = EOPNOTSUPP;  // so that every file has a name from its beginning
        return -1;
    }
    const bool creates = (flags & O_CREAT) != 0 && !disk->exists(name);
    if (disk->refuses(creates ? Act::Create : Act::Open))
        return -1;
    const int descriptor = realOpen(path, flags, mode);
    if (descriptor < 0)
        return descriptor;
    struct stat what {};
    disk->keep(descriptor, name, ::fstat(descriptor, &what) == 0 && S_ISDIR(what.st_mode));
    if (creates)
        disk->done({.act = Act::Create, .name = name, .file = disk->fileOf(name)});
    if (!creates && (flags & O_TRUNC) != 0)
        disk->done({.act = Act::Truncate, .name = name, .file = disk->fileOf(name)});
    return descriptor;
}

ssize_t watchedWrite(int descriptor, const void* bytes, std::size_t count, std::optional<off_t> offset) {
    const Watched disk;
    const Disk::Open* open = disk ? disk->opened(descriptor) : nullptr;
    if (open && disk->refuses(Act::Write))
        return -1;
    const auto written = offset ? syscall(SYS_pwrite64, descriptor, bytes, count, *offset)
                                : syscall(SYS_write, descriptor, bytes, count);
    if (open && written > 0)
        disk->done({.act = Act::Write,
                    .name = open->name,
                    .file = open->file,
                    .offset = offset ? *offset : ::lseek(descriptor, 0, SEEK_CUR) - written,
                    .bytes = QByteArray(static_cast<const char*>(bytes), written)});
    return written;
}

int watchedTruncate(int descriptor, off_t size) {
    const Watched disk;
    const Disk::Open* open = disk ? disk->opened(descriptor) : nullptr;
    if (open && disk->refuses(Act::Truncate))
        return -1;
    const int code = static_cast<int>(syscall(SYS_ftruncate, descriptor, size));
    if (open && code == 0)
        disk->done({.act = Act::Truncate, .name = open->name, .file = open->file, .offset = size});
    return code;
}

int watchedSync(int descriptor, long call) {
    const Watched disk;
    const Disk::Open* open = disk ? disk->opened(descriptor) : nullptr;
    const Act act = open && open->file < 0 ? Act::SyncFolder : Act::Sync;
    if (open && disk->refuses(act))
        return -1;
    const int code = static_cast<int>(syscall(call, descriptor));
    if (open && code == 0)
        disk->done({.act = act, .name = open->name, .file = open->file});
    return code;
}

/// Of a change to names: to is empty where there is but one.
template <class Call>
int watchedNames(Act act, const char* path, const char* to, Call call) {
    const Watched disk;
    const QString name = disk ? disk->below(path) : QString();
    if (name.isNull())
        return call();
    if (disk->refuses(act))
        return -1;
    const int code = call();
    if (code == 0)
        disk->done({.act = act, .name = name, .to = to ? disk->below(to) : QString()});
    return code;
}

int watchedRename(const char* from, const char* to, unsigned flags) {
    return watchedNames(Act::Rename, from, to, [&] {
        return static_cast<int>(syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, flags));
    });
}

int watchedControl(int descriptor, int command, void* argument) {
    const Watched disk;
    const auto* wish = static_cast<const struct flock*>(argument);
    if (disk && command == F_SETLK && wish->l_type != F_UNLCK && disk->opened(descriptor) &&
        disk->refuses(Act::Lock))
        return -1;
    return static_cast<int>(syscall(SYS_fcntl, descriptor, command, argument));
}

unsigned modeOf(int flags, va_list arguments) { return flags & O_CREAT ? va_arg(arguments, unsigned) : 0; }

}  // namespace
}  // namespace fault

// ---- in the place of the system's own --------------------------------------------------------------------

using namespace fault;

extern "C" {

int open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const unsigned mode = modeOf(flags, arguments);
    va_end(arguments);
    return watchedOpen(path, flags, mode);
}

int open64(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const unsigned mode = modeOf(flags, arguments);
    va_end(arguments);
    return watchedOpen(path, flags, mode);
}

int mkostemp(char* pattern, int flags) {
    const std::size_t length = std::strlen(pattern);
    static unsigned counter = 0;
    for (;;) {
        const QByteArray tail = QByteArray::number(++counter, 36).rightJustified(6, '0');
        std::memcpy(pattern + length - 6, tail.constData(), 6);
        const int descriptor = watchedOpen(pattern, O_RDWR | O_CREAT | O_EXCL | flags, 0600);
        if (descriptor >= 0 || errno != EEXIST)
            return descriptor;
    }
}

int close(int descriptor) {
    if (const Watched disk; disk)
        disk->forget(descriptor);
    return static_cast<int>(syscall(SYS_close, descriptor));
}

ssize_t write(int descriptor, const void* bytes, std::size_t count) {
    return watchedWrite(descriptor, bytes, count, std::nullopt);
}
ssize_t pwrite(int descriptor, const void* bytes, std::size_t count, off_t offset) {
    return watchedWrite(descriptor, bytes, count, offset);
}
ssize_t pwrite64(int descriptor, const void* bytes, std::size_t count, off64_t offset) {
    return watchedWrite(descriptor, bytes, count, offset);
}
int ftruncate(int descriptor, off_t size) noexcept { return watchedTruncate(descriptor, size); }
int ftruncate64(int descriptor, off64_t size) noexcept { return watchedTruncate(descriptor, size); }
int fsync(int descriptor) { return watchedSync(descriptor, SYS_fsync); }
int fdatasync(int descriptor) { return watchedSync(descriptor, SYS_fdatasync); }

int rename(const char* from, const char* to) noexcept { return watchedRename(from, to, 0); }
int renameat2(int, const char* from, int, const char* to, unsigned flags) noexcept {
    return watchedRename(from, to, flags);  // Qt gives whole paths
}
int link(const char* from, const char* to) noexcept {
    return watchedNames(Act::Link, from, to, [&] { return static_cast<int>(syscall(SYS_link, from, to)); });
}
int unlink(const char* path) noexcept {
    return watchedNames(Act::Remove, path, nullptr,
                        [&] { return static_cast<int>(syscall(SYS_unlink, path)); });
}
int mkdir(const char* path, mode_t mode) noexcept {
    return watchedNames(Act::MakeFolder, path, nullptr,
                        [&] { return static_cast<int>(syscall(SYS_mkdir, path, mode)); });
}

int fcntl(int descriptor, int command, ...) {
    va_list arguments;
    va_start(arguments, command);
    void* argument = va_arg(arguments, void*);
    va_end(arguments);
    return watchedControl(descriptor, command, argument);
}
int fcntl64(int descriptor, int command, ...) {
    va_list arguments;
    va_start(arguments, command);
    void* argument = va_arg(arguments, void*);
    va_end(arguments);
    return watchedControl(descriptor, command, argument);
}

/// Nobody waits for a lock that is refused for good.
int usleep(useconds_t microseconds) {
    if (const Watched disk; disk && disk->locksAreRefused())
        return 0;
    const struct timespec pause { microseconds / 1'000'000, microseconds % 1'000'000 * 1000 };
    return static_cast<int>(syscall(SYS_nanosleep, &pause, nullptr));
}

}  // extern "C"
