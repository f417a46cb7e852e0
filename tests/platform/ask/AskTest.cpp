// The port: who answers, and which title a box bears.
#include "platform/ask/Ask.h"
#include "ScriptedAsker.h"
#include "platform/basic/RuntimeError.h"

#include <gtest/gtest.h>

namespace {

using namespace platform;

TEST(Ask, WithoutAnAskerAskingIsAnError) {
    setAsker(nullptr);
    try {
        MsgBox("anyone?");
        FAIL();
    } catch (const RuntimeError& failure) {
        EXPECT_EQ(failure.number(), error::objectNotSet);
    }
}

class Recorder : public Asker {
public:
    Answer messageBox(const QString& prompt, BoxStyle style, const QString& title) override {
        told << prompt << title << QString::number(static_cast<int>(style.buttons));
        return Answer::No;
    }
    QString inputBox(const QString& prompt, const QString& title, const QString& preset,
                     const LineGuide&) override {
        told << prompt << title << preset;
        return "typed";
    }
    QString openFile(const QString&, const QString&) override { return {}; }
    void showModal(QObject&, const std::function<void()>& exec) override { exec(); }
    QStringList told;
};

TEST(Ask, TheApplicationsTitleStandsWhereNoneIsGiven) {
    Recorder recorder;
    setAsker(&recorder);
    setApplicationTitle("Panel");
    EXPECT_EQ(applicationTitle(), "Panel");
    EXPECT_EQ(MsgBox("one"), Answer::No);
    MsgBox("two", deletionStyle, "Own");
    MsgBox("three", {}, "");
    EXPECT_EQ(InputBox("four"), "typed");
    InputBox("five", "", "preset");
    EXPECT_EQ(recorder.told, QStringList({"one", "Panel", "0", "two", "Own", "2", "three", "", "0", "four",
                                          "Panel", "", "five", "", "preset"}));
    setAsker(nullptr);
    setApplicationTitle({});
}

TEST(Ask, TheAnswersAreTheNumbersThatCallersHandOn) {
    EXPECT_EQ(static_cast<int>(Answer::Ok), 1);
    EXPECT_EQ(static_cast<int>(Answer::Cancel), 2);
    EXPECT_EQ(static_cast<int>(Answer::Yes), 6);
    EXPECT_EQ(static_cast<int>(Answer::No), 7);
}

TEST(Ask, TheDeletionBoxHasNoAsItsDefault) {
    EXPECT_EQ(deletionStyle.buttons, Buttons::YesNoCancel);
    EXPECT_EQ(deletionStyle.icon, Icon::Exclamation);
    EXPECT_TRUE(deletionStyle.secondIsDefault);
}

}  // namespace
