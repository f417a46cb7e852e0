// In each language no text of any window is cut off and no box lies on another, at the size of a small
// screen. With SORVANTO_PICTURES naming a folder, a picture of each window is kept there, with a simulated
// mixer on the port; with SORVANTO_DARK set as well, in the dark look; with SORVANTO_SIZE=1920x1080 the main
// window has that size.
#include "Fit.h"
#include "LanguageTour.h"
#include "mixer/SimulatorProcess.h"
#include "support/Settle.h"
#include "support/Waiting.h"

#include "mixer/LinkRow.h"
#include "platform/widgets/Theme.h"

#include <QApplication>
#include <QDir>
#include <QTableView>

using namespace Qt::StringLiterals;

namespace languages {
namespace {

constexpr int cellMargin = 10;  // of a row of the list

/// Of the names in the list of records, how many stand whole.
int wholeNames(const QTableView& list) {
    int whole = 0;
    for (int row = 0; row < list.model()->rowCount(); ++row) {
        const QString name = list.model()->index(row, 0).data().toString();
        whole += list.fontMetrics().horizontalAdvance(name) + 2 * cellMargin <= list.columnWidth(0) ? 1 : 0;
    }
    return whole;
}

class FitTest : public LanguageTour, public ::testing::WithParamInterface<int> {
protected:
    void SetUp() override {
        platform::applyTheme(*qApp, qEnvironmentVariableIsSet("SORVANTO_DARK"));
        LanguageTour::SetUp();
        if (pictures().isEmpty())
            return;
        ASSERT_TRUE(QFile::remove(folder.path("ports/COM1")));
        m_mixer = std::make_unique<sorvanto::test::SimulatorProcess>(folder);
        ASSERT_TRUE(m_mixer->start({}));
    }
    int language() const override { return GetParam(); }

    void setSize(const QString& size) { m_size = size; }

    void look(QWidget& shown, const QString& name) override {
        if (&shown == window.get())
            takeSize();
        support::settle();  // a text that has just come finds its place
        if (!pictures().isEmpty())
            keepPicture(shown, name);
        if (!m_size.isEmpty() && name == "formulas-1"_L1)
            lookAtNames();
        for (const QString& misfit : misfits(shown)) {
            const QString line = name.section('-', 0, 0) + ": " + misfit;
            if (!m_told.contains(line))
                ADD_FAILURE() << names[language()] << ", " << str(name) << ": " << str(misfit);
            m_told << line;
        }
    }

private:
    static QString pictures() { return qEnvironmentVariable("SORVANTO_PICTURES"); }

    void takeSize() const {
        const QString size = qEnvironmentVariable("SORVANTO_SIZE", m_size);
        if (size.isEmpty())
            return;
        window->resize(size.section('x'_L1, 0, 0).toInt(), size.section('x'_L1, 1, 1).toInt());
        QCoreApplication::processEvents();
    }

    /// Most names of the formulas can be told apart without a tip.
    void lookAtNames() const {
        const auto& list = *support::child<QTableView>(*window, "grdRecordList");
        ASSERT_TRUE(list.isVisible());
        EXPECT_GE(3 * wholeNames(list), 2 * list.model()->rowCount())
            << names[language()] << ": " << wholeNames(list) << " of " << list.model()->rowCount();
    }

    void keepPicture(QWidget& shown, const QString& name) const {
        const auto* link = shown.findChild<sorvanto::LinkRow*>("mixerLink");
        if (link && (name == "formulas-1" || name == "current")) {
            EXPECT_TRUE(support::waitFor([&] { return !link->badge().isEmpty(); })) << "the mixer answers";
        }
        QCoreApplication::processEvents();  // what changed meanwhile finds its place
        if (auto* database = shown.findChild<QLineEdit*>("txtDB"))
            database->setText("sorvanto.mdb");  // not the folder of the test
        const QString place = pictures() + "/" + QString(names[language()]).toLower();
        QDir().mkpath(place);
        shown.grab().save(u"%1/%2.png"_s.arg(place, name));
    }

    std::unique_ptr<sorvanto::test::SimulatorProcess> m_mixer;
    QString m_size;  ///< empty: as it starts
    QStringList m_told;
};

TEST_P(FitTest, EveryTextHasItsPlace) { ASSERT_NO_FATAL_FAILURE(tour()); }

/// The list of records stands beside the form.
TEST_P(FitTest, EveryTextHasItsPlaceOnAWideScreen) {
    setSize(u"1920x1080"_s);
    ASSERT_NO_FATAL_FAILURE(tour());
}

INSTANTIATE_TEST_SUITE_P(Languages, FitTest, ::testing::Range(0, count),
                         [](const auto& row) { return std::string(names[row.param]); });

}  // namespace
}  // namespace languages
