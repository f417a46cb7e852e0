// Each delivered file is a step of its own; the stamp of the delivered files is written when all went well.
#include "setup/LayOut.h"

#include "platform/basic/Descriptor.h"
#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Version.h"
#include "setup/LanguageMerge.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::RuntimeError;

const QString steps = u"dbupdate.xml"_s;
const QString database = u"sorvanto.mdb"_s;
const QString stampName = u"delivered.txt"_s;

QByteArray contentOf(const QString& path) {
    return platform::readFile(path, platform::XmlDocument::largestFile);
}

/// Empty where there is none that can be read.
QByteArray formerStamp(const QString& folder) {
    try {
        return contentOf(folder + '/'_L1 + stampName);
    } catch (const RuntimeError&) {
        return {};
    }
}

/// Tells one delivery from the next without reading its files.
QByteArray stampOf(const QString& delivered) {
    QByteArray stamp = "version " + platform::programVersion().toUtf8() + '\n';
    for (const QFileInfo& file : QDir(delivered).entryInfoList(QDir::Files, QDir::Name)) {
        stamp += file.fileName().toUtf8() + ' ' + QByteArray::number(file.size()) + ' ' +
                 file.lastModified().toUTC().toString(Qt::ISODateWithMs).toUtf8() + '\n';
    }
    return stamp;
}

/// The steps belong to the program that runs them. Steps of one's own are kept beside them.
void renewSteps(const QString& source, const QString& target) {
    const QByteArray delivered = contentOf(source);
    if (QFile::exists(target)) {
        if (contentOf(target) == delivered)
            return;
        platform::replaceFile(target, target + u".before"_s);
    }
    platform::writeFile(target, delivered);
}

void renewLanguage(const QString& source, const QString& target) {
    if (!QFile::exists(target))
        return platform::writeFile(target, contentOf(source));
    const auto own = platform::XmlDocument::create();
    const auto delivered = platform::XmlDocument::create();
    if (!own->load(target) || !delivered->load(source))
        throw RuntimeError(platform::error::deviceIo, u"It can't be read as XML"_s);
    const QString former = QFileInfo(source).dir().filePath(u"former.json"_s);
    const QString language = delivered->root().attribute(u"Language"_s);
    if (mergeLanguage(*delivered, *own,
                      formerTexts(QFile::exists(former) ? contentOf(former) : QByteArray(), language)))
        own->save(target);
}

void makeDatabase(const QString& toolFolder, const QString& target) {
    QProcess tool;
    tool.start(toolFolder + u"/sorvanto-db"_s, {u"create"_s, target});
    const bool ended = tool.waitForStarted() && tool.waitForFinished(-1);
    if (!ended || tool.exitStatus() != QProcess::NormalExit || tool.exitCode() != 0)
        throw RuntimeError(platform::error::deviceIo,
                           ended ? QString::fromUtf8(tool.readAllStandardError()).trimmed()
                                 : u"sorvanto-db can't be run: %1"_s.arg(tool.errorString()));
}

bool isNew(const QDir& folder) {
    return !folder.exists(steps) && !folder.exists(database) && !folder.exists(u"options.xml"_s);
}

/// Whether a program that is at work in the folder holds its lock.
bool isInUse(const QString& folder) {
    const platform::Descriptor file(::open(QFile::encodeName(folder + u"/sorvanto.lock"_s).constData(),
                                           O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    return file.number() >= 0 && ::flock(file.number(), LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

}  // namespace

void makeProgramFolder(const QString& folder) {
    const auto refuse = [&](const QString& why) {
        throw RuntimeError(platform::error::permissionDenied, why.arg(folder));
    };
    if (!platform::makePrivateFolder(folder) || !QFileInfo(folder).isDir())
        refuse(u"The program's folder %1 can't be made."_s);
    if (!platform::makePrivateFolder(folder + u"/ports"_s) ||
        ::access(QFile::encodeName(folder).constData(), R_OK | W_OK | X_OK) != 0)
        refuse(u"Nothing can be written into the program's folder %1."_s);
}

QStringList layOut(const QString& delivered, const QString& folder, const QString& toolFolder) {
    const bool isFirst = isNew(QDir(folder));
    makeProgramFolder(folder);
    QStringList problems;
    const auto bring = [&](const QString& name, const auto& step) {
        const QString target = folder + '/'_L1 + name;
        try {
            step(delivered + '/'_L1 + name, target);
        } catch (const RuntimeError& failure) {
            problems << u"%1 could not be brought up to date: %2"_s.arg(target, failure.description());
        }
    };
    if (isFirst)
        bring(database, [&](const QString&, const QString& target) { makeDatabase(toolFolder, target); });
    bring(steps, renewSteps);
    for (const QString& name : QDir(delivered).entryList({u"*Translation.xml"_s}, QDir::Files))
        bring(name, renewLanguage);
    if (problems.isEmpty())
        platform::writeFile(folder + '/'_L1 + stampName, stampOf(delivered));
    return problems;
}

QStringList keepUpToDate(const QString& delivered, const QString& folder, const QString& toolFolder) {
    if (formerStamp(folder) == stampOf(delivered))
        return {};
    return isInUse(folder) ? QStringList() : layOut(delivered, folder, toolFolder);
}

}  // namespace sorvanto
