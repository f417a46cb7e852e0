// Bars, read back by an independent reader from sheets at the resolutions of usual printers.
#include "Samples.h"
#include "Tools.h"

#include "platform/report/Code39.h"
#include "platform/report/PagePainter.h"
#include "platform/report/ReportOutput.h"

#include <QPainter>
#include <gtest/gtest.h>

using namespace platform;
using namespace samples;

TEST(Code39, PatternHasStartAndStopMarks) {
    const std::vector<int> a = Code39::pattern("A");
    // Three characters of five bars and four gaps, with a narrow gap between them; wide is twice narrow.
    EXPECT_EQ(a.size(), 3u * 9 + 2);
    EXPECT_EQ(a, (std::vector<int>{1, 2, 1, 1, 2, 1, 2, 1, 1, 1, 2, 1, 1, 1, 1,
                                   2, 1, 1, 2, 1, 1, 2, 1, 1, 2, 1, 2, 1, 1}));
    EXPECT_EQ(Code39::modules(a), 12 + 1 + 12 + 1 + 12);
}

TEST(Code39, LettersAreReadAsUpperCase) { EXPECT_EQ(Code39::pattern("lot-7a"), Code39::pattern("LOT-7A")); }

TEST(Code39, OtherCharactersHaveNoBars) {
    for (const char* text : {"", "A*B", "A_B", "Ä1", "A\tB", "1,5"})
        EXPECT_TRUE(Code39::pattern(QString::fromUtf8(text)).empty()) << text;
    EXPECT_FALSE(Code39::pattern("A-1. $/+%Z").empty());
}

TEST(Code39, FitsOnlyWithItsQuietZones) {
    EXPECT_TRUE(Code39::fits("0303A0000100", 3420));
    const int needed = static_cast<int>((Code39::modules(Code39::pattern("ABC")) + 20) * 2 * 4.8);
    EXPECT_TRUE(Code39::fits("ABC", needed + 1));
    EXPECT_FALSE(Code39::fits("ABC", needed - 1));
}

class Code39Sheet : public testing::TestWithParam<int> {};

TEST_P(Code39Sheet, EveryLabelOfASheetIsRead) {
    const auto run = finished(std::make_unique<StripLabels>(0, 30, "0303a0000100"));
    EXPECT_TRUE(run->document().warnings.empty());
    QTemporaryDir folder;
    const QString path = folder.filePath("labels.pdf");
    ASSERT_TRUE(savePdf(run->document(), path));
    const int dots = GetParam();
    const QImage sheet = tools::picture(path, 1, dots);
    const double pixel = dots / 1440.0;
    std::vector<QImage> labels;
    for (int label = 0; label < 30; ++label) {
        const QRect place(static_cast<int>((label % 3 * 4080) * pixel),
                          static_cast<int>((720 + label / 3 * 1440) * pixel), static_cast<int>(4080 * pixel),
                          static_cast<int>(1440 * pixel));
        labels.push_back(sheet.copy(place));
    }
    EXPECT_EQ(tools::barCodes(labels), QStringList(30, "0303A0000100"));
}

TEST_P(Code39Sheet, BarsAreBlackOrWhiteAndKeepTheirQuietZone) {
    const auto run = finished(std::make_unique<StripLabels>(1, 1, "L-42"));
    QTemporaryDir folder;
    const QString path = folder.filePath("labels.pdf");
    ASSERT_TRUE(savePdf(run->document(), path));
    const QImage sheet = tools::picture(path, 1, GetParam());
    const double pixel = GetParam() / 1440.0;
    const int y = static_cast<int>((720 + 990 + 90) * pixel);
    const int left = static_cast<int>((4080 + 360) * pixel),
              right = static_cast<int>((4080 + 360 + 3420) * pixel);
    std::vector<int> widths;
    int run_ = 0, last = 255;
    for (int x = left; x < right; ++x) {
        const int grey = qGray(sheet.pixel(x, y));
        EXPECT_TRUE(grey == 0 || grey == 255) << "no grey edges, at " << x;
        if (grey != last) {
            widths.push_back(run_);
            run_ = 0;
            last = grey;
        }
        ++run_;
    }
    widths.push_back(run_);
    const std::vector<int> pattern = Code39::pattern("L-42");
    ASSERT_EQ(widths.size(), pattern.size() + 2);
    const int module = widths[1] / pattern[0];
    for (std::size_t i = 0; i < pattern.size(); ++i)
        EXPECT_EQ(widths[i + 1], pattern[i] * module) << "bar or gap " << i;
    EXPECT_GE(widths.front(), 10 * module);
    EXPECT_GE(widths.back(), 10 * module);
}

INSTANTIATE_TEST_SUITE_P(Printers, Code39Sheet, testing::Values(300, 600));

TEST(Code39, OnScreenBarsAreWholePixels) {
    const auto run = finished(std::make_unique<StripLabels>(0, 1, "L-42"));
    for (const double zoom : {1.37, 2.0, 3.3}) {
        const double scale = zoom * 96 / 1440;
        QImage screen(static_cast<int>(4080 * scale), static_cast<int>(2400 * scale), QImage::Format_RGB32);
        screen.fill(Qt::white);
        QPainter painter(&screen);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.translate(0.4, 0.3);
        painter.scale(scale, scale);
        PagePainter(run->document()).paint(painter, run->document().pages[0]);
        painter.end();
        const int y = static_cast<int>((720 + 990 + 90) * scale);
        for (int x = 0; x < screen.width(); ++x) {
            const int grey = qGray(screen.pixel(x, y));
            ASSERT_TRUE(grey == 0 || grey == 255) << zoom << " at " << x;
        }
        EXPECT_EQ(tools::barCodes({screen.scaledToWidth(screen.width() * 2)}), QStringList("L-42")) << zoom;
    }
}

TEST(Code39, ATextWithoutBarsIsToldAndTheRestStays) {
    const auto run = finished(std::make_unique<StripLabels>(0, 5, "Lot_7"));
    const PageDocument& document = run->document();
    ASSERT_EQ(document.warnings.size(), 1u);
    EXPECT_EQ(document.warnings[0].kind, WarningKind::NoBarCode);
    EXPECT_EQ(document.warnings[0].count, 5);
    EXPECT_EQ(document.warnings[0].text, "Lot_7");
    EXPECT_TRUE(dumped(document).contains("Lot_7")) << "the writing stays";
    EXPECT_TRUE(finished(std::make_unique<StripLabels>(0, 1, ""))->document().warnings.empty());
    EXPECT_EQ(finished(std::make_unique<StripLabels>(0, 1, QString(40, 'W')))->document().warnings.size(), 2u)
        << "too long for the writing and for the bars";
}
