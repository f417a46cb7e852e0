#include "platform/basic/SettingsFile.h"

#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

/// The library makes its files for everybody, but keeps the rights of one that is there.
void makePrivate(const QString& path) {
    QFile file(path);
    if (!file.exists())
        file.open(QIODevice::WriteOnly | QIODevice::NewOnly, QFile::ReadOwner | QFile::WriteOwner);
}

}  // namespace

SettingsFile::SettingsFile(const QString& path)
    : m_path(platformPath(path)), m_problem(unfitness(m_path, largestFile)) {
    // The library keeps others away by a second file while it writes.
    if (m_problem.isEmpty() && !unfitness(m_path + u".lock"_s, largestFile).isEmpty())
        m_problem = u"the file %1.lock is in the way"_s.arg(m_path);
    if (!m_problem.isEmpty())
        return;
    m_settings.emplace(m_path, QSettings::IniFormat);
    m_settings->allKeys();  // what is no settings is only noticed where it is looked at
    if (m_settings->status() == QSettings::NoError)
        return;
    m_problem = m_settings->status() == QSettings::AccessError ? u"it may not be read"_s
                                                               : u"it is no file of settings"_s;
    m_settings.reset();
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
    makePrivate(m_path);
    m_settings->setValue(key, value);
    m_settings->sync();
    if (m_settings->status() != QSettings::NoError)
        throw RuntimeError(error::permissionDenied, u"Can't write %1"_s.arg(m_path));
}

}  // namespace platform
