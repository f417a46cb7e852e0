#include "platform/data/postgres/Address.h"

#include "platform/basic/RuntimeError.h"

#include <libpq-fe.h>
#include <memory>

using namespace Qt::StringLiterals;

namespace platform::postgres {

namespace {

[[noreturn]] void refuse(const QString& why) { throw RuntimeError(error::cannotOpen, why, u"Database"_s); }

/// The library marks what must not be shown.
bool isSecret(const PQconninfoOption& option) { return QByteArrayView(option.dispchar) == "*"; }

}  // namespace

bool isAddress(const QString& text) {
    return text.startsWith("postgresql://"_L1, Qt::CaseInsensitive) ||
           text.startsWith("postgres://"_L1, Qt::CaseInsensitive);
}

Address readAddress(const QString& text) {
    char* reason = nullptr;
    const std::unique_ptr<PQconninfoOption, decltype(&PQconninfoFree)> options(
        PQconninfoParse(text.toUtf8().constData(), &reason), PQconninfoFree);
    PQfreemem(reason);  // it repeats the text, in which a password may stand
    if (!options)
        refuse(u"The address of the server can't be read"_s);
    Address address;
    for (const PQconninfoOption* option = options.get(); option->keyword; ++option) {
        if (!option->val)
            continue;
        if (isSecret(*option))
            refuse(u"A password does not belong in the address of a server: it is kept in the account's own "
                   "password file"_s);
        if (QByteArrayView(option->keyword) == "host")
            address.host = QString::fromUtf8(option->val);
        if (QByteArrayView(option->keyword) == "dbname")
            address.database = QString::fromUtf8(option->val);
    }
    return address;
}

}  // namespace platform::postgres
