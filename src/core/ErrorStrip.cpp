#include "core/ErrorStrip.h"

#include "core/ErrorReportList.h"
#include "core/ProblemTexts.h"
#include "mixer/PanelTexts.h"
#include "platform/widgets/Spoken.h"
#include "platform/widgets/Theme.h"
#include "shared/Translator.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr int pauseBesideQuestion = 200;  // milliseconds

/// What errors.log could not take is told before the report itself.
QString logTrouble(const std::shared_ptr<ErrorReporter>& reporter) {
    if (!reporter || reporter->logFailure().isEmpty())
        return {};
    return u"errors.log: %1 (%2)   "_s.arg(translated(u"Can not be written"_s), reporter->logFailure());
}

}  // namespace

ErrorStrip::ErrorStrip(QWidget* parent)
    : QFrame(parent), m_picture(new QLabel(this)), m_text(new QLabel(this)), m_details(new QPushButton(this)),
      m_close(new QToolButton(this)), m_problems(new QPushButton(this)) {
    setObjectName(u"errorStrip"_s);
    m_text->setObjectName(u"lblReport"_s);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_text->setWordWrap(true);
    m_picture->setPixmap(platform::icon(u"warning"_s).pixmap(24, 24));
    m_details->setObjectName(u"cmdDetails"_s);
    m_close->setObjectName(u"cmdDismiss"_s);
    m_close->setIcon(platform::icon(u"close"_s));
    m_close->setAutoRaise(true);
    m_problems->setObjectName(u"cmdProblems"_s);
    m_problems->setFlat(true);
    m_problems->hide();

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(2 * platform::grid, platform::grid / 2, platform::grid, platform::grid / 2);
    row->setSpacing(platform::grid);
    row->addWidget(m_picture);
    row->addWidget(m_text, 1);
    row->addWidget(m_details);
    row->addWidget(m_close);

    platform::setLook(*this, "caution");
    platform::makeBar(*this, Qt::TopEdge);
    connect(m_details, &QPushButton::clicked, this, &ErrorStrip::openList);
    connect(m_close, &QToolButton::clicked, this, &ErrorStrip::dismiss);
    connect(m_problems, &QPushButton::clicked, this, &ErrorStrip::openList);
    qApp->installEventFilter(this);
    m_click.setSingleShot(true);
    m_click.callOnTimeout(this, &ErrorStrip::endClick);
    m_stay.setSingleShot(true);
    m_stay.setInterval(std::chrono::minutes(1));
    m_stay.callOnTimeout(this, &ErrorStrip::endStay);
    hide();
}

void ErrorStrip::follow(const std::shared_ptr<ErrorReporter>& reporter) {
    m_reporter = reporter;
    reporter->onReport([strip = QPointer<ErrorStrip>(this)](const ErrorReport& report) {
        if (strip)
            strip->showReport(report);
    });
}

// What fails again and again by itself is listed and counted. What fails again under the user's hand is told again:
// the strip may be long gone, and silence would read as success.
void ErrorStrip::showReport(const ErrorReport& report) {
    if (report.count > 1 && !m_userActs) {
        if (m_list)
            m_list->showReports();
        return;
    }
    if (++m_ofThisClick == 1)
        m_shown = report;
    m_click.start(0);
    m_stay.start();
    m_problems->hide();
    show();
    showTexts();
    if (m_ofThisClick == 1)
        platform::sayAloud(*m_text);
    emit shownChanged(true);
    if (m_list)
        m_list->showReports();
}

// The program is back at rest, so what the click began is over; a question in the midst of it is part of it.
void ErrorStrip::endClick() {
    if (QApplication::activeModalWidget()) {
        m_click.start(pauseBesideQuestion);
    } else {
        m_userActs = false;
        m_ofThisClick = 0;
    }
}

bool ErrorStrip::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
        m_userActs = true;
        m_click.start(0);
        break;
    default:
        break;
    }
    return QFrame::eventFilter(watched, event);
}

// Nobody has read a strip that came up behind another window or a question; one in use stays as well.
void ErrorStrip::endStay() {
    const bool inUse = underMouse() || isAncestorOf(QApplication::focusWidget());
    const bool inFront = QApplication::applicationState() == Qt::ApplicationActive;
    if (inUse || !inFront || QApplication::activeModalWidget())
        m_stay.start();
    else
        dismiss();
}

void ErrorStrip::showTexts() {
    const auto reporter = m_reporter.lock();
    m_text->setText(logTrouble(reporter) + problemText(m_shown));
    const QString details = translated(u"Details"_s);
    m_details->setText(m_ofThisClick > 1 ? u"%1 (%2)"_s.arg(details).arg(m_ofThisClick) : details);
    const auto count = reporter ? reporter->reports().size() : 0;
    m_problems->setText(filledIn(translated(u"Problems: %1"_s), {QString::number(count)}));
    fitHeight();
}

// The tool bar that the strip stands in asks for no height for a width; and on its way to the window's width it has
// others, which would make the window grow.
void ErrorStrip::fitHeight() {
    if (const int height = layout()->totalHeightForWidth(window()->width()); height > 0)
        setFixedHeight(height);
}

void ErrorStrip::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    fitHeight();
}

// Looked up only now: reports may come before there is a language.
void ErrorStrip::showEvent(QShowEvent* event) {
    showTexts();
    m_close->setToolTip(translated(u"Close"_s));
    m_close->setAccessibleName(m_close->toolTip());
    QFrame::showEvent(event);
}

void ErrorStrip::openList() {
    const auto reporter = m_reporter.lock();
    if (!reporter)
        return;
    if (!m_list)
        m_list = new ErrorReportList(reporter, window());
    m_list->showReports();
    m_list->show();
    m_list->raise();
    m_list->activateWindow();
}

void ErrorStrip::dismiss() {
    m_userActs = false;
    m_ofThisClick = 0;
    m_stay.stop();
    hide();
    m_problems->show();
    emit shownChanged(false);
}

}  // namespace sorvanto
