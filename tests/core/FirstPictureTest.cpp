// The window is seen before the screens behind the first one are made. All else happens in the order of a start that
// shows nothing, and whoever is quick waits for its end.
#include "MainWindowTest.h"

#include <QCloseEvent>
#include <QCursor>

namespace {

using namespace core_test;

class FirstPictureTest : public MainWindowTest {
protected:
    void SetUp() override {
        MainWindowTest::SetUp();
        createDatabase();
    }
    /// Starts with a picture; meanwhile: while the window has just been shown.
    void show(const std::function<void()>& meanwhile = {}) {
        make();
        window->Form_Load([&] {
            trace << "show";
            window->show();
            if (meanwhile)
                meanwhile();
        });
    }
};

TEST_F(FirstPictureTest, ComesBeforeTheScreensBehindItAndChangesNoOrder) {
    load();
    const QStringList plain = taken();
    window.reset();
    basMain::gConnection.reset();
    taken();
    show();
    QStringList shown = taken();
    const auto at = shown.indexOf("show");
    EXPECT_LT(shown.indexOf("formulas:load"), at);
    EXPECT_GT(shown.indexOf("chemicals:create"), at);
    EXPECT_EQ(shown.value(at - 1), "formulas:setMenuOptions") << "the tools look as they will";
    shown.remove(at - 1, 2);
    EXPECT_EQ(shown.join('\n'), plain.join('\n'));
}

/// Whether all screens were there whenever the mouse was heard.
class MouseWatch : public QObject {
public:
    explicit MouseWatch(std::function<bool()> allThere) : m_allThere(std::move(allThere)) {
        qApp->installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::MouseMove)
            heard << m_allThere();
        return false;
    }
    QList<bool> heard;

private:
    std::function<bool()> m_allThere;
};

TEST_F(FirstPictureTest, TheUserIsHeardWhenAllScreensAreThere) {
    MouseWatch watch([this] { return window->screen(patients) != nullptr; });
    show([&] { QCursor::setPos(window->mapToGlobal(window->rect().center())); });
    EXPECT_EQ(watch.heard, QList<bool>()) << "the start has not given way";
    QCoreApplication::processEvents();
    EXPECT_TRUE(watch.heard.contains(true)) << "and what came meanwhile was kept";
}

TEST_F(FirstPictureTest, AnActivationMeanwhileIsMadeUpForAtTheEnd) {
    const auto maker = parts.screens[logs];
    parts.screens[logs] = [maker] {
        auto screen = maker();
        screen->setEnabled(false);
        return screen;
    };
    show([&] {
        QEvent activation(QEvent::WindowActivate);
        QCoreApplication::sendEvent(window.get(), &activation);
    });
    EXPECT_TRUE(window->screen(logs)->isEnabled());
}

TEST_F(FirstPictureTest, ItCannotBeClosedMeanwhile) {
    show([&] {
        QCloseEvent wish;
        QCoreApplication::sendEvent(window.get(), &wish);
        EXPECT_FALSE(wish.isAccepted());
    });
    EXPECT_EQ(programEnds, 0);
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(taken().join('\n').contains("closeForm"));
}

TEST_F(FirstPictureTest, NoScreenThatNobodySeesNamesTheWindow) {
    for (const int number : {chemicals, logs, patients}) {
        const auto maker = parts.screens[static_cast<std::size_t>(number)];
        parts.screens[static_cast<std::size_t>(number)] = [this, maker] {
            window->setCaption("unseen");
            return maker();
        };
    }
    QStringList titles;
    show([&] {
        titles << window->windowTitle();
        QObject::connect(window.get(), &QWidget::windowTitleChanged,
                         [&](const QString& title) { titles << title; });
    });
    EXPECT_EQ(titles, QStringList{"Sorvanto Control Panel: Formulas  :  Cold Cream"});
    EXPECT_EQ(window->windowTitle(), titles.first());
    window->setCaption("seen");
    EXPECT_EQ(window->windowTitle(), "seen");
}

TEST_F(FirstPictureTest, NothingIsShownOfAStartThatEndsBefore) {
    parts.previousInstance = [] { return true; };
    asker.expectMsgBox("Sorvanto control panel is already running, only one instance allowed.",
                       {platform::Buttons::Ok, platform::Icon::Critical});
    show();
    EXPECT_FALSE(taken().contains("show"));
    EXPECT_FALSE(window->isVisible());
}

class FirstStartPictureTest : public FirstPictureTest {
protected:
    QByteArray optionsXml() const override { return {}; }
};

TEST_F(FirstStartPictureTest, TheLanguageIsAskedBeforeAnythingElseIsOnScreen) {
    asker.expectModal("frmWizard", [&](QWidget& wizard) {
        for (const QWidget* each : QApplication::topLevelWidgets())
            EXPECT_TRUE(each == &wizard || !each->isVisible()) << qPrintable(each->objectName());
        EXPECT_FALSE(taken().contains("show"));
        wizard.close();
    });
    show();
    EXPECT_TRUE(window->isVisible());
}

}  // namespace
