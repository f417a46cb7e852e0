#include "platform/widgets/CutText.h"

#include <QHelpEvent>
#include <QLineEdit>
#include <QPainter>
#include <QStyleOptionFrame>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr int textMargin = 2;  // of the box itself, beside its contents

class Frame : public QLineEdit {
public:
    /// The box as its style sees it.
    static QStyleOptionFrame of(const QLineEdit& box) {
        QStyleOptionFrame option;
        (box.*&Frame::initStyleOption)(&option);
        return option;
    }
};

QRect roomOf(const QLineEdit& box, const QStyleOptionFrame& option) {
    const QMargins margins = box.textMargins();
    return box.style()
        ->subElementRect(QStyle::SE_LineEditContents, &option, &box)
        .marginsRemoved(margins)
        .adjusted(textMargin, 0, -textMargin, 0);
}

}  // namespace

bool isCut(const QLineEdit& box) {
    return box.fontMetrics().horizontalAdvance(box.displayText()) > roomOf(box, Frame::of(box)).width();
}

bool paintCut(QLineEdit& box) {
    if (box.hasFocus() || !isCut(box))
        return false;
    const QStyleOptionFrame option = Frame::of(box);
    const QRect room = roomOf(box, option);
    QPainter painter(&box);
    box.style()->drawPrimitive(QStyle::PE_PanelLineEdit, &option, &painter, &box);
    const QString text = box.fontMetrics().elidedText(box.displayText(), Qt::ElideRight, room.width());
    box.style()->drawItemText(&painter, room, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                              option.palette, box.isEnabled(), text, QPalette::Text);
    return true;
}

bool tellCut(QLineEdit& box, const QHelpEvent& event) {
    if (!box.toolTip().isEmpty() || !isCut(box))
        return false;
    // A tip in rich text breaks its lines.
    QToolTip::showText(event.globalPos(), u"<p>%1</p>"_s.arg(box.displayText().toHtmlEscaped()), &box);
    return true;
}

}  // namespace platform
