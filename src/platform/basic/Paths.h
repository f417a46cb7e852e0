// The program's folder and file names. Paths may be written with "\" in the program;
// platformPath turns one into this system's form at the moment it meets the file system.
#pragma once

#include <QByteArray>
#include <QString>

namespace platform {

/// Folder of the executable, without a separator at the end; everything the program reads and writes
/// lies there. Tests set another one; an empty text restores the executable's own.
QString programFolder();
void setProgramFolder(const QString& folder);

/// "\" becomes the system's separator.
QString platformPath(const QString& path);

/// Whether the path names an existing file (not a folder).
bool fileExists(const QString& path);

/// Who may read a file that is written: its owner alone, since almost everything here tells of patients; or,
/// for a file that the user saves under a name of his own choice, whoever his customs let in.
enum class Readers { Owner, UsersChoice };

/// Writes the whole file or leaves the old one: temporary file in the same folder, flushed to the disk,
/// renamed over. For the owner alone the rights of group and others fall away; else the new file keeps the
/// old one's. A link stays and its target is written, but for the owner alone only in the link's own folder; a
/// device is written straight. Throws permissionDenied (also for a read-only file in a folder that could be
/// written), diskFull or deviceIo with the path in the description.
void writeFile(const QString& path, const QByteArray& content, Readers readers = Readers::Owner);

/// Writes at the end of a file of the program's own, and makes it where there is none. Never waits. Throws as
/// writeFile, also for what is no regular file. A file that others can read is its owner's alone from then on.
void appendToFile(const QString& path, const QByteArray& content);

/// Takes away what others may do with a folder of the program's own; does nothing where there is none, or where that
/// isn't allowed. Never throws.
void keepFolderToOwner(const QString& path);

/// The content of a regular file of at most that many bytes. Never waits for a pipe or a device. Throws
/// fileNotFound, permissionDenied or deviceIo with a reason that can be shown.
QByteArray readFile(const QString& path, qint64 largest);

/// Why a file of the program's own is not to be opened: it is no regular file, larger than that many bytes, or a
/// link to another folder. Empty when it may be, and for one that isn't there. For files that a library opens.
QString unfitness(const QString& path, qint64 largest);

/// Gives a finished file of the same folder the name of another one, in its place, for good. Throws as writeFile.
void replaceFile(const QString& finished, const QString& path);

/// Gives a file another name beside its own, for good. False where the file system has no such thing, or the name
/// is taken.
bool giveSecondName(const QString& path, const QString& name);

/// Makes a folder that its owner alone may enter, with its parents. True when it is there at the end; one that
/// was there before keeps its rights.
bool makePrivateFolder(const QString& path);
/// The same; throws permissionDenied, diskFull or deviceIo with the path and the system's reason.
void needPrivateFolder(const QString& path);

}  // namespace platform
