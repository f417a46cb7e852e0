// In each window beside the main one Tab goes as the eye does: from the left to the right, and downwards.
#include "LanguageTour.h"

#include <QSet>

using namespace Qt::StringLiterals;

namespace languages {
namespace {

class TabOrderTest : public LanguageTour {
protected:
    int language() const override { return 0; }

    static bool stops(const QWidget& control) {
        return (control.focusPolicy() & Qt::TabFocus) && control.isEnabled() && control.isVisible() &&
               !control.focusProxy();
    }
    static QList<QWidget*> stopsOf(const QWidget& shown) {
        QList<QWidget*> all;
        for (QWidget* next = shown.nextInFocusChain(); next != &shown; next = next->nextInFocusChain()) {
            if (shown.isAncestorOf(next) && stops(*next))
                all << next;
        }
        return all;
    }
    static QRect placeOf(const QWidget& control) {
        return {control.mapTo(control.window(), QPoint()), control.size()};
    }
    /// To the left in one row, or up without going to the right.
    static bool goesBack(const QRect& from, const QRect& to) {
        const bool above = to.bottom() < from.top();
        const bool sameRow = !above && to.top() <= from.bottom();
        return (above || sameRow) && to.left() < from.left();
    }

    void look(QWidget& shown, const QString& name) override {
        if (&shown == window.get() || name.startsWith("preview-"_L1) || name.startsWith("report-"_L1))
            return;
        const QList<QWidget*> all = stopsOf(shown);
        QStringList back;
        for (qsizetype i = 0; i < all.size(); ++i) {
            const QWidget &from = *all[i], &to = *all[(i + 1) % all.size()];
            if (goesBack(placeOf(from), placeOf(to)))
                back << from.objectName() + u" > "_s + to.objectName();
        }
        EXPECT_LE(back.size(), 1) << str(name) << ": " << str(back.join(u", "_s))
                                  << "; once is from the last to the first";
        m_windows << shown.objectName();
    }

    QSet<QString> m_windows;
};

TEST_F(TabOrderTest, AsTheEyeGoes) {
    ASSERT_NO_FATAL_FAILURE(tour());
    for (const char* name : {"NewLotWindow", "PriceWindow", "RepricingWindow", "HistoryWindow",
                             "HistoryFileWindow", "TraceWindow", "HealthPage"})
        EXPECT_TRUE(m_windows.contains(QLatin1String(name))) << name;
}

}  // namespace
}  // namespace languages
