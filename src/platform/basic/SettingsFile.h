// A small file of settings beside the program, "[group]" and "key=value", that is only opened where it is what it
// should be. The library that knows the form works on a copy: beside the file itself it would wait for ever for a
// pipe, or for a lock that nobody can take away, and read whatever a device has to give.
#pragma once

#include <QSettings>
#include <QString>
#include <QTemporaryDir>
#include <QVariant>
#include <optional>

namespace platform {

class SettingsFile {
public:
    static constexpr qint64 largestFile = 1'000'000;  // bytes

    /// One that isn't there is an empty one.
    explicit SettingsFile(const QString& path);

    /// unset also stands for all values of a file that could not be read.
    QVariant value(const QString& key, const QVariant& unset = {}) const;
    /// Why it could not be read; empty when it was.
    const QString& problem() const { return m_problem; }
    /// Throws what problem() tells, as a sentence with the path.
    void expectRead() const;
    /// On the disk at its return, for the owner alone. Throws permissionDenied where it can't be written, and as
    /// expectRead: what was never read is not written over.
    void setValue(const QString& key, const QVariant& value);

private:
    void open();
    void copy(const QByteArray& content) const;

    QString m_path, m_problem;
    QTemporaryDir m_folder;               ///< of the copy
    std::optional<QSettings> m_settings;  ///< of the copy; none when there is a problem
};

}  // namespace platform
