// In each language no text of any window is cut off and no box lies on another, at the size of a small
// screen. With SORVANTO_PICTURES naming a folder, a picture of each window is kept there.
#include "Fit.h"
#include "LanguageTour.h"

#include "platform/widgets/Theme.h"

#include <QApplication>
#include <QDir>

namespace languages {
namespace {

class FitTest : public LanguageTour, public ::testing::WithParamInterface<int> {
protected:
    void SetUp() override {
        platform::applyTheme(*qApp, false);
        LanguageTour::SetUp();
    }
    void TearDown() override {
        LanguageTour::TearDown();
        qApp->setStyleSheet(QString());
    }
    int language() const override { return GetParam(); }

    void look(QWidget& window, const QString& name) override {
        for (const QString& misfit : misfits(window)) {
            const QString line = name.section('-', 0, 0) + ": " + misfit;
            if (!m_told.contains(line))
                ADD_FAILURE() << names[language()] << ", " << str(name) << ": " << str(misfit);
            m_told << line;
        }
        const QString folder = qEnvironmentVariable("SORVANTO_PICTURES");
        if (folder.isEmpty())
            return;
        QDir().mkpath(folder + "/" + QString(names[language()]).toLower());
        window.grab().save(QString("%1/%2/%3.png").arg(folder, QString(names[language()]).toLower(), name));
    }

private:
    QStringList m_told;
};

TEST_P(FitTest, EveryTextHasItsPlace) {
    ASSERT_NO_FATAL_FAILURE(tour());
}

INSTANTIATE_TEST_SUITE_P(Languages, FitTest, ::testing::Range(0, count),
                         [](const auto& row) { return std::string(names[row.param]); });

}  // namespace
}  // namespace languages
