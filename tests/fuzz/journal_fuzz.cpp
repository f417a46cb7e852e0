// Feeds any bytes to the journal as the file of a mix, beside a good one. What is no journal stays where it
// is, to the byte; what is one reads back the same after each write; the other mix is never touched.
#include "Fuzz.h"

#include "mixer/MixJournal.h"
#include "mixer/ResultsDocument.h"
#include "platform/basic/Dates.h"

#include <QDirIterator>

using namespace Qt::StringLiterals;

using fuzz::require;
using platform::XmlDocument;
using platform::XmlDocumentPtr;
using namespace sorvanto;

namespace {

const QString fileName = u"mixes/3FA21C09.xml"_s;
const QString otherName = u"mixes/0000ABCD.xml"_s;
const QByteArray other =
    "<Mix ID=\"0000ABCD\" State=\"started\" Mixer=\"SV0426\" Loaded=\"2026-03-07 14:05:09\" "
    "Started=\"2026-03-07 14:06:09\"><Formula><Name>Base</Name><Make>50</Make></Formula></Mix>";

class NoonClock final : public platform::Clock {
public:
    QDateTime now() const override { return QDateTime(QDate(2026, 3, 7), QTime(12, 0), Qt::UTC); }
};

QString shape(const XmlDocumentPtr& document) { return document ? document->xml() : QString(); }

bool same(const JournalEntry& a, const JournalEntry& b) {
    return a.mix == b.mix && a.state == b.state && a.serial == b.serial && a.lotTaken == b.lotTaken &&
           a.loaded == b.loaded && a.started == b.started && a.finished == b.finished &&
           shape(a.formula) == shape(b.formula) && shape(a.results) == shape(b.results) &&
           a.name() == b.name() && a.quantity() == b.quantity() && a.lot() == b.lot();
}

void checkRead(const MixJournal& journal, const protocol::MixId& mix, const JournalEntry& expected) {
    const JournalEntry* entry = journal.find(mix);
    require(entry && same(*entry, expected), "an entry reads back as it was written");
}

MixJournal readAgain() {
    MixJournal journal;
    journal.read();
    return journal;
}

/// Finished, or aborted where it is finished, then closed; each time a new start sees the same.
void goOn(const protocol::MixId& mix) {
    MixJournal journal = readAgain();
    const XmlDocumentPtr results =
        makeResultsDocument({1, "2.1", "SV0426"}, {mix, 12, 7, 9, 61, false, 2, 14952});
    const QString formula = journal.find(mix)->formula->xml();
    if (journal.find(mix)->state == JournalState::Finished)
        journal.abort(mix);
    else
        journal.finish(mix, results, false);
    const MixJournal again = readAgain();
    checkRead(again, mix, *journal.find(mix));
    require(again.find(mix)->formula->xml() == formula, "the formula is never changed");
    journal.close(mix, JournalState::Logged);
    require(!readAgain().find(mix), "what was closed is no longer open");
}

/// What is left of the file in the folder, closed ones included.
bool isKept(const fuzz::Folder& folder, const QByteArray& content) {
    QDirIterator files(folder.path(u"mixes"_s), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (file.open(QIODevice::ReadOnly) && file.readAll() == content)
            return true;
    }
    return false;
}

void tryFile(const fuzz::Folder& folder, const QByteArray& content) {
    folder.write(fileName, content);
    folder.write(otherName, other);
    const MixJournal first = readAgain();
    require(folder.read(otherName) == other && first.find("0000ABCD"), "the other mix is never touched");
    if (first.unreadable().contains(u"3FA21C09.xml"_s)) {
        require(first.open().size() == 1 && folder.read(fileName) == content,
                "what is no journal stays as it is");
        return;
    }
    for (const JournalEntry& entry : std::vector<JournalEntry>(first.open())) {
        checkRead(readAgain(), entry.mix, entry);
        if (entry.mix == "0000ABCD")
            continue;
        require(entry.state == JournalState::Started || entry.state == JournalState::Finished ||
                    entry.state == JournalState::Aborted,
                "an open mix was started");
        require(folder.read(fileName) == content, "reading changes nothing");
        goOn(entry.mix);
        require(folder.read(otherName) == other, "the other mix is never touched");
        return;
    }
    // Neither open nor unreadable: one never started may go, a closed one is kept.
    const bool neverStarted = content.contains("loaded");
    require(neverStarted || isKept(folder, content), "a closed mix is kept");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::Folder folder;
    static const NoonClock clock;
    platform::setClock(&clock);
    tryFile(folder, fuzz::bytes(data, size));
    QDir(folder.path(u"mixes"_s)).removeRecursively();
    return 0;
}
