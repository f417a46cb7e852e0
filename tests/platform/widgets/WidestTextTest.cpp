// The widest of many texts against measuring each of them.
#include "platform/widgets/WidestText.h"

#include <QApplication>
#include <QRandomGenerator>
#include <QStringList>
#include <algorithm>
#include <utility>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

int widestOf(const QStringList& texts, const QFontMetrics& metrics) {
    platform::WidestText widest(metrics);
    for (const QString& text : texts)
        widest.add(text);
    return widest.width();
}

int measured(const QStringList& texts, const QFontMetrics& metrics) {
    int widest = 0;
    for (const QString& text : texts)
        widest = std::max(widest, metrics.horizontalAdvance(text));
    return widest;
}

TEST(WidestTextTest, OfManyTextsInFourScripts) {
    const QFontMetrics metrics(QApplication::font());
    const QString signs = u"AVWTo.il1wmM йЖщ ΑΩ 药品 "_s;
    QRandomGenerator random(7);
    for (int round = 0; round < 20; ++round) {
        QStringList texts;
        for (int i = 0; i < 400; ++i) {
            QString text;
            for (int length = random.bounded(24); length > 0; --length)
                text += signs.at(random.bounded(signs.size()));
            texts << text;
        }
        EXPECT_EQ(widestOf(texts, metrics), measured(texts, metrics)) << "round " << round;
    }
}

/// A text that kerning makes narrower than another one, although its signs are wider together.
std::pair<QString, QString> kernedAndWider(const QFontMetrics& metrics) {
    const int a = metrics.horizontalAdvance(u'A'), v = metrics.horizontalAdvance(u'V');
    for (int pairs = 1; pairs < 40; ++pairs) {
        const QString kerned = u"AV"_s.repeated(pairs);
        for (QString other = u"i"_s; metrics.horizontalAdvance(other) < pairs * (a + v); other += u'i')
            if (metrics.horizontalAdvance(other) > metrics.horizontalAdvance(kerned))
                return {kerned, other};
    }
    return {};
}

TEST(WidestTextTest, OneTextAHundredTimesHidesNoWiderOne) {
    const QFontMetrics metrics(QApplication::font());
    const auto [kerned, wider] = kernedAndWider(metrics);
    ASSERT_FALSE(kerned.isEmpty()) << "a font without kerning";
    EXPECT_EQ(widestOf(QStringList(100, kerned) << wider, metrics), metrics.horizontalAdvance(wider));
}

TEST(WidestTextTest, NothingHasNoWidth) { EXPECT_EQ(widestOf({}, QFontMetrics(QApplication::font())), 0); }

}  // namespace
