// Takes the program's error reports and says nothing: a broken input may cause any number of them.
#pragma once

#include "shared/ErrorReporter.h"
#include "shared/basMain.h"

#include <memory>

namespace fuzz {

class SilentReporter final : public sorvanto::ErrorReporter {
public:
    static void install() {
        if (!sorvanto::basMain::ErrorReporter)
            sorvanto::basMain::ErrorReporter = std::make_shared<SilentReporter>();
    }
    void ReportError(const QString&, const QString&, const QString&, std::int32_t, const QString&,
                     const QString&, bool, bool, bool, bool) noexcept override {}
};

}  // namespace fuzz
