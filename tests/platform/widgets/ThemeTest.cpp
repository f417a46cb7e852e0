// Colors can be read, pictures follow the colors and are sharp at every scale.
#include "platform/widgets/Theme.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/Calendar.h"
#include "platform/widgets/LaterIcon.h"
#include "support/Waiting.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QCheckBox>
#include <QDateTimeEdit>
#include <QDirIterator>
#include <QFontDatabase>
#include <QHeaderView>
#include <QLabel>
#include <QRegularExpression>
#include <QSpinBox>
#include <QStyleFactory>
#include <QTableWidget>
#include <QTest>
#include <QTextCharFormat>
#include <QToolButton>
#include <QVBoxLayout>
#include <cmath>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using namespace platform;

double channel(double share) {
    return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
    return 0.2126 * channel(color.redF()) + 0.7152 * channel(color.greenF()) +
           0.0722 * channel(color.blueF());
}

double contrast(const QColor& a, const QColor& b) {
    const double x = luminance(a), y = luminance(b);
    return (std::max(x, y) + 0.05) / (std::min(x, y) + 0.05);
}

class BothThemes : public testing::TestWithParam<bool> {
protected:
    const Theme& t = themeOf(GetParam());
};

TEST_P(BothThemes, TextsCanBeReadOnEveryBackground) {
    for (const QColor& ground : {t.window, t.surface, t.softAccent, t.alternateRow})
        for (const QColor& ink : {t.text, t.secondaryText, t.accent})
            EXPECT_GE(contrast(ink, ground), 4.5)
                << ink.name().toStdString() << " on " << ground.name().toStdString();
    for (const QColor& ground : {t.window, t.surface, t.softAccent, t.alternateRow})  // also in a chosen row
        for (const QColor& ink : {t.warning, t.danger})
            EXPECT_GE(contrast(ink, ground), 4.5)
                << ink.name().toStdString() << " on " << ground.name().toStdString();
    for (const QColor& ground : {t.window, t.surface})
        EXPECT_GE(contrast(t.good, ground), 4.5) << ground.name().toStdString();
    for (const QColor& fill : {t.accent, t.good, t.warning, t.danger})
        EXPECT_GE(contrast(t.onFill, fill), 4.5) << fill.name().toStdString();
}

/// The colors of a row of pixels through the middle of the widget, from its ground to inside its left frame.
std::vector<QColor> leftEdge(QWidget& widget) {
    QWidget& window = *widget.window();
    const QImage image = window.grab().toImage();
    const QPoint middle = widget.mapTo(&window, QPoint(0, widget.height() / 2));
    std::vector<QColor> colors;
    for (int x = -2; x < 3; ++x)
        colors.push_back(image.pixelColor((middle + QPoint(x, 0)) * image.devicePixelRatio()));
    return colors;
}

TEST_P(BothThemes, FramesOfBoxesThatCanBeChangedAreSeen) {
    applyTheme(*qApp, GetParam());
    for (const bool onCard : {true, false}) {
        QWidget window;
        window.setAutoFillBackground(true);
        QPalette ground = window.palette();
        ground.setColor(QPalette::Window, onCard ? t.surface : t.window);
        window.setPalette(ground);
        auto* column = new QVBoxLayout(&window);
        auto* search = new QLineEdit;
        setLook(*search, "onBar");
        auto* choice = new ChoiceBox;
        choice->addItem(u"Cream"_s);
        QWidget* const boxes[] = {new TextBox, new NumberBox, new DateBox,  choice,
                                  new MemoBox, search,        new QSpinBox, new QDateTimeEdit};
        auto* focus = new QCheckBox;
        column->addWidget(focus);
        for (QWidget* box : boxes)
            column->addWidget(box);
        window.resize(300, 500);
        window.show();
        focus->setFocus();
        for (QWidget* box : boxes) {
            const auto colors = leftEdge(*box);
            double most = 0;
            for (const QColor& color : colors)
                most = std::max(most, contrast(color, colors.front()));
            EXPECT_GE(most, 3.0) << box->metaObject()->className()
                                 << (onCard ? " on a card" : " on a window");
        }
    }
}

TEST_P(BothThemes, FramesOfFieldsAreSeenOnEveryGround) {
    for (const QColor& ground : {t.window, t.surface})
        for (const QColor& line : {t.fieldLine, t.accent, t.warning, t.danger})
            EXPECT_GE(contrast(line, ground), 3.0)
                << line.name().toStdString() << " on " << ground.name().toStdString();
}

TEST_P(BothThemes, AppliesPaletteAndFont) {
    applyTheme(*qApp, GetParam());
    EXPECT_EQ(theme().window, t.window);
    EXPECT_EQ(qApp->palette().color(QPalette::Window), t.window);
    EXPECT_EQ(qApp->palette().color(QPalette::Base), t.surface);
    EXPECT_EQ(qApp->font().families().value(0), "Inter");
    EXPECT_FALSE(qApp->windowIcon().isNull());
}

TEST_P(BothThemes, HeadingsHaveRoomForTheirTextInWhateverFont) {
    applyTheme(*qApp, GetParam());
    QTableWidget table(1, 1);
    table.setHorizontalHeaderLabels({"Quantity"});
    QHeaderView& header = *table.horizontalHeader();
    const QSize small(header.sectionSizeHint(0), header.sizeHint().height());
    QFont large = header.font();
    large.setPointSizeF(2 * large.pointSizeF());
    header.setFont(large);
    EXPECT_GT(header.sectionSizeHint(0), small.width() * 3 / 2);
    EXPECT_GT(header.sizeHint().height(), small.height() * 3 / 2);
    table.setHorizontalHeaderLabels({"Quantity of the batch"});
    EXPECT_GT(header.sectionSizeHint(0), small.width() * 3);
}

int inkedPixels(const QPixmap& pixmap, const QColor& ink) {
    const QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            if (pixel.alpha() == 255 && pixel.rgb() == ink.rgb())
                ++count;
        }
    return count;
}

TEST_P(BothThemes, PicturesTakeTheColorOfTheState) {
    applyTheme(*qApp, GetParam());
    const QIcon save = icon("save");
    EXPECT_GT(inkedPixels(save.pixmap(96, 96), t.text), 50);
    EXPECT_GT(inkedPixels(save.pixmap(QSize(96, 96), QIcon::Disabled), t.disabledText), 50);
    EXPECT_GT(inkedPixels(save.pixmap(QSize(96, 96), QIcon::Normal, QIcon::On), t.accent), 50);
    EXPECT_GT(inkedPixels(icon("stop", t.danger).pixmap(96, 96), t.danger), 50);
}

TEST_P(BothThemes, ADatePickerIsDressedLikeTheOtherFields) {
    applyTheme(*qApp, GetParam());
    QDateTimeEdit picker(QDateTime(QDate(2026, 3, 7), QTime(14, 5, 9), Qt::UTC));
    picker.setCalendarPopup(true);
    dressCalendar(*picker.calendarWidget());
    picker.resize(220, 32);
    picker.show();
    ASSERT_TRUE(support::becomesExposed(&picker));
    const QImage shown = picker.grab().toImage();
    EXPECT_EQ(shown.pixelColor(shown.width() - 6, shown.height() / 2), t.surface)
        << "no bevel beside the arrow";
    QTest::mouseClick(&picker, Qt::LeftButton, {}, QPoint(picker.width() - 14, picker.height() / 2));
    const QCalendarWidget* calendar = picker.calendarWidget();
    ASSERT_TRUE(calendar->isVisible());
    for (const char* name : {"qt_calendar_prevmonth", "qt_calendar_nextmonth"})
        EXPECT_GT(inkedPixels(calendar->findChild<QToolButton*>(name)->icon().pixmap(96, 96), t.text), 50)
            << name;
    EXPECT_EQ(calendar->weekdayTextFormat(Qt::Sunday).foreground().color(), t.text);
    const QString folder = qEnvironmentVariable("SORVANTO_PICTURES");
    if (!folder.isEmpty())
        calendar->window()->grab().save(folder + (GetParam() ? "/picker-dark.png" : "/picker-light.png"));
}

INSTANTIATE_TEST_SUITE_P(LightAndDark, BothThemes, testing::Bool());

TEST(Pictures, AreDrawnAtTheScreensOwnResolution) {
    const QPixmap pixmap = icon("search").pixmap(QSize(24, 24), 2.0);
    EXPECT_EQ(pixmap.size(), QSize(48, 48));
    EXPECT_EQ(pixmap.devicePixelRatio(), 2.0);
}

TEST(Pictures, AnUnknownNameIsAnEmptyIcon) {
    EXPECT_TRUE(icon("nosuchpicture").isNull());
    EXPECT_TRUE(icon("").isNull());
}

TEST(Pictures, AllNamesOfTheProgramAreThere) {
    const QStringList names =
        u"first previous next last make new edit save copy cancel delete print search "
        u"options export current formulas chemicals logs patients add remove calendar up down left right play pause "
        u"stop check warning error info close exit about zoomin zoomout fitpage fitwidth pdf link update"_s
            .split(' ');
    for (const QString& name : names)
        EXPECT_GT(inkedPixels(icon(name).pixmap(96, 96), theme().text), 20) << name.toStdString();
}

TEST(Pictures, HaveOneLineWeight) {
    icon("first");  // loads the set
    QDirIterator files(":/widgets/icons");
    while (files.hasNext()) {
        QFile file(files.next());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray drawing = file.readAll();
        if (!file.fileName().endsWith("application.svg")) {
            EXPECT_TRUE(drawing.contains("stroke-width=\"1.6\"")) << file.fileName().toStdString();
            EXPECT_TRUE(drawing.contains("viewBox=\"0 0 24 24\"")) << file.fileName().toStdString();
            EXPECT_TRUE(drawing.contains("currentColor")) << file.fileName().toStdString();
        }
    }
}

TEST(Looks, AreSetByProperty) {
    QLabel label("Name");
    makeFieldLabel(label);
    EXPECT_TRUE(label.property("fieldLabel").toBool());
    EXPECT_TRUE(label.alignment() & Qt::AlignRight);
    setLook(label, "fieldLabel", false);
    EXPECT_FALSE(label.property("fieldLabel").toBool());
}

TEST(Fonts, GlyphsAreThere) {
    EXPECT_FALSE(QFontDatabase::families().isEmpty());
    EXPECT_TRUE(QFontMetrics(qApp->font()).inFont(u'€'));
}

TEST(LaterIcon, IsReadWhenItIsFirstDrawnAndNeverAgain) {
    int reads = 0;
    const QIcon later(new LaterIcon([&] {
        ++reads;
        return icon("save");
    }));
    EXPECT_FALSE(later.isNull());
    EXPECT_EQ(reads, 0);
    for (int time = 0; time < 2; ++time) {
        EXPECT_EQ(later.pixmap(22).toImage(), icon("save").pixmap(22).toImage());
        EXPECT_EQ(reads, 1);
    }
}

TEST(LaterIcon, AToolBarThatIsTooNarrowShowsTheToolkitsOwn) {
    applyTheme(*qApp, false);
    const std::unique_ptr<QStyle> toolkit(QStyleFactory::create("Fusion"));
    for (const auto which :
         {QStyle::SP_ToolBarHorizontalExtensionButton, QStyle::SP_ToolBarVerticalExtensionButton}) {
        const QIcon end = QApplication::style()->standardIcon(which);
        EXPECT_TRUE(end.availableSizes().isEmpty()) << "nothing is read before it is drawn";
        applyTheme(*qApp, false);  // another style by then
        EXPECT_EQ(end.pixmap(8).toImage(), toolkit->standardIcon(which).pixmap(8).toImage());
        EXPECT_FALSE(end.pixmap(8).isNull());
    }
}

}  // namespace
