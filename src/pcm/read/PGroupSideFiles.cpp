#include "pcm/read/PGroupSideFiles.h"

#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "groups/GroupScan.h"
#include "pcm/PcmLoad.h"

#include <algorithm>

namespace kavu {

namespace {

/// Rows of a list; a count beyond it comes from a damaged file.
constexpr int kMostRows = 9999;

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

    void copy(std::string_view pattern, int limit, std::initializer_list<int> numbers = {}) {
        const auto code = fieldCode(pattern, numbers);
        if (const auto value = load_.text(code, limit)) {
            writeCommand(writer_.out(), load_.prefix, code, *value);
        }
    }
    /// Copies a count, and returns it.
    int copyCount(std::string_view code, int limit = 0) {
        copy(code, limit);
        return std::min(load_.limitedNumber(code, limit).value_or(0), kMostRows);
    }

  private:
    PcmLoad& load_;
    DocumentWriter writer_;
};

}  // namespace

void keepFrameFilter(PcmLoad& load) {
    SideFile file(load, kFrameFilterFile);
    file.copy("MFF\\FDT", 0);
    const int count = file.copyCount("MFF\\N");
    for (int n = 1; n <= count; ++n) {
        file.copy("MFF\\MFN-n", 0, {n});
    }
}

void keepFormatSwitch(PcmLoad& load) {
    SideFile file(load, kFormatSwitchFile);
    file.copy("FFI1", 4);
    file.copy("FFI2", 64);
    const int lists = file.copyCount("MLC\\N");
    for (int n = 1; n <= lists; ++n) {
        file.copy("MLC1-n", 16, {n});
        file.copy("MLC2-n", 32, {n});
    }
    const int formats = file.copyCount("FSC\\N");
    for (int n = 1; n <= formats; ++n) {
        file.copy("FSC1-n", 16, {n});
        file.copy("FSC2-n", 32, {n});
    }
}

void keepAltTag(PcmLoad& load) {
    SideFile file(load, kAltTagFile);
    file.copy("ALT\\N", 3);
    file.copy("ALT1", 2);
    file.copy("ALT2", 2);
    file.copy("ALT3", 2);
    file.copy("ALT4", 1);
}

}  // namespace kavu
