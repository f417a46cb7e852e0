#include "core/Help.h"

#include "core/HelpPlaces.h"
#include "platform/widgets/OwnerWindow.h"
#include "shared/Context.h"
#include "shared/Guard.h"
#include "shared/Translator.h"

#include <QApplication>
#include <QFileInfo>
#include <QKeyEvent>

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {

const QString languageFile = u"Translation.xml"_s;

/// "German"; English before the language is known.
QString chosenLanguage(const Context& context) {
    const QString file =
        context.language ? QFileInfo(context.language->translationPath()).fileName() : QString();
    return file.endsWith(languageFile) && file != languageFile ? file.chopped(languageFile.size())
                                                               : u"English"_s;
}

/// A popup would keep the keys for itself.
void closePopups() {
    while (QWidget* popup = QApplication::activePopupWidget()) {
        popup->close();
        if (QApplication::activePopupWidget() == popup)
            return;
    }
}

bool isHelpKey(const QEvent& event) {
    if (event.type() != QEvent::KeyPress)
        return false;
    const auto& key = static_cast<const QKeyEvent&>(event);
    return key.key() == Qt::Key_F1 && !(key.modifiers() & ~Qt::KeypadModifier) && !key.isAutoRepeat();
}

}  // namespace

Help::Help(const Context& context, QObject& mainWindow, std::function<const QWidget*()> onShow)
    : QObject(&mainWindow), m_context(context), m_onShow(std::move(onShow)) {
    qApp->installEventFilter(this);
    platform::ownerWindow();  // follows the window in use from now on: the manual never owns a question
}

Help::~Help() = default;

// A key goes from the widget with the focus up to its window; nothing on the way has a use for this one.
bool Help::eventFilter(QObject* watched, QEvent* event) {
    if (!isHelpKey(*event))
        return false;
    const auto* window = qobject_cast<QWidget*>(watched);
    if (!window || !window->isWindow())
        return false;
    const QWidget* focus = window->focusWidget();
    openFor(focus ? focus : window);
    return true;
}

void Help::open() {
    const QWidget* focus = QApplication::focusWidget();
    openFor(helpPlaceOf(focus).isEmpty() ? m_onShow() : focus);
}

void Help::openFor(const QWidget* widget) {
    guarded(u"Help:open"_s, [&] {
        QString place = helpPlaceOf(widget);
        if (place.isEmpty() && widget != m_window.get() && !QApplication::activeModalWidget())
            place = helpPlaceOf(m_onShow());
        closePopups();
        if (m_window && m_window->manual().language() != chosenLanguage(m_context))
            m_window.reset();  // the language was chosen meanwhile
        if (!m_window)
            m_window = std::make_unique<ManualWindow>(Manual(manualFolder(), chosenLanguage(m_context)));
        m_window->open(ManualPlace::of(place));
    });
}

void Help::close() {
    if (m_window)
        m_window->close();
}

}  // namespace sorvanto
