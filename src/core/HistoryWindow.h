// The history of the record on show: each change with the values before and after, newest first, and what the record was
// on a day.
#pragma once

#include "history/HistoryBook.h"
#include "platform/data/Connection.h"
#include "reports/HistoryCaptions.h"
#include "shared/PastValues.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QPushButton;

namespace platform {
class DateBox;
}

namespace sorvanto {

class TraceList;
struct Context;

class HistoryWindow : public QDialog {
    Q_OBJECT

public:
    struct Record {
        QString table;
        std::int64_t key = 0;
        QString name;
        bool onShow = false;  ///< on a screen whose boxes can be filled
        QDateTime since{};    ///< what was before is not listed at first; invalid: all is
    };

    HistoryWindow(Context& context, const platform::ConnectionPtr& connection, Record record,
                  QWidget* parent = nullptr);

    /// What the boxes are to be filled with; the key is 0 when the user did not want that.
    const PastValues& wanted() const { return m_wanted; }

private:
    void buildWindow();
    QLayout* topRow();
    void readLines();
    void fillChoices();
    void showChanges();
    void showPast();
    void fillPast(const QDateTime& moment);
    QString whyUnknown(const QDateTime& moment) const;
    bool isWanted(const HistoryEntry& entry) const;
    std::vector<QStringList> rowsOf(std::size_t number) const;
    struct Shown {
        QString field, value;  ///< as the user knows them
    };
    /// By row and column.
    QMap<QString, Shown> shownAt(const QDateTime& moment) const;

    using ShownFields = QMap<QString, Shown>;
    void offerValues(const ShownFields& then, const ShownFields& now);
    void useValues();
    void showAll();

    Context& m_context;
    platform::ConnectionPtr m_connection;
    Record m_record;
    std::vector<HistoryEntry> m_entries;
    std::vector<std::vector<HistoryLine>> m_lines;  ///< of each entry
    QComboBox* m_person;
    QComboBox* m_field;
    platform::DateBox* m_since;
    platform::DateBox* m_day;
    TraceList* m_changes;
    TraceList* m_past;
    QLabel* m_message;
    QPushButton* m_use;
    PastValues m_offered, m_wanted;
};

}  // namespace sorvanto
