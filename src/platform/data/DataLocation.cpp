#include "platform/data/DataLocation.h"

#include "platform/basic/Paths.h"
#include "platform/data/postgres/Address.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace platform {

bool DataLocation::namesServer(const QString& text) { return postgres::isAddress(text.trimmed()); }

DataLocation::DataLocation(const QString& text) : m_text(text.trimmed()), m_isServer(namesServer(text)) {
    if (!m_isServer) {
        m_shownName = QFileInfo(platformPath(m_text)).fileName();
        return;
    }
    const postgres::Address address = postgres::readAddress(m_text);
    const bool isNear = address.host.isEmpty() || address.host.startsWith(u'/');
    if (isNear)
        m_shownName = address.database.isEmpty() ? u"localhost"_s : address.database;
    else
        m_shownName = address.database.isEmpty() ? address.host : address.database + u'@' + address.host;
}

}  // namespace platform
