#include "core/CopySettings.h"

#include "platform/basic/Paths.h"

#include <QSettings>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

QString file() { return platform::platformPath(platform::programFolder() + u"\\copies.ini"_s); }

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

}  // namespace sorvanto
