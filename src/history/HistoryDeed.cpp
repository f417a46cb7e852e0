// The spans that are open, by connection: the functions that the sealing trigger calls look there, since to give the engine
// another function is not possible while a statement runs.
#include "history/HistoryDeed.h"

#include "platform/data/Engine.h"

#include <QHash>
#include <QMutex>
#include <QMutexLocker>
#include <vector>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr qsizetype longestNote = 200;

struct Span {
    QString deed, note;
};

struct Spans {
    QMutex lock;
    QHash<const platform::Engine*, std::vector<Span>> open;
};

Spans& spans() {
    static Spans all;
    return all;
}

/// Nothing outside of a span.
QVariant told(const platform::Engine* database, QString Span::*part) {
    const QMutexLocker locker(&spans().lock);
    const auto found = spans().open.constFind(database);
    if (found == spans().open.constEnd() || (found->back().*part).isEmpty())
        return {};
    return found->back().*part;
}

}  // namespace

QString deedText(Deed deed) {
    switch (deed) {
    case Deed::Signed:
        return u"signed"_s;
    case Deed::Imported:
        return u"imported"_s;
    case Deed::Restored:
        return u"restored"_s;
    case Deed::NewLot:
        return u"new lot"_s;
    }
    return {};
}

HistoryDeed::HistoryDeed(platform::Engine& database, Deed deed, const QString& note) : m_database(&database) {
    {
        const QMutexLocker locker(&spans().lock);
        spans().open[m_database].push_back({deedText(deed), note.left(longestNote)});
    }
    tellStore();
}

HistoryDeed::~HistoryDeed() {
    {
        const QMutexLocker locker(&spans().lock);
        auto& own = spans().open[m_database];
        own.pop_back();
        if (own.empty())
            spans().open.remove(m_database);
    }
    tellStore();
}

void HistoryDeed::tellStore() {
    m_database->tellDeed(told(m_database, &Span::deed).toString(), told(m_database, &Span::note).toString());
}

void installHistoryDeed(platform::Engine& database) {
    const auto install = [&database](const char* name, QString Span::*part) {
        database.addFunction(name, platform::FunctionResult::OfTheMoment,
                             [own = &database, part](const auto&) { return told(own, part); });
    };
    install("history_deed", &Span::deed);
    install("history_note", &Span::note);
}

}  // namespace sorvanto
