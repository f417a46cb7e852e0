// Fills the record list for the screen in the middle, a piece at a time while nothing else is to do, and keeps
// it with that screen: which record is on show, whether another may be chosen, and what has changed in the file.
#pragma once

#include "platform/data/TableReader.h"
#include "shared/ListedScreen.h"

#include <QObject>
#include <QTimer>
#include <optional>

namespace platform {
class RecordList;
}

namespace sorvanto {

struct Context;

class RecordListPane : public QObject {
    Q_OBJECT

public:
    RecordListPane(const Context& context, platform::RecordList& list);

    /// The screen in the middle; nullptr for one without a list.
    void setScreen(ListedScreen* screen);
    bool hasScreen() const { return m_screen != nullptr; }
    /// Whether the list is seen; nothing is read while it is not.
    void setShown(bool shown);
    /// Whether a row may be chosen: as long as the record may be changed by a move.
    void setChoosable(bool choosable);
    /// To be called when something was done here: follows the record, and reads again what has changed. Throws as the engine
    /// does.
    void follow();
    /// To be called when another bench has done something: a server is asked whether it concerns what the list has read.
    void followOthers();

signals:
    /// A row was chosen, and its record is on show.
    void chose();

private:
    void startReading();
    void readPiece();
    void finish();
    void choose(std::int64_t key);
    QString countText(int shown, int all) const;

    std::int64_t stateOfRecords() const;
    std::int64_t ownState() const;

    const Context& m_context;
    platform::RecordList& m_list;
    ListedScreen* m_screen = nullptr;
    ListedTable m_table;
    std::optional<platform::TableReader> m_reader;
    QTimer m_pieces;
    std::optional<std::int64_t> m_state;  ///< of the records, when the first piece was read
    std::int64_t m_ownState = 0;          ///< as far as this program has changed them
    bool m_shown = false;
    bool m_complete = false;
};

}  // namespace sorvanto
