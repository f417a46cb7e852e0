// Menus, tool bars, tabs.
#include "platform/widgets/StyleParts.h"
#include "platform/widgets/Theme.h"

#include <QPainter>
#include <QStyleOption>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr int itemLeft = 12, itemRight = 28, itemHeight = 31, itemPicture = 24;
constexpr int keysGap = 24;
constexpr int lineRoom = 11;  // of a separator
constexpr int tabRoom = 26;   // between two tabs
constexpr int tabTop = 5, tabLine = 2, tabStrongLine = 4;

/// What comes before the text: a tick or a picture.
void drawItemMark(const QStyleOptionMenuItem& option, QPainter& painter) {
    const QRect place(option.rect.left() + itemLeft / 2, option.rect.top(), itemPicture,
                      option.rect.height());
    if (option.checked)
        drawTick(painter, place, inkOf(option));
    else
        option.icon.paint(&painter, place.adjusted(3, 0, -3, 0), Qt::AlignCenter,
                          has(option, QStyle::State_Enabled) ? QIcon::Normal : QIcon::Disabled);
}

bool hasMarks(const QStyleOptionMenuItem& option) {
    return option.menuHasCheckableItems || option.maxIconWidth > 0;
}

}  // namespace

void drawMenuBarItem(const QStyleOptionMenuItem& option, QPainter& painter) {
    painter.fillRect(option.rect, theme().surface);
    if (has(option, QStyle::State_Enabled) &&
        (has(option, QStyle::State_Selected) || has(option, QStyle::State_Sunken)))
        drawBox(painter, option.rect, {theme().softAccent, {}});
    painter.setPen(inkOf(option));
    painter.drawText(option.rect, Qt::AlignCenter | Qt::TextShowMnemonic | Qt::TextSingleLine, option.text);
}

void drawMenuItem(const QStyleOptionMenuItem& option, QPainter& painter) {
    const Theme& colors = theme();
    const QRect& all = option.rect;
    if (option.menuItemType == QStyleOptionMenuItem::Separator) {
        painter.fillRect(QRect(all.left() + 6, all.center().y(), all.width() - 12, 1), colors.line);
        return;
    }
    if (has(option, QStyle::State_Selected) && has(option, QStyle::State_Enabled))
        drawBox(painter, all, {colors.softAccent, {}, 0, 5});
    if (hasMarks(option))
        drawItemMark(option, painter);
    const int left = itemLeft + (hasMarks(option) ? itemPicture : 0);
    const QRect room = all.adjusted(left, 0, -itemRight, 0);
    const QStringList parts = option.text.split(u'\t');
    const int flags = Qt::AlignVCenter | Qt::TextShowMnemonic | Qt::TextSingleLine;
    painter.setFont(option.font);
    painter.setPen(inkOf(option));
    painter.drawText(room, flags | Qt::AlignLeft, parts.first());
    if (parts.size() > 1)
        painter.drawText(room, flags | Qt::AlignRight, parts.last());
    if (option.menuItemType == QStyleOptionMenuItem::SubMenu)
        drawArrow(painter, QRect(all.right() - 22, all.top(), 18, all.height()), Qt::RightArrow,
                  has(option, QStyle::State_Enabled) ? colors.secondaryText : colors.disabledText);
}

QSize menuItemSize(const QStyleOptionMenuItem& option, const QSize& contents) {
    if (option.menuItemType == QStyleOptionMenuItem::Separator)
        return {contents.width(), lineRoom};
    const int marks = hasMarks(option) ? itemPicture : 0;
    const int keys = option.text.contains(u'\t') ? keysGap : 0;
    return {contents.width() + itemLeft + itemRight + marks + keys, qMax(contents.height() + 14, itemHeight)};
}

void drawToolBarLine(const QStyleOption& option, QPainter& painter) {
    painter.fillRect(QRect(option.rect.center().x(), option.rect.top() + 6, 1, option.rect.height() - 12),
                     theme().line);
}

// Tabs

void drawTabShape(const QStyleOptionTab& option, QPainter& painter) {
    const Theme& colors = theme();
    const bool selected = has(option, QStyle::State_Selected), on = has(option, QStyle::State_Enabled);
    QRect line = option.rect.adjusted(0, 0, -tabRoom, 0);
    line.setTop(line.bottom() + 1 -
                (selected && has(option, QStyle::State_HasFocus) ? tabStrongLine : tabLine));
    if (selected)
        painter.fillRect(line, colors.accent);
    else if (on && has(option, QStyle::State_MouseOver))
        painter.fillRect(line, colors.line);
}

void drawTabLabel(const QStyleOptionTab& option, QPainter& painter) {
    const Theme& colors = theme();
    const bool selected = has(option, QStyle::State_Selected);
    QColor ink = selected ? colors.accent : colors.secondaryText;
    if (!has(option, QStyle::State_Enabled))
        ink = colors.disabledText;
    else if (selected ? has(option, QStyle::State_HasFocus) : has(option, QStyle::State_MouseOver))
        ink = colors.text;
    QFont font = painter.font();
    font.setWeight(selected ? QFont::DemiBold : QFont::Normal);
    painter.save();
    painter.setFont(font);
    painter.setPen(ink);
    painter.drawText(option.rect.adjusted(0, tabTop, -tabRoom, -tabTop - tabLine),
                     Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic | Qt::TextSingleLine,
                     option.text);
    painter.restore();
}

}  // namespace platform
