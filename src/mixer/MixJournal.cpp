// The journal's files.
#include "mixer/MixJournal.h"

#include "mixer/LoadedFormula.h"
#include "mixer/ResultsDocument.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"

#include <QDir>
#include <QFile>
#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::XmlDocument;
using platform::XmlDocumentPtr;
using platform::XmlNode;
using protocol::MixId;

constexpr std::array<const char*, 6> stateWords{"loaded",  "started", "finished",
                                                "aborted", "logged",  "put aside"};
constexpr qsizetype closedKept = 1000;

QString folder() { return platform::programFolder() + u"/mixes"_s; }

QString closedFolder() { return folder() + u"/closed"_s; }

QString fileOf(const MixId& mix) { return folder() + '/'_L1 + QString::fromLatin1(mix) + u".xml"_s; }

XmlDocumentPtr documentOf(const XmlNode& node) {
    if (!node)
        return nullptr;
    const XmlDocumentPtr document = XmlDocument::create();
    return document->loadXML(node.xml()) ? document : nullptr;
}

void setDate(XmlNode& node, const char* name, const QDateTime& date) {
    if (date.isValid())
        node.setAttribute(QLatin1String(name), platform::storedDate(date));
}

QDateTime dateOf(const XmlNode& node, const char* name) {
    const QString attribute = QLatin1String(name);
    return node.hasAttribute(attribute) ? platform::fromStoredDate(node.attribute(attribute)) : QDateTime();
}

/// Nothing when the file is no whole journal of a mix, or bears the name of another one.
std::optional<JournalEntry> readEntry(const QString& path) {
    const XmlDocumentPtr file = XmlDocument::create();
    const XmlNode root = file->load(path) ? file->selectSingleNode(u"Mix"_s) : XmlNode();
    if (!root || !root.hasAttribute(u"ID"_s) || !root.hasAttribute(u"State"_s))
        return std::nullopt;
    JournalEntry entry;
    entry.mix = root.attribute(u"ID"_s).toLatin1();
    const QString word = root.attribute(u"State"_s);
    const auto state = std::find_if(stateWords.begin(), stateWords.end(),
                                    [&](const char* known) { return word == QLatin1String(known); });
    // A file under another mix's name (a copy by hand) would be written over, moved or removed as that one.
    if (!protocol::isMixId(entry.mix) || path != fileOf(entry.mix) || state == stateWords.end())
        return std::nullopt;
    entry.state = static_cast<JournalState>(state - stateWords.begin());
    if (root.hasAttribute(u"Mixer"_s))
        entry.serial = root.attribute(u"Mixer"_s);
    entry.lotTaken = root.hasAttribute(u"LotTaken"_s);
    entry.loaded = dateOf(root, "Loaded");
    entry.started = dateOf(root, "Started");
    entry.finished = dateOf(root, "Finished");
    entry.formula = documentOf(root.selectSingleNode(u"Formula"_s));
    entry.results = documentOf(root.selectSingleNode(u"Results"_s));
    const bool needsResults = entry.state == JournalState::Finished;
    if (!entry.formula || (needsResults && !entry.results))
        return std::nullopt;
    return entry;
}

void moveToClosed(const JournalEntry& entry) {
    platform::makePrivateFolder(closedFolder());
    const QString date =
        (entry.loaded.isValid() ? entry.loaded : platform::now()).toString(u"yyyyMMdd-HHmmss"_s);
    const QString target = closedFolder() + u"/%1-%2.xml"_s.arg(date, QString::fromLatin1(entry.mix));
    QFile::remove(target);
    QFile::rename(fileOf(entry.mix), target);
}

/// The oldest closed mixes go, by the date in front of their names.
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

void MixJournal::read() {
    m_open.clear();
    m_unreadable.clear();
    const QStringList names = QDir(folder()).entryList({u"*.xml"_s}, QDir::Files, QDir::Name);
    for (const QString& name : names) {
        const auto entry = readEntry(folder() + '/'_L1 + name);
        if (!entry)
            m_unreadable << name;
        else if (entry->state == JournalState::Loaded)
            QFile::remove(fileOf(entry->mix));
        else if (entry->state == JournalState::Logged || entry->state == JournalState::PutAside)
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
    if (!platform::makePrivateFolder(folder()))
        throw platform::RuntimeError(platform::error::permissionDenied,
                                     u"Can't make the folder %1"_s.arg(folder()));
    const XmlDocumentPtr file = XmlDocument::create();
    XmlNode root = file->appendElement(u"Mix"_s);
    root.setAttribute(u"ID"_s, QString::fromLatin1(entry.mix));
    root.setAttribute(u"State"_s, QLatin1String(stateWords[static_cast<std::size_t>(entry.state)]));
    if (!entry.serial.isEmpty())
        root.setAttribute(u"Mixer"_s, entry.serial);
    if (entry.lotTaken)
        root.setAttribute(u"LotTaken"_s, u"1"_s);
    setDate(root, "Loaded", entry.loaded);
    setDate(root, "Started", entry.started);
    setDate(root, "Finished", entry.finished);
    root.appendCopy(entry.formula->root());
    if (entry.results)
        root.appendCopy(entry.results->root());
    file->save(fileOf(entry.mix));
}

void MixJournal::drop(const MixId& mix) {
    std::erase_if(m_open, [&](const JournalEntry& entry) { return entry.mix == mix; });
}

void MixJournal::load(const MixId& mix, const XmlDocumentPtr& formula) {
    for (const JournalEntry& entry : m_open) {
        if (entry.state == JournalState::Loaded)
            QFile::remove(fileOf(entry.mix));
    }
    std::erase_if(m_open, [](const JournalEntry& entry) { return entry.state == JournalState::Loaded; });
    JournalEntry fresh;
    fresh.mix = mix;
    fresh.loaded = platform::now();
    fresh.formula = formula;
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
    JournalEntry& undone = entry(mix);
    undone.state = JournalState::Loaded;
    undone.started = {};
    write(undone);
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

void MixJournal::close(const MixId& mix, JournalState how) {
    JournalEntry closed = entry(mix);
    closed.state = how;
    drop(closed.mix);
    write(closed);
    moveToClosed(closed);
}

}  // namespace sorvanto
