#include "platform/widgets/Looks.h"

#include "platform/widgets/StyleShapes.h"
#include "platform/widgets/Theme.h"

#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QCoreApplication>
#include <QEvent>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QStatusBar>
#include <QStyle>
#include <QTabBar>
#include <QTextBrowser>
#include <QVariant>
#include <algorithm>

namespace platform {

namespace {

constexpr qreal smallPoints = 9;
constexpr int finePixels = 11;
constexpr int statusHeight = 22;
constexpr int progressHeight = 8;
const char* const barEdge = "barEdge";
const char* const labelLooks[] = {"fieldLabel", "heading", "quiet", "caution", "badge", "fine"};

/// What was set under a name that no class declares. Most widgets have nothing of the kind, and asking for it by its name
/// would look through all that their classes declare.
QVariant given(const QWidget& widget, const char* name) {
    return widget.dynamicPropertyNames().contains(name) ? widget.property(name) : QVariant();
}

bool knowsAny(const QWidget& widget) {
    const auto knows = [&widget](const char* look) { return given(widget, look).isValid(); };
    return std::any_of(std::begin(labelLooks), std::end(labelLooks), knows);
}

void dressLabel(QLabel& label) {
    const Theme& colors = theme();
    QFont font;
    QPalette palette;
    const bool caution = hasLook(&label, "caution"), quiet = hasLook(&label, "quiet"),
               badge = hasLook(&label, "badge");
    if (caution || hasLook(&label, "heading"))
        font.setWeight(QFont::DemiBold);
    if (quiet || badge)
        font.setPointSizeF(smallPoints);
    if (hasLook(&label, "fine"))
        font.setPixelSize(finePixels);
    if (quiet || hasLook(&label, "fieldLabel"))
        palette.setColor(QPalette::WindowText, colors.secondaryText);
    if (caution)
        palette.setColor(QPalette::WindowText, colors.warning);
    if (badge)
        palette.setColor(QPalette::WindowText, colors.onFill);
    label.setFont(font);
    label.setPalette(palette);
}

void dressStatusBar(QStatusBar& bar) {
    QFont font;
    font.setPointSizeF(smallPoints);
    bar.setFont(font);
    QPalette palette;
    palette.setColor(QPalette::WindowText, theme().secondaryText);
    bar.setPalette(palette);
    bar.setMinimumHeight(statusHeight);
}

void setWeight(QWidget& widget, QFont::Weight weight) {
    QFont font = widget.font();
    font.setWeight(weight);
    widget.setFont(font);
}

/// The list under a choice is drawn without the style where a plain combo box made it.
void dressChoiceList(QAbstractItemView& list) {
    QPalette palette;
    palette.setColor(QPalette::Highlight, theme().softAccent);
    palette.setColor(QPalette::HighlightedText, theme().text);
    list.setPalette(palette);
}

void dressScrollArea(QAbstractScrollArea& area) {
    // The ground under a text box is the style's, under a page that of what it lies on.
    if (qobject_cast<QScrollArea*>(&area) || isTextBox(&area))
        area.viewport()->setAutoFillBackground(false);
    else if (auto* header = qobject_cast<QHeaderView*>(&area))
        setWeight(*header, QFont::Medium);
    else if (area.inherits("QComboBoxListView"))
        dressChoiceList(static_cast<QAbstractItemView&>(area));
}

/// A frame reckons its room when it is made, when nothing is known of it yet.
void reckonRoomAnew(QFrame& frame) {
    QEvent change(QEvent::StyleChange);
    QCoreApplication::sendEvent(&frame, &change);
}

void dressFrame(QFrame& frame) {
    if (auto* area = qobject_cast<QAbstractScrollArea*>(&frame))
        dressScrollArea(*area);
    auto* label = qobject_cast<QLabel*>(&frame);
    if (label && knowsAny(*label))
        dressLabel(*label);
    if (frame.contentsMargins() != roomOfLooks(frame))
        reckonRoomAnew(frame);
}

/// Among small texts.
void dressPushButton(QPushButton& button) {
    if (!isInLine(&button))
        return;
    QFont font;
    font.setPointSizeF(smallPoints);
    if (hasLook(&button, "caution"))
        font.setWeight(QFont::DemiBold);
    button.setFont(font);
}

bool hasGround(const QWidget& widget) {
    return hasLook(&widget, "card") || hasLook(&widget, "panel") || hasLook(&widget, "badge") ||
           given(widget, barEdge).isValid();
}

}  // namespace

bool hasLook(const QWidget* widget, const char* property) {
    return widget && given(*widget, property).toBool();
}

bool isTextBox(const QWidget* widget) {
    return qobject_cast<const QPlainTextEdit*>(widget) ||
           (qobject_cast<const QTextEdit*>(widget) && !qobject_cast<const QTextBrowser*>(widget));
}

QMargins roomOfLooks(const QWidget& widget) {
    if (isTextBox(&widget))
        return {6, 4, 6, 4};
    if (widget.inherits("QComboBoxPrivateContainer"))
        return {5, 5, 5, 5};
    if (hasLook(&widget, "card") || hasLook(&widget, "panel"))
        return {1, 1, 1, 1};
    if (hasLook(&widget, "badge"))
        return {7, 1, 7, 1};
    switch (given(widget, barEdge).toInt()) {
    case Qt::TopEdge:
        return {0, 1, 0, 0};
    case Qt::BottomEdge:
        return {0, 0, 0, 1};
    case Qt::LeftEdge:
        return {1, 0, 0, 0};
    case Qt::RightEdge:
        return {0, 0, 1, 0};
    default:
        break;
    }
    if (qobject_cast<const QLabel*>(&widget) && qobject_cast<const QStatusBar*>(widget.parentWidget()))
        return {8, 0, 8, 0};
    return {};
}

void drawLooks(QPainter& painter, const QWidget& widget) {
    const Theme& colors = theme();
    const QRect place = widget.rect();
    if (hasLook(&widget, "card"))
        drawBox(painter, place, {colors.surface, colors.line, 1, 12});
    else if (hasLook(&widget, "panel"))
        drawBox(painter, place, {colors.surface, colors.line, 1, 0});
    else if (hasLook(&widget, "badge"))
        drawBox(painter, place, {colors.warning, {}, 0, 5});
    const int edge = given(widget, barEdge).toInt();
    if (edge == 0)
        return;
    drawBox(painter, place, {colors.surface, {}, 0, 0});
    drawEdge(painter, place, static_cast<Qt::Edge>(edge),
             hasLook(&widget, "caution") ? colors.warning : colors.line);
}

bool isInLine(const QWidget* button) {
    return hasLook(button, "inLine") || (button && qobject_cast<const QStatusBar*>(button->parentWidget()));
}

void dress(QWidget& widget) {
    if (auto* frame = qobject_cast<QFrame*>(&widget))
        dressFrame(*frame);
    else if (auto* tabs = qobject_cast<QTabBar*>(&widget)) {
        setWeight(*tabs, QFont::DemiBold);
        tabs->setDrawBase(false);
        tabs->setAttribute(Qt::WA_Hover);
    } else if (auto* status = qobject_cast<QStatusBar*>(&widget)) {
        dressStatusBar(*status);
    } else if (auto* progress = qobject_cast<QProgressBar*>(&widget)) {
        progress->setFixedHeight(progressHeight);
    } else if (auto* button = qobject_cast<QPushButton*>(&widget)) {
        dressPushButton(*button);
    } else if (qobject_cast<QScrollBar*>(&widget)) {
        widget.setAttribute(Qt::WA_OpaquePaintEvent, false);
    }
    if (hasGround(widget))
        widget.setAttribute(Qt::WA_StyledBackground);
}

void makeCard(QWidget& frame) { setLook(frame, "card"); }

void makeBar(QWidget& widget, Qt::Edge line) {
    widget.setProperty(barEdge, static_cast<int>(line));
    dress(widget);
}

void makeRule(QWidget& line) {
    QPalette palette;
    palette.setColor(QPalette::Window, theme().line);
    line.setPalette(palette);
    line.setAutoFillBackground(true);
    line.setFixedHeight(1);
}

void makeFieldLabel(QWidget& label) {
    setLook(label, "fieldLabel");
    if (auto* text = qobject_cast<QLabel*>(&label))
        text->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

void setLook(QWidget& widget, const char* property, bool on) {
    if (hasLook(&widget, property) == on)
        return;
    widget.setProperty(property, on);
    dress(widget);
    widget.update();
}

}  // namespace platform
