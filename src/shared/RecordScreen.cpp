#include "shared/RecordScreen.h"

#include "platform/basic/RuntimeError.h"
#include "shared/Guard.h"
#include "shared/basMain.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {
/// "frmLog" of the class sorvanto::frmLog.
QString plainClassName(const QObject& object) {
    return QString::fromLatin1(object.metaObject()->className()).section(u"::"_s, -1);
}
}  // namespace

RecordScreen::RecordScreen(QWidget* parent) : QWidget(parent) {}

RecordScreen::~RecordScreen() {
    if (m_listener == -1 && basMain::Main)
        basMain::Main->releaseListener(*this);
}

void RecordScreen::Listener(std::int16_t value) {
    guarded(plainClassName(*this) + u":setListener"_s, [&] {
        m_listener = value;
        if (value == -1) {
            platform::deref(basMain::Main).connectListener(*this);
            setMenuOptions();
        } else if (value == 0 && basMain::Main) {
            basMain::Main->releaseListener(*this);
        }
    });
}

}  // namespace sorvanto
