#include "shared/RecordScreen.h"

#include "platform/basic/RuntimeError.h"
#include "shared/Context.h"
#include "shared/Guard.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {
/// "frmLog" of the class sorvanto::frmLog.
QString plainClassName(const QObject& object) {
    return QString::fromLatin1(object.metaObject()->className()).section(u"::"_s, -1);
}
}  // namespace

RecordScreen::RecordScreen(Context& context, QWidget* parent) : QWidget(parent), m_context(context) {}

RecordScreen::~RecordScreen() {
    if (m_listener == -1 && m_context.window)
        m_context.window->releaseListener(*this);
}

void RecordScreen::Listener(std::int16_t value) {
    guarded(plainClassName(*this) + u":setListener"_s, [&] {
        m_listener = value;
        if (value == -1) {
            platform::deref(m_context.window).connectListener(*this);
            setMenuOptions();
        } else if (value == 0 && m_context.window) {
            m_context.window->releaseListener(*this);
        }
    });
}

}  // namespace sorvanto
