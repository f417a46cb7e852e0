// The English texts of the panel, and the look-up of the user's language.
#include "mixer/PanelTexts.h"

#include "platform/basic/Paths.h"
#include "platform/xml/XmlDocument.h"

#include <array>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr std::size_t count = static_cast<std::size_t>(PanelText::Count);

// An apostrophe would shut a text out of the language files; there is none.
constexpr std::array<const char*, count> english{
    "Sorvanto Control Panel",
    "simulated",
    "firmware %1",
    "not connected",
    "Connect",
    "looking for the mixer",
    "no word since %1",
    "nothing loaded",
    "Choose a formula and press Make.",
    "sending the programme",
    "ready to start",
    "step %1 of %2",
    "time left",
    "paused",
    "finished",
    "The mix is finished. Sign it for the log.",
    "stopped",
    "Quantity %1 in %2",
    "Start",
    "Pause",
    "Resume",
    "Stop",
    "OK",
    "Load again",
    "Stop here is not the emergency stop of the mixer.",
    "Lift RPM",
    "Mix RPM",
    "Time",
    "%1 x",
    "Lift",
    "Mix",
    "Cycles",
    "Mixer %1",
    "The formula can not be read. Open it again and press Make.",
    "The formula has no mix type. Choose one on the formula screen.",
    "Combination Mix is unsupported at this time",
    "The custom mix of this formula has no steps. Add steps on the formula screen.",
    "The programme has %1 steps. The mixer takes %2 at most. Delete steps on the formula screen.",
    "Step %1 can not be read. Enter it anew on the formula screen.",
    "Step %1 needs either a time or a number of cycles. Enter it anew on the formula screen.",
    "Step %1 is outside of what the mixer can do (Lift RPM up to %2, Mix RPM up to %3). Change it on the "
    "formula screen.",
    "Pre Grind or Free Spin of this formula can not be read. Set both anew on the formula screen.",
    "No jar is chosen. Choose a jar size on the formula screen.",
    "A mix is under way. Load the formula again when it has ended.",
    "A mix waits for its initials. Load the formula again afterwards.",
    "Step %1 mixes with %2 RPM. Up to %3 are recommended for this jar.",
    "No mixer on %1. Check the cable and the power of the mixer.",
    "Another program uses %1. Close that program.",
    "You may not use %1. Join the group \"%2\" and sign in again.",
    "You may not use %1. Ask the administrator for the right to use it.",
    "%1 can not be opened (%2). Check the cable, or choose another port in the options.",
    "The mixer on %1 does not answer. Check its power and the cable, or choose another port in the options.",
    "The mixer on %1 is gone. Check its power and the cable.",
    "The mixer is gone in the midst of the mix. Look after it: it may go on mixing by itself. "
    "When it answers again, its results are fetched.",
    "The mixer has stored another programme than it was sent. Press Load again.",
    "The mixer refuses the programme (%1). Press Load again.",
    "The lid is open. Close it and press Start.",
    "The emergency stop is pressed. Release it and press Start.",
    "The mixer refuses to start (%1). Press Load again.",
    "The lid is open. Close it and press Resume.",
    "The mixer has not answered. Press the button again.",
    "The lid was opened. Close it and press Resume, or press Stop.",
    "The emergency stop was pressed and the mix has ended without results. Release it, press OK, and decide "
    "what becomes of the jar.",
    "The emergency stop is still pressed. Release it and press OK.",
    "The motor was overloaded and the mix has ended without results. Take the jar out, look for lumps, and "
    "press OK.",
    "The mixer lost its power or restarted, and the mix has ended without results. Press OK, and decide what "
    "becomes of the jar.",
    "The mixer reports a problem. Look after it and press OK.",
    "The mixer runs a mix that was not started here.",
    "The mix was not started, since its journal can not be written: %1 Make room and press Start.",
    "The results could not be written to the journal: %1 Log the mix now.",
    "A file in the journal can not be read: %1",
    "Not in the log yet",
    "%1: ended without results",
    "%1: its results are fetched when mixer %2 answers",
    "Log this mix",
    "Put aside",
    "Put aside the mix of %1, lot %2? It will not be offered for the log again.",
    "Put aside",
    "unknown",
    "(no name)",
    "%1 in %2",
    "lot %1",
    "stopped",
    "stopped at %1 in step %2 of %3",
    "not run",
    "This batch is marked as interrupted.",
    "The mix has ended. Sign it when you are ready.",
    "&Sign now",
    "The formula \"%1\" of this mix is no longer in the database, so the mix can not be logged. It stays on "
    "offer below.",
    "Batch %1: %2 missing ingredient line was added.",
    "Batch %1: %2 missing ingredient lines were added.",
    "Batch %1: its missing ingredient lines could not be added: %2",
    "Batch %1: its ingredient lines in the log are not those that were signed. Nothing was written.",
    "Batch %1 stands in the log more than once (entries %2). Nothing was written.",
    "%1: made with another database. Open that database to log it.",
    "All %1 preparations accounted for.",
    "%1 of %2 preparations not accounted for: %3",
};

QString literal(PanelText text) {
    return text < PanelText::Count ? QString::fromLatin1(english[static_cast<std::size_t>(text)]) : QString();
}

}  // namespace

QString filledIn(const QString& pattern, const QStringList& parts) {
    QString filled;
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        const bool isMark = pattern[i] == '%'_L1 && i + 1 < pattern.size() && pattern[i + 1].isDigit();
        if (isMark)
            filled += parts.value(pattern[++i].digitValue() - 1);
        else
            filled += pattern[i];
    }
    return filled;
}

void PanelTexts::load(const QString& path) {
    m_translated.clear();
    const platform::XmlDocumentPtr file = platform::XmlDocument::create();
    if (path.isEmpty() || !file->load(platform::platformPath(path)))
        return;
    for (const platform::XmlNode& entry : file->getElementsByTagName(u"Translate"_s)) {
        if (!entry.hasAttribute(u"English"_s) || !entry.hasAttribute(u"Translated"_s))
            continue;
        const QString translated = entry.attribute(u"Translated"_s);
        const QString key = entry.attribute(u"English"_s);
        if (!translated.isEmpty() && !m_translated.contains(key))
            m_translated.insert(key, translated);
    }
}

QString PanelTexts::operator()(PanelText text) const {
    const QString key = literal(text);
    return m_translated.value(key, key);
}

QString PanelTexts::operator()(PanelText text, const QStringList& parts) const {
    return filledIn((*this)(text), parts);
}

QString PanelTexts::operator()(const PanelMessage& message) const {
    return (*this)(message.text, message.parts);
}

QStringList PanelTexts::keys() {
    QStringList keys;
    for (const char* text : english)
        keys << QString::fromLatin1(text);
    keys.removeDuplicates();
    return keys;
}

}  // namespace sorvanto
