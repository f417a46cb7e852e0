// Whatever can have the keyboard has a name for those who can't see it, in each language and on every window.
#include "LanguageTour.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace languages {
namespace {

class NamesTest : public LanguageTour, public ::testing::WithParamInterface<int> {
protected:
    int language() const override { return GetParam(); }

    /// Parts that the toolkit makes of one control are known by that control; pictures in a box are buttons of their own.
    static bool isOwnControl(const QWidget& control) {
        const bool isButton = qobject_cast<const QAbstractButton*>(&control);
        const bool takesKeys = control.focusPolicy() != Qt::NoFocus || isButton;
        return takesKeys && control.isVisible() && !control.focusProxy() &&
               !control.objectName().startsWith("qt_"_L1) &&
               (isButton || !qobject_cast<QLineEdit*>(control.parentWidget()));
    }

    void look(QWidget& shown, const QString& name) override {
        QAccessible::setActive(true);
        for (QWidget* control : shown.findChildren<QWidget*>()) {
            if (!isOwnControl(*control))
                continue;
            ++m_looked;
            QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(control);
            if (spoken && !spoken->text(QAccessible::Name).trimmed().isEmpty())
                continue;
            const QString line = u"%1: %2 %3"_s.arg(name.section('-'_L1, 0, 0),
                                                    QString::fromLatin1(control->metaObject()->className()),
                                                    control->objectName());
            if (!m_told.contains(line))
                ADD_FAILURE() << names[language()] << ", " << str(name) << ": " << str(line) << " in "
                              << str(control->parentWidget()->objectName());
            m_told << line;
        }
    }

    int m_looked = 0;
    QStringList m_told;
};

TEST_P(NamesTest, EveryControlHasOne) {
    ASSERT_NO_FATAL_FAILURE(tour());
    EXPECT_GT(m_looked, 500);
}

INSTANTIATE_TEST_SUITE_P(Languages, NamesTest, ::testing::Range(0, count),
                         [](const auto& row) { return std::string(names[row.param]); });

}  // namespace
}  // namespace languages
