// Replaying operations, whole or in part.
#include "Image.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace fault {
namespace {

constexpr qsizetype sector = 512;

QString folderOf(const QString& name) {
    const qsizetype slash = name.lastIndexOf('/'_L1);
    return slash < 0 ? QString() : name.left(slash);
}

bool isOfContent(Act act) { return act == Act::Write || act == Act::Truncate; }

bool isOfNames(Act act) {
    return act == Act::Create || act == Act::Rename || act == Act::Link || act == Act::Remove ||
           act == Act::MakeFolder;
}

/// Whether a sync within the first operations has made this one last.
bool isSafe(const std::vector<Operation>& operations, std::size_t place, std::size_t count) {
    const Operation& operation = operations[place];
    const QString folder = folderOf(operation.to.isEmpty() ? operation.name : operation.to);
    for (std::size_t later = place + 1; later < count; ++later) {
        const Operation& sync = operations[later];
        if (isOfContent(operation.act) && sync.act == Act::Sync && sync.file == operation.file)
            return true;
        if (isOfNames(operation.act) && sync.act == Act::SyncFolder && sync.name == folder)
            return true;
    }
    return false;
}

void put(QByteArray& content, qint64 offset, const QByteArray& bytes) {
    if (content.size() < offset + bytes.size())
        content.append(offset + bytes.size() - content.size(), '\0');
    content.replace(offset, bytes.size(), bytes);
}

void cut(QByteArray& content, qint64 size) {
    if (content.size() > size)
        content.truncate(size);
    else
        content.append(size - content.size(), '\0');
}

/// Sector for sector, drawn; the gaps keep what was there.
void applyTorn(Image& image, const Operation& write, QRandomGenerator& random) {
    for (qsizetype at = 0; at < write.bytes.size(); at += sector) {
        if (random.bounded(2) != 0)
            put(image.files[write.file], write.offset + at, write.bytes.mid(at, sector));
    }
}

bool survives(const Operation& operation, Survival survival, QRandomGenerator& random) {
    switch (survival) {
    case Survival::Nothing:
        return false;
    case Survival::NamesOnly:
        return isOfNames(operation.act);
    case Survival::ContentOnly:
        return isOfContent(operation.act);
    case Survival::Part:
        return random.bounded(2) != 0;
    }
    return false;
}

}  // namespace

Image Image::of(const QString& folder) {
    Image image;
    QDirIterator walk(folder, QDir::Files | QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot,
                      QDirIterator::Subdirectories);
    std::map<QString, QByteArray> found;
    while (walk.hasNext()) {
        const QFileInfo entry(walk.next());
        const QString name = entry.filePath().mid(folder.size() + 1);
        QFile file(entry.filePath());
        if (entry.isDir())
            image.folders.insert(name);
        else if (entry.isFile() && file.open(QIODevice::ReadOnly))
            found[name] = file.readAll();
    }
    for (auto& [name, content] : found) {
        const int number = static_cast<int>(image.names.size());
        image.names[name] = number;
        image.files[number] = content;
    }
    return image;
}

void Image::layOut(const QString& folder) const {
    QDir(folder).removeRecursively();
    QDir().mkpath(folder);
    for (const QString& name : folders)
        QDir(folder).mkpath(name);
    for (const auto& [name, content] : contents()) {
        if (!QFileInfo(folder + '/'_L1 + folderOf(name)).isDir())
            continue;  // its folder did not last
        QFile file(folder + '/'_L1 + name);
        if (file.open(QIODevice::WriteOnly))
            file.write(content);
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    }
}

std::map<QString, QByteArray> Image::contents() const {
    std::map<QString, QByteArray> all;
    for (const auto& [name, number] : names) {
        const auto content = files.find(number);
        all[name] = content == files.end() ? QByteArray() : content->second;
    }
    return all;
}

QByteArray Image::fingerprint() const {
    QCryptographicHash hash(QCryptographicHash::Sha1);
    const auto add = [&](const QByteArray& part) {
        hash.addData(QByteArray::number(part.size()) + ' ');
        hash.addData(part);
    };
    for (const QString& folder : folders)
        add(folder.toUtf8());
    add("");
    for (const auto& [name, content] : contents()) {
        add(name.toUtf8());
        add(content);
    }
    return hash.result();
}

void Image::apply(const Operation& operation) {
    switch (operation.act) {
    case Act::Create:
        names[operation.name] = operation.file;
        break;
    case Act::Write:
        put(files[operation.file], operation.offset, operation.bytes);
        break;
    case Act::Truncate:
        cut(files[operation.file], operation.offset);
        break;
    case Act::Rename:
        names.erase(operation.name);
        [[fallthrough]];
    case Act::Link:
        names[operation.to] = operation.file;
        break;
    case Act::Remove:
        names.erase(operation.name);
        break;
    case Act::MakeFolder:
        folders.insert(operation.name);
        break;
    default:
        break;
    }
}

Image killedAfter(Image start, const std::vector<Operation>& operations, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        start.apply(operations[i]);
    return start;
}

Image powerCutAfter(Image start, const std::vector<Operation>& operations, std::size_t count,
                    Survival survival, QRandomGenerator& random) {
    for (std::size_t i = 0; i < count; ++i) {
        const Operation& operation = operations[i];
        if (isSafe(operations, i, count) || survives(operation, survival, random))
            start.apply(operation);
        else if (operation.act == Act::Write && survival == Survival::Part)
            applyTorn(start, operation, random);
    }
    return start;
}

}  // namespace fault
