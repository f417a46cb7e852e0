// The spans that are open, by connection: the functions that the sealing trigger calls look there, since to give the engine
// another function is not possible while a statement runs.
#include "history/HistoryDeed.h"

#include <QHash>
#include <QMutex>
#include <QMutexLocker>
#include <sqlite3.h>
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
    QHash<sqlite3*, std::vector<Span>> open;
};

Spans& spans() {
    static Spans all;
    return all;
}

void tell(sqlite3_context* context, QString Span::*part) {
    const QMutexLocker locker(&spans().lock);
    const auto found = spans().open.constFind(sqlite3_context_db_handle(context));
    const QByteArray text = found == spans().open.constEnd() ? QByteArray() : (found->back().*part).toUtf8();
    if (text.isEmpty())
        return sqlite3_result_null(context);
    sqlite3_result_text(context, text.constData(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
}

void historyDeed(sqlite3_context* context, int, sqlite3_value**) { tell(context, &Span::deed); }
void historyNote(sqlite3_context* context, int, sqlite3_value**) { tell(context, &Span::note); }

}  // namespace

QString deedText(Deed deed) {
    switch (deed) {
    case Deed::Signed:
        return u"signed"_s;
    case Deed::Imported:
        return u"imported"_s;
    case Deed::Restored:
        return u"restored"_s;
    }
    return {};
}

HistoryDeed::HistoryDeed(sqlite3* database, Deed deed, const QString& note) : m_database(database) {
    const QMutexLocker locker(&spans().lock);
    spans().open[database].push_back({deedText(deed), note.left(longestNote)});
}

HistoryDeed::~HistoryDeed() {
    const QMutexLocker locker(&spans().lock);
    auto& own = spans().open[m_database];
    own.pop_back();
    if (own.empty())
        spans().open.remove(m_database);
}

void installHistoryDeed(sqlite3* database) {
    constexpr int flags = SQLITE_UTF8 | SQLITE_INNOCUOUS;
    sqlite3_create_function_v2(database, "history_deed", 0, flags, nullptr, historyDeed, nullptr, nullptr,
                               nullptr);
    sqlite3_create_function_v2(database, "history_note", 0, flags, nullptr, historyNote, nullptr, nullptr,
                               nullptr);
}

}  // namespace sorvanto
