// Which seal each row of the history is linked to: the one before it, or where every bench has a chain of its own the one
// before it in that.
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>
#include <cstdint>

namespace sorvanto {

/// What the row "begun" says from which on each bench has its own chain; from one that doesn't on there is one chain.
inline constexpr char chainOfEachBench[] = "one chain a bench";

/// A row as the links see it.
struct LinkedRow {
    std::int64_t number = 0;
    QString what, note, person;
    QByteArray seal;
};

class HistoryLinks {
public:
    /// The seal that this row's own was made with; null for the first one. To be asked for each row, in the order of their
    /// numbers.
    QByteArray follow(const LinkedRow& row);
    /// The seal of the row before, of whichever chain: null before the second one.
    QByteArray before() const { return m_before; }
    /// From the last row on there is one chain again, as where a copy of a server is worked on as a file.
    void join() {
        m_ofBench = false;
        m_ends.clear();
    }
    /// Whether the last row belongs to the chain of a bench: numbers have gaps there.
    bool isOfBench() const { return m_ofBench; }

    struct End {
        std::int64_t number = 0;
        QByteArray seal;
    };
    /// By bench, "" for what came from outside.
    const QHash<QString, End>& ends() const { return m_ends; }

private:
    QByteArray m_last, m_before;  ///< of the last row, and of the one before that
    QByteArray m_anchor;          ///< that each chain begins with
    bool m_ofBench = false;
    QHash<QString, End> m_ends;
};

}  // namespace sorvanto
