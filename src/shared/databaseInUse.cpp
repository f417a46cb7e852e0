#include "shared/databaseInUse.h"

#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "shared/basMain.h"

#include <QFileInfo>

namespace sorvanto {

QString databaseInUse() {
    try {
        const QString path =
            platform::platformPath(basMain::databaseLocation ? basMain::databaseLocation() : QString());
        const QString canonical = QFileInfo(path).canonicalFilePath();
        return canonical.isEmpty() ? path : canonical;
    } catch (const platform::RuntimeError&) {
        return {};  // options without a location: reported where the database is opened
    }
}

}  // namespace sorvanto
