#include "platform/widgets/FontList.h"

#include "platform/basic/LazyLibrary.h"
#include "platform/basic/RuntimeError.h"

using namespace Qt::StringLiterals;

namespace platform {

namespace {

/// The library that the toolkit asks for fonts, where it was built for one; it keeps what it has read.
void read() {
    try {
        static LazyLibrary library(u"fontconfig"_s, 1);
        library.function<int()>("FcInit")();
    } catch (const RuntimeError&) {
    }
}

}  // namespace

FontList::FontList() : m_reading(read) {}

void FontList::wait() {
    if (m_reading.joinable())
        m_reading.join();
}

}  // namespace platform
