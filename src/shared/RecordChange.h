// A record that stands on a screen while other benches work on the same records.
#pragma once

#include "history/OtherBenches.h"

#include <QDateTime>
#include <QString>
#include <cstdint>

namespace sorvanto {

/// What others have done to the record on show since it came on show.
struct RecordChange {
    QString table;
    std::int64_t key = 0;
    QString name;
    QString bench;    ///< who did the last of it; empty: another program
    QDateTime last;   ///< moment of that, by the clock of the computer that it was done at
    QDateTime first;  ///< of the first that came; likewise
    bool deleted = false;
    bool ofIngredient = false;  ///< not of the formula on show: of a chemical that it is made of, named here
};

/// What others have written, as of the last look.
struct OthersState {
    HistoryEnds ends;
    std::int64_t changes = 0;  ///< counts the looks that found something
};

class SharedRecord {
public:
    virtual ~SharedRecord() = default;
    /// A look was taken. A record that comes on show from now on was read after it.
    virtual void noteOthers(const OthersState& state) = 0;
    /// Looks for changes of the record, and shows it fresh unless it is being changed here. Only for the screen that is on
    /// show, while nothing else is done there. Throws RuntimeError as the engine does; then the next time makes up for it.
    virtual void followOthers() = 0;
    /// nullptr while there is none, or once it was put aside.
    virtual const RecordChange* changeByOthers() const = 0;
    virtual void putChangeAside() = 0;
};

}  // namespace sorvanto
