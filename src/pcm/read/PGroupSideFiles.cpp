#include "pcm/read/PGroupSideFiles.h"

#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "groups/GroupScan.h"
#include "pcm/PcmLoad.h"
#include "pcm/model/PcmFormatFields.h"
#include "vocabulary/ListFields.h"

#include <algorithm>

namespace kavu {

namespace {

/// Rows of a list; a count beyond it comes from a damaged file.
constexpr int kMostRows = 9999;

/// Whether a value is cut to the limit of its field.
enum class ValueWidth { Limited, Whole };

/// Copies commands of the group to a working file.
class SideFile {
  public:
    SideFile(PcmLoad& load, std::string_view name)
        : load_(load), writer_(load.format.context().files.writer(name)) {
        if (const auto& status = writer_.status(); !status.ok()) {
            reportUnableToWrite(load.parent, status);
        }
    }
    SideFile(const SideFile&) = delete;
    SideFile& operator=(const SideFile&) = delete;
    ~SideFile() {
        if (const auto status = writer_.close(); !status.ok()) {
            reportUnableToWrite(load_.parent, status);
        }
    }

    /// Copies the fields of a table, the rows of a list after their count.
    void copyAll(std::span<const Field> fields, ValueWidth width) {
        for (const auto& field : fields) {
            if (!field.list.empty()) {
                continue;
            }
            const int limit = width == ValueWidth::Whole ? 0 : static_cast<int>(field.limit);
            copy(field.code, limit);
            const int rows = governsRows(field) ? countOf(field, limit) : 0;
            for (int n = 1; n <= rows; ++n) {
                for (const auto& cell : listFields(fields, field.code)) {
                    copy(fieldCode(cell.code, {n}),
                         width == ValueWidth::Whole ? 0 : static_cast<int>(cell.limit));
                }
            }
        }
    }

  private:
    void copy(std::string_view code, int limit) {
        if (const auto value = load_.text(code, limit)) {
            writeCommand(writer_.out(), load_.prefix, code, *value);
        }
    }
    [[nodiscard]] int countOf(const Field& count, int limit) {
        return std::min(load_.limitedNumber(count.code, limit).value_or(0), kMostRows);
    }

    PcmLoad& load_;
    DocumentWriter writer_;
};

}  // namespace

void keepFrameFilter(PcmLoad& load) {
    SideFile(load, kFrameFilterFile).copyAll(frameFilterFields(), ValueWidth::Whole);
}

void keepFormatSwitch(PcmLoad& load) {
    SideFile(load, kFormatSwitchFile).copyAll(formatSwitchFields(), ValueWidth::Limited);
}

void keepAltTag(PcmLoad& load) {
    SideFile(load, kAltTagFile).copyAll(altTagFields(), ValueWidth::Limited);
}

}  // namespace kavu
