// Loading by the toolkit's own means; what was loaded stays.
#include "platform/basic/LazyLibrary.h"

#include "platform/basic/RuntimeError.h"

using namespace Qt::StringLiterals;

namespace platform {

QFunctionPointer LazyLibrary::address(const char* name) {
    const QMutexLocker lock(&m_mutex);
    if (const QFunctionPointer found = m_library.resolve(name))
        return found;
    const QString why = m_library.isLoaded()
                            ? u"%1 has no function %2"_s.arg(m_library.fileName(), QLatin1StringView(name))
                            : m_library.errorString();
    throw RuntimeError(error::fileNotFound, u"A library of the system can't be used: %1"_s.arg(why));
}

}  // namespace platform
