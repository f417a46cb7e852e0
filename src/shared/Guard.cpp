// The end of the failure path: the exception in flight becomes one report with its ten arguments.
#include "shared/Guard.h"

#include "platform/basic/RuntimeError.h"
#include "shared/ErrorReporter.h"
#include "shared/basMain.h"

#include <cstdio>

namespace sorvanto {
namespace {

/// Number of the failed statement inside its procedure; not known here.
constexpr std::int32_t unknownStatement = 0;

void reportToConsole(const platform::RuntimeError& failure, const QString& tag) {
    std::fprintf(stderr, "%s: error %d: %s\n", qPrintable(tag), failure.number(),
                 qPrintable(failure.description()));
}

}  // namespace

void reportCurrentError(const QString& tag) noexcept {
    try {
        const platform::RuntimeError failure = platform::currentError();
        const auto reporter = basMain::ErrorReporter;
        if (!reporter) {
            reportToConsole(failure, tag);
            return;
        }
        reporter->setFailedStatement(failure.statement());
        reporter->ReportError(failure.description(), QString::number(failure.number()), failure.source(),
                              unknownStatement, tag, QString(), true, false, true, true);
    } catch (...) {
        std::fputs("An error could not be reported.\n", stderr);
    }
}

}  // namespace sorvanto
