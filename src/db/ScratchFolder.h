// A folder for records on their way, for the owner alone. It goes with this object, and one that a killed program has left
// goes when the next one is made.
#pragma once

#include <QString>
#include <QTemporaryDir>

namespace sorvanto {

class ScratchFolder {
public:
    /// Throws permissionDenied where none can be made.
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    QString filePath(const QString& name) const { return m_folder.filePath(name); }

private:
    QTemporaryDir m_folder;
    int m_lock = -1;  ///< falls with the process, however it ends
};

}  // namespace sorvanto
