#include "core/CopySettings.h"

#include "platform/basic/Paths.h"
#include "platform/basic/SettingsFile.h"

#include <QFileInfo>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

const QString secondPlaceKey = u"Copies/SecondPlace"_s;
const QString rehearsalKey = u"Copies/LastRehearsal"_s;

QString keyOf(const QString& database) {
    const QString path = QFileInfo(platform::platformPath(database)).absoluteFilePath();
    return u"Databases/"_s + QString::fromLatin1(QUrl::toPercentEncoding(path));
}

}  // namespace

QString CopySettings::file() { return platform::platformPath(platform::programFolder() + u"\\copies.ini"_s); }

CopySettings CopySettings::read() {
    const platform::SettingsFile settings(file());
    return {settings.value(secondPlaceKey).toString(), settings.value(rehearsalKey).toString(),
            settings.problem()};
}

void CopySettings::write() const {
    platform::SettingsFile settings(file());
    settings.setValue(secondPlaceKey, secondPlace);
    settings.setValue(rehearsalKey, lastRehearsal);
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
