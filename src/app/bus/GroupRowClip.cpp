#include "app/bus/GroupRowClip.h"

namespace kavu {

namespace {

/// No group has lists deeper in each other.
constexpr std::size_t kDeepestRow = 4;
/// The cells in front of the codes and values.
constexpr std::size_t kHeadCells = 2;

using CellRows = std::span<const std::vector<std::string>>;

void addRow(const GroupRow& row, std::size_t depth, const std::string& list, TableRows& clip) {
    std::vector<std::string> cells{std::to_string(depth), list};
    for (const auto& [code, value] : row.values) {
        cells.push_back(code);
        cells.push_back(value);
    }
    clip.push_back(std::move(cells));
    for (const auto& [count, rows] : row.lists) {
        for (const auto& each : rows) {
            addRow(each, depth + 1, count, clip);
        }
    }
}

bool isAtDepth(CellRows clip, std::size_t depth) {
    return !clip.empty() && clip.front().size() >= kHeadCells && clip.front().size() % 2 == 0 &&
           clip.front().front() == std::to_string(depth);
}

/// Takes the row at the front with those that are deeper; nothing if it is none.
std::optional<GroupRow> takeRow(CellRows& clip, std::size_t depth) {
    if (depth > kDeepestRow || !isAtDepth(clip, depth)) {
        return std::nullopt;
    }
    GroupRow row;
    const auto& cells = clip.front();
    for (std::size_t i = kHeadCells; i < cells.size(); i += 2) {
        row.set(cells[i], cells[i + 1]);
    }
    clip = clip.subspan(1);
    while (isAtDepth(clip, depth + 1)) {
        auto& rows = row.lists[clip.front()[1]];
        auto inner = takeRow(clip, depth + 1);
        if (!inner) {
            return std::nullopt;
        }
        rows.push_back(std::move(*inner));
    }
    return row;
}

}  // namespace

TableRows clipOfRow(const GroupRow& row) {
    TableRows clip;
    addRow(row, 0, {}, clip);
    return clip;
}

std::optional<GroupRow> rowOfClip(CellRows clip) {
    auto row = takeRow(clip, 0);
    return clip.empty() ? row : std::nullopt;
}

}  // namespace kavu
