// The first picture: the window as it will look at the end of the start, before what it does not show is made. What
// is set here is set once more by the click that opens the formulas; no statement runs, no screen listens.
#include "core/RecordListPlace.h"
#include "core/StatusLine.h"
#include "core/frmMain.h"
#include "platform/widgets/PaintWait.h"
#include "shared/Guard.h"
#include "shared/RecordScreen.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

void frmMain::showFirstPicture(const ShowWindow& show) {
    if (!show || !m_screens[formulas])
        return;
    guarded(u"frmMain:showFirstPicture"_s, [&] {
        const ScreenRow& row = screenTable[formulas];
        showBands(row.number);
        host(row);
        m_screens[formulas]->showTools();
        if (m_showPatients)
            markScreen(row.number);
        setCaption(captionOf(row));
        m_bar.recalcLayout();
        m_opening = true;
        platform::PaintWait picture(*this);
        show();
        picture.wait();
    });
}

// The captions on the way were those of screens that nobody saw, and an activation met half of them.
void frmMain::endOpening() {
    if (!std::exchange(m_opening, false))
        return;
    setCaption(m_caption);
    if (std::exchange(m_activated, false))
        Form_Activate();
}

}  // namespace sorvanto
