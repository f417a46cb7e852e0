#include "platform/widgets/SearchBox.h"

#include "platform/widgets/Texts.h"
#include "platform/widgets/Theme.h"

#include <QAction>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace platform {

QAction* addMagnifier(QLineEdit& box) {
    QAction* magnifier = box.addAction(icon(u"search"_s, theme().secondaryText), QLineEdit::LeadingPosition);
    magnifier->setText(box.accessibleName());
    QObject::connect(magnifier, &QAction::triggered, &box, [&box] { box.setFocus(Qt::MouseFocusReason); });
    return magnifier;
}

void addClearButton(QLineEdit& box) {
    QAction* clear = box.addAction(icon(u"close"_s, theme().secondaryText), QLineEdit::TrailingPosition);
    const auto follow = [clear](const QString& text) {
        clear->setText(widgetText(u"Clear the box"_s));  // the language may have come since
        clear->setVisible(!text.isEmpty());
    };
    follow(box.text());
    QObject::connect(clear, &QAction::triggered, &box, [&box] {
        box.selectAll();
        box.del();
    });
    QObject::connect(&box, &QLineEdit::textChanged, clear, follow);
}

}  // namespace platform
