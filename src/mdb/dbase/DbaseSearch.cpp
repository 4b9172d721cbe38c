// Looking for rows of a table, and taking out the deleted ones.
#include "core/talk/QuestionNames.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "mdb/dbase/DbaseTable.h"

#include <algorithm>
#include <cerrno>

namespace kavu {

namespace {

constexpr const char* kMultipleTitle = "Multiple Entries Found - Select Entry To Be Used";
constexpr const char* kPurgeTitle = "Purge Deleted Rows";
constexpr std::int64_t kShownEvery = 25;

std::string upperAscii(std::string_view text) {
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(), toUpperAscii);
    return upper;
}

}  // namespace

// --- search -------------------------------------------------------------------------------

std::optional<std::vector<std::int64_t>> DbaseTable::findRows(int column, std::string_view text,
                                                              Search search) {
    if (column < 0 || column >= columnCount() || text.empty()) {
        return std::nullopt;
    }
    const auto wanted = search.matchesCase ? std::string(text) : upperAscii(text);
    std::vector<std::int64_t> rows;
    for (std::int64_t row = 0; row < rowCount() && rows.size() < kMostMatches; ++row) {
        if (!readRow(row)) {
            break;
        }
        auto value = cellOf(column);
        if (value.empty()) {
            break;
        }
        value = search.matchesCase ? value : upperAscii(value);
        const bool isMatch =
            search.isWhole ? value == wanted : value.find(wanted) != std::string::npos;
        if (isMatch && !isMarked()) {
            rows.push_back(row);
        }
    }
    return rows;
}

bool DbaseTable::findRow(UserInterface* parent, int column, std::string_view text, Search search,
                         std::int64_t& row, std::size_t& count) {
    row = -1;
    count = 0;
    const auto rows = findRows(column, text, search);
    if (!rows) {
        return false;
    }
    count = rows->size();
    if (count == 1) {
        row = rows->front();
    }
    return count <= 1 || parent == nullptr || chooseRow(parent, text, *rows, row);
}

bool DbaseTable::chooseRow(UserInterface* parent, std::string_view text,
                           const std::vector<std::int64_t>& rows, std::int64_t& row) {
    if (rows.size() == kMostMatches) {
        showBox(parent, formatPrintf("Only showing the first %d", kMostMatches),
                "Too Many Matches Found", Icon::Warning);
    }
    ChoicePrompt choice;
    choice.title = kMultipleTitle;
    choice.text = formatPrintf("Multiple Entries Found for '%s' - Select One", text);
    choice.choices = {"&Select Entry", "&All Entries"};
    choice.defaultChoice = 0;
    const int chosen = parent->choose(choice);
    if (chosen != 0) {
        return chosen > 0;
    }
    TablePrompt table;
    table.title = kMultipleTitle;
    for (const auto& column : columns()) {
        table.columns.push_back(column.name);
    }
    for (const auto match : rows) {
        auto& cells = table.rows.emplace_back();
        const bool isRead = readRow(match);
        for (int column = 0; column < columnCount(); ++column) {
            cells.push_back(isRead ? cellOf(column) : std::string());
        }
    }
    const int index = parent->selectFromTable(table);
    if (index < 0 || static_cast<std::size_t>(index) >= rows.size()) {
        return false;
    }
    row = rows[static_cast<std::size_t>(index)];
    return true;
}

// --- purge --------------------------------------------------------------------------------

bool DbaseTable::wantsPurge(UserInterface* parent, bool& isAsked) const {
    if (isAsked) {
        return true;
    }
    isAsked = true;
    if (parent == nullptr) {
        return false;
    }
    MessageBox box;
    box.title = kPurgeTitle;
    box.text = "This Dbase File Has Rows Marked As 'deleted'\n\nShould I permanently purge them?";
    box.icon = Icon::Question;
    box.buttons = Buttons::YesNo;
    box.defaultButton = Button::No;
    box.name = question::kPurge;
    return parent->message(box) == Button::Yes;
}

/// Goes over all rows, as far as the user lets it; gives how many are marked.
std::optional<std::int64_t> DbaseTable::countPurged(UserInterface* parent) {
    bool isAsked = false;
    std::int64_t marked = 0;
    const auto cells = std::max(columnCount(), 1);
    for (std::int64_t row = 0; row < rowCount(); ++row) {
        if (row % kShownEvery == 0) {
            setProgressText(parent, formatPrintf("Processing Row %ld of %ld", row + 1, rowCount()));
            setProgressBar(parent,
                           100.0 * static_cast<double>(row) / static_cast<double>(rowCount()));
        }
        for (int cell = 0; cell < cells; ++cell) {
            if (cancelRequested(parent)) {
                return 0;
            }
        }
        if (!readRow(row)) {
            return std::nullopt;
        }
        if (isMarked()) {
            if (!wantsPurge(parent, isAsked)) {
                return 0;
            }
            ++marked;
        }
    }
    return marked;
}

/// The file without the marked rows, which are copied byte for byte.
std::optional<std::string> DbaseTable::keptBytes(std::int64_t kept) {
    source_.seek(0);
    auto bytes = takeBytes(source_, header_.headerLength);
    if (bytes.size() < header_.headerLength) {
        return std::nullopt;
    }
    const auto count = dbaseNumber(static_cast<std::uint32_t>(kept));
    bytes.replace(kDbaseCountOffset, count.size(), count);
    for (std::int64_t row = 0; row < rowCount(); ++row) {
        if (!readRow(row)) {
            return std::nullopt;
        }
        if (!isMarked()) {
            bytes += rowBytes_;
        }
    }
    return bytes + kDbaseFileEnd;
}

std::optional<std::int64_t> DbaseTable::purgeDeletedRows(UserInterface* parent) {
    const auto fail = [&](const std::string& text) {
        showBox(parent, text, kPurgeTitle);
        return std::nullopt;
    };
    if (!isOpen_) {
        return fail("Dbase file not open");
    }
    if (source_.size() > kMostPurgedBytes) {
        return fail(path_ + "\n\nReason: " + IoStatus(path_, EFBIG).reason());
    }
    const ProgressScope progress(parent, ProgressMode::WithCancel);
    const auto purged = countPurged(parent);
    if (!purged || *purged == 0) {
        return purged ? std::optional<std::int64_t>(0)
                      : fail(path_ + "\n\nReason: The file has become shorter");
    }
    setProgressText(parent, "Re-writing Database");
    const auto kept = rowCount() - *purged;
    const auto bytes = keptBytes(kept);
    if (!bytes) {
        return fail(path_ + "\n\nReason: The file has become shorter");
    }
    const auto status = replaceUnchangedFile(path_, *bytes, stamp_);
    const auto path = path_;
    if (!status.ok()) {
        return fail(path + "\n\nReason: " + status.reason());
    }
    // The handle still reads the former file.
    close();
    return open(parent, path) ? purged : std::nullopt;
}

}  // namespace kavu
