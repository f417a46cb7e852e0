// The window and its server: a copy in its place, and the way there and back, which is a start of the program: no record
// on show, no list and no unsaved text is then of another store than the one that is open.
#include "core/DailyBackup.h"
#include "core/ServerCopy.h"
#include "core/WindowPlace.h"
#include "core/frmMain.h"
#include "mixer/ctlSorvanto.h"
#include "platform/ask/Ask.h"
#include "platform/basic/RuntimeError.h"
#include "platform/widgets/UnderWay.h"
#include "shared/Context.h"
#include "shared/DraftStore.h"
#include "shared/Guard.h"
#include "shared/RecordScreen.h"
#include "shared/Translator.h"
#include "shared/TypedText.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

void frmMain::watchServer() {
    if (m_parts.serverLook)
        m_serverLook = m_parts.serverLook({[this] { beginAnew(true); }, [this] { beginAnew(false); }});
}

QString frmMain::titleOf(const QString& caption) const {
    const QString title =
        m_context.standIn ? caption + u"  \u2014  "_s + standInText(*m_context.standIn) : caption;
    // "[*]" would be taken for the place of a modification mark.
    return QString(title).replace("[*]"_L1, "[*][*]"_L1);
}

void frmMain::keepTypedText() {
    for (const auto& screen : m_screens) {
        if (auto* typed = dynamic_cast<TypedText*>(screen.get()))
            typed->keepTypedText();
    }
    if (m_drafts)
        m_drafts->flush();
}

// While something is mixed the panel is needed, without a gap. Typed text is kept as after a crash, and nothing is asked.
void frmMain::beginAnew(bool onCopy) {
    if (platform::UnderWay::any())
        return platform::whenIdle(*this, [this, onCopy] { beginAnew(onCopy); });
    guarded(u"frmMain:beginAnew"_s, [&] {
        if (m_control && m_control->mixUnderWay()) {
            platform::MsgBox(translated(u"A mix is under way. Try again when it has ended."_s),
                             {platform::Buttons::Ok, platform::Icon::Information});
            return;
        }
        m_ended = true;
        m_serverLook.reset();
        if (onCopy)  // a server that is away is not waited for once more
            m_context.connection = std::make_shared<platform::Connection>();
        keepTypedText();
        m_backup->stop();
        platform::deref(m_frmSorvanto).closeForm();
        saveWindowPlace(*this);
        m_context.restartProgram(onCopy);
    });
}

}  // namespace sorvanto
