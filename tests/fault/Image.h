// A folder as it stands on the disk: names, and contents that names point to. What a kill or a power cut leaves
// of a course of operations is worked out on it, without running the program again.
#pragma once

#include <QByteArray>
#include <QRandomGenerator>
#include <QString>
#include <map>
#include <set>
#include <vector>

namespace fault {

enum class Act { Open, Create, Write, Truncate, Sync, SyncFolder, Rename, Link, Remove, MakeFolder, Lock };

const char* nameOf(Act act);

/// One call that succeeded.
struct Operation {
    Act act = Act::Open;
    QString name{};       ///< below the folder; what the content was opened as
    QString to{};         ///< of Rename and Link
    int file = -1;        ///< whose content, whatever name it has
    qint64 offset = 0;    ///< of Write; the size of Truncate
    QByteArray bytes{};   ///< of Write
    qsizetype call = -1;  ///< its number among all calls
};

class Image {
public:
    /// The folder with everything below it. Files are numbered in the order of their names.
    static Image of(const QString& folder);
    /// Makes the folder exactly this.
    void layOut(const QString& folder) const;

    /// Each file's content by its name.
    std::map<QString, QByteArray> contents() const;
    /// The same for the same names, folders and contents.
    QByteArray fingerprint() const;
    void apply(const Operation& operation);

    std::map<QString, int> names;
    std::set<QString> folders;
    std::map<int, QByteArray> files;
};

/// The first operations have happened and no more.
Image killedAfter(Image start, const std::vector<Operation>& operations, std::size_t count);

/// Which part of what was not synced is on the disk when the power goes.
enum class Survival {
    Nothing,
    NamesOnly,    ///< new names, contents as they were: the empty file after a rename
    ContentOnly,  ///< new contents, names as they were
    Part,         ///< drawn: any of them, writes torn at sectors of 512 bytes
};

/// The first operations have happened and the power goes. A content is safe from the next sync of its file on, a
/// name from the next sync of its folder on.
Image powerCutAfter(Image start, const std::vector<Operation>& operations, std::size_t count,
                    Survival survival, QRandomGenerator& random);

}  // namespace fault
