// What the sheet edits besides the model: it is kept as commands in working files, which a
// save appends unchanged.
#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "core/files/FileIo.h"
#include "core/talk/FileReports.h"
#include "core/text/Text.h"
#include "groups/GroupScan.h"
#include "pcm/PcmFormat.h"
#include "pcm/PcmLoad.h"
#include "pcm/model/PcmFormatFields.h"
#include "pcm/structure/PcmFormatEdit.h"
#include "vocabulary/Vocabularies.h"

#include <algorithm>

namespace kavu {

namespace {

constexpr std::string_view kFilteredCount = "MFF\\N";
constexpr std::string_view kFilteredFrame = "MFF\\MFN-n";

/// Takes the rows of a list as they are numbered; a missing number makes no row.
void takeRow(GroupRow& record, const Field& field, std::size_t n, std::string_view value) {
    const auto count = std::string(field.list);
    auto& rows = record.lists[count];
    // The files are written row by row, so a number is that of the last row or the next one.
    if (rows.size() < n) {
        rows.resize(std::min(rows.size() + 1, n));
    }
    if (n >= 1 && n <= rows.size()) {
        rows[n - 1].set(field.code, value);
    }
}

GroupRow readFile(PcmFormat& format, UserInterface* parent, std::string_view name,
                  std::span<const Field> table) {
    auto& context = format.context();
    GroupRow record;
    const auto status =
        forEachCommand(context.reader, context.store.pathOf(name), [&](const std::string& command) {
            const auto parts = viewCommand(command);
            for (const auto& match : matchVocabulary(table, parts.field)) {
                if (!match.field->list.empty()) {
                    takeRow(record, *match.field, static_cast<std::size_t>(match.path.at[0]),
                            parts.value);
                } else if (!governsRows(*match.field)) {
                    record.set(match.field->code, parts.value);
                }
            }
            return true;
        });
    if (!status.ok() && !isMissing(status)) {
        reportUnableToRead(parent, status);
    }
    return record;
}

bool writeFile(PcmFormat& format, UserInterface* parent, std::string_view name,
               std::span<const Field> table, const GroupRow& record) {
    auto& context = format.context();
    GroupWriter writer('P', format.pGroup);
    writer.writeTable(table, record, format.edition());
    const auto status = context.files.put(name, writer.text());
    if (!status.ok()) {
        reportUnableToWrite(parent, status);
    }
    return status.ok();
}

}  // namespace

PcmSideRecords readSideRecords(PcmFormat& format, UserInterface* parent) {
    return {readFile(format, parent, kFormatSwitchFile, formatSwitchFields()),
            readFile(format, parent, kAltTagFile, altTagFields()),
            readFile(format, parent, kFrameFilterFile, frameFilterFields())};
}

bool storeSideRecords(PcmFormat& format, UserInterface* parent, const PcmSideRecords& records) {
    if (format.pGroup < 1) {  // a stream that was never saved
        format.pGroup = firstFreeIndex(format.context(), 'P');
    }
    format.changed = true;
    format.formatEdited = true;
    return writeFile(format, parent, kFormatSwitchFile, formatSwitchFields(),
                     records.formatSwitch) &&
           writeFile(format, parent, kAltTagFile, altTagFields(), records.altTag) &&
           (format.edition() < 2009 ||
            writeFile(format, parent, kFrameFilterFile, frameFilterFields(), records.frameFilter));
}

std::vector<bool> filteredFrames(const GroupRow& frameFilter, int frames) {
    std::vector<bool> filtered(static_cast<std::size_t>(std::max(0, frames)), false);
    for (const auto& row : frameFilter.rows(kFilteredCount)) {
        const int frame = leadingInt(row.value(kFilteredFrame));
        if (frame >= 1 && frame <= frames) {
            filtered[static_cast<std::size_t>(frame) - 1] = true;
        }
    }
    return filtered;
}

void setFilteredFrames(GroupRow& frameFilter, const std::vector<bool>& filtered) {
    auto& rows = frameFilter.lists[std::string(kFilteredCount)];
    rows.clear();
    for (std::size_t i = 0; i < filtered.size(); ++i) {
        if (filtered[i]) {
            rows.emplace_back().set(kFilteredFrame, std::to_string(i + 1));
        }
    }
}

}  // namespace kavu
