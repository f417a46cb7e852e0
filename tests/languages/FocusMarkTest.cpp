// Wherever the keyboard stops it is seen, on every window, light and dark.
#include "LanguageTour.h"
#include "Settle.h"

#include "platform/widgets/Theme.h"

#include <QApplication>
#include <QPointer>
#include <QSet>

using namespace Qt::StringLiterals;

namespace languages {
namespace {

class FocusMarkTest : public LanguageTour, public ::testing::WithParamInterface<bool> {
protected:
    void SetUp() override {
        platform::applyTheme(*qApp, GetParam());
        LanguageTour::SetUp();
    }
    int language() const override { return 0; }

    static QImage picture(QWidget& control) {
        constexpr int around = 4;
        const QRect place(control.mapTo(control.window(), QPoint()), control.size());
        return control.window()->grab(place.adjusted(-around, -around, around, around)).toImage();
    }
    static bool showsFocus(QWidget& control) {
        const QPointer<QWidget> alive(&control);
        control.setFocus(Qt::TabFocusReason);
        support::settle();
        if (!alive || QApplication::focusWidget() != &control)
            return true;  // it is gone, or passes the keyboard on
        const QImage with = picture(control);
        control.clearFocus();
        support::settle();
        return !alive || picture(control) != with;
    }

    void look(QWidget& shown, const QString& name) override {
        shown.activateWindow();
        if (!QTest::qWaitForWindowActive(&shown))
            return;
        const QPointer<QWidget> before = QApplication::focusWidget();
        QList<QPointer<QWidget>> controls;  // a window may replace its rows while it is looked at
        for (QWidget* control : shown.findChildren<QWidget*>())
            controls << control;
        for (const QPointer<QWidget>& control : controls) {
            const bool stops = control && (control->focusPolicy() & Qt::TabFocus) && control->isVisible() &&
                               control->isEnabled() && !control->objectName().startsWith("qt_"_L1);
            if (!stops)
                continue;
            const QString known = QString::fromLatin1(control->metaObject()->className()) +
                                  control->objectName() + shown.objectName();
            if (m_looked.contains(known))
                continue;
            m_looked.insert(known);
            EXPECT_TRUE(showsFocus(*control)) << str(name) << ": " << control->metaObject()->className()
                                              << ' ' << str(control->objectName());
        }
        if (before)
            before->setFocus();
    }

    QSet<QString> m_looked;
};

TEST_P(FocusMarkTest, EveryStopIsSeen) {
    ASSERT_NO_FATAL_FAILURE(tour());
    EXPECT_GT(m_looked.size(), 100);
}

INSTANTIATE_TEST_SUITE_P(Themes, FocusMarkTest, ::testing::Bool(),
                         [](const auto& dark) { return std::string(dark.param ? "Dark" : "Light"); });

}  // namespace
}  // namespace languages
