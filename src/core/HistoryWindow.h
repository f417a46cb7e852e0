// The history of the record on show: each change with the values before and after, newest first, and what the record was
// on a day.
#pragma once

#include "history/HistoryBook.h"
#include "platform/data/Connection.h"

#include <QDialog>

class QComboBox;
class QLabel;

namespace platform {
class DateBox;
}

namespace sorvanto {

class TraceList;

class HistoryWindow : public QDialog {
    Q_OBJECT

public:
    struct Record {
        QString table;
        std::int64_t key = 0;
        QString name;
    };

    HistoryWindow(const platform::ConnectionPtr& connection, Record record, QWidget* parent = nullptr);

private:
    void buildWindow();
    void fillChoices();
    void showChanges();
    void showPast();
    bool isWanted(const HistoryEntry& entry) const;
    QString fieldName(const HistoryEntry& entry, const HistoryField& field) const;
    std::vector<QStringList> rowsOf(const HistoryEntry& entry) const;
    struct Shown {
        QString field, value;  ///< as the user knows them
    };
    /// By row and column.
    QMap<QString, Shown> shownAt(const QDateTime& moment) const;

    platform::ConnectionPtr m_connection;
    Record m_record;
    std::vector<HistoryEntry> m_entries;
    QComboBox* m_person;
    QComboBox* m_field;
    platform::DateBox* m_since;
    platform::DateBox* m_day;
    TraceList* m_changes;
    TraceList* m_past;
    QLabel* m_message;
};

}  // namespace sorvanto
