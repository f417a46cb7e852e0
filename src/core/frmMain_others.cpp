// Other benches on the same records: the record on show, its list and the status line follow them.
#include "core/BenchWatch.h"
#include "core/ChangeStrip.h"
#include "core/RecordListPlace.h"
#include "core/StatusLine.h"
#include "core/frmMain.h"
#include "mixer/ctlSorvanto.h"
#include "platform/basic/RuntimeError.h"
#include "shared/Context.h"
#include "shared/ListedScreen.h"
#include "shared/RecordScreen.h"

#include <QApplication>

namespace sorvanto {

namespace {

/// Whether something else is going on that looks at the record on show.
bool isUserBusy() {
    return QApplication::activeModalWidget() || QApplication::activePopupWidget() ||
           QApplication::mouseButtons() != Qt::NoButton;
}

}  // namespace

void frmMain::watchBenches() {
    const auto mix = [this]() -> std::optional<BenchMix> {
        const auto under = m_control ? m_control->mixUnderWay() : std::nullopt;
        if (!under || !under->since.isValid())
            return std::nullopt;
        return BenchMix{under->formula, under->since};
    };
    m_others = new BenchWatch(m_context, mix, this);
    m_change = new ChangeStrip;
    m_bar.addStrip(*m_change);
    connect(m_others, &BenchWatch::looked, this, &frmMain::followOthers);
    connect(m_list, &RecordListPlace::followed, this, &frmMain::showChange);
    connect(m_change, &ChangeStrip::shown, this, [this] {
        if (const RecordChange* change = shared() ? shared()->changeByOthers() : nullptr)
            showHistoryOf(change->table, change->key, change->name, change->first);
    });
    connect(m_change, &ChangeStrip::putAside, this, [this] {
        if (shared())
            shared()->putChangeAside();
        showChange();
    });
}

SharedRecord* frmMain::shared() const { return dynamic_cast<SharedRecord*>(screen(m_current)); }

// What can't be read now is made up for at the next look.
void frmMain::followOthers() {
    for (const auto& each : m_screens) {
        if (auto* record = dynamic_cast<SharedRecord*>(each.get()))
            record->noteOthers(*m_others->state());
    }
    if (m_ended || m_opening || m_listeners.isDelivering() || isUserBusy())
        return;
    try {
        if (SharedRecord* record = shared())
            record->followOthers();
        m_status->follow();
        // The list also follows what another program of the same user writes.
        if (m_others->state()->ends == m_followed)
            return showChange();
        m_followed = m_others->state()->ends;
        m_list->followOthers();
    } catch (const platform::RuntimeError&) {
    }
}

void frmMain::showChange() {
    const SharedRecord* record = shared();
    const auto* listed = dynamic_cast<const ListedScreen*>(screen(m_current));
    m_change->setChange(record ? record->changeByOthers() : nullptr, listed && !listed->canLeaveRecord());
}

}  // namespace sorvanto
