#include "platform/basic/SettingsFile.h"

#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

QString workingCopyIn(const QTemporaryDir& folder) { return folder.filePath(u"settings.ini"_s); }

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace

SettingsFile::SettingsFile(const QString& path)
    : m_path(platformPath(path)), m_problem(unfitness(m_path, largestFile)) {
    if (m_problem.isEmpty())
        open();
    if (!m_problem.isEmpty())
        m_settings.reset();
}

// Not flushed to the disk, which a start would wait for: the copy goes with the program.
void SettingsFile::copy(const QByteArray& content) const {
    QFile copy(workingCopyIn(m_folder));
    if (!copy.open(QIODevice::WriteOnly) || copy.write(content) != content.size() || !copy.flush())
        throw RuntimeError(error::deviceIo, u"a copy of it can't be made: %1"_s.arg(copy.errorString()));
}

void SettingsFile::open() {
    try {
        if (fileExists(m_path))
            copy(readFile(m_path, largestFile));
    } catch (const RuntimeError& failure) {
        m_problem =
            failure.number() == error::permissionDenied ? u"it may not be read"_s : failure.description();
        return;
    }
    m_settings.emplace(workingCopyIn(m_folder), QSettings::IniFormat);
    m_settings->allKeys();  // what is no settings is only noticed where it is looked at
    if (m_settings->status() != QSettings::NoError)
        m_problem = u"it is no file of settings"_s;
}

QVariant SettingsFile::value(const QString& key, const QVariant& unset) const {
    return m_settings ? m_settings->value(key, unset) : unset;
}

void SettingsFile::expectRead() const {
    if (!m_problem.isEmpty())
        throw RuntimeError(
            error::deviceIo,
            u"%1 can't be read: %2. It is not used, and stays as it is."_s.arg(m_path, m_problem));
}

void SettingsFile::setValue(const QString& key, const QVariant& value) {
    expectRead();
    m_settings->setValue(key, value);
    m_settings->sync();
    if (m_settings->status() != QSettings::NoError)
        throw RuntimeError(error::permissionDenied, u"Can't write %1"_s.arg(m_path));
    writeFile(m_path, contentOf(workingCopyIn(m_folder)));
}

}  // namespace platform
