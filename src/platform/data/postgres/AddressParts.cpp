#include "platform/data/postgres/AddressParts.h"

#include "platform/basic/RuntimeError.h"
#include "platform/data/postgres/Address.h"

#include <QStringList>
#include <QUrl>
#include <libpq-fe.h>
#include <memory>

using namespace Qt::StringLiterals;

namespace platform::postgres {

namespace {

using Options = std::unique_ptr<PQconninfoOption, decltype(&PQconninfoFree)>;

Options optionsOf(const QString& address) {
    return {PQconninfoParse(address.toUtf8().constData(), nullptr), PQconninfoFree};
}

QString encoded(const QString& text) { return QString::fromLatin1(QUrl::toPercentEncoding(text)); }

}  // namespace

AddressFault faultOf(const QString& address) {
    try {
        readAddress(address);
        return AddressFault::None;
    } catch (const RuntimeError&) {
        return optionsOf(address) ? AddressFault::Secret : AddressFault::Unreadable;
    }
}

AddressParts partsOf(const QString& address) {
    readAddress(address);  // throws
    AddressParts parts;
    QStringList others;
    const Options options = optionsOf(address);
    for (const PQconninfoOption* option = options.get(); option && option->keyword; ++option) {
        if (!option->val)
            continue;
        const QByteArrayView keyword(option->keyword);
        const QString value = QString::fromUtf8(option->val);
        if (keyword == "host")
            parts.computer = value;
        else if (keyword == "port")
            parts.port = value;
        else if (keyword == "dbname")
            parts.database = value;
        else if (keyword == "user")
            parts.account = value;
        else if (keyword == "sslrootcert")
            parts.certificate = value;
        else
            others << QString::fromLatin1(option->keyword) + u'=' + encoded(value);
    }
    parts.others = others.join(u'&');
    return parts;
}

QString addressOf(const AddressParts& parts) {
    QString address = u"postgresql://"_s;
    if (!parts.account.isEmpty())
        address += encoded(parts.account) + u'@';
    // A socket, and several computers with a port each, can't stand in front.
    const bool asWords = parts.computer.startsWith(u'/') || (parts.computer + parts.port).contains(u',');
    const bool isNumber = parts.computer.contains(u':');  // of the sixth version, which stands in brackets
    if (!asWords)
        address += isNumber ? u'[' + parts.computer + u']' : encoded(parts.computer);
    if (!asWords && !parts.port.isEmpty())
        address += u':' + parts.port;
    address += u'/' + encoded(parts.database);
    QStringList words;
    if (asWords)
        words << u"host="_s + encoded(parts.computer);
    if (asWords && !parts.port.isEmpty())
        words << u"port="_s + encoded(parts.port);
    if (!parts.certificate.isEmpty())
        words << u"sslrootcert="_s + encoded(parts.certificate);
    if (!parts.others.isEmpty())
        words << parts.others;
    return words.isEmpty() ? address : address + u'?' + words.join(u'&');
}

}  // namespace platform::postgres
