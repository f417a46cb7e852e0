// Journals of the folder "mixes/closed", read one by one.
#include "mixer/LoggedSince.h"

#include "mixer/JournalFile.h"
#include "mixer/ResultsDocument.h"
#include "mixer/protocol/Messages.h"
#include "platform/basic/Dates.h"
#include "platform/xml/XmlDocument.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using journal_file::closedFolder;
using journal_file::folder;

/// Local time as the program's clock tells it.
QDateTime closedAt(const QFileInfo& file) {
    const QDateTime changed = file.lastModified().toLocalTime();
    return {changed.date(), changed.time(), Qt::UTC};
}

QString attributeOf(const platform::XmlNode& root, const QString& name) {
    return root.hasAttribute(name) ? root.attribute(name) : QString();
}

bool isOfAnother(const platform::XmlNode& root, const QString& identity) {
    const QString database = attributeOf(root, u"Database"_s);
    return !database.isEmpty() && database != identity;
}

QDateTime loggedAt(const platform::XmlNode& root, const QFileInfo& file) {
    QDateTime told = platform::fromStoredDate(attributeOf(root, u"Signed"_s));
    told.setTimeSpec(Qt::UTC);
    return told.isValid() ? told : closedAt(file);
}

QString lotIn(const platform::XmlNode& root) {
    const platform::XmlNode results = root.selectSingleNode(u"Results"_s);
    if (!results)
        return {};
    const auto document = platform::XmlDocument::create();
    return document->loadXML(results.xml()) ? lotOf(document) : QString();
}

}  // namespace

std::vector<LoggedMix> mixesLoggedSince(const QDateTime& moment, const QString& identity) {
    std::vector<LoggedMix> found;
    const QDir closed(closedFolder());
    for (const QFileInfo& file :
         closed.entryInfoList({u"*.xml"_s}, QDir::Files | QDir::NoSymLinks, QDir::Name)) {
        const auto document = platform::XmlDocument::create();
        if (!document->load(file.filePath()))
            continue;
        const platform::XmlNode root = document->root();
        if (root.name() != "Mix"_L1 || !root.hasAttribute(u"State"_s) ||
            root.attribute(u"State"_s) != "logged"_L1 || !root.hasAttribute(u"ID"_s) ||
            !protocol::isMixId(root.attribute(u"ID"_s).toLatin1()))
            continue;
        if (isOfAnother(root, identity) || loggedAt(root, file) < moment)
            continue;
        if (const QString lot = lotIn(root); !lot.isEmpty())
            found.push_back({file.filePath(), lot});
    }
    return found;
}

void openAgain(const LoggedMix& mix) {
    const auto document = platform::XmlDocument::create();
    if (!document->load(mix.path))
        return;
    platform::XmlNode root = document->root();
    root.setAttribute(u"State"_s, u"finished"_s);
    document->save(folder() + '/'_L1 + root.attribute(u"ID"_s) + u".xml"_s);
    QFile::remove(mix.path);
}

}  // namespace sorvanto
