#include "mixer/JournalFile.h"

#include "mixer/LoadedFormula.h"
#include "mixer/ResultsDocument.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Paths.h"

#include <QDir>
#include <QFile>
#include <QXmlStreamReader>
#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace sorvanto::journal_file {
namespace {

using platform::XmlDocument;
using platform::XmlDocumentPtr;
using platform::XmlNode;

constexpr std::array<const char*, 7> stateWords{"loaded", "started",   "finished", "aborted",
                                                "logged", "put aside", "deleted"};

std::optional<JournalState> stateOf(const QString& word) {
    const auto* const found = std::find_if(stateWords.begin(), stateWords.end(),
                                           [&](const char* known) { return word == QLatin1String(known); });
    if (found == stateWords.end())
        return std::nullopt;
    return static_cast<JournalState>(found - stateWords.begin());
}

XmlDocumentPtr documentOf(const XmlNode& node) {
    if (!node)
        return nullptr;
    const XmlDocumentPtr document = XmlDocument::create();
    return document->loadXML(node.xml()) ? document : nullptr;
}

QString attributeOf(const XmlNode& node, const char* name) {
    const QString attribute = QLatin1String(name);
    return node.hasAttribute(attribute) ? node.attribute(attribute) : QString();
}

QDateTime dateOf(const XmlNode& node, const char* name) {
    const QString text = attributeOf(node, name);
    return text.isEmpty() ? QDateTime() : platform::fromStoredDate(text);
}

void set(XmlNode& node, const char* name, const QString& value) {
    if (!value.isEmpty())
        node.setAttribute(QLatin1String(name), value);
}

void set(XmlNode& node, const char* name, const QDateTime& date) {
    set(node, name, date.isValid() ? platform::storedDate(date) : QString());
}

/// Those of the signed rows that the head tells again.
void setSigned(XmlNode& root, const JournalEntry& entry) {
    if (entry.rows.empty())
        return;
    set(root, "Name", entry.name());
    set(root, "Lot", entry.rows.lot());
    set(root, "Signed", entry.rows.moment());
    set(root, "Lines", QString::number(entry.rows.lines.size()));
}

}  // namespace

QString folder() { return platform::programFolder() + u"/mixes"_s; }

QString closedFolder() { return folder() + u"/closed"_s; }

QString openPath(const protocol::MixId& mix) {
    return folder() + '/'_L1 + QString::fromLatin1(mix) + u".xml"_s;
}

// A clock that was set back would make the newest the oldest: the names then count on from the newest one.
QString closedPath(const JournalEntry& entry) {
    const QDir closed(closedFolder());
    const QString form = u"yyyyMMdd-HHmmss"_s, end = '-'_L1 + QString::fromLatin1(entry.mix) + u".xml"_s;
    QString date = (entry.loaded.isValid() ? entry.loaded : platform::now()).toString(form);
    if (closed.exists(date + end))
        return closed.filePath(date + end);
    for (const QString& name : closed.entryList({'*'_L1 + end}, QDir::Files, QDir::Name)) {
        const auto before = read(closed.filePath(name));
        if (before && before->loaded == entry.loaded)
            return closed.filePath(name);
    }
    const QStringList names = closed.entryList({u"*.xml"_s}, QDir::Files, QDir::Name);
    const QString newest = names.isEmpty() ? QString() : names.constLast().left(form.size());
    if (const QDateTime last = QDateTime::fromString(newest, form); last.isValid() && date <= newest)
        date = last.addSecs(1).toString(form);
    return closed.filePath(date + end);
}

std::optional<JournalEntry> read(const QString& path) {
    const XmlDocumentPtr file = XmlDocument::create();
    const XmlNode root = file->load(path) ? file->selectSingleNode(u"Mix"_s) : XmlNode();
    if (!root || !root.hasAttribute(u"ID"_s) || !root.hasAttribute(u"State"_s))
        return std::nullopt;
    JournalEntry entry;
    entry.mix = root.attribute(u"ID"_s).toLatin1();
    const auto state = stateOf(root.attribute(u"State"_s));
    if (!protocol::isMixId(entry.mix) || !state)
        return std::nullopt;
    entry.state = *state;
    entry.serial = attributeOf(root, "Mixer");
    entry.database = attributeOf(root, "Database");
    entry.lotTaken = root.hasAttribute(u"LotTaken"_s);
    entry.loaded = dateOf(root, "Loaded");
    entry.started = dateOf(root, "Started");
    entry.finished = dateOf(root, "Finished");
    entry.formula = documentOf(root.selectSingleNode(u"Formula"_s));
    entry.results = documentOf(root.selectSingleNode(u"Results"_s));
    if (const XmlNode rows = root.selectSingleNode(u"Rows"_s))
        entry.rows = BatchRows::fromText(rows.text());
    const bool needsResults = entry.state == JournalState::Finished;
    if (!entry.formula || (needsResults && !entry.results))
        return std::nullopt;
    return entry;
}

std::optional<ClosedMix> readHead(const QString& path) {
    QFile file(path);
    if (file.size() > XmlDocument::largestFile || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QXmlStreamReader reader(&file);
    if (!reader.readNextStartElement() || reader.name() != "Mix"_L1)
        return std::nullopt;
    const QXmlStreamAttributes attributes = reader.attributes();
    const auto text = [&](const char* name) { return attributes.value(QLatin1String(name)).toString(); };
    const auto state = stateOf(text("State"));
    const protocol::MixId mix = text("ID").toLatin1();
    if (!state || !protocol::isMixId(mix))
        return std::nullopt;
    return ClosedMix{path,         mix,         *state,         text("Mixer"),        text("Database"),
                     text("Name"), text("Lot"), text("Signed"), text("Lines").toInt()};
}

void write(const JournalEntry& entry, const QString& path) {
    const XmlDocumentPtr file = XmlDocument::create();
    XmlNode root = file->appendElement(u"Mix"_s);
    set(root, "ID", QString::fromLatin1(entry.mix));
    set(root, "State", QLatin1String(stateWords[static_cast<std::size_t>(entry.state)]));
    set(root, "Mixer", entry.serial);
    set(root, "Database", entry.database);
    if (entry.lotTaken)
        set(root, "LotTaken", u"1"_s);
    set(root, "Loaded", entry.loaded);
    set(root, "Started", entry.started);
    set(root, "Finished", entry.finished);
    setSigned(root, entry);
    root.appendCopy(entry.formula->root());
    if (entry.results)
        root.appendCopy(entry.results->root());
    if (!entry.rows.empty())
        root.appendElement(u"Rows"_s).setText(entry.rows.toText());
    file->save(path);
}

}  // namespace sorvanto::journal_file
