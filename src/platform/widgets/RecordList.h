// A list of records with a filter above and a count below. It stands beside the form of one record: a row is
// chosen by a click, or by Enter from the filter or the rows.
#pragma once

#include "platform/widgets/RecordListModel.h"

#include <QWidget>
#include <functional>

class QAction;
class QBoxLayout;
class QLabel;
class QLineEdit;
class QTableView;

namespace platform {

class DateBox;

class RecordList : public QWidget {
    Q_OBJECT

public:
    explicit RecordList(QWidget* parent = nullptr);

    /// Drops the rows, the filter and the place of the list.
    void setColumns(std::vector<ListColumn> columns, int sortColumn = 0,
                    Qt::SortOrder order = Qt::AscendingOrder);
    /// What stands in the empty filter, and what screen readers call the list.
    void setTexts(const QString& placeholder, const QString& name);
    /// Two boxes beside the filter let through the rows of some days alone, by the column of dates; the texts stand in
    /// the empty boxes. To be called after setColumns, which takes them away.
    void setDayRange(int column, const QString& from, const QString& to);
    /// The line below: for the rows shown and all of them.
    void setCountText(std::function<QString(int shown, int all)> text);

    /// As in the model; the row at the top of the view stays at the top.
    void collect(const std::vector<KeyedRow>& rows) { m_model->collect(rows); }
    void showCollected();
    void dropCollected() { m_model->dropCollected(); }

    /// The record on show: marked, and brought into view when it is another one than before. 0 marks none.
    void setCurrentKey(std::int64_t key);
    std::int64_t currentKey() const { return m_current; }
    /// The record on show is asked to be deleted: its row is brought into view and marked so.
    void markDeletion(bool on);
    bool marksDeletion() const { return m_marksDeletion; }
    /// The filter takes the keys, its text selected.
    void startFiltering();
    QString filter() const;

    const RecordListModel& model() const { return *m_model; }

signals:
    void chosen(std::int64_t key);
    /// Esc where there is no filter to take away.
    void left();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void buildHead();
    void buildRows();
    void applyFilter();
    void applyDays();
    void placeCursor();
    void showCount();
    void layOutColumns();
    void chooseRow(int row);
    bool takeKey(QObject* watched, int key);

    RecordListModel* m_model;
    QLineEdit* m_filter;
    QAction* m_magnifier = nullptr;
    DateBox *m_from, *m_to;
    QWidget* m_days;  ///< around the two
    QBoxLayout* m_head;
    int m_dayColumn = -1;
    QTableView* m_rows;
    QLabel* m_count;
    std::function<QString(int, int)> m_countText;
    std::int64_t m_current = 0;
    bool m_marksDeletion = false;
};

}  // namespace platform
