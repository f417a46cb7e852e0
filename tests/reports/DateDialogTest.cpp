// The question for the two dates: a calendar month back, and a close box that goes on.
#include "Child.h"
#include "ReportTest.h"
#include "platform/basic/SystemLocale.h"
#include "platform/widgets/Theme.h"
#include "reports/frmReportDate.h"
#include "shared/basMain.h"

#include <QDateTimeEdit>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using namespace sorvanto;
using support::child;

namespace {

class DateDialogTest : public ReportTest {
protected:
    struct Answer {
        bool cancelled;
        QDateTime begin, end;
    };
    Answer ask(const std::function<void(QWidget&)>& script) {
        asker.expectModal("frmReportDate", script);
        frmReportDate form;
        form.showModal();
        return {form.cancelled(), form.beginDate(), form.endDate()};
    }
    static void press(QWidget& form, const char* button) { child<QPushButton>(form, button)->click(); }
};

}  // namespace

TEST_F(DateDialogTest, OffersTheLastMonthWithTheTimeOfDay) {
    const Answer answer = ask([](QWidget& form) { press(form, "cmdOK"); });
    EXPECT_FALSE(answer.cancelled);
    EXPECT_EQ(answer.begin, day(2026, 2, 7, {14, 5, 9}));
    EXPECT_EQ(answer.end, day(2026, 3, 7, {14, 5, 9}));
    EXPECT_EQ(answer.begin.timeSpec(), Qt::UTC);
}

TEST_F(DateDialogTest, MonthIsTheCalendars) {
    const std::pair<QDate, QDate> months[] = {{{2026, 3, 31}, {2026, 2, 28}},
                                              {{2028, 3, 31}, {2028, 2, 29}},
                                              {{2026, 1, 15}, {2025, 12, 15}},
                                              {{2026, 5, 31}, {2026, 4, 30}},
                                              {{2026, 12, 31}, {2026, 11, 30}}};
    for (const auto& [today, before] : months) {
        clock.set(QDateTime(today, QTime(2, 30), Qt::UTC));
        const Answer answer = ask([](QWidget& form) { press(form, "cmdOK"); });
        EXPECT_EQ(answer.begin, QDateTime(before, QTime(2, 30), Qt::UTC));
        EXPECT_EQ(answer.end.date(), today);
    }
}

TEST_F(DateDialogTest, HoursThatTheZoneSkipsStay) {
    const QByteArray zone = qgetenv("TZ");
    qputenv("TZ", "America/New_York");
    tzset();
    clock.set(day(2026, 3, 8, {2, 30}));  // no such hour there
    const Answer answer = ask([](QWidget& form) { press(form, "cmdOK"); });
    EXPECT_EQ(answer.end, day(2026, 3, 8, {2, 30}));
    qputenv("TZ", zone);
    tzset();
}

TEST_F(DateDialogTest, ShowsDatesAndTimesAsTheSystemDoes) {
    const frmReportDate form;
    EXPECT_EQ(str(child<QDateTimeEdit>(form, "dtEnd")->text()), "3/7/2026 2:05 PM");
    EXPECT_TRUE(child<QDateTimeEdit>(form, "dtEnd")->calendarPopup());
    platform::setSystemLocale(QLocale(QLocale::German, QLocale::Germany));
    const frmReportDate german;
    platform::setSystemLocale(std::nullopt);
    EXPECT_EQ(str(child<QDateTimeEdit>(german, "dtEnd")->text()), "07.03.2026 14:05");
}

TEST_F(DateDialogTest, CancelSaysSo) {
    EXPECT_TRUE(ask([](QWidget& form) { press(form, "cmdCancel"); }).cancelled);
}

TEST_F(DateDialogTest, CloseBoxGoesOn) {
    EXPECT_FALSE(ask([](QWidget& form) { form.close(); }).cancelled);
}

TEST_F(DateDialogTest, EscapeIsCancel) {
    EXPECT_TRUE(ask([](QWidget& form) { QTest::keyClick(&form, Qt::Key_Escape); }).cancelled);
    EXPECT_TRUE(ask([](QWidget& form) {
                    QTest::keyClick(child<QDateTimeEdit>(form, "dtBegin"), Qt::Key_Escape);
                }).cancelled)
        << "from a date as well";
}

TEST_F(DateDialogTest, TodayIsIncludedByAButton) {
    const Answer answer = ask([](QWidget& form) {
        EXPECT_EQ(str(child<QLabel>(form, "lblUpTo")->text()), "The list goes up to 0:00 of the end date.");
        EXPECT_EQ(str(child<QPushButton>(form, "cmdToday")->text()), "Today included");
        press(form, "cmdToday");
        press(form, "cmdOK");
    });
    EXPECT_EQ(answer.begin, day(2026, 2, 7, {14, 5, 9}));
    EXPECT_EQ(answer.end, day(2026, 3, 8));
}

TEST_F(DateDialogTest, EveryDateAndTimeHasRoom) {
    for (const char* system : {"en_US", "de_DE", "fr_CH", "ru_RU", "pt_BR"}) {
        platform::setSystemLocale(QLocale(system));
        frmReportDate form;
        form.show();
        auto* picker = child<QDateTimeEdit>(form, "dtEnd");
        picker->setDateTime(day(2026, 12, 28, {22, 58}));
        const auto* line = child<QLineEdit>(*picker, "qt_spinbox_lineedit");
        const int needed = line->fontMetrics().horizontalAdvance(line->text());
        EXPECT_GE(line->contentsRect().width() - 4, needed) << system << str(line->text());
    }
    platform::setSystemLocale(std::nullopt);
}

TEST_F(DateDialogTest, TextsHaveRoomInEveryLanguage) {
    for (const auto& [language, system] : {std::pair{"English", "en_US"},
                                           {"German", "de_DE"},
                                           {"Spanish", "es_ES"},
                                           {"French", "fr_FR"},
                                           {"Russian", "ru_RU"},
                                           {"Portuguese", "pt_PT"},
                                           {"Italian", "it_IT"},
                                           {"Swiss", "fr_CH"}}) {
        speak(language);
        platform::setSystemLocale(QLocale(system));
        for (const bool dark : {false, true}) {
            platform::applyTheme(*qApp, dark);
            frmReportDate form;
            form.show();
            for (const auto* label : form.findChildren<QLabel*>())
                EXPECT_GE(label->width(), label->sizeHint().width()) << language << " " << str(label->text());
            for (const auto* button : form.findChildren<QPushButton*>())
                EXPECT_GE(button->width(), button->minimumSizeHint().width())
                    << language << " " << str(button->text());
            kept(form, "report-dates-" + QString(language) + (dark ? "-dark" : ""), dark);
        }
    }
    platform::applyTheme(*qApp, false);
    platform::setSystemLocale(std::nullopt);
}

TEST_F(DateDialogTest, ChangedDatesComeBack) {
    const Answer answer = ask([](QWidget& form) {
        auto* begin = child<QDateTimeEdit>(form, "dtBegin");
        begin->setSelectedSection(QDateTimeEdit::YearSection);
        QTest::keyClick(begin, Qt::Key_Down);
        press(form, "cmdOK");
    });
    EXPECT_EQ(answer.begin, day(2025, 2, 7, {14, 5, 9}));
    EXPECT_EQ(answer.end, day(2026, 3, 7, {14, 5, 9}));
}

TEST_F(DateDialogTest, CancelStaysInEnglish) {
    folder.write(
        "GermanTranslation.xml",
        "<Translations Language=\"German\"><Translate English=\"Begin Date\" Translated=\"Von\"/>"
        "<Translate English=\"End Date\" Translated=\"Bis\"/><Translate English=\"OK\" "
        "Translated=\"Gut\"/><Translate English=\"Cancel\" Translated=\"Abbrechen\"/></Translations>");
    startConfiguration(2);
    frmReportDate form;
    EXPECT_EQ(str(child<QLabel>(form, "lblBegin")->text()), "Von");
    EXPECT_EQ(str(child<QLabel>(form, "lblEnd")->text()), "Bis");
    EXPECT_EQ(str(child<QPushButton>(form, "cmdOK")->text()), "Gut");
    EXPECT_EQ(str(child<QPushButton>(form, "cmdCancel")->text()), "Cancel");
    kept(form, "report-dates");
}
