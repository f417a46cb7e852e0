// What the fields of the history are called on the screens, and how their values are shown there.
#pragma once

#include "history/HistoryBook.h"

#include <QString>
#include <QVariant>

namespace sorvanto {

struct Context;

/// In the user's language; empty for a column that no screen shows (keys, identities, the documents of a mix).
QString historyCaption(const QString& column);

/// As the user would read it: no text for NULL.
QString historyValue(const Context& context, const QString& column, const QVariant& value);

/// Whose history it is: "Formula"; empty for a row about the file as a whole.
QString historyKind(const QString& table);

/// A field of a change as the user reads it, with the value before and after; of a line that takes another chemical that
/// chemical with its lot, as they were then. No caption: no screen shows the field, or it says nothing.
struct HistoryLine {
    QString caption, before, after;
};
HistoryLine historyLine(const Context& context, platform::Engine& database, const HistoryEntry& entry,
                        const HistoryField& field);

/// A change as it is listed, one line a field; who and when stand in the first of them. Columns: moment, person, deed, record,
/// field, before, after.
enum HistoryColumn { When, Who, What, Record, Field, Before, After, HistoryColumns };
std::vector<QStringList> historyLines(const Context& context, platform::Engine& database,
                                      const HistoryEntry& entry);

/// The moment as the clock of the computer showed it, in the form of the program's dates.
QDateTime historyClock(const HistoryEntry& entry);
/// Another program has no person.
QString historyPerson(const QString& person);

/// "made", "signed", "imported from prices.csv" and so on in the user's language.
QString historyDeed(const HistoryEntry& entry);

}  // namespace sorvanto
