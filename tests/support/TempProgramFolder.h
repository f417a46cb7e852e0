// A program folder of its own for one test, gone with it. It lies in memory where the system offers that,
// since the program flushes each file to the disk.
#pragma once

#include "platform/basic/Paths.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace support {

using namespace Qt::StringLiterals;

class TempProgramFolder {
public:
    TempProgramFolder() { platform::setProgramFolder(m_folder.path()); }
    ~TempProgramFolder() { platform::setProgramFolder({}); }
    TempProgramFolder(const TempProgramFolder&) = delete;
    TempProgramFolder& operator=(const TempProgramFolder&) = delete;

    QString path() const { return m_folder.path(); }
    /// Full path of a file in the folder.
    QString path(const QString& name) const { return m_folder.filePath(name); }
    bool has(const QString& name) const { return QFile::exists(path(name)); }

    void write(const QString& name, const QByteArray& content) const {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(file.fileName());
        ASSERT_EQ(file.write(content), content.size());
    }
    /// The German language file, in which each text is translated by the same text behind "de".
    void writeGerman(const QStringList& texts) const {
        QByteArray xml = "<Translations Language=\"German\">";
        for (const QString& text : texts)
            xml += "<Translate English=\"" + text.toUtf8() + "\" Translated=\"de " + text.toUtf8() + "\"/>";
        write("GermanTranslation.xml", xml + "</Translations>");
    }
    /// The file's bytes; empty when there is none.
    QByteArray read(const QString& name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private:
    static QString place() {
        const QFileInfo memory(u"/dev/shm"_s);
        const QString parent = memory.isDir() && memory.isWritable() ? memory.filePath() : QDir::tempPath();
        return parent + u"/sorvanto-XXXXXX"_s;
    }

    QTemporaryDir m_folder{place()};
};

}  // namespace support
