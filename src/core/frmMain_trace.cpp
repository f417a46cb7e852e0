// Where something went: what is on show is looked up first, and a row of the lists brings its record on show.
#include "core/ScreenTable.h"
#include "core/TraceWindow.h"
#include "core/frmMain.h"
#include "platform/ask/Ask.h"
#include "platform/basic/Paths.h"
#include "platform/widgets/UnderWay.h"
#include "shared/Context.h"
#include "shared/Guard.h"
#include "shared/Happening.h"
#include "shared/ListedScreen.h"
#include "shared/RecordScreen.h"
#include "shared/Translator.h"
#include "shared/databaseInUse.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {

QString shownText(const RecordScreen& screen, QLatin1String control) {
    const auto* found = screen.findChild<QWidget*>(control);
    return found ? found->property("text").toString() : QString();
}

}  // namespace

/// The record on show by its lot or name, where the screen has one that leads somewhere.
TraceWindow::Start frmMain::traceStart() const {
    using Found = TraceWindow::Found;
    if (m_current == currentFormula)
        return {};
    const RecordScreen& screen = hosted(static_cast<ScreenNumber>(m_current));
    const auto* listed = dynamic_cast<const ListedScreen*>(&screen);
    TraceWindow::Start start{{}, listed ? listed->shownKey() : 0, Found::Chemicals};
    switch (m_current) {
    case formulas:
        start.text = shownText(screen, "txtfrm_Name"_L1);
        start.found = Found::Formulas;
        break;
    case chemicals:
        for (const QLatin1String control : {"txtchm_Lot"_L1, "txtchm_NDC"_L1, "txtchm_Name"_L1}) {
            if (start.text.trimmed().isEmpty())
                start.text = shownText(screen, control);
        }
        break;
    case logs:
        return {shownText(screen, "txtlog_Lot"_L1), 0, Found::Batches};
    default:
        QStringList names{shownText(screen, "txtpat_LName"_L1), shownText(screen, "txtpat_FName"_L1)};
        names.removeAll(QString());
        start.text = names.join(u", "_s);
        start.found = Found::Patients;
    }
    return start;
}

void frmMain::showTrace() {
    guarded(u"frmMain:showTrace"_s, [&] {
        QStringList folders{platform::programFolder()};
        if (const QString file = databaseFile(m_context); !file.isEmpty())
            folders.prepend(QFileInfo(file).absolutePath());
        folders.removeDuplicates();
        TraceWindow window(m_context, Tracer(openDB(m_context), folders), traceStart(), this);
        window.begin();
        if (!window.wasClosed())
            platform::asker().showModal(window, [&] { window.exec(); });
        const TraceWindow::Wanted wanted = window.wanted();
        if (wanted.key != 0)  // once this click has been delivered
            platform::whenIdle(
                *this, [this, wanted] { showRecord(wanted.screen, static_cast<std::int16_t>(wanted.key)); });
    });
}

// As by hand: the screen's button, then the record. A record that is being changed there stays, and it is said.
void frmMain::showRecord(ScreenNumber number, std::int16_t key) {
    if (!screen(number))
        return announce(
            translated(u"The record was not opened: patients are switched off in the options."_s));
    for (const ScreenRow& row : screenTable) {
        if (row.number == number && m_current != number)
            m_bar.band(u"FormBar"_s).tool(QString::fromLatin1(row.button)).action().trigger();
    }
    auto* listed = dynamic_cast<ListedScreen*>(screen(number));
    if (!listed || m_current != number)
        return;
    if (listed->canLeaveRecord())
        listed->showRecord(key);
    else if (listed->shownKey() != key)
        announce(translated(
            u"The record was not opened: another one is being changed there. Save or cancel that one first."_s));
    refreshForm();
}

}  // namespace sorvanto
