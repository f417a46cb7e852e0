// The history of all records of the file within a range of days: listed newest first, on paper, and as a spreadsheet.
#pragma once

#include "platform/data/Connection.h"

#include <QDialog>

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
    void report(bool exportIt);

    Context& m_context;
    platform::ConnectionPtr m_connection;
    platform::DateBox* m_from;
    platform::DateBox* m_to;
    TraceList* m_changes;
    QPushButton* m_print;
    QPushButton* m_export;
};

}  // namespace sorvanto
