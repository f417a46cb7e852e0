// A screen whose records can stand in a list beside it.
#pragma once

#include "platform/widgets/RecordListModel.h"

#include <QString>
#include <cstdint>
#include <functional>
#include <vector>

namespace sorvanto {

/// A column of the list, and what of the table it shows.
struct ListedColumn {
    QString expression;  ///< of columns, in the engine's words
    platform::ListColumn column;
};

struct ListedTable {
    QString table, key;
    std::vector<ListedColumn> columns;
    QString filterText;  ///< stands in the empty filter
    QString name;        ///< of its records: "Formulas"
    QString placeText;   ///< where a record stands in the set: "Formula %1 of %2"
    QString countText;   ///< "%1 formula | %1 formulas"
    QString partText;    ///< of them the filter shows some: "%2 of %1 formulas"
    int sortColumn = 0;  ///< at first
    Qt::SortOrder sortOrder = Qt::AscendingOrder;
    int dayColumn = -1;  ///< of dates, by which a range of days is chosen
};

/// Where the set stands.
struct SetPlace {
    std::int64_t number =
        0;  ///< of the record on show, from 1; 0 where that is not the one that the set stands on
    std::int64_t count = 0;
};

class ListedScreen {
public:
    virtual ~ListedScreen() = default;
    virtual ListedTable listedTable() const = 0;
    /// Of the record on show; 0 for none.
    virtual std::int16_t shownKey() const = 0;
    virtual SetPlace setPlace() const = 0;
    /// Whether another record may take the place of the one on show: nobody is changing it.
    virtual bool canLeaveRecord() const = 0;
    /// Moves the set to the record, as the moves do; one that the set doesn't hold is opened as a search would.
    virtual void showRecord(std::int16_t key) = 0;

    /// Told when the user is asked whether the record on show is to be deleted, and when that is over.
    std::function<void(bool asked)> deletionAsked;
};

/// Stands around the question.
class DeletionMark {
public:
    explicit DeletionMark(ListedScreen& screen) : m_screen(screen) { tell(true); }
    ~DeletionMark() { tell(false); }
    DeletionMark(const DeletionMark&) = delete;
    DeletionMark& operator=(const DeletionMark&) = delete;

private:
    void tell(bool asked) const {
        if (m_screen.deletionAsked)
            m_screen.deletionAsked(asked);
    }
    ListedScreen& m_screen;
};

}  // namespace sorvanto
