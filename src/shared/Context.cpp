#include "shared/Context.h"

#include "platform/basic/ProcessChange.h"
#include "platform/basic/RuntimeError.h"

#include <QCoreApplication>
#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace sorvanto {

void Context::endAtOnce() {
    std::fflush(nullptr);
    std::_Exit(EXIT_SUCCESS);
}

void Context::restartAtOnce(bool onCopy) {
    QStringList arguments = platform::ownArguments();
    arguments.removeAll(copyOption);
    if (onCopy)
        arguments << copyOption;
    platform::changeProcess(QCoreApplication::applicationFilePath(), arguments);
    endAtOnce();
}

QString tableEntry(const QStringList& table, int index) {
    if (index < 0 || index >= table.size())
        throw platform::RuntimeError(platform::error::subscriptOutOfRange, u"Subscript out of range"_s);
    return table.at(index);
}

}  // namespace sorvanto
