#include "reports/frmReportDate.h"

#include "platform/basic/Dates.h"
#include "platform/basic/SystemLocale.h"
#include "platform/widgets/Calendar.h"
#include "shared/Guard.h"
#include "shared/Translator.h"
#include "ui_frmReportDate.h"

#include <QCalendarWidget>
#include <QKeyEvent>
#include <QRegularExpression>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

/// The system's short date and time, the year with four digits.
QString pickerFormat(const QLocale& locale) {
    static const QRegularExpression year(u"y+"_s);
    return locale.dateTimeFormat(QLocale::ShortFormat).replace(year, u"yyyy"_s);
}

}  // namespace

frmReportDate::frmReportDate(QWidget* parent)
    : ModalForm(parent), m_ui(std::make_unique<Ui::frmReportDate>()) {
    m_ui->setupUi(this);
    connect(m_ui->cmdOK, &QPushButton::clicked, this, &frmReportDate::cmdOK_Click);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &frmReportDate::cmdCancel_Click);
    connect(m_ui->cmdToday, &QPushButton::clicked, this, &frmReportDate::cmdToday_Click);
    Form_Load();
}

frmReportDate::~frmReportDate() = default;

// A month back by the calendar: from 31 March to the last day of February.
void frmReportDate::Form_Load() {
    guarded(u"frmReportDate:Form_Load"_s, [&] {
        const QDateTime now = platform::now();
        for (QDateTimeEdit* picker : {m_ui->dtBegin, m_ui->dtEnd}) {
            picker->setTimeSpec(Qt::UTC);
            picker->setLocale(platform::systemLocale());
            picker->setDisplayFormat(pickerFormat(platform::systemLocale()));
            platform::dressCalendar(*picker->calendarWidget());
            widen(*picker);
        }
        m_ui->dtBegin->setDateTime(now.addMonths(-1));
        m_ui->dtEnd->setDateTime(now);
        translateForm();
    });
}

void frmReportDate::widen(QDateTimeEdit& picker) {
    constexpr int frameAndArrow = 64;
    picker.ensurePolished();
    int widest = 0;
    for (const QTime time : {QTime(10, 58), QTime(22, 58)}) {
        const QString text =
            picker.locale().toString(QDateTime({2028, 12, 28}, time, Qt::UTC), picker.displayFormat());
        widest = std::max(widest, picker.fontMetrics().horizontalAdvance(text));
    }
    picker.setMinimumWidth(widest + frameAndArrow);
}

// "Cancel" stays in English.
void frmReportDate::translateForm() {
    guarded(u"frmReportDate:translateForm"_s, [&] {
        m_ui->lblBegin->setText(translated(u"Begin Date"_s));
        m_ui->lblEnd->setText(translated(u"End Date"_s));
        m_ui->cmdOK->setText(translated(u"OK"_s));
        m_ui->lblUpTo->setText(translated(u"The list goes up to 0:00 of the end date."_s));
        m_ui->cmdToday->setText(translated(u"Today included"_s));
    });
}

QDateTime frmReportDate::beginDate() const { return m_ui->dtBegin->dateTime(); }

QDateTime frmReportDate::endDate() const { return m_ui->dtEnd->dateTime(); }

void frmReportDate::cmdOK_Click() {
    guarded(u"frmReportDate:cmdOK_Click"_s, [&] {
        m_cancelled = false;
        hide();
    });
}

void frmReportDate::cmdCancel_Click() {
    guarded(u"frmReportDate:cmdCancel_Click"_s, [&] {
        m_cancelled = true;
        hide();
    });
}

void frmReportDate::cmdToday_Click() {
    guarded(u"frmReportDate:cmdToday_Click"_s,
            [&] { m_ui->dtEnd->setDateTime(platform::today().addDays(1)); });
}

void frmReportDate::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        return cmdCancel_Click();
    ModalForm::keyPressEvent(event);
}

}  // namespace sorvanto
