// The history of the record on show.
#include "core/HistoryFileWindow.h"
#include "core/HistoryWindow.h"
#include "core/frmMain.h"
#include "platform/ask/Ask.h"
#include "platform/widgets/UnderWay.h"
#include "shared/Context.h"
#include "shared/Guard.h"
#include "shared/ListedScreen.h"
#include "shared/RecordScreen.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

void frmMain::showHistory() {
    guarded(u"frmMain:showHistory"_s, [&] {
        const auto* listed = dynamic_cast<const ListedScreen*>(screen(m_current));
        if (!listed || listed->shownKey() == 0)
            return showWholeHistory();
        HistoryWindow window(m_context, openDB(m_context),
                             {listed->listedTable().table, listed->shownKey(), shownName(), true, {}}, this);
        platform::asker().showModal(window, [&] { window.exec(); });
        const PastValues wanted = window.wanted();
        const auto fill = [this, wanted] {
            if (auto* boxes = dynamic_cast<TakesPastValues*>(screen(m_current)))
                boxes->useValues(wanted);
        };
        if (wanted.key != 0)  // once this click has been delivered
            platform::whenIdle(*this, fill);
    });
}

void frmMain::showWholeHistory() {
    HistoryFileWindow window(m_context, openDB(m_context), this);
    platform::asker().showModal(window, [&] { window.exec(); });
}

void frmMain::showHistoryOf(const QString& table, std::int64_t key, const QString& name,
                            const QDateTime& since) {
    guarded(u"frmMain:showHistory"_s, [&] {
        HistoryWindow window(m_context, openDB(m_context), {table, key, name, false, since}, this);
        platform::asker().showModal(window, [&] { window.exec(); });
    });
}

/// What the record on show is called.
QString frmMain::shownName() const {
    const auto text = [&](ScreenNumber number, const QString& box) {
        const auto* found = hosted(number).findChild<QWidget*>(box);
        return found ? found->property("text").toString() : QString();
    };
    switch (m_current) {
    case formulas:
        return text(formulas, u"txtfrm_Name"_s);
    case chemicals:
        return text(chemicals, u"txtchm_Name"_s);
    case logs:
        return text(logs, u"txtlog_Name"_s) + u' ' + text(logs, u"txtlog_Lot"_s);
    case patients:
        return text(patients, u"txtpat_LName"_s) + u", "_s + text(patients, u"txtpat_FName"_s);
    default:
        return {};
    }
}

}  // namespace sorvanto
