#include "core/CopySettings.h"

#include "platform/basic/Paths.h"

#include <QFileInfo>
#include <QSettings>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

QString file() { return platform::platformPath(platform::programFolder() + u"\\copies.ini"_s); }

QString keyOf(const QString& database) {
    const QString path = QFileInfo(platform::platformPath(database)).absoluteFilePath();
    return u"Databases/"_s + QString::fromLatin1(QUrl::toPercentEncoding(path));
}

}  // namespace

CopySettings CopySettings::read() {
    const QSettings settings(file(), QSettings::IniFormat);
    return {settings.value(u"Copies/SecondPlace"_s).toString(),
            settings.value(u"Copies/LastRehearsal"_s).toString()};
}

void CopySettings::write() const {
    QSettings settings(file(), QSettings::IniFormat);
    settings.setValue(u"Copies/SecondPlace"_s, secondPlace);
    settings.setValue(u"Copies/LastRehearsal"_s, lastRehearsal);
}

QString CopySettings::identityOf(const QString& database) {
    return QSettings(file(), QSettings::IniFormat).value(keyOf(database)).toString();
}

void CopySettings::remember(const QString& database, const QString& identity) {
    QSettings settings(file(), QSettings::IniFormat);
    if (settings.value(keyOf(database)).toString() != identity)
        settings.setValue(keyOf(database), identity);
}

}  // namespace sorvanto
