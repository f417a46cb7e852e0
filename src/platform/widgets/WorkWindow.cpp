#include "platform/widgets/WorkWindow.h"

#include "platform/widgets/FreshKeys.h"
#include "platform/widgets/OwnerWindow.h"
#include "platform/widgets/Texts.h"

using namespace Qt::StringLiterals;

namespace platform {

std::unique_ptr<QProgressDialog> workWindow(const QString& what) {
    constexpr int width = 380;
    auto window = std::make_unique<QProgressDialog>(ownerWindow());
    window->setObjectName(u"longWork"_s);
    window->setWindowTitle(what);
    window->setLabelText(what);
    window->setCancelButtonText(widgetText(u"Cancel"_s));
    window->setRange(0, 0);
    window->setMinimumWidth(width);
    window->setMinimumDuration(0);
    window->setAutoClose(false);
    window->setAutoReset(false);
    window->setWindowModality(Qt::ApplicationModal);
    new FreshKeys(*window);  // a space that was meant for a text would press the button
    return window;
}

}  // namespace platform
