// The window of the manual with the delivered pages: going about in it by mouse and keys, searching, sizes. With
// SORVANTO_PICTURES naming a folder, a picture of each page is kept there; with SORVANTO_DARK set as well, in the dark look.
#include "manual/ManualWindow.h"
#include "Child.h"
#include "OpenedOutside.h"
#include "TempProgramFolder.h"
#include "Waiting.h"
#include "WarningTrap.h"
#include "manual/ManualView.h"
#include "platform/widgets/Theme.h"

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>
#include <QToolButton>
#include <QTreeWidget>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;
using support::child;

const QString pages = QLatin1String(SORVANTO_SOURCE_DIR) + u"/docs/manual"_s;

class ManualWindowTest : public testing::Test {
protected:
    ManualWindowTest() { platform::applyTheme(*qApp, qEnvironmentVariableIsSet("SORVANTO_DARK")); }
    void SetUp() override { make(pages); }
    void TearDown() override {
        window.reset();
        warnings.verify();
    }

    void make(const QString& from) { window = std::make_unique<ManualWindow>(Manual(from, u"English"_s)); }
    void open(const char* place) {
        window->open(ManualPlace::of(QLatin1String(place)));
        EXPECT_TRUE(support::becomesActive(window.get()));
    }
    ManualView& view() const { return *child<ManualView>(*window, "txtManual"); }
    std::string page() const { return view().page() ? view().page()->name.toStdString() : std::string(); }
    std::string place() const {
        const auto section = static_cast<std::size_t>(view().sectionOnTop());
        return page() + "#" + view().page()->sections()[section].anchor.toStdString();
    }
    void press(Qt::Key key, Qt::KeyboardModifiers with = {}) const {
        QWidget* focus = window->focusWidget();
        QTest::keyClick(focus ? focus : window.get(), key, with);
    }
    void follow(const char* link) const { emit view().anchorClicked(QUrl(QLatin1String(link))); }
    QListWidget& hits() const { return *child<QListWidget>(*window, "lstHits"); }
    QLineEdit& words() const { return *child<QLineEdit>(*window, "txtManualSearch"); }

    support::TempProgramFolder folder;
    support::WarningTrap warnings;
    std::unique_ptr<ManualWindow> window;
};

TEST_F(ManualWindowTest, OpensAtAPlaceAndBlocksNothing) {
    open("went-wrong.md#keys-run-out");
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(window->isModal());
    EXPECT_EQ(page(), "went-wrong.md");
    for (QTextBlock block = view().document()->begin(); block.isValid(); block = block.next()) {
        const QRect shown = view().cursorRect(QTextCursor(block));
        if (block.text() == "Keys run out"_L1) {
            EXPECT_TRUE(view().viewport()->rect().contains(shown)) << shown.top();
        }
    }
    open("labels.md");
    EXPECT_EQ(page(), "labels.md");
    open("no-such-page.md");
    EXPECT_EQ(page(), "README.md");
}

TEST_F(ManualWindowTest, ContentsHaveThePagesInReadingOrderWithTheirHeadings) {
    open("README.md#formulas");
    const auto& contents = *child<QTreeWidget>(*window, "treContents");
    ASSERT_EQ(contents.topLevelItemCount(), static_cast<int>(window->manual().pages().size()));
    EXPECT_EQ(contents.topLevelItem(1)->text(0), u"The first day"_s);
    EXPECT_EQ(contents.currentItem()->text(0), u"Formulas"_s) << "the place on show is marked";
    EXPECT_TRUE(contents.topLevelItem(0)->isExpanded());
}

// Only the page on show needs its headings at once.
TEST_F(ManualWindowTest, HeadingsOfTheOtherPagesFollowAndAreAllThere) {
    window->open(ManualPlace::of(u"README.md"_s));
    const auto& contents = *child<QTreeWidget>(*window, "treContents");
    EXPECT_GT(contents.topLevelItem(0)->childCount(), 3);
    const int last = contents.topLevelItemCount() - 1;
    const auto headings = [&](int line) { return contents.topLevelItem(line)->childCount(); };
    EXPECT_TRUE(support::waitFor([&] {
        for (int line = 0; line <= last; ++line) {
            if (headings(line) + 1 !=
                static_cast<int>(window->manual().pages()[static_cast<std::size_t>(line)].sections().size()))
                return false;
        }
        return true;
    }));
    open("labels.md");
    open("README.md");
    EXPECT_EQ(headings(0) + 1, static_cast<int>(window->manual().pages().front().sections().size()))
        << "not twice";
}

TEST_F(ManualWindowTest, ContentsLeadToTheirPlacesByMouseAndKeys) {
    open("README.md");
    auto& contents = *child<QTreeWidget>(*window, "treContents");
    QTest::mouseClick(contents.viewport(), Qt::LeftButton, {},
                      contents.visualItemRect(contents.topLevelItem(0)->child(4)).center());
    EXPECT_EQ(place(), "README.md#chemicals");
    contents.setFocus();
    contents.setCurrentItem(contents.topLevelItem(2));
    press(Qt::Key_Return);
    EXPECT_EQ(page(), "formula-from-paper.md");
}

TEST_F(ManualWindowTest, LinksLeadToPagesAndHeadingsAndBackAndForthAgain) {
    open("README.md");
    follow("went-wrong.md");
    follow("#the-health-page");
    EXPECT_EQ(place(), "went-wrong.md#the-health-page");
    follow("new-computer.md");
    press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(place(), "went-wrong.md#the-health-page");
    press(Qt::Key_Left, Qt::AltModifier);
    press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(page(), "README.md");
    EXPECT_FALSE(child<QToolButton>(*window, "cmdBack")->isEnabled());
    press(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(page(), "went-wrong.md");
    child<QToolButton>(*window, "cmdForward")->click();
    child<QToolButton>(*window, "cmdForward")->click();
    EXPECT_EQ(page(), "new-computer.md");
    EXPECT_FALSE(child<QToolButton>(*window, "cmdForward")->isEnabled());
}

TEST_F(ManualWindowTest, WhatLiesOutsideIsToldAndNeverOpened) {
    support::OpenedOutside desktop;
    open("README.md");
    for (const char* link : {"https://elsewhere.example/page", "file:///etc/passwd", "../reliability.md"}) {
        follow(link);
        EXPECT_EQ(page(), "README.md");
        EXPECT_EQ(child<QLabel>(*window, "lblOutside")->text(), QLatin1String(link));
        EXPECT_TRUE(child<QLabel>(*window, "lblOutside")->isVisible());
    }
    child<QPushButton>(*window, "cmdCopyOutside")->click();
    EXPECT_EQ(QApplication::clipboard()->text(), u"../reliability.md"_s);
    EXPECT_TRUE(desktop.paths.isEmpty());
    follow("labels.md");
    EXPECT_FALSE(child<QLabel>(*window, "lblOutside")->isVisible());
}

TEST_F(ManualWindowTest, APageLoadsNothingButThePicturesOfTheManual) {
    open("README.md");
    for (const char* name : {"https://elsewhere.example/a.png", "file:///etc/hostname", "/etc/hostname"}) {
        EXPECT_TRUE(view()
                        .loadResource(QTextDocument::ImageResource, QUrl(QLatin1String(name)))
                        .value<QImage>()
                        .isNull());
        for (const int type : {QTextDocument::HtmlResource, QTextDocument::StyleSheetResource,
                               QTextDocument::MarkdownResource})
            EXPECT_FALSE(view().loadResource(type, QUrl(QLatin1String(name))).isValid());
    }
}

TEST_F(ManualWindowTest, SearchListsPlacesAndLeadsToThem) {
    open("README.md");
    press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(words().hasFocus());
    QTest::keyClicks(&words(), u"avery 8160"_s);
    ASSERT_GT(hits().count(), 1);
    EXPECT_TRUE(hits().isVisible());
    EXPECT_TRUE(child<QLabel>(*window, "lblManualCount")->text().contains(QString::number(hits().count())));
    int labels = -1;
    for (int row = 0; row < hits().count(); ++row)
        labels = hits().item(row)->text() == "Labels"_L1 ? row : labels;
    ASSERT_GE(labels, 0);
    press(Qt::Key_F6);
    EXPECT_TRUE(hits().hasFocus());
    hits().setCurrentRow(labels);
    press(Qt::Key_Return);
    EXPECT_EQ(page(), "labels.md");
    EXPECT_FALSE(view().extraSelections().isEmpty()) << "the words are marked";
    words().clear();
    EXPECT_FALSE(hits().isVisible());
    EXPECT_TRUE(view().extraSelections().isEmpty());
    QTest::keyClicks(&words(), u"xyzzy"_s);
    EXPECT_EQ(hits().count(), 0);
    EXPECT_EQ(child<QLabel>(*window, "lblManualCount")->text(), u"Nothing found"_s);
}

TEST_F(ManualWindowTest, EnterInTheSearchOpensTheFirstPlace) {
    open("README.md");
    press(Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(&words(), u"keys run out"_s);
    press(Qt::Key_Return);
    EXPECT_EQ(page(), "went-wrong.md");
}

TEST_F(ManualWindowTest, F6GoesThroughItsParts) {
    open("README.md");
    EXPECT_TRUE(view().hasFocus());
    press(Qt::Key_F6);
    EXPECT_TRUE(words().hasFocus());
    press(Qt::Key_F6);
    EXPECT_TRUE(child<QTreeWidget>(*window, "treContents")->hasFocus());
    press(Qt::Key_F6);
    EXPECT_TRUE(view().hasFocus());
}

TEST_F(ManualWindowTest, EscapeClosesItWhereverTheKeysAre) {
    for (QWidget* part : {static_cast<QWidget*>(&view()), static_cast<QWidget*>(&words()),
                          static_cast<QWidget*>(child<QTreeWidget>(*window, "treContents"))}) {
        open("README.md");
        part->setFocus();
        press(Qt::Key_Escape);
        EXPECT_FALSE(window->isVisible()) << part->objectName().toStdString();
    }
}

TEST_F(ManualWindowTest, ZoomChangesTheLettersAndStaysAtItsPlace) {
    open("README.md#patients");
    const double before = view().document()->defaultFont().pointSizeF();
    press(Qt::Key_Plus, Qt::ControlModifier);
    press(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_GT(view().document()->defaultFont().pointSizeF(), before);
    EXPECT_EQ(place(), "README.md#patients");
    press(Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(view().document()->defaultFont().pointSizeF(), before);
    press(Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_LT(view().document()->defaultFont().pointSizeF(), before);
    for (int i = 0; i < 40; ++i)
        press(Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_GT(view().document()->defaultFont().pointSizeF(), before / 2) << "it stays readable";
}

TEST_F(ManualWindowTest, SizeAndZoomAreRemembered) {
    open("README.md");
    window->resize(700, 500);
    press(Qt::Key_Plus, Qt::ControlModifier);
    const double zoom = view().zoom();
    window->close();
    make(pages);
    open("README.md");
    EXPECT_EQ(window->size(), QSize(700, 500));
    EXPECT_EQ(view().zoom(), zoom);
}

TEST_F(ManualWindowTest, APictureMadeSmallerHasAPlainGroundAsBefore) {
    open("batch.md");
    const QString name = u"pictures/search-list.png"_s;
    const QImage whole(pages + '/'_L1 + name);
    const auto shown = view().document()->resource(QTextDocument::ImageResource, QUrl(name)).value<QImage>();
    ASSERT_LT(shown.width(), whole.width());
    constexpr int ground = 3;    // pixels at its upper edge
    constexpr int rounding = 3;  // of 255
    for (int x = 0; x < shown.width(); ++x) {
        for (int y = 0; y < ground; ++y)
            ASSERT_NEAR(qGray(shown.pixel(x, y)), qGray(whole.pixel(0, 0)), rounding) << x << ", " << y;
    }
}

// The whole file would be made smaller while it is drawn.
TEST_F(ManualWindowTest, APictureIsAsWideAsItsPlaceInEachWindow) {
    const QUrl name(u"pictures/search-list.png"_s);
    for (const int width : {900, 600, 1100}) {
        window->resize(width, 700);
        open("batch.md");
        QTextDocument& page = *view().document();
        QTextImageFormat place;
        for (const QTextFormat& format : page.allFormats()) {
            if (format.isImageFormat() && format.toImageFormat().name() == name.toString())
                place = format.toImageFormat();
        }
        const auto picture = page.resource(QTextDocument::ImageResource, name).value<QImage>();
        EXPECT_EQ(picture.width(), static_cast<int>(place.width())) << width;
        EXPECT_NEAR(picture.height(), place.height(), 1) << width;
    }
}

/// The widest line of text and of a picture on the page.
double widest(const QTextDocument& document) {
    double found = 0;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (int line = 0; line < block.layout()->lineCount(); ++line)
            found = std::max(found, block.layout()->lineAt(line).naturalTextWidth());
    }
    return found;
}

TEST_F(ManualWindowTest, LinesKeepAReadableLengthAndPicturesFitIntoThem) {
    for (const int width : {500, 900, 2000}) {
        window->resize(width, 700);
        open("batch.md");
        const double letters = QFontMetricsF(view().document()->defaultFont()).averageCharWidth() * 75 + 1;
        EXPECT_LE(widest(*view().document()), letters) << width;
        EXPECT_LE(widest(*view().document()), view().viewport()->width()) << width;
        EXPECT_EQ(view().horizontalScrollBar()->maximum(), 0) << width;
    }
}

TEST_F(ManualWindowTest, ItCanBeReadAboveAModalWindowAndStaysWhenThatIsGone) {
    open("README.md");
    QDialog dialog;
    dialog.setModal(true);
    dialog.show();
    open("labels.md");
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->windowHandle()->transientParent(), dialog.windowHandle());
    QSignalSpy used(child<QToolButton>(*window, "cmdLarger"), &QToolButton::clicked);
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {},
                      child<QToolButton>(*window, "cmdLarger")->mapTo(window.get(), QPoint(8, 8)));
    EXPECT_EQ(used.size(), 1) << "it is not blocked";
    follow("signing.md");
    press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(page(), "labels.md") << "its keys work";
    dialog.hide();
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->windowHandle()->transientParent(), nullptr);
}

TEST_F(ManualWindowTest, ADialogOverADialogGivesItBackToTheFirst) {
    QDialog first;
    first.setModal(true);
    first.show();
    QDialog second(&first);
    second.setModal(true);
    second.show();
    open("labels.md");
    EXPECT_EQ(window->windowHandle()->transientParent(), second.windowHandle());
    second.hide();
    EXPECT_EQ(window->windowHandle()->transientParent(), first.windowHandle());
    window->close();
    EXPECT_TRUE(first.isVisible());
}

TEST_F(ManualWindowTest, OpenBeforeADialogItStaysInUseBesideIt) {
    const auto used = [this] {
        auto* button = child<QToolButton>(*window, "cmdLarger");
        QSignalSpy clicks(button, &QToolButton::clicked);
        QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {},
                          button->mapTo(window.get(), button->rect().center()));
        return clicks.size() == 1;
    };
    open("labels.md");
    QDialog first;
    first.setModal(true);
    first.show();
    ASSERT_TRUE(support::becomesActive(&first)) << "the dialog is in front";
    EXPECT_TRUE(support::waitFor(used)) << "beside a dialog";
    QDialog second(&first);
    second.setModal(true);
    second.show();
    EXPECT_TRUE(support::waitFor(used)) << "and one above that";
    second.hide();
    EXPECT_TRUE(support::waitFor(used));
    QCoreApplication::processEvents();  // the dialog below comes to the front first
    ASSERT_TRUE(support::waitFor([this] {
        window->activateWindow();
        return QApplication::activeWindow() == window.get();
    }));
    follow("signing.md");
    press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(page(), "labels.md") << "its keys work";
    first.hide();
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(used());
    EXPECT_EQ(window->windowHandle()->transientParent(), nullptr);
}

TEST_F(ManualWindowTest, ADialogThatIsGoneAtOnceLeavesItFree) {
    open("labels.md");
    {
        QDialog dialog;
        dialog.setModal(true);
        dialog.show();
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(window->windowHandle()->transientParent(), nullptr);
    EXPECT_TRUE(window->isVisible());
}

TEST_F(ManualWindowTest, WithoutPagesItSaysSo) {
    make(folder.path());
    open("labels.md");
    EXPECT_TRUE(view().toPlainText().contains(u"The manual is not there."_s));
    press(Qt::Key_Left, Qt::AltModifier);
    QTest::keyClicks(&words(), u"jar"_s);
    EXPECT_EQ(hits().count(), 0);
}

TEST_F(ManualWindowTest, EachPageIsShownWithoutAWarning) {
    for (const ManualPage& each : window->manual().pages()) {
        open(each.name.toLatin1().constData());
        EXPECT_EQ(page(), each.name.toStdString());
        EXPECT_FALSE(view().toPlainText().isEmpty());
        EXPECT_EQ(view().horizontalScrollBar()->maximum(), 0) << each.name.toStdString();
        const QPixmap picture = window->grab();
        if (const QString place = qEnvironmentVariable("SORVANTO_PICTURES"); !place.isEmpty())
            picture.save(place + '/'_L1 + each.name + u".png"_s);
    }
}

}  // namespace
