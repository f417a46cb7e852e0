// Every key of the main window, pressed in every kind of box: it does what its tool says, and edits no text.
#include "Settle.h"
#include "Waiting.h"
#include "core/CommandBands.h"
#include "core/RecordListPlace.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/CommandBar.h"
#include "platform/widgets/EnterKey.h"
#include "platform/widgets/RecordGrid.h"
#include "platform/widgets/SampleRows.h"
#include "platform/widgets/StepEntry.h"
#include "shared/Context.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QMainWindow>
#include <QPointer>
#include <QShortcut>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace sorvanto;

namespace {

/// The keys that edit text on one desktop or another: those of the test's own desktop, and what the others add.
QSet<QKeySequence> editingKeys() {
    using Key = QKeySequence::StandardKey;
    QSet<QKeySequence> keys;
    for (const Key key :
         {Key::Cut, Key::Copy, Key::Paste, Key::Undo, Key::Redo, Key::Delete, Key::Backspace,
          Key::DeleteStartOfWord, Key::DeleteEndOfWord, Key::DeleteEndOfLine, Key::DeleteCompleteLine,
          Key::InsertParagraphSeparator, Key::InsertLineSeparator, Key::SelectAll}) {
        for (const QKeySequence& bound : QKeySequence::keyBindings(key))
            keys << bound;
    }
    for (const char* more : {"Backspace",
                             "Shift+Backspace",
                             "Ctrl+Backspace",
                             "Alt+Backspace",
                             "Ctrl+Shift+Backspace",
                             "Del",
                             "Shift+Del",
                             "Ctrl+Del",
                             "Alt+Del",
                             "Ctrl+Shift+Del",
                             "Ins",
                             "Shift+Ins",
                             "Ctrl+Ins",
                             "Ctrl+A",
                             "Ctrl+C",
                             "Ctrl+D",
                             "Ctrl+H",
                             "Ctrl+K",
                             "Ctrl+O",
                             "Ctrl+T",
                             "Ctrl+U",
                             "Ctrl+V",
                             "Ctrl+W",
                             "Ctrl+X",
                             "Ctrl+Y",
                             "Ctrl+Z",
                             "Ctrl+Shift+Z",
                             "Ctrl+Shift+V",
                             "Ctrl+Shift+U",
                             "Ctrl+.",
                             "Ctrl+;",
                             "F14",
                             "F16",
                             "F18",
                             "F20"})
        keys << QKeySequence(QString::fromLatin1(more));
    return keys;
}

class KeyClash : public testing::Test {
protected:
    KeyClash() {
        buildCommandBands(bar);
        bar.attach(window, u"Sorvanto"_s);
        place = new RecordListPlace(context, window, bar);
        bar.band(u"Formulas"_s).tool(u"frmFormula"_s).setForm(&form);
        bar.band(u"Formulas"_s).setVisible(true);
        QObject::connect(&bar, &platform::CommandBar::toolClick, &window,
                         [this](platform::Tool& tool) { clicks << tool.name(); });
        addBoxes();
        window.resize(1500, 800);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(support::becomesActive(&window));
    }

    template <class Box>
    Box& add(Box* box) {
        column->addWidget(box);
        return *box;
    }
    void addBoxes() {
        text.setText(u"salve base"_s);
        memo.setText(u"stir well\nand cool"_s);
        number.setText(u"12.5"_s);
        date.setValue(QDateTime(QDate(2026, 3, 1), QTime()));
        choice.addItems({u"Cream"_s, u"Gel"_s, u"Salve"_s});
        choice.setCurrentIndex(1);
        speed.setValue(40);
        search()->setText(u"arnica"_s);
        grid.setColumns({{u"Name"_s, u"Name"_s, 200, true}, {u"Note"_s, u"Note"_s, 0, true}});
        grid.setDataSource(rows.open());
        grid.setAllowUpdate(true);
    }
    /// All texts. A cell and a number that are being typed are the same before and after they are left.
    QString state() const {
        const bool open = cell() && cell()->isVisible();
        return QStringList{text.text(),
                           memo.text(),
                           number.QLineEdit::text(),
                           date.text(),
                           choice.currentText(),
                           entry.isVisible() ? entry.text() : QString::number(speed.value()),
                           open ? cell()->text() : grid.model()->index(0, 0).data().toString(),
                           search()->text(),
                           QApplication::clipboard()->text()}
            .join('|'_L1);
    }
    QLineEdit* search() const { return window.findChild<QLineEdit*>(u"searchBox"_s); }
    QLineEdit* cell() const { return grid.viewport()->findChild<QLineEdit*>(u"cellEditor"_s); }

    QWidget& boxOf(const QString& kind) {
        if (kind == "date"_L1)
            return *date.findChild<QLineEdit*>();
        if (kind == "search"_L1)
            return *search();
        if (kind == "cell"_L1) {
            if (!cell() || !cell()->isVisible()) {
                grid.setFocus();
                grid.setCurrentIndex(grid.model()->index(0, 0));
                grid.edit(grid.currentIndex());
            }
            return *cell();
        }
        if (kind == "typed up-down"_L1) {
            if (!entry.isVisible()) {
                speed.setFocus();
                QTest::keyClick(&speed, Qt::Key_7);
            }
            return entry;
        }
        return *kinds.value(kind);
    }
    static void selectInside(QWidget& box) {
        if (auto* line = qobject_cast<QLineEdit*>(&box))
            line->setSelection(1, 2);
        if (auto* lines = qobject_cast<QPlainTextEdit*>(&box)) {
            QTextCursor cursor = lines->textCursor();
            cursor.setPosition(2);
            cursor.setPosition(4, QTextCursor::KeepAnchor);
            lines->setTextCursor(cursor);
        }
    }
    static void press(QWidget& box, const QKeySequence& keys) {
        QTest::keyClick(&box, keys[0].key(), keys[0].keyboardModifiers());
        support::settle();
    }
    void closeMenus() {
        while (QWidget* menu = QApplication::activePopupWidget())
            menu->close();
        support::settle();
    }
    /// The keys of the window, each with what it belongs to.
    QMap<QKeySequence, QAction*> keys() const {
        QMap<QKeySequence, QAction*> found;
        for (QAction* action : window.actions()) {
            for (const QKeySequence& bound : action->shortcuts()) {
                EXPECT_FALSE(found.contains(bound)) << bound.toString().toStdString() << " has two owners";
                found.insert(bound, action);
            }
        }
        return found;
    }

    support::SampleRows rows{3};
    QMainWindow window;
    platform::CommandBar bar;
    const platform::EnterKey enter{nullptr};
    QWidget form;
    QVBoxLayout* column = new QVBoxLayout(&form);
    platform::TextBox& text = add(new platform::TextBox);
    platform::NumberBox& number = add(new platform::NumberBox);
    platform::DateBox& date = add(new platform::DateBox);
    platform::ChoiceBox& choice = add(new platform::ChoiceBox);
    platform::MemoBox& memo = add(new platform::MemoBox);
    platform::RecordGrid& grid = add(new platform::RecordGrid);
    QLabel& label = add(new QLabel(u"40"_s));
    platform::UpDown& speed = add(new platform::UpDown);
    platform::StepEntry& entry = *new platform::StepEntry(speed, label);
    const QMap<QString, QWidget*> kinds{
        {u"text"_s, &text},     {u"number"_s, &number},   {u"date"_s, nullptr},
        {u"search"_s, nullptr}, {u"combo"_s, &choice},    {u"cell"_s, nullptr},
        {u"up-down"_s, &speed}, {u"multi-line"_s, &memo}, {u"typed up-down"_s, nullptr}};
    Context context;
    RecordListPlace* place = nullptr;
    QStringList clicks;
};

TEST_F(KeyClash, NoKeyEditsTextOnAnyDesktop) {
    const QSet<QKeySequence> editing = editingKeys();
    for (const QKeySequence& key : keys().keys())
        EXPECT_FALSE(editing.contains(key)) << key.toString().toStdString();
    EXPECT_TRUE(window.findChildren<QShortcut*>().isEmpty()) << "keys that this test would not see";
}

TEST_F(KeyClash, EachKeyDoesWhatItsToolSaysInEveryKindOfBoxAndLeavesTheTextAlone) {
    QApplication::clipboard()->setText(u"from elsewhere"_s);
    const auto all = keys();
    EXPECT_GT(all.size(), 20);
    for (const QString& kind : kinds.keys()) {
        for (auto key = all.begin(); key != all.end(); ++key) {
            const std::string where = (key.key().toString() + u" in "_s + kind).toStdString();
            const QPointer<QWidget> box = &boxOf(kind);
            box->setFocus();
            selectInside(*box);
            ASSERT_EQ(QApplication::focusWidget(), box) << where;
            const QString before = state();
            clicks.clear();
            int triggered = 0;
            const auto watch =
                QObject::connect(*key, &QAction::triggered, &window, [&triggered] { ++triggered; });
            press(*box, key.key());
            QObject::disconnect(watch);
            EXPECT_EQ(triggered, 1) << where;
            EXPECT_LE(clicks.size(), 1) << where << ": " << clicks.join(' '_L1).toStdString();
            closeMenus();
            if (box)
                box->setFocus();
            EXPECT_EQ(state().toStdString(), before.toStdString()) << where;
        }
    }
}

TEST_F(KeyClash, EscapeBelongsToNoTool) {
    for (const QString& kind : kinds.keys()) {
        QWidget& box = boxOf(kind);
        box.setFocus();
        clicks.clear();
        press(box, QKeySequence(Qt::Key_Escape));
        EXPECT_TRUE(clicks.isEmpty()) << kind.toStdString() << ": " << clicks.join(' '_L1).toStdString();
    }
}

TEST_F(KeyClash, WhatEditsAWordInTheSearchBoxDoesSo) {
    search()->setText(u"arnica salve"_s);
    search()->setFocus();
    press(*search(), QKeySequence(u"Ctrl+Backspace"_s));
    EXPECT_EQ(search()->text(), u"arnica "_s);
    search()->home(false);
    press(*search(), QKeySequence(u"Ctrl+Del"_s));
    EXPECT_EQ(search()->text(), u""_s);
    EXPECT_TRUE(clicks.isEmpty()) << clicks.join(' '_L1).toStdString();
}

TEST_F(KeyClash, CtrlFGoesToTheSearchBoxAndSearchesForNothing) {
    search()->setText(u"arnica"_s);
    text.setFocus();
    press(text, QKeySequence(u"Ctrl+F"_s));
    EXPECT_TRUE(search()->hasFocus());
    EXPECT_EQ(search()->selectedText(), u"arnica"_s);
    EXPECT_TRUE(clicks.isEmpty()) << clicks.join(' '_L1).toStdString();
}

}  // namespace
