#include "manual/HitDelegate.h"

#include "platform/widgets/Theme.h"

#include <QApplication>
#include <QPainter>

namespace sorvanto {

namespace {

using platform::grid;

constexpr int side = 2 * grid, edge = grid, contextLines = 3;

QFont headingFont(QFont font) {
    font.setWeight(QFont::DemiBold);
    return font;
}

QFont contextFont(QFont font) {
    font.setPointSizeF(0.9 * font.pointSizeF());
    return font;
}

}  // namespace

void HitDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const {
    QStyleOptionViewItem item(option);
    initStyleOption(&item, index);
    const QStyle& style = item.widget ? *item.widget->style() : *QApplication::style();
    style.drawPrimitive(QStyle::PE_PanelItemViewItem, &item, painter, item.widget);
    painter->save();
    QRect room = item.rect.adjusted(side, edge, -side, -edge);
    painter->setFont(headingFont(item.font));
    painter->setPen(platform::theme().text);
    const QFontMetrics heading(painter->font());
    painter->drawText(room, Qt::AlignLeft | Qt::AlignTop,
                      heading.elidedText(item.text, Qt::ElideRight, room.width()));
    room.setTop(room.top() + heading.lineSpacing());
    painter->setFont(contextFont(item.font));
    painter->setPen(platform::theme().secondaryText);
    painter->setClipRect(room);
    painter->drawText(room, Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap,
                      index.data(contextRole).toString());
    painter->restore();
    if (item.state.testFlag(QStyle::State_HasFocus))
        style.drawPrimitive(QStyle::PE_FrameFocusRect, &item, painter, item.widget);
}

QSize HitDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const QFontMetrics context(contextFont(option.font));
    const int width = option.widget ? option.widget->width() - 4 * side : 0;
    const QRect below =
        context.boundingRect(QRect(0, 0, std::max(width, 1), contextLines * context.lineSpacing()),
                             Qt::AlignLeft | Qt::TextWordWrap, index.data(contextRole).toString());
    const int lines = std::min(below.height(), contextLines * context.lineSpacing());
    return {1, 2 * edge + QFontMetrics(headingFont(option.font)).lineSpacing() +
                   (index.data(contextRole).toString().isEmpty() ? 0 : lines)};
}

}  // namespace sorvanto
