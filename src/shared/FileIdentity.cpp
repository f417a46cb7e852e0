#include "shared/FileIdentity.h"

#include "platform/basic/RuntimeError.h"
#include "platform/data/Connection.h"
#include "platform/data/Query.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

std::optional<FileIdentity> readFileIdentity(const platform::Connection& connection) {
    if (connection.state() == 0)
        return {};
    try {
        platform::Query row(connection.engine(),
                            u"SELECT fid_Identity, fid_Parent, fid_Changes FROM FileIdentity"_s, {});
        if (row.step())
            return FileIdentity{row.value(0, platform::asText).toString(),
                                row.value(1, platform::asText).toString(), row.integer(2)};
    } catch (const platform::RuntimeError&) {
        // An older file has no such table; one that can't be read is told where its records are read.
    }
    return {};
}

std::optional<FileIdentity> knownFileIdentity(const platform::Connection& connection) {
    if (connection.state() == 0 || !connection.isServer())
        return readFileIdentity(connection);
    QVariant& kept = connection.engine().kept(u"identity"_s);
    if (!kept.isValid()) {
        const auto read = readFileIdentity(connection);
        if (!read)
            return {};
        kept = QStringList{read->identity, read->parent};
    }
    const QStringList known = kept.toStringList();
    return FileIdentity{known.first(), known.last()};
}

}  // namespace sorvanto
