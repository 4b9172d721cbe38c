#include "mdb/dbase/DbaseTable.h"

#include "core/files/FilePatch.h"
#include "core/talk/Messages.h"
#include "core/text/Text.h"

#include <algorithm>
#include <cerrno>

namespace kavu {

namespace {

constexpr const char* kUnableToOpen = "ERROR: Unable To Open Dbase File";
constexpr const char* kUnableToLocate = "ERROR: Unable To Locate Dbase Cell";
constexpr const char* kUnableToWrite = "ERROR: Unable to Write To Dbase File";

std::string failureText(const std::string& path, const IoStatus& status) {
    return path + "\n\nReason: " + status.reason();
}

}  // namespace

std::string takeBytes(ByteSource& source, std::size_t count) {
    std::string bytes;
    while (bytes.size() < count) {
        const auto part = source.window().substr(0, count - bytes.size());
        if (part.empty()) {
            break;
        }
        bytes.append(part);
        source.take(part.size());
    }
    return bytes;
}

// --- the table ----------------------------------------------------------------------------

bool DbaseTable::open(UserInterface* parent, const std::string& path) {
    if (isOpen_) {
        return true;
    }
    if (path.empty()) {
        showBox(parent, "No Dbase filename found.", kUnableToOpen);
        return false;
    }
    stamp_ = fileStamp(path);
    auto status = source_.open(path);
    const auto bytes = status.ok() ? takeBytes(source_, kMostDbaseHeader + 1) : std::string();
    status = status.ok() ? source_.status() : status;
    if (!status.ok()) {
        source_.close();
        showBox(parent, failureText(path, status), kUnableToOpen);
        return false;
    }
    std::string reason;
    const auto header = DbaseHeader::parse(bytes, source_.size(), reason);
    if (!header) {
        source_.close();
        showBox(parent,
                "Unable to verify that this is a valid Dbase file" +
                    (reason.empty() ? std::string() : "\n\n" + reason),
                kUnableToOpen);
        return false;
    }
    header_ = *header;
    path_ = path;
    isOpen_ = true;
    return true;
}

void DbaseTable::close() {
    source_.close();
    isOpen_ = false;
    path_.clear();
    header_ = {};
    cachedRow_ = -1;
    rowBytes_.clear();
}

int DbaseTable::columnCount() const {
    return isOpen_ ? static_cast<int>(header_.columns.size()) : -1;
}

std::int64_t DbaseTable::rowCount() const {
    return isOpen_ ? header_.rowCount : -1;
}

int DbaseTable::columnIndexByName(std::string_view name) const {
    const auto& columns = header_.columns;
    const auto found = std::find_if(columns.begin(), columns.end(), [&](const DbaseColumn& column) {
        return equalsIgnoreCase(column.name, name);
    });
    return found == columns.end() ? -1 : static_cast<int>(found - columns.begin());
}

// --- cells --------------------------------------------------------------------------------

std::uint64_t DbaseTable::offsetOf(std::int64_t row) const {
    return header_.headerLength + static_cast<std::uint64_t>(row) * header_.rowLength;
}

bool DbaseTable::readRow(std::int64_t row) {
    if (row == cachedRow_) {
        return true;
    }
    source_.seek(offsetOf(row));
    rowBytes_ = takeBytes(source_, header_.rowLength);
    // The file may have become shorter since it was opened.
    const bool isWhole = rowBytes_.size() == header_.rowLength;
    cachedRow_ = isWhole ? row : -1;
    return isWhole;
}

std::string DbaseTable::cellOf(int column) const {
    const auto& at = header_.columns[static_cast<std::size_t>(column)];
    const auto bytes =
        std::string_view(rowBytes_).substr(at.offset, static_cast<std::size_t>(at.length));
    return std::string(trimBlanks(bytes.substr(0, bytes.find('\0'))));
}

bool DbaseTable::isMarked() const {
    return !rowBytes_.empty() && rowBytes_.front() == kDbaseDeletedMark;
}

std::optional<std::string> DbaseTable::readCell(UserInterface* parent, std::int64_t row, int column,
                                                bool* isDeleted) {
    if (isDeleted != nullptr) {
        *isDeleted = false;
    }
    if (isOpen_ && header_.columns.empty()) {
        return std::string();
    }
    if (row < 0 || row >= rowCount() || column < 0 || column >= columnCount() || !readRow(row)) {
        showBox(parent, "Invalid Row or Column specified", kUnableToLocate);
        return std::nullopt;
    }
    if (isDeleted != nullptr) {
        *isDeleted = isMarked();
    }
    return cellOf(column);
}

bool DbaseTable::checkWrite(UserInterface* parent, const std::int64_t* row, int column,
                            bool hasText) const {
    std::string text;
    if (row == nullptr) {
        text = "'Row' cannot be NULL";
    } else if (isOpen_ && (column < 0 || column >= columnCount())) {
        text = "Invalid column number specified";
    } else if (!hasText) {
        text = "No Text specified";
    } else if (!isOpen_) {
        text = "Dbase file not open";
    } else if (const auto& at = header_.columns[static_cast<std::size_t>(column)];
               !isDbaseTextType(at.type)) {
        text = formatPrintf("Column '%s' is of the type '%s', whose cells are no text.", at.name,
                            std::string(1, at.type));
    }
    if (text.empty() && (*row < kNewRow || *row >= rowCount())) {
        showBox(parent, "Invalid Row or Column specified", kUnableToLocate);
        return false;
    }
    if (!text.empty()) {
        showBox(parent, text, kUnableToWrite);
    }
    return text.empty();
}

std::string DbaseTable::padded(UserInterface* parent, std::int64_t row, int column,
                               std::string_view text) const {
    const auto& at = header_.columns[static_cast<std::size_t>(column)];
    std::string cell(text);
    if (cell.size() > static_cast<std::size_t>(at.length) && parent != nullptr) {
        messages_.logText(
            parent, 0,
            formatPrintf("\nWARNING (Row: %ld, Col: %d): Field '%s' was truncated to %d "
                         "characters.\n\n",
                         row, column, at.name, at.length));
    }
    cell.resize(static_cast<std::size_t>(at.length), ' ');
    return cell;
}

IoStatus DbaseTable::writePadded(std::int64_t row, int column, const std::string& cell) {
    const auto& at = header_.columns[static_cast<std::size_t>(column)];
    if (row < header_.rowCount) {
        return overwriteBytes(path_, offsetOf(row) + at.offset, cell);
    }
    // The row is complete in the file before the count says that it is there.
    std::string bytes(header_.rowLength, ' ');
    bytes.replace(at.offset, cell.size(), cell);
    bytes += kDbaseFileEnd;
    auto status = overwriteBytes(path_, offsetOf(row), bytes);
    if (status.ok()) {
        status = overwriteBytes(path_, kDbaseCountOffset,
                                dbaseNumber(static_cast<std::uint32_t>(row + 1)));
    }
    header_.rowCount += status.ok() ? 1 : 0;
    return status;
}

bool DbaseTable::writeCell(UserInterface* parent, std::int64_t* row, int column,
                           std::optional<std::string_view> text) {
    if (!checkWrite(parent, row, column, text.has_value())) {
        return false;
    }
    const auto at = *row == kNewRow ? header_.rowCount : *row;
    // The file is written by another handle than it is read by, which would still know the old row.
    source_.close();
    cachedRow_ = -1;
    auto status = canWrite(path_) ? IoStatus() : IoStatus(path_, EACCES);
    if (status.ok() && fileStamp(path_) != stamp_) {
        status = {path_, ESTALE};
    }
    status = status.ok() ? writePadded(at, column, padded(parent, at, column, *text)) : status;
    if (status.code() == EACCES || status.code() == EROFS) {
        showBox(parent, "Could not open Dbase File for writing", kUnableToWrite);
    } else if (!status.ok()) {
        showBox(parent, "Write failed\n\n" + failureText(path_, status), kUnableToWrite);
    }
    stamp_ = fileStamp(path_);
    const auto reopened = source_.open(path_);
    if (!reopened.ok()) {
        showBox(parent, failureText(path_, reopened), kUnableToOpen);
        close();
    }
    if (status.ok()) {
        *row = at;
    }
    return status.ok() && reopened.ok();
}

}  // namespace kavu
