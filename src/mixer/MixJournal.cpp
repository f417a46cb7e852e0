// The states of the mixes, and where their files lie.
#include "mixer/MixJournal.h"

#include "mixer/JournalFile.h"
#include "mixer/LoadedFormula.h"
#include "mixer/ResultsDocument.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"

#include <QDir>
#include <QFile>
#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using journal_file::closedFolder;
using journal_file::folder;
using journal_file::openPath;
using platform::XmlDocumentPtr;
using protocol::MixId;

constexpr qsizetype closedKept = 1000;

/// A file under another mix's name (a copy by hand) would be written over, moved or removed as that one.
std::optional<JournalEntry> readOpen(const QString& path) {
    auto entry = journal_file::read(path);
    return entry && path == openPath(entry->mix) ? entry : std::nullopt;
}

QString moveToClosed(const JournalEntry& entry) {
    platform::makePrivateFolder(closedFolder());
    const QString target = journal_file::closedPath(entry);
    QFile::remove(target);
    QFile::rename(openPath(entry.mix), target);
    return target;
}

bool isClosed(JournalState state) {
    return state == JournalState::Logged || state == JournalState::PutAside || state == JournalState::Deleted;
}

/// A mix that was not signed by this program's rows is known by its lot and its results.
bool isOf(const JournalEntry& entry, const BatchRows& batch) {
    if (!entry.rows.empty())
        return entry.rows.isSameBatch(batch);
    return entry.results && !entry.lotTaken && entry.lot() == batch.lot() &&
           entry.results->xml() == batch.row.value("log_Results"_L1).toString();
}

/// The oldest closed mixes go; whatever the clock, their names tell which.
void thinOutClosed() {
    QDir closed(closedFolder());
    const QStringList names = closed.entryList({u"*.xml"_s}, QDir::Files, QDir::Name);
    for (qsizetype i = 0; i < names.size() - closedKept; ++i)
        closed.remove(names[i]);
}

}  // namespace

QString JournalEntry::name() const { return formulaName(formula); }
QString JournalEntry::quantity() const { return formulaQuantity(formula); }
QString JournalEntry::lot() const { return lotOf(results); }

bool JournalEntry::belongsTo(const QString& identity) const {
    return database.isEmpty() || identity.isEmpty() || database == identity;
}

void MixJournal::read() {
    m_open.clear();
    m_unreadable.clear();
    const QStringList names = QDir(folder()).entryList({u"*.xml"_s}, QDir::Files, QDir::Name);
    for (const QString& name : names) {
        const auto entry = readOpen(folder() + '/'_L1 + name);
        if (!entry)
            m_unreadable << name;
        else if (entry->state == JournalState::Loaded)
            QFile::remove(openPath(entry->mix));
        else if (isClosed(entry->state))
            moveToClosed(*entry);
        else
            m_open.push_back(*entry);
    }
    std::stable_sort(m_open.begin(), m_open.end(),
                     [](const JournalEntry& a, const JournalEntry& b) { return a.started < b.started; });
    thinOutClosed();
}

const JournalEntry* MixJournal::find(const MixId& mix) const {
    const auto found = std::find_if(m_open.begin(), m_open.end(),
                                    [&](const JournalEntry& entry) { return entry.mix == mix; });
    return found == m_open.end() ? nullptr : &*found;
}

JournalEntry& MixJournal::entry(const MixId& mix) {
    if (const JournalEntry* found = find(mix))
        return const_cast<JournalEntry&>(*found);
    throw platform::RuntimeError(platform::error::itemNotFound, u"No such mix in the journal"_s);
}

void MixJournal::write(const JournalEntry& entry) const {
    platform::needPrivateFolder(folder());
    journal_file::write(entry, openPath(entry.mix));
}

void MixJournal::drop(const MixId& mix) {
    std::erase_if(m_open, [&](const JournalEntry& entry) { return entry.mix == mix; });
}

void MixJournal::load(const MixId& mix, const XmlDocumentPtr& formula, const QString& database) {
    for (const JournalEntry& entry : m_open) {
        if (entry.state == JournalState::Loaded)
            QFile::remove(openPath(entry.mix));
    }
    std::erase_if(m_open, [](const JournalEntry& entry) { return entry.state == JournalState::Loaded; });
    JournalEntry fresh;
    fresh.mix = mix;
    fresh.loaded = platform::now();
    fresh.formula = formula;
    fresh.database = database;
    m_open.push_back(fresh);
    write(m_open.back());
}

void MixJournal::start(const MixId& mix, const QString& serial) {
    JournalEntry& started = entry(mix);
    started.state = JournalState::Started;
    started.serial = serial;
    started.started = platform::now();
    write(started);
}

void MixJournal::undoStart(const MixId& mix) {
    drop(mix);
    QFile::remove(openPath(mix));
}

void MixJournal::finish(const MixId& mix, const XmlDocumentPtr& results, bool lotTaken) {
    JournalEntry& finished = entry(mix);
    finished.state = JournalState::Finished;
    finished.finished = platform::now();
    finished.results = results;
    finished.lotTaken = lotTaken;
    write(finished);
}

void MixJournal::abort(const MixId& mix) {
    JournalEntry& aborted = entry(mix);
    aborted.state = JournalState::Aborted;
    aborted.finished = platform::now();
    write(aborted);
}

void MixJournal::sign(const MixId& mix, const BatchRows& rows) {
    JournalEntry& entrySigned = entry(mix);
    entrySigned.rows = rows;
    write(entrySigned);
}

void MixJournal::close(const MixId& mix, JournalState how) {
    JournalEntry closed = entry(mix);
    closed.state = how;
    if (how == JournalState::Logged) {
        drop(closed.mix);  // whatever the disk says, it stands in the log
        m_left.push_back(closed);
    }
    write(closed);
    drop(closed.mix);
    moveToClosed(closed);
    std::erase_if(m_left, [](const JournalEntry& entry) { return !QFile::exists(openPath(entry.mix)); });
}

// ---- closed mixes ---------------------------------------------------------------------------------

std::vector<ClosedMix> MixJournal::closed() const {
    std::vector<ClosedMix> found;
    const QDir closed(closedFolder());
    const QStringList names =
        closed.entryList({u"*.xml"_s}, QDir::Files, QDir::SortFlags(QDir::Name | QDir::Reversed));
    for (const QString& name : names) {
        if (const auto head = journal_file::readHead(closed.filePath(name)))
            found.push_back(*head);
    }
    return found;
}

QString MixJournal::closedLot(const MixId& mix) const {
    const QDir closed(closedFolder());
    const QStringList names = closed.entryList({u"*-%1.xml"_s.arg(QString::fromLatin1(mix))}, QDir::Files);
    const auto entry =
        names.isEmpty() ? std::nullopt : journal_file::read(closed.filePath(names.constLast()));
    return entry ? entry->lot() : QString();
}

void MixJournal::reopen(const ClosedMix& closed) {
    auto entry = journal_file::read(closed.path);
    if (!entry || !entry->results || find(entry->mix))
        return;
    entry->state = JournalState::Finished;
    write(*entry);
    QFile::remove(closed.path);
    m_open.push_back(*entry);
}

void MixJournal::noteDeletion(const BatchRows& rows) {
    m_deletion.reset();
    for (const std::vector<JournalEntry>* entries : {&m_open, &m_left}) {
        for (const JournalEntry& entry : *entries) {
            if (isOf(entry, rows))
                return noteOpenDeletion(entry);
        }
    }
    for (const ClosedMix& mix : closed()) {
        const bool maybe = mix.lot.isEmpty() || (mix.lot == rows.lot() && mix.moment == rows.moment());
        if (mix.state == JournalState::Logged && maybe && noteClosedDeletion(mix, rows))
            return;
    }
}

void MixJournal::noteOpenDeletion(JournalEntry entry) {
    m_deletion = {entry, journal_file::closedPath(entry)};
    entry.state = JournalState::Deleted;
    write(entry);
    moveToClosed(entry);
    drop(entry.mix);
    std::erase_if(m_left, [&](const JournalEntry& left) { return left.mix == entry.mix; });
}

bool MixJournal::noteClosedDeletion(const ClosedMix& mix, const BatchRows& rows) {
    const auto before = journal_file::read(mix.path);
    if (!before || !isOf(*before, rows))
        return false;
    JournalEntry deleted = *before;
    deleted.state = JournalState::Deleted;
    journal_file::write(deleted, mix.path);
    m_deletion = {*before, mix.path};
    return true;
}

void MixJournal::noteRestored(const BatchRows& rows) {
    m_deletion.reset();
    for (const ClosedMix& mix : closed()) {
        auto entry = mix.state == JournalState::Deleted ? journal_file::read(mix.path) : std::nullopt;
        if (!entry || !isOf(*entry, rows))
            continue;
        entry->state = JournalState::Logged;
        journal_file::write(*entry, mix.path);
        return;
    }
}

void MixJournal::undoDeletion() {
    if (!m_deletion)
        return;
    const Deletion undone = *std::exchange(m_deletion, std::nullopt);
    if (isClosed(undone.before.state))
        return journal_file::write(undone.before, undone.path);
    write(undone.before);
    QFile::remove(undone.path);
    m_open.push_back(undone.before);
}

}  // namespace sorvanto
