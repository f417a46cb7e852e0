// The service's library is only looked up when something was printed: the program starts without it.
#include "platform/report/PrintService.h"

#include <QLibrary>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

constexpr int version = 2;
constexpr int lastGoodStatus = 0xff;  // successes of the printing protocol are 0 to 255

}  // namespace

QString printServiceRefusal() {
    QLibrary library(u"cups"_s, version);
    const auto lastError = reinterpret_cast<int (*)()>(library.resolve("cupsLastError"));
    const auto lastErrorString = reinterpret_cast<const char* (*)()>(library.resolve("cupsLastErrorString"));
    if (!lastError || !lastErrorString || lastError() <= lastGoodStatus)
        return {};
    const QString reason = QString::fromUtf8(lastErrorString());
    return reason.isEmpty() ? u"error %1"_s.arg(lastError()) : reason;
}

}  // namespace platform
