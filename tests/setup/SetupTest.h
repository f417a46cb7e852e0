// Folders of a test's own: one with delivered files, one to be laid out from it.
#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace setup_test {

using namespace Qt::StringLiterals;

class SetupTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(m_folder.isValid() && QDir(m_folder.path()).mkpath("delivered")); }

    QString path(const QString& name) const { return m_folder.filePath(name); }
    QString delivered() const { return path("delivered"); }
    static QString tools() { return QString::fromUtf8(SORVANTO_BIN_DIR); }

    void write(const QString& name, const QByteArray& content) const {
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path(name)).path()));
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(file.fileName());
        ASSERT_EQ(file.write(content), content.size());
    }
    QByteArray read(const QString& name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    bool has(const QString& name) const { return QFile::exists(path(name)); }

private:
    QTemporaryDir m_folder;
};

}  // namespace setup_test
