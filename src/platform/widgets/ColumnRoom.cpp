// Step by step: each only moves width from one kind of column to another.
#include "platform/widgets/ColumnRoom.h"

#include "platform/widgets/WidestText.h"

#include <QAbstractItemModel>
#include <QFontMetrics>
#include <algorithm>
#include <cstddef>
#include <functional>
#include <numeric>

namespace platform {

namespace {

constexpr int narrowest = 40;

bool isOpen(const ColumnWish& column) { return column.designed == 0; }

/// The columns give together what is missing, each in the measure of what it can give.
void give(std::vector<int>& widths, const std::vector<int>& slack, int missing) {
    const int all = std::accumulate(slack.begin(), slack.end(), 0);
    if (missing <= 0 || all <= 0)
        return;
    const int given = std::min(missing, all);
    for (std::size_t i = 0; i < widths.size(); ++i)
        widths[i] -= (slack[i] * given + all - 1) / all;
}

}  // namespace

int widestText(const QAbstractItemModel& model, int column, const QFontMetrics& metrics) {
    WidestText widest(metrics);
    for (int row = 0; row < std::min(model.rowCount(), rowsLookedAt); ++row)
        widest.add(model.index(row, column).data().toString());
    return widest.width();
}

std::vector<int> sharedWidths(const std::vector<ColumnWish>& columns, int room, int least, int enough) {
    std::vector<int> widths;
    int open = 0, names = 0;  // how many, and what they would take
    const auto wanted = [&](const ColumnWish& column) {
        return std::clamp(std::max(column.heading, column.content), least, std::max(least, enough));
    };
    for (const ColumnWish& column : columns) {
        open += isOpen(column) ? 1 : 0;
        names += isOpen(column) ? wanted(column) : 0;
        widths.push_back(isOpen(column) ? 0 : std::max(column.designed, column.heading));
    }
    const auto rest = [&] { return room - std::accumulate(widths.begin(), widths.end(), 0); };
    const auto slackAbove = [&](const std::function<int(const ColumnWish&)>& kept) {
        std::vector<int> slack;
        for (std::size_t i = 0; i < columns.size(); ++i)
            slack.push_back(isOpen(columns[i]) ? 0 : std::max(0, widths[i] - kept(columns[i])));
        return slack;
    };
    const auto cut = [&](std::size_t i) {  // of a text, twice the designed width at most
        return isOpen(columns[i])
                   ? 0
                   : std::max(0, std::min(columns[i].content, 2 * columns[i].designed) - widths[i]);
    };
    int missing = names - rest();
    for (std::size_t i = 0; i < columns.size(); ++i)
        missing += cut(i);
    give(widths, slackAbove([](const ColumnWish& each) { return std::max(each.heading, each.content); }),
         missing);
    give(widths, slackAbove([](const ColumnWish& each) { return std::max(narrowest, each.content); }),
         open * least - rest());
    for (std::size_t i = 0; i < columns.size(); ++i)
        widths[i] += std::min(cut(i), std::max(0, rest() - names));
    const int spare = std::max(0, rest() - open * least), asked = names - open * least;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (isOpen(columns[i]))
            widths[i] = least + (asked > 0 ? spare * (wanted(columns[i]) - least) / asked : spare / open);
    }
    return widths;
}

}  // namespace platform
