#include "config/LastGoodOptions.h"

#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
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

}  // namespace

void keep(const QString& optionsPath) {
    try {
        const QByteArray good = contentOf(optionsPath);
        if (!QFile::exists(keptFile()) || contentOf(keptFile()) != good)
            platform::writeFile(keptFile(), good);
    } catch (const platform::RuntimeError&) {
        // A folder that can't be written keeps its options as well.
    }
}

QDateTime kept() {
    if (!platform::XmlDocument::create()->load(keptFile()))
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
    const QString aside = platform::programFolder() + u"/options.broken.xml"_s;
    QFile::remove(aside);
    if (!QFile::rename(optionsPath, aside))
        throw platform::RuntimeError(platform::error::permissionDenied,
                                     u"\"%1\" can't be put aside"_s.arg(optionsPath));
}

void putBack(const QString& optionsPath) {
    const QByteArray good = contentOf(keptFile());
    putAside(optionsPath);
    platform::writeFile(optionsPath, good);
}

}  // namespace sorvanto::lastGoodOptions
