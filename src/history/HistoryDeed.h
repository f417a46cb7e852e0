// What a span of changes is to the user, beyond that rows were made, changed or deleted: a batch was signed, a list was
// imported, a deleted record was restored, a new lot of a chemical has come. The history of each row that is written meanwhile says so.
//
//     const HistoryDeed deed(connection->engine(), Deed::Imported, QFileInfo(path).fileName());
//     ... statements, one or many, with a transaction or without ...
//
// hst_What stays what happened to the row (made, changed, deleted); hst_Deed holds "imported" and hst_Note the note. Both are
// sealed with the row, within the statement that writes it. What is taken back leaves nothing, as ever.
#pragma once

#include <QString>

namespace platform {
class Engine;
}

namespace sorvanto {

enum class Deed { Signed, Imported, Restored, NewLot };

class HistoryDeed {
public:
    /// Of all that this connection writes until the end of the span, by whatever code; none on a file without history, or
    /// on a connection that doesn't keep it. note: "prices.csv", at most 200 characters, longer ones are cut; nothing of
    /// a patient, since it is not blanked. Spans may lie within each other, the innermost counts; they end in reverse order.
    /// May stand around a transaction, or within one. One thread a connection.
    HistoryDeed(platform::Engine& database, Deed deed, const QString& note = {});
    ~HistoryDeed();
    HistoryDeed(const HistoryDeed&) = delete;
    HistoryDeed& operator=(const HistoryDeed&) = delete;

private:
    void tellStore();

    platform::Engine* m_database;
};

/// "signed", "imported", "restored", "new lot", as hst_Deed has them.
QString deedText(Deed deed);

/// Gives the engine history_deed() and history_note(): those of the span, NULL outside of one.
void installHistoryDeed(platform::Engine& database);

}  // namespace sorvanto
