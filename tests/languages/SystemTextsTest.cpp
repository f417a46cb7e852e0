// Qt's own texts and the calendar speak the program's language; numbers and dates stay the system's.
#include "LanguageTour.h"

#include "platform/widgets/Boxes.h"
#include "platform/widgets/SystemTexts.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QFile>
#include <QLibraryInfo>
#include <QTemporaryDir>
#include <QToolButton>

namespace languages {
namespace {

QString qtWord(const char* context, const char* word) { return QCoreApplication::translate(context, word); }

QLocale localeOf(int language) {
    const QLocale::Language all[] = {QLocale::English, QLocale::Spanish, QLocale::German,
                                     QLocale::French,  QLocale::Russian, QLocale::Portuguese,
                                     QLocale::Italian, QLocale::French};
    return QLocale(all[language]);
}

class SystemTextsTest : public LanguageTour, public ::testing::WithParamInterface<int> {
protected:
    void TearDown() override {
        LanguageTour::TearDown();
        platform::setSystemLanguage(QLocale(QLocale::English));
    }
    int language() const override { return GetParam(); }
    void look(QWidget&, const QString&) override {}
    static bool installed() {
        return QFile::exists(QLibraryInfo::path(QLibraryInfo::TranslationsPath) + "/qtbase_de.qm");
    }
};

TEST_P(SystemTextsTest, FollowTheLanguageFromTheStart) {
    load();
    EXPECT_EQ(platform::systemLanguage().language(), localeOf(language()).language());
    ASSERT_TRUE(installed()) << "The package with Qt's catalogues is missing.";
    const char* const cancel[] = {"Cancel", "Cancelar", "Abbrechen", "Annuler",
                                  "Отмена", "Cancelar", "Annulla",   "Annuler"};
    EXPECT_EQ(str(qtWord("QPlatformTheme", "Cancel")), cancel[language()]);
    EXPECT_EQ(qtWord("QFileDialog", "Look in:") == "Look in:", language() == 0);
    EXPECT_EQ(qtWord("QPrintDialog", "Print to File (PDF)") == "Print to File (PDF)", language() == 0);
}

TEST_P(SystemTextsTest, TheCalendarsMonthsAreInTheLanguageTheDatesAreNot) {
    load();
    platform::DateBox box;
    box.setValue(QDateTime(QDate(2026, 3, 2), QTime(0, 0), Qt::UTC));
    const QString before = box.text();
    box.show();
    box.findChild<QToolButton*>()->click();
    QCoreApplication::processEvents();
    const QCalendarWidget* calendar = nullptr;
    for (QWidget* found : QApplication::allWidgets()) {
        if (!calendar)
            calendar = qobject_cast<QCalendarWidget*>(found);
    }
    ASSERT_NE(calendar, nullptr);
    const QString march = localeOf(language()).standaloneMonthName(3);
    const auto* month = calendar->findChild<QToolButton*>("qt_calendar_monthbutton");
    ASSERT_NE(month, nullptr);
    EXPECT_EQ(str(month->text().toLower()), str(march.toLower()));
    EXPECT_EQ(calendar->firstDayOfWeek(), QLocale().firstDayOfWeek());
    EXPECT_EQ(box.text(), before);
}

INSTANTIATE_TEST_SUITE_P(Languages, SystemTextsTest, ::testing::Range(0, count),
                         [](const auto& row) { return std::string(names[row.param]); });

TEST(SystemTexts, AMissingCatalogueLeavesEnglish) {
    const QTemporaryDir empty;
    platform::setSystemLanguage(QLocale(QLocale::German), empty.path());
    EXPECT_EQ(qtWord("QPlatformTheme", "Cancel"), "Cancel");
    EXPECT_EQ(platform::systemLanguage().language(), QLocale::German);
    platform::setSystemLanguage(QLocale(QLocale::English));
}

}  // namespace
}  // namespace languages
