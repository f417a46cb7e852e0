// How many keys the open database has left: the program knows records by 16-bit keys, and none is given out twice.
#pragma once

#include <QString>
#include <cstdint>
#include <vector>

namespace platform {
class Connection;
}

namespace sorvanto {

struct TableKeys {
    static constexpr std::int64_t last = 32'767;
    static constexpr std::int64_t warned = 30'000;  ///< from here on the user is told

    QString name;           ///< as the user knows the table, in English
    std::int64_t used = 0;  ///< the last key given out

    std::int64_t left() const { return last - used; }
    bool isShort() const { return used >= warned; }
};

/// The tables whose keys the program reads; the one with the fewest left first. Throws when they can't be read.
std::vector<TableKeys> keysLeft(const platform::Connection& connection);

/// How many rows these tables have together, for which each of them is looked through. Throws as keysLeft.
std::int64_t rowsWithKeys(const platform::Connection& connection);

}  // namespace sorvanto
