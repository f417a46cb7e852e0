// Every kind of widget in every state, light and dark. Pictures go to the folder in SORVANTO_PICTURES, if set:
// one a kind, its states beside each other.
#include "Settle.h"
#include "Waiting.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/Theme.h"

#include <QApplication>
#include <QCheckBox>
#include <QCursor>
#include <QDateTimeEdit>
#include <QDir>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QScrollBar>
#include <QTabBar>
#include <QTest>
#include <QTextEdit>
#include <QToolButton>
#include <QToolTip>
#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

using namespace platform;

/// A widget alone on a window of its own.
struct Stage {
    explicit Stage(QWidget* made) : widget(made) {
        made->setParent(&window);
        made->setObjectName("shown");
        window.resize(made->sizeHint().expandedTo({150, 30}) + QSize(2 * margin, 2 * margin));
        made->setGeometry(window.rect().adjusted(margin, margin, -margin, -margin));
        made->setFocusPolicy(made->focusPolicy() == Qt::NoFocus ? Qt::NoFocus : Qt::StrongFocus);
        QCursor::setPos(window.screen()->geometry().bottomRight());
        window.show();
        EXPECT_TRUE(support::becomesExposed(&window));
        window.activateWindow();
        window.setFocus();
        support::settle();
    }
    QImage picture() {
        support::settle();
        return window.grab().toImage();
    }

    static constexpr int margin = 8;
    QWidget window;
    QWidget* widget;
};

using Maker = std::function<QWidget*()>;

struct WidgetKind {
    const char* name;
    Maker make;
};

template <class Button>
Maker button(const char* look, bool checkable = false, bool checked = false) {
    return [=] {
        auto* made = new Button;
        made->setText(u"Remove"_s);
        if (qstrlen(look) > 0)
            setLook(*made, look);
        made->setCheckable(checkable);
        made->setChecked(checked);
        return made;
    };
}

template <class Box>
QWidget* textual() {
    auto* made = new Box;
    made->setText(u"100"_s);
    return made;
}

QWidget* choice() {
    auto* made = new ChoiceBox;
    made->addItems({u"100 ml"_s, u"300 ml"_s});
    made->setListIndex(0);
    return made;
}

QWidget* picker() {
    auto* made = new QDateTimeEdit(QDateTime(QDate(2026, 3, 7), QTime(14, 5, 9), Qt::UTC));
    made->setCalendarPopup(true);
    return made;
}

QWidget* number() {
    auto* made = new QDoubleSpinBox;
    made->setValue(2.5);
    return made;
}

QWidget* group() {
    auto* made = new QGroupBox(u"Reaction Options"_s);
    made->setFixedSize(200, 80);
    return made;
}

QWidget* date() {
    auto* made = new DateBox;
    made->setValue(QDateTime(QDate(2026, 3, 7), QTime(0, 0), Qt::UTC));
    return made;
}

QWidget* arrows() {
    auto* made = new UpDown;
    return made;
}

QWidget* pictured() {
    auto* made = new QToolButton;
    made->setIcon(icon(u"save"_s));
    made->setCheckable(true);
    made->setAutoRaise(true);
    return made;
}

QWidget* bar() {
    auto* made = new QScrollBar(Qt::Horizontal);
    made->setRange(0, 100);
    made->setValue(30);
    made->setPageStep(20);
    return made;
}

QWidget* tabs() {
    auto* made = new QTabBar;
    for (const char* text : {"General", "Ingredients", "Off"})
        made->addTab(QLatin1String(text));
    made->setTabEnabled(2, false);
    return made;
}

QWidget* progress() {
    auto* made = new QProgressBar;
    made->setValue(40);
    return made;
}

QWidget* list() {
    auto* made = new QListWidget;
    made->addItems({u"Fagron Hellas"_s, u"Galen"_s, u"Caesar & Loretz"_s});
    made->setCurrentRow(1);
    made->setFixedHeight(100);
    return made;
}

const WidgetKind kinds[] = {
    {"text", textual<TextBox>},
    {"memo", textual<MemoBox>},
    {"number", textual<NumberBox>},
    {"date", date},
    {"date-time", picker},
    {"spin", number},
    {"group", group},
    {"choice", choice},
    {"arrows", arrows},
    {"push", button<QPushButton>("")},
    {"push-checked", button<QPushButton>("", true, true)},
    {"push-primary", button<QPushButton>("primary")},
    {"push-danger", button<QPushButton>("danger")},
    {"tool", pictured},
    {"check", button<QCheckBox>("", true, false)},
    {"check-on", button<QCheckBox>("", true, true)},
    {"radio", button<QRadioButton>("", true, false)},
    {"radio-on", button<QRadioButton>("", true, true)},
    {"tabs", tabs},
    {"scroll", bar},
    {"progress", progress},
    {"list", list},
};

struct State {
    const char* name;
    std::function<void(QWidget&)> enter;
};

void press(QWidget& widget) {
    if (auto* pressed = qobject_cast<QAbstractButton*>(&widget))
        pressed->setDown(true);
}

void lock(QWidget& widget) {
    if (auto* box = dynamic_cast<Lockable*>(&widget))
        box->setReadOnlyBox(true);
}

const State states[] = {
    {"normal", [](QWidget&) {}},
    {"hover", [](QWidget& widget) { widget.setAttribute(Qt::WA_UnderMouse); }},
    {"pressed", press},
    {"focus", [](QWidget& widget) { widget.setFocus(Qt::TabFocusReason); }},
    {"locked", lock},
    {"locked focus",
     [](QWidget& widget) {
         lock(widget);
         widget.setFocus(Qt::TabFocusReason);
     }},
    {"caution",
     [](QWidget& widget) {
         if (qobject_cast<QLineEdit*>(&widget))
             setLook(widget, "caution");
     }},
    {"invalid",
     [](QWidget& widget) {
         if (qobject_cast<QLineEdit*>(&widget))
             setLook(widget, "invalid");
     }},
    {"disabled", [](QWidget& widget) { widget.setEnabled(false); }},
};

QImage inState(const WidgetKind& kind, const State& state) {
    Stage stage(kind.make());
    state.enter(*stage.widget);
    return stage.picture();
}

void keep(const std::vector<QImage>& pictures, const QString& name) {
    const QString folder = qEnvironmentVariable("SORVANTO_PICTURES");
    if (folder.isEmpty())
        return;
    const QSize one = pictures.front().size();
    QImage all(one.width() * static_cast<int>(pictures.size()), one.height(), QImage::Format_RGB32);
    QPainter painter(&all);
    for (std::size_t i = 0; i < pictures.size(); ++i) {
        QImage picture = pictures[i];
        picture.setDevicePixelRatio(1);
        painter.drawImage(static_cast<int>(i) * one.width(), 0, picture);
    }
    painter.end();
    all.save(QDir(folder).filePath(name));
}

class States : public testing::TestWithParam<bool> {
protected:
    void SetUp() override { applyTheme(*qApp, GetParam()); }
};

TEST_P(States, EachKindInEachState) {
    for (const WidgetKind& kind : kinds) {
        std::vector<QImage> pictures;
        for (const State& state : states)
            pictures.push_back(inState(kind, state));
        keep(pictures, u"%1-%2.png"_s.arg(QLatin1String(kind.name), GetParam() ? u"dark"_s : u"light"_s));
    }
}

int pixelsOf(const QImage& picture, const QColor& color) {
    int count = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            count += picture.pixelColor(x, y).rgb() == color.rgb() ? 1 : 0;
    return count;
}

/// A frame in the accent color, or in that of texts where the widget itself is filled with an accent.
TEST_P(States, WhatTheKeysGoToBearsOneMark) {
    constexpr int leastMark = 40;
    for (const WidgetKind& kind : kinds) {
        Stage stage(kind.make());
        if (stage.widget->focusPolicy() == Qt::NoFocus)
            continue;
        const QImage before = stage.picture();
        stage.widget->setFocus(Qt::TabFocusReason);
        const QImage after = stage.picture();
        const auto more = [&](const QColor& color) {
            return pixelsOf(after, color) - pixelsOf(before, color);
        };
        EXPECT_GE(std::max(more(theme().accent), more(theme().text)), leastMark) << kind.name;
    }
}

TEST_P(States, ATextThatIsOnlyReadLooksLikeOneThatIsLocked) {
    for (const Maker& make : {Maker(textual<QLineEdit>), Maker(textual<QTextEdit>)}) {
        Stage stage(make());
        const QPoint within = stage.window.rect().center() + QPoint(0, 6);
        EXPECT_EQ(stage.picture().pixelColor(within), theme().surface);
        stage.widget->setProperty("readOnly", true);
        stage.widget->setFocusPolicy(Qt::NoFocus);
        EXPECT_EQ(stage.picture().pixelColor(within), theme().quietField);
    }
}

/// The window of that class that lies over the others.
QWidget* popup(const char* className) {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible() && window->inherits(className))
            return window;
    return nullptr;
}

TEST_P(States, WindowsThatComeUp) {
    const QString mode = GetParam() ? u"-dark.png"_s : u"-light.png"_s;
    auto* box = new ChoiceBox;
    box->addItems({u"100 ml"_s, u"300 ml"_s, u"Select Jar Size"_s});
    Stage stage(box);
    box->setListIndex(1);
    box->showPopup();
    support::settle();
    QWidget* list = popup("QComboBoxPrivateContainer");
    ASSERT_NE(list, nullptr);
    keep({list->grab().toImage()}, "popup" + mode);
    box->hidePopup();
    QToolTip::showText(QPoint(10, 10), u"Formulas (F6)"_s);
    QWidget* tip = popup("QTipLabel");
    ASSERT_NE(tip, nullptr);
    keep({tip->grab().toImage()}, "tip" + mode);
    QToolTip::hideText();
    QFileDialog files(nullptr, u"Open"_s, u"/usr"_s);
    files.setOption(QFileDialog::DontUseNativeDialog);
    files.show();
    support::settle();
    keep({files.grab().toImage()}, "files" + mode);
}

INSTANTIATE_TEST_SUITE_P(LightAndDark, States, testing::Bool());

}  // namespace
