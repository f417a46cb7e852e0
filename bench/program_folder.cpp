// Laying the folder out.
#include "program_folder.h"

#include "db/DatabaseFile.h"

#include <QDir>
#include <QFile>
#include <sqlite3.h>
#include <stdexcept>

namespace bench {

namespace {

QByteArray options(const QString& database) {
    return "<Configuration><Version>1</Version><Options><CommPort>1</CommPort><DBLocation>" +
           database.toUtf8() +
           "</DBLocation><Language>0</Language><DefPrinter/><DefCurrency>$</DefCurrency></Options>"
           "<Pharmacy><StoreName>Kelmar Systems</StoreName><Address>418 Larkspur Ct.</Address>"
           "<City>Fenwick</City><State>ZZ</State><PostalCode>54321</PostalCode>"
           "<Phone>(555)010-0188</Phone><Fax>(555)010-0189</Fax><DEA>123456789</DEA>"
           "<ShowPatients>1</ShowPatients><OverrideSpeed>0</OverrideSpeed></Pharmacy></Configuration>";
}

void copyFile(const QString& from, const QString& to) {
    if (!QFile::copy(from, to))
        throw std::runtime_error("Can't copy " + from.toStdString());
}

}  // namespace

ProgramFolder::ProgramFolder(int rows) {
    const QDir languages(QString::fromUtf8(SORVANTO_SOURCE_DIR "/languages"));
    for (const QString& name : languages.entryList({"*.xml"}, QDir::Files))
        copyFile(languages.filePath(name), m_folder.filePath(name));
    copyFile(QString::fromUtf8(SORVANTO_SOURCE_DIR "/data/dbupdate.xml"), m_folder.filePath("dbupdate.xml"));
    QFile file(m_folder.filePath("options.xml"));
    if (!file.open(QIODevice::WriteOnly) || file.write(options(database())) < 0)
        throw std::runtime_error("Can't write options.xml");
    sorvanto::createSample(database(), rows);
}

void ProgramFolder::run(const char* statements) const {
    sqlite3* handle = nullptr;
    char* message = nullptr;
    if (sqlite3_open(database().toUtf8().constData(), &handle) != SQLITE_OK ||
        sqlite3_exec(handle, statements, nullptr, nullptr, &message) != SQLITE_OK)
        throw std::runtime_error(message ? message : "No database to measure with.");
    sqlite3_close(handle);
}

QString ProgramFolder::addExecutable(const QString& name) const {
    const QString target = m_folder.filePath(name);
    copyFile(QString::fromUtf8(SORVANTO_BIN_DIR "/") + name, target);
    return target;
}

}  // namespace bench
