#include "core/CopySettings.h"

#include "platform/basic/Paths.h"
#include "platform/basic/SettingsFile.h"
#include "platform/data/DataLocation.h"

#include <QFileInfo>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

const QString secondPlaceKey = u"Copies/SecondPlace"_s;

QString noteKey(const QString& note, const QString& identity) {
    return note + '/'_L1 + (identity.isEmpty() ? u"none"_s : identity);
}

QString rehearsalKey(const QString& identity) { return noteKey(u"LastRehearsal"_s, identity); }
QString batchesKey(const QString& identity) { return noteKey(u"BatchesAtCopy"_s, identity); }

QString keyOf(const QString& database) {
    const QString path = platform::DataLocation::namesServer(database)
                             ? database
                             : QFileInfo(platform::platformPath(database)).absoluteFilePath();
    return u"Databases/"_s + QString::fromLatin1(QUrl::toPercentEncoding(path));
}

}  // namespace

QString CopySettings::file() { return platform::platformPath(platform::programFolder() + u"\\copies.ini"_s); }

CopySettings CopySettings::read(const QString& identity) {
    const platform::SettingsFile settings(file());
    const QVariant batches = settings.value(batchesKey(identity));
    return {.secondPlace = settings.value(secondPlaceKey).toString(),
            .lastRehearsal = settings.value(rehearsalKey(identity)).toString(),
            .batchesAtCopy = batches.isValid() ? std::optional(batches.toLongLong()) : std::nullopt,
            .identity = identity,
            .problem = settings.problem()};
}

void CopySettings::write() const {
    platform::SettingsFile settings(file());
    settings.setValue(secondPlaceKey, secondPlace);
    settings.setValue(rehearsalKey(identity), lastRehearsal);
    if (batchesAtCopy)
        settings.setValue(batchesKey(identity), QString::number(*batchesAtCopy));
}

QString CopySettings::identityOf(const QString& database) {
    return platform::SettingsFile(file()).value(keyOf(database)).toString();
}

void CopySettings::remember(const QString& database, const QString& identity) {
    platform::SettingsFile settings(file());
    if (settings.value(keyOf(database)).toString() != identity)
        settings.setValue(keyOf(database), identity);
}

}  // namespace sorvanto
