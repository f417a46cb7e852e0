// The windows are those of the program; only nobody waits for them.
#include "TourAsker.h"

#include "platform/widgets/AskDialog.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace languages {

using platform::Answer;

Answer TourAsker::messageBox(const QString& prompt, platform::BoxStyle style, const QString& title) {
    platform::AskDialog box(prompt, style, title, nullptr);
    show(box, u"message-%1"_s.arg(++m_boxes, 2, 10, '0'_L1));
    return style.buttons == platform::Buttons::Ok ? Answer::Ok : answer;
}

QString TourAsker::inputBox(const QString& prompt, const QString& title, const QString& preset,
                            const platform::LineGuide& guide) {
    platform::AskDialog box(prompt, title, preset, guide, nullptr);
    show(box, u"question-%1"_s.arg(++m_boxes, 2, 10, '0'_L1));
    return lines.isEmpty() ? QString() : lines.takeFirst();
}

void TourAsker::showModal(QObject& window, const std::function<void()>&) {
    auto* widget = qobject_cast<QWidget*>(&window);
    if (!widget)
        return;
    QString name = widget->objectName();
    if (name.isEmpty())
        name = QString(widget->metaObject()->className()).section("::", -1);
    show(*widget, name);
    if (const auto script = scripts.value(name))
        script(*widget);
    QCoreApplication::processEvents();
    if (widget->isVisible())
        widget->close();
    widget->hide();
}

void TourAsker::show(QWidget& window, const QString& name) {
    window.show();
    QCoreApplication::processEvents();
    if (look)
        look(window, name);
}

}  // namespace languages
