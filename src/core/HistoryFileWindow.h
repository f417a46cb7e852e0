// The history of all records of the file within a range of days: listed newest first, on paper, and as a spreadsheet. The
// list is read in pieces while nothing else is to do.
#pragma once

#include "history/HistoryRange.h"
#include "platform/data/Connection.h"

#include <QDialog>
#include <QTimer>
#include <optional>

class QLayout;
class QPushButton;

namespace platform {
class DateBox;
}

namespace sorvanto {

class TraceList;
struct Context;

class HistoryFileWindow : public QDialog {
    Q_OBJECT

public:
    /// At first the last thirty days.
    HistoryFileWindow(Context& context, const platform::ConnectionPtr& connection, QWidget* parent = nullptr);

private:
    QLayout* topRow();
    QLayout* bottomRow();
    void showChanges();
    void readPiece();
    void listPiece();
    bool isListed() const;
    void showCount();
    void report(bool exportIt);

    Context& m_context;
    platform::ConnectionPtr m_connection;
    platform::DateBox* m_from;
    platform::DateBox* m_to;
    TraceList* m_changes;
    QPushButton* m_print;
    QPushButton* m_export;
    std::optional<HistoryRange> m_range;
    std::optional<HistoryCount> m_count;  ///< once the list is full
    std::int64_t m_listed = 0;            ///< changes; a change is one row or more
    QTimer m_reading;
};

}  // namespace sorvanto
