#include "config/LastGoodOptions.h"

#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/postgres/Address.h"
#include "platform/data/postgres/AddressParts.h"
#include "platform/xml/XmlDocument.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace sorvanto::lastGoodOptions {
namespace {

QString keptFile() { return platform::programFolder() + u"/options.last-good.xml"_s; }

QByteArray contentOf(const QString& path) {
    return platform::readFile(path, platform::XmlDocument::largestFile);
}

bool holdsOptions(const platform::XmlDocument& document) {
    return document.selectSingleNode(u"/Configuration/Options"_s) &&
           document.selectSingleNode(u"/Configuration/Pharmacy"_s);
}

/// A password in the address of a server, which somebody wrote into the file, is not to lie in a second one.
bool holdsSecret(const platform::XmlDocument& document) {
    const auto location = document.selectSingleNode(u"/Configuration/Options/DBLocation"_s);
    const QString address = location ? location.text().trimmed() : QString();
    return platform::postgres::isAddress(address) &&
           platform::postgres::faultOf(address) != platform::postgres::AddressFault::None;
}

QString brokenFile() { return platform::programFolder() + u"/options.broken.xml"_s; }

}  // namespace

void keep(const QString& optionsPath, const platform::XmlDocument& content) {
    if (!holdsOptions(content) || holdsSecret(content))
        return;
    try {
        const QByteArray good = contentOf(optionsPath);
        if (!QFile::exists(keptFile()) || contentOf(keptFile()) != good)
            platform::writeFile(keptFile(), good);
    } catch (const platform::RuntimeError&) {
        // A folder that can't be written keeps its options as well.
    }
}

QDateTime kept() {
    const auto document = platform::XmlDocument::create();
    if (!document->load(keptFile()) || !holdsOptions(*document))
        return {};
    const QDateTime changed = QFileInfo(keptFile()).lastModified().toLocalTime();
    return {changed.date(), changed.time(), Qt::UTC};
}

std::int16_t language() {
    const auto document = platform::XmlDocument::create();
    if (!document->load(keptFile()))
        return 0;
    const auto node = document->selectSingleNode(u"//Configuration/Options/Language"_s);
    return node ? static_cast<std::int16_t>(node.text().toShort()) : std::int16_t{0};
}

void putAside(const QString& optionsPath) {
    QFile::remove(brokenFile());
    if (QFile::exists(optionsPath) && !QFile::rename(optionsPath, brokenFile()))
        throw platform::RuntimeError(platform::error::permissionDenied,
                                     u"\"%1\" can't be put aside"_s.arg(optionsPath));
}

void putBack(const QString& optionsPath) {
    const QByteArray good = contentOf(keptFile());
    const QFileInfo broken(optionsPath);
    const bool plain = broken.isFile() && !broken.isSymLink();
    if (plain)
        QFile::remove(brokenFile());
    if (!plain || !platform::giveSecondName(optionsPath, brokenFile()))
        putAside(optionsPath);
    platform::writeFile(optionsPath, good);
}

}  // namespace sorvanto::lastGoodOptions
