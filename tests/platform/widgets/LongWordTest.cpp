// Texts of 200,000 characters without a blank: each place that shows a text takes them at once.
#include "Child.h"
#include "platform/widgets/AskDialog.h"
#include "platform/widgets/Boxes.h"

#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QFontMetrics>
#include <QLabel>
#include <QMimeData>
#include <QTest>
#include <cstdio>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using platform::MemoBox;

const QString longWord(200'000, u'W');

/// Printed for those who look at it; never judged.
class Clock {
public:
    explicit Clock(const char* what) : m_what(what) { m_time.start(); }
    ~Clock() { std::printf("%s: %lld ms\n", m_what, static_cast<long long>(m_time.elapsed())); }
    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;

private:
    const char* m_what;
    QElapsedTimer m_time;
};

TEST(LongWord, AMemoShowsIt) {
    MemoBox box;
    box.resize(400, 120);
    box.show();
    {
        const Clock clock("a memo with a long word");
        box.setText(longWord);
        box.grab();
    }
    EXPECT_EQ(box.text(), longWord);
    EXPECT_EQ(box.wordWrapMode(), QTextOption::WrapAnywhere);
    box.setText("An ordinary text");
    EXPECT_EQ(box.wordWrapMode(), QTextOption::WrapAtWordBoundaryOrAnywhere);
}

TEST(LongWord, AMemoTakesItFromTheClipboard) {
    MemoBox box;
    box.resize(400, 120);
    box.show();
    {
        const Clock clock("the same pasted, and a key");
        QApplication::clipboard()->setText(longWord);
        box.paste();
        QTest::keyClicks(&box, "x");
        box.grab();
    }
    EXPECT_EQ(box.text().size(), longWord.size() + 1);
}

TEST(LongWord, AQuestionShowsIt) {
    const Clock clock("a question");
    platform::AskDialog box("Delete " + longWord + "?", {}, "Title", nullptr);
    box.show();
    box.grab();
    EXPECT_LT(box.width(), 700);
}

}  // namespace
