// Ends without unwinding: the event loops of open dialogs would not let an exception through.
#include "Stop.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

using namespace Qt::StringLiterals;

namespace tour {
namespace {

std::function<void()> lastAct;

}  // namespace

void beforeStop(std::function<void()> last) { lastAct = std::move(last); }

void stopTour(const QString& sentence) {
    std::fprintf(stderr, "The tour stops: %s\n", qUtf8Printable(sentence));
    if (const auto last = std::exchange(lastAct, nullptr))
        last();
    std::fflush(nullptr);
    std::_Exit(EXIT_FAILURE);
}

void requireSame(const QString& what, const QString& found, const QString& expected) {
    require(found == expected, u"%1 is \"%2\" and should be \"%3\"."_s.arg(what, found, expected));
}

}  // namespace tour
