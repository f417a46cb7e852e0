// The real windows: which buttons, which is the default, what keys answer, what they look like.
#include "platform/widgets/QtAsker.h"
#include "support/Waiting.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QScrollArea>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <QTimer>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using namespace platform;

class QtAsking : public testing::Test {
protected:
    void SetUp() override { setAsker(&asker); }
    void TearDown() override {
        setAsker(nullptr);
        setTextTranslator({});
    }
    /// Runs with the box that comes up next.
    void when(std::function<void(QDialog&)> script) {
        QTimer::singleShot(0, qApp, [this, script = std::move(script)] {
            auto* box = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (!box || !box->isVisible() || QThread::currentThread()->loopLevel() == 0) {
                when(script);  // a window that takes its time to come up and to wait
                return;
            }
            EXPECT_TRUE(support::becomesActive(box));
            script(*box);
        });
    }
    static QStringList captions(const QDialog& box) {
        QStringList result;
        for (const auto* button : box.findChildren<QPushButton*>())
            result << button->text();
        return result;
    }
    static QString defaultButton(const QDialog& box) {
        for (const auto* button : box.findChildren<QPushButton*>())
            if (button->isDefault())
                return button->text();
        return {};
    }
    QtAsker asker;
};

TEST_F(QtAsking, APlainBoxHasOneButtonForAllKeys) {
    for (const auto key : {Qt::Key_Return, Qt::Key_Escape, Qt::Key_Space}) {
        when([key](QDialog& box) {
            EXPECT_EQ(captions(box), QStringList("OK"));
            EXPECT_EQ(box.windowTitle(), "Title");
            EXPECT_EQ(box.findChild<QLabel*>("prompt")->text(), "Formula Name is required");
            EXPECT_EQ(box.findChild<QLabel*>("picture"), nullptr);
            QTest::keyClick(QApplication::focusWidget(), key);
        });
        EXPECT_EQ(MsgBox("Formula Name is required", {}, "Title"), Answer::Ok);
    }
}

TEST_F(QtAsking, TheDeletionBoxAnswersNoToEnter) {
    when([](QDialog& box) {
        EXPECT_EQ(captions(box), QStringList({"&Yes", "&No", "&Cancel"}));
        EXPECT_EQ(defaultButton(box), "&No");
        EXPECT_NE(box.findChild<QLabel*>("picture"), nullptr);
        QTest::keyClick(&box, Qt::Key_Return);
    });
    EXPECT_EQ(MsgBox("Sure?", deletionStyle, "Delete"), Answer::No);
    when([](QDialog& box) { QTest::keyClick(&box, Qt::Key_Escape); });
    EXPECT_EQ(MsgBox("Sure?", deletionStyle, "Delete"), Answer::Cancel);
    when([](QDialog& box) { box.close(); });
    EXPECT_EQ(MsgBox("Sure?", deletionStyle, "Delete"), Answer::Cancel);
    when([](QDialog& box) { QTest::mouseClick(box.findChild<QPushButton*>("Yes"), Qt::LeftButton); });
    EXPECT_EQ(MsgBox("Sure?", deletionStyle, "Delete"), Answer::Yes);
}

TEST_F(QtAsking, YesOrNoMustBeAnswered) {
    when([](QDialog& box) {
        EXPECT_EQ(defaultButton(box), "&Yes");
        QTest::keyClick(&box, Qt::Key_Escape);
        box.close();
        EXPECT_TRUE(box.isVisible());
        QTest::mouseClick(box.findChild<QPushButton*>("No"), Qt::LeftButton);
    });
    EXPECT_EQ(MsgBox("Sure?", {Buttons::YesNo, Icon::Exclamation, false, false}), Answer::No);
}

TEST_F(QtAsking, EachAnswerHasAKeyOfItsOwnInTheUsersLanguage) {
    setTextTranslator([](const QString& text) {
        return text == "Yes" ? u"Sí"_s : text == "Cancel" ? u"Sin respuesta"_s : text;
    });
    when([](QDialog& box) {
        EXPECT_EQ(captions(box), QStringList({u"&Sí"_s, u"&No"_s, u"S&in respuesta"_s}));
        QTest::keyClick(&box, Qt::Key_S);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_S);
        EXPECT_TRUE(box.isVisible()) << "a letter alone answers nothing";
        QTest::keyClick(&box, Qt::Key_S, Qt::AltModifier);
    });
    EXPECT_EQ(MsgBox("x", deletionStyle), Answer::Yes);
    when([](QDialog& box) { QTest::keyClick(&box, Qt::Key_I, Qt::AltModifier); });
    EXPECT_EQ(MsgBox("x", deletionStyle), Answer::Cancel);
}

TEST_F(QtAsking, NoTitleMeansNone) {
    setApplicationTitle("Panel");
    when([](QDialog& box) {
        EXPECT_EQ(box.windowTitle().trimmed(), "");
        box.accept();
    });
    MsgBox("x", {}, "");
    when([](QDialog& box) {
        EXPECT_EQ(box.windowTitle(), "Panel");
        box.accept();
    });
    MsgBox("x");
    setApplicationTitle({});
}

TEST_F(QtAsking, ASystemModalBoxStaysOnTop) {
    when([](QDialog& box) {
        EXPECT_TRUE(box.windowFlags() & Qt::WindowStaysOnTopHint);
        EXPECT_TRUE(box.isModal());
        box.reject();
    });
    MsgBox("x", {Buttons::YesNoCancel, Icon::Exclamation, false, true});
}

TEST_F(QtAsking, ButtonsAreTranslated) {
    setTextTranslator([](const QString& text) { return text == "Cancel" ? u"Abbrechen"_s : text; });
    when([](QDialog& box) {
        EXPECT_EQ(captions(box), QStringList({"&Yes", "&No", "&Abbrechen"}));
        QTest::mouseClick(box.findChild<QPushButton*>("Cancel"), Qt::LeftButton);
    });
    EXPECT_EQ(MsgBox("x", deletionStyle), Answer::Cancel);
}

TEST_F(QtAsking, TextIsPlainAndALongOneScrolls) {
    when([](QDialog& box) {
        EXPECT_EQ(box.findChild<QLabel*>("prompt")->textFormat(), Qt::PlainText);
        EXPECT_EQ(box.findChild<QScrollArea*>(), nullptr);
        box.accept();
    });
    MsgBox("<b>5 < 6 & so on</b>");
    when([](QDialog& box) {
        EXPECT_NE(box.findChild<QScrollArea*>(), nullptr);
        EXPECT_LT(box.height(), 700);
        EXPECT_LT(box.width(), 700);
        box.accept();
    });
    MsgBox(u"word "_s.repeated(2000));
}

TEST_F(QtAsking, ALineIsTyped) {
    when([](QDialog& box) {
        auto* line = box.findChild<QLineEdit*>("line");
        EXPECT_TRUE(line->hasFocus());
        EXPECT_EQ(line->selectedText(), "preset");
        QTest::keyClicks(line, "O'Brien");
        QTest::keyClick(line, Qt::Key_Return);
    });
    EXPECT_EQ(InputBox("Name?", "Search", "preset"), "O'Brien");
    when([](QDialog& box) {
        QTest::keyClicks(box.findChild<QLineEdit*>("line"), "x");
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    EXPECT_EQ(InputBox("Name?"), "");
    when([](QDialog& box) { QTest::mouseClick(box.findChild<QPushButton*>("Cancel"), Qt::LeftButton); });
    EXPECT_EQ(InputBox("Name?", "Search", "preset"), "");
}

TEST_F(QtAsking, ALineHasItsNote) {
    const LineGuide guide{[](const QString& line) { return QString(line).replace(u',', u'.'); },
                          [](const QString& line) {
                              return LineNote{"Now: " + line, line.contains(u'/')};
                          }};
    when([](QDialog& box) {
        auto* line = box.findChild<QLineEdit*>("line");
        auto* note = box.findChild<QLabel*>("note");
        EXPECT_EQ(note->text(), "Now: ");
        QTest::keyClicks(line, "2,");
        EXPECT_EQ(line->text(), "2.");
        QTest::keyClicks(line, "5");
        EXPECT_EQ(note->text(), "Now: 2.5");
        EXPECT_FALSE(note->property("caution").toBool());
        QTest::keyClick(line, Qt::Key_Home);
        QTest::keyClicks(line, "1,");
        EXPECT_EQ(line->text(), "1.2.5");
        EXPECT_EQ(line->cursorPosition(), 2);
        QTest::keyClicks(line, "/");
        EXPECT_TRUE(note->property("caution").toBool());
        EXPECT_EQ(line->accessibleDescription(), note->text());
        QTest::keyClick(line, Qt::Key_Return);
    });
    EXPECT_EQ(InputBox("How much?", "", "", guide), "1./2.5");
}

TEST_F(QtAsking, AFileIsChosenWithoutRegardToCase) {
    QTemporaryDir folder;
    for (const char* name : {"SORVANTO.MDB", "other.txt"}) {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    const QString wanted = folder.filePath("SORVANTO.MDB");
    when([&](QDialog& box) {
        auto& dialog = static_cast<QFileDialog&>(box);
        EXPECT_EQ(dialog.windowTitle(), "Database");
        EXPECT_EQ(dialog.nameFilters(), QStringList("Database (sorvanto.mdb)"));
        dialog.setDirectory(folder.path());
        auto* list = dialog.findChild<QListView*>("listView");
        EXPECT_TRUE(support::waitFor([list] { return list->model()->rowCount(list->rootIndex()) == 1; }));
        dialog.findChild<QLineEdit*>("fileNameEdit")->setText("SORVANTO.MDB");
        QMetaObject::invokeMethod(&dialog, "accept");
    });
    EXPECT_EQ(platform::asker().openFile("Database", "Database|sorvanto.mdb"),
              QDir::toNativeSeparators(wanted));
    when([](QDialog& box) { box.reject(); });
    EXPECT_EQ(platform::asker().openFile("Database", "Database|sorvanto.mdb"), "");
}

TEST_F(QtAsking, ABoxIsAsWideAsItsTitleNeeds) {
    const QString title = u"Quite a long title for a box with hardly a word in it"_s;
    when([&](QDialog& box) {
        EXPECT_GT(box.width(), box.fontMetrics().horizontalAdvance(title) + 60);
        box.accept();
    });
    MsgBox("No", {}, title);
    when([&](QDialog& box) {
        EXPECT_LT(box.width(), 400);
        box.accept();
    });
    MsgBox("No", {}, "Short");
}

TEST_F(QtAsking, ANoteStandsQuietlyBelowThePrompt) {
    when([](QDialog& box) {
        const auto* remark = box.findChild<QLabel*>("remark");
        ASSERT_NE(remark, nullptr);
        EXPECT_EQ(remark->text(), "Nothing was typed.");
        EXPECT_GT(remark->mapTo(&box, QPoint()).y(),
                  box.findChild<QLabel*>("prompt")->mapTo(&box, QPoint()).y());
        EXPECT_EQ(box.findChild<QLabel*>("prompt")->text(), "Save?");
        box.accept();
    });
    BoxStyle style;
    style.note = u"Nothing was typed."_s;
    MsgBox("Save?", style, "Title");
    when([](QDialog& box) {
        EXPECT_EQ(box.findChild<QLabel*>("remark"), nullptr);
        box.accept();
    });
    MsgBox("Save?", {}, "Title");
}

TEST_F(QtAsking, ABoxBelongsToTheWindowInUse) {
    QWidget first, second;
    asker.setParent(&first);
    first.show();
    second.show();
    second.activateWindow();
    ASSERT_TRUE(support::becomesActive(&second));
    when([&](QDialog& box) {
        EXPECT_EQ(box.parentWidget(), &second);
        box.accept();
    });
    MsgBox("x");
    first.activateWindow();
    ASSERT_TRUE(support::becomesActive(&first));
    when([&](QDialog& box) {
        EXPECT_EQ(box.parentWidget(), &first);
        box.accept();
    });
    MsgBox("x");
    asker.setParent(nullptr);
}

}  // namespace
