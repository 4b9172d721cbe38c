#include "pcm/edit/FrameEditFilter.h"

#include "core/TmatsDocument.h"
#include "core/TmatsReader.h"
#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "core/files/FileIo.h"
#include "core/talk/FileReports.h"
#include "core/talk/Messages.h"
#include "core/text/Text.h"
#include "groups/GroupScan.h"
#include "pcm/PcmFormat.h"
#include "pcm/PcmLoad.h"
#include "pcm/model/RecordField.h"
#include "vocabulary/DGroupFields.h"

#include <algorithm>
#include <map>
#include <unordered_map>
#include <utility>

namespace kavu {

namespace {

constexpr int kSelectsOnly = 2009;
constexpr std::string_view kYes = "Yes";
constexpr std::string_view kNo = "No";

bool selectsOnly(const PcmFormat& format) {
    return format.edition() < 2011;
}

std::string filterPath(const PcmFormat& format) {
    return format.context().store.path(kSmfFormat, format.dGroup);
}

std::string settingOf(std::string_view type) {
    const auto& choices = measurement_choice::kFilterOfSelected;
    const auto it = std::find_if(choices.begin(), choices.end() - 1, [type](const Choice& choice) {
        return startsWithIgnoreCase(type, choice.value);
    });
    return std::string(it->text);
}

/// What a file says of one row.
struct FileRow {
    std::string name;
    std::string type;
};

/// The rows of a file by their numbers; of 106-09 the number of the list comes first.
IoStatus readRows(const PcmFormat& format, std::map<std::pair<int, int>, FileRow>& rows) {
    return forEachCommand(
        format.context().reader, filterPath(format), [&](const std::string& command) {
            const auto view = viewCommand(command);
            const auto code = codeHead(view.field);
            const bool isName = equalsIgnoreCase(code, codeHead(filter_field::kName.code));
            if (!isName && !equalsIgnoreCase(code, codeHead(filter_field::kType.code))) {
                return true;
            }
            const auto indices = parseCommandIndices(command);
            auto& row = rows[{indices.fields[0], indices.fields[1]}];
            (isName ? row.name : row.type) = std::string(view.value);
            return true;
        });
}

/// The commands of a file that are of no row: they stay as they are.
IoStatus readOthers(const PcmFormat& format, std::string& lines) {
    const auto status = forEachCommand(
        format.context().reader, filterPath(format), [&](const std::string& command) {
            const auto code = codeHead(viewCommand(command).field);
            const bool isKnown = equalsIgnoreCase(code, codeHead(filter_field::kCount.code)) ||
                                 equalsIgnoreCase(code, codeHead(filter_field::kName.code)) ||
                                 equalsIgnoreCase(code, codeHead(filter_field::kType.code));
            if (!isKnown && hasColon(command)) {
                lines.append(command).append("\r\n");
            }
            return true;
        });
    return isMissing(status) ? IoStatus() : status;
}

void writeFilterRows(const PcmFormat& format, FileWriter& writer, const std::string& prefix,
                     const std::vector<FilterRow>& rows) {
    const bool selects = selectsOnly(format);
    long count = 0;
    for (const auto& row : rows) {
        count += !selects || row.setting == kYes ? 1 : 0;
    }
    constexpr int kFirstList = 1;
    writeIntCommand(writer, prefix,
                    selects ? fieldCode(filter_field::kCountInList.code, {kFirstList})
                            : std::string(filter_field::kCount.code),
                    count);
    int k = 0;
    for (const auto& row : rows) {
        if (selects && row.setting != kYes) {
            continue;
        }
        ++k;
        writeCommand(writer, prefix,
                     selects ? fieldCode(filter_field::kNameInList.code, {kFirstList, k})
                             : fieldCode(filter_field::kName.code, {k}),
                     row.name);
        if (!selects) {
            writeCommand(writer, prefix, fieldCode(filter_field::kType.code, {k}),
                         row.setting.empty() ? measurement_choice::kFilterOfSelected.back().value
                                             : std::string_view(row.setting).substr(0, 1));
        }
    }
}

}  // namespace

bool hasFilterList(const PcmFormat& format) {
    return format.edition() >= kSelectsOnly;
}

std::vector<std::string> filterSettings(const PcmFormat& format) {
    if (selectsOnly(format)) {
        return {std::string(kYes), std::string(kNo)};
    }
    std::vector<std::string> texts;
    for (const auto& choice : measurement_choice::kFilterOfSelected) {
        texts.emplace_back(choice.text);
    }
    return texts;
}

std::optional<std::vector<FilterRow>> readFilterList(PcmFormat& format, UserInterface* parent) {
    if (!hasFilterList(format)) {
        return std::nullopt;
    }
    if (!format.hasAnyMeasurement()) {
        format.context().messages.show(parent, 340, title::kError, kErrorBox);
        return std::nullopt;
    }
    std::vector<FilterRow> rows;
    std::unordered_map<std::string, std::size_t> byName;
    const auto rowOf = [&](std::string_view name, std::string_view setting) -> FilterRow& {
        const auto [it, isNew] = byName.emplace(lowerAscii(name), rows.size());
        if (isNew) {
            rows.push_back({std::string(name), std::string(setting)});
        }
        return rows[it->second];
    };
    format.forEachMeasurement([&](CellRef cell, int, int) {
        rowOf(format.cells().measurement(cell).name.view(),
              selectsOnly(format) ? kNo : std::string_view());
        return true;
    });
    std::map<std::pair<int, int>, FileRow> stored;
    if (const auto status = readRows(format, stored); !status.ok() && !isMissing(status)) {
        reportUnableToRead(parent, status);
        return std::nullopt;
    }
    for (const auto& [number, row] : stored) {
        if (!row.name.empty()) {
            rowOf(row.name, "").setting =
                selectsOnly(format) ? std::string(kYes) : settingOf(row.type);
        }
    }
    return rows;
}

bool storeFilterList(PcmFormat& format, UserInterface* parent, const std::vector<FilterRow>& rows) {
    if (!hasFilterList(format)) {
        return false;
    }
    giveMeasurementGroup(format, parent);  // a stream that was never saved has none
    const auto prefix = groupHead('D', format.dGroup);
    std::string others;
    if (const auto status = readOthers(format, others); !status.ok()) {
        reportUnableToRead(parent, status);
        return false;
    }
    auto writer = format.context().files.writer(formatPrintf(kSmfFormat, format.dGroup));
    writeFilterRows(format, writer.out(), prefix, rows);
    writer.write(others);
    if (const auto status = writer.close(); !status.ok()) {
        reportUnableToWrite(parent, status);
        return false;
    }
    format.changed = true;
    return true;
}

}  // namespace kavu
