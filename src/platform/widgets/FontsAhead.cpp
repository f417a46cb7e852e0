// The library that finds fonts is loaded by the toolkit later; what it has read by then it does not read again.
#include "platform/widgets/FontsAhead.h"

#if __has_include(<dlfcn.h>)
#include <dlfcn.h>
#endif

namespace platform {

#if __has_include(<dlfcn.h>)

namespace {

void readFonts() {
    void* library = dlopen("libfontconfig.so.1", RTLD_LAZY);
    if (!library)
        return;
    if (const auto init = reinterpret_cast<int (*)()>(dlsym(library, "FcInit")))
        init();
}

}  // namespace

FontsAhead::FontsAhead() : m_thread(readFonts) {}

#else

FontsAhead::FontsAhead() = default;

#endif

FontsAhead::~FontsAhead() {
    if (m_thread.joinable())
        m_thread.join();
}

}  // namespace platform
