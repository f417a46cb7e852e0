// Identity texts from a source of random 128-bit values.
#include "records/GUIDFactory.h"

#include "platform/ask/Ask.h"
#include "platform/basic/Format.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Text.h"

#include <QUuid>

using namespace Qt::StringLiterals;

namespace sorvanto {

using namespace platform;

namespace {

const QString failedText = u"00000000"_s;

std::int32_t randomGuid(Guid& guid) {
    const QUuid uuid = QUuid::createUuid();
    guid.Data1 = uuid.data1;
    guid.Data2 = uuid.data2;
    guid.Data3 = uuid.data3;
    std::copy(std::begin(uuid.data4), std::end(uuid.data4), guid.Data4.begin());
    return 0;
}

GUIDFactory::Source& source() {
    static GUIDFactory::Source current = randomGuid;
    return current;
}

}  // namespace

void GUIDFactory::setSource(Source replacement) {
    source() = replacement ? std::move(replacement) : randomGuid;
}

QString GUIDFactory::CreateGUID() {
    try {
        return formatPlaces(guidText(), u"@@@@@@@@-@@@@-@@@@-@@@@-@@@@@@@@@@@@"_s);
    } catch (...) {
        return {};
    }
}

QString GUIDFactory::guidText() {
    try {
        Guid guid;
        if (source()(guid) != 0)
            return failedText;
        const QString first = hexText(guid.Data1);
        const QString second = trimmed(hexText(guid.Data2));
        const QString third = trimmed(hexText(guid.Data3));
        const QString head = zeros(8, first.size()) + first + zeros(4, second.size()) + second +
                             zeros(4, third.size()) + third;
        QString tail;
        for (const std::uint8_t byte : guid.Data4)
            tail += format(hexText(byte), u"00"_s);  // a single letter is no number and stays single
        return head + tail;
    } catch (...) {
        const RuntimeError failure = currentError();
        MsgBox(u"Error "_s + QString::number(failure.number()) + u": "_s + failure.description());
        return failedText;
    }
}

QString GUIDFactory::zeros(qsizetype length, qsizetype actual) { return QString(length - actual, u'0'); }

}  // namespace sorvanto
