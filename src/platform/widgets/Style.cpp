// Which part draws what; what is not named here is Fusion's.
#include "platform/widgets/Style.h"

#include "platform/widgets/LaterIcon.h"
#include "platform/widgets/Looks.h"
#include "platform/widgets/StyleParts.h"
#include "platform/widgets/Theme.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QApplication>
#include <QComboBox>
#include <QListView>
#include <QPainter>
#include <QStyleOption>
#include <QTabBar>
#include <QTreeView>
#include <optional>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

template <class Option>
const Option& as(const QStyleOption* option) {
    return *static_cast<const Option*>(option);
}

/// Whether the frame of a widget has to say anything: looks draw their own, lists and pages have none.
bool drawFrame(const QStyleOption& option, QPainter& painter, const QWidget* widget) {
    if (isTextBox(widget))
        drawBox(painter, option.rect, fieldBox(option, widget, isLockedField(option, widget)));
    else if (widget && widget->inherits("QComboBoxPrivateContainer"))
        drawBox(painter, option.rect, {theme().surface, theme().line, 1, 0});
    else if (!qobject_cast<const QAbstractScrollArea*>(widget))
        return false;
    return true;
}

/// What shows the focus by its own frame needs no mark besides.
bool marksFocusItself(const QWidget* widget) {
    return qobject_cast<const QAbstractButton*>(widget) || qobject_cast<const QComboBox*>(widget) ||
           qobject_cast<const QTabBar*>(widget) || (widget && widget->inherits("QComboBoxListView"));
}

/// Beside the texts of lists, less the one pixel that the base style adds; nothing for all else.
std::optional<int> sideMargin(const QWidget* widget) {
    const bool dense = hasLook(widget, "dense");
    if (!widget || widget->inherits("QCalendarView"))
        return std::nullopt;
    if (qobject_cast<const QListView*>(widget))
        return 5;
    if (qobject_cast<const QAbstractItemView*>(widget))
        return dense ? 6 : 8;
    return std::nullopt;
}

}  // namespace

Style::Style() : QProxyStyle(u"Fusion"_s) {}

QIcon Style::standardIcon(StandardPixmap which, const QStyleOption* option, const QWidget* widget) const {
    if (which != SP_ToolBarHorizontalExtensionButton && which != SP_ToolBarVerticalExtensionButton)
        return QProxyStyle::standardIcon(which, option, widget);
    // By then another style may have come in the place of this one.
    return QIcon(new LaterIcon([which, kept = option ? *option : QStyleOption()] {
        const auto* own = qobject_cast<const QProxyStyle*>(QApplication::style());
        return own ? own->baseStyle()->standardIcon(which, &kept) : QIcon();
    }));
}

void Style::polish(QWidget* widget) {
    QProxyStyle::polish(widget);
    dress(*widget);
}

int Style::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    switch (metric) {
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
        return 18;
    case PM_CheckBoxLabelSpacing:
    case PM_RadioButtonLabelSpacing:
        return 8;
    case PM_ScrollBarExtent:
        return 12;
    case PM_ScrollBarSliderMin:
        return 36;
    case PM_FocusFrameHMargin:
        return sideMargin(widget).value_or(QProxyStyle::pixelMetric(metric, option, widget));
    case PM_MenuBarItemSpacing:
    case PM_MenuBarVMargin:
    case PM_MenuBarPanelWidth:
    case PM_ToolBarFrameWidth:
    case PM_ToolBarItemSpacing:
    case PM_TabBarBaseOverlap:
    case PM_TabBarTabOverlap:
    case PM_TabBarTabShiftVertical:
        return 0;
    case PM_ToolBarItemMargin:
        return hasLook(widget, "bare") ? 0 : 10;
    case PM_MenuBarHMargin:
        return 2;
    case PM_MenuPanelWidth:
        return 1;
    case PM_MenuHMargin:
    case PM_MenuVMargin:
    case PM_ToolTipLabelFrameWidth:
        return 6;
    case PM_ToolBarSeparatorExtent:
        return 13;
    case PM_TabBarTabHSpace:
        return 26;
    case PM_TabBarTabVSpace:
        return 12;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int Style::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                     QStyleHintReturn* data) const {
    switch (hint) {
    case SH_DialogButtonBox_ButtonsHaveIcons:
    case SH_ComboBox_Popup:
        return 0;
    default:
        return QProxyStyle::styleHint(hint, option, widget, data);
    }
}

QSize Style::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                              const QWidget* widget) const {
    const auto standard = [&] { return QProxyStyle::sizeFromContents(type, option, contents, widget); };
    switch (type) {
    case CT_LineEdit:
        return textBoxSize(contents);
    case CT_ComboBox:
        return comboSize(contents);
    case CT_SpinBox:
        return spinBoxSize(contents);
    case CT_PushButton:
        return pushButtonSize(contents, widget);
    case CT_ToolButton:
        return contents + QSize(7, 7);
    case CT_CheckBox:
    case CT_RadioButton:
        return standard().expandedTo({0, 30});
    case CT_MenuBarItem:
        return contents + QSize(20, 10);
    case CT_MenuItem:
        return menuItemSize(as<QStyleOptionMenuItem>(option), contents);
    case CT_TabBarTab:
        return contents.expandedTo({0, 32});
    case CT_TabWidget:
        return contents + QSize(0, 14);
    case CT_HeaderSection:
        return headerSize(as<QStyleOptionHeader>(option), widget);
    case CT_ItemViewItem:
        return standard().expandedTo({0, widget && widget->inherits("QListView") ? 30 : 0});
    default:
        return standard();
    }
}

QRect Style::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const {
    const QRect standard = QProxyStyle::subElementRect(element, option, widget);
    switch (element) {
    case SE_LineEditContents:
        return as<QStyleOptionFrame>(option).lineWidth > 0 ? textBoxContents(option->rect) : standard;
    case SE_ShapedFrameContents:
    case SE_FrameContents: {
        const QMargins room = widget ? roomOfLooks(*widget) : QMargins();
        const bool bare = room.isNull() && !qobject_cast<const QAbstractScrollArea*>(widget);
        return bare ? standard : option->rect.marginsRemoved(room);
    }
    case SE_TabWidgetTabBar:
        return standard.translated(4, 0) & option->rect;
    case SE_TabWidgetTabContents:
        return QProxyStyle::subElementRect(SE_TabWidgetTabPane, option, widget).adjusted(0, 14, 0, 0);
    default:
        return standard;
    }
}

QRect Style::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                            const QWidget* widget) const {
    switch (control) {
    case CC_ComboBox:
        return comboPart(as<QStyleOptionComboBox>(option), part, widget);
    case CC_SpinBox:
        return spinBoxPart(as<QStyleOptionSpinBox>(option), part);
    case CC_GroupBox:
        return groupBoxPart(as<QStyleOptionGroupBox>(option), part);
    case CC_ScrollBar:
        return scrollBarPart(as<QStyleOptionSlider>(option), part);
    default:
        return QProxyStyle::subControlRect(control, option, part, widget);
    }
}

void Style::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                          const QWidget* widget) const {
    const Theme& colors = theme();
    switch (element) {
    case PE_Widget:
        return widget ? drawLooks(*painter, *widget) : void();
    case PE_PanelLineEdit:
        if (as<QStyleOptionFrame>(option).lineWidth > 0)
            drawBox(*painter, option->rect, fieldBox(*option, widget, isLockedField(*option, widget)));
        return;
    case PE_IndicatorCheckBox:
    case PE_IndicatorItemViewItemCheck:
        return drawCheckMark(*option, *painter);
    case PE_IndicatorRadioButton:
        return drawRadioMark(*option, *painter);
    case PE_PanelMenu:
        return painter->fillRect(option->rect, colors.surface);
    case PE_FrameMenu:
        return drawBox(*painter, option->rect, {{}, colors.line, 1, 0});
    case PE_PanelTipLabel:
        return painter->fillRect(option->rect, colors.text);
    case PE_PanelStatusBar:
        painter->fillRect(option->rect, colors.surface);
        return drawEdge(*painter, option->rect, Qt::TopEdge, colors.line);
    case PE_IndicatorToolBarSeparator:
        return drawToolBarLine(*option, *painter);
    case PE_PanelItemViewRow:
        if (qobject_cast<const QTreeView*>(widget))  // the ground beside the item, up to the edge
            return drawItemGround(as<QStyleOptionViewItem>(option), *painter, widget);
        return QProxyStyle::drawPrimitive(element, option, painter, widget);
    case PE_PanelItemViewItem:
        return drawItemGround(as<QStyleOptionViewItem>(option), *painter, widget);
    case PE_IndicatorArrowUp:
        return drawArrow(*painter, option->rect, Qt::UpArrow, inkOf(*option));
    case PE_IndicatorArrowDown:
        return drawArrow(*painter, option->rect, Qt::DownArrow, inkOf(*option));
    case PE_IndicatorArrowLeft:
        return drawArrow(*painter, option->rect, Qt::LeftArrow, inkOf(*option));
    case PE_IndicatorArrowRight:
        return drawArrow(*painter, option->rect, Qt::RightArrow, inkOf(*option));
    case PE_FrameFocusRect:
        return marksFocusItself(widget) ? void() : drawFocusMark(*painter, option->rect);
    case PE_FrameLineEdit:
    case PE_FrameTabWidget:
    case PE_FrameTabBarBase:
    case PE_FrameStatusBarItem:
    case PE_PanelScrollAreaCorner:
        return;
    default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void Style::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                        const QWidget* widget) const {
    switch (element) {
    case CE_ShapedFrame:
        if (!drawFrame(*option, *painter, widget))
            QProxyStyle::drawControl(element, option, painter, widget);
        return;
    case CE_PushButtonBevel:
        return drawPushButton(as<QStyleOptionButton>(option), *painter, widget);
    case CE_PushButton: {
        drawPushButton(as<QStyleOptionButton>(option), *painter, widget);
        QStyleOptionButton label = as<QStyleOptionButton>(option);
        label.palette.setColor(QPalette::ButtonText, pushButtonInk(label, widget));
        return QProxyStyle::drawControl(CE_PushButtonLabel, &label, painter, widget);
    }
    default:
        if (!drawBarControl(element, *option, *painter, widget) &&
            !drawViewControl(element, *option, *painter, widget))
            QProxyStyle::drawControl(element, option, painter, widget);
    }
}

bool Style::drawBarControl(ControlElement element, const QStyleOption& option, QPainter& painter,
                           const QWidget* widget) const {
    switch (element) {
    case CE_MenuBarItem:
        drawMenuBarItem(as<QStyleOptionMenuItem>(&option), painter);
        return true;
    case CE_MenuItem:
        drawMenuItem(as<QStyleOptionMenuItem>(&option), painter);
        return true;
    case CE_MenuBarEmptyArea:
        painter.fillRect(option.rect, theme().surface);
        return true;
    case CE_ToolBar:
        painter.fillRect(option.rect, theme().surface);
        if (!hasLook(widget, "bare"))
            drawEdge(painter, option.rect, Qt::BottomEdge, theme().line);
        return true;
    case CE_Splitter:
        painter.fillRect(option.rect, theme().line);
        return true;
    case CE_TabBarTabShape:
        drawTabShape(as<QStyleOptionTab>(&option), painter);
        return true;
    case CE_TabBarTabLabel:
        drawTabLabel(as<QStyleOptionTab>(&option), painter);
        return true;
    default:
        return false;
    }
}

bool Style::drawViewControl(ControlElement element, const QStyleOption& option, QPainter& painter,
                            const QWidget* widget) const {
    switch (element) {
    case CE_HeaderSection:
    case CE_HeaderEmptyArea:
        drawHeaderSection(option, painter);
        return true;
    case CE_Header:
        drawHeader(as<QStyleOptionHeader>(&option), painter, widget);
        return true;
    case CE_ItemViewItem: {
        QStyleOptionViewItem item = as<QStyleOptionViewItem>(&option);
        item.palette.setColor(QPalette::HighlightedText, inkOf(option));
        QProxyStyle::drawControl(element, &item, &painter, widget);
        return true;
    }
    case CE_ProgressBar:
        drawProgress(as<QStyleOptionProgressBar>(&option), painter, widget);
        return true;
    default:
        return false;
    }
}

void Style::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                               const QWidget* widget) const {
    switch (control) {
    case CC_ComboBox:
        return drawCombo(as<QStyleOptionComboBox>(option), *painter, widget);
    case CC_SpinBox:
        return drawSpinBox(as<QStyleOptionSpinBox>(option), *painter, widget);
    case CC_GroupBox:
        return drawGroupBox(as<QStyleOptionGroupBox>(option), *painter);
    case CC_ScrollBar: {
        const auto& bar = as<QStyleOptionSlider>(option);
        return drawScrollBar(bar, *painter, scrollBarPart(bar, SC_ScrollBarSlider));
    }
    case CC_ToolButton:
        return drawToolButton(as<QStyleOptionToolButton>(option), *painter, widget);
    default:
        QProxyStyle::drawComplexControl(control, option, painter, widget);
    }
}

// A button that opens a menu bears no arrow: its picture or caption says so.
void Style::drawToolButton(const QStyleOptionToolButton& option, QPainter& painter,
                           const QWidget* widget) const {
    drawToolButtonGround(option, painter);
    QStyleOptionToolButton label = option;
    label.palette.setColor(QPalette::ButtonText, inkOf(option));
    QProxyStyle::drawControl(CE_ToolButtonLabel, &label, &painter, widget);
}

}  // namespace platform
