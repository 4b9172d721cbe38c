#include "pcm/edit/SideLocations.h"

#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/files/FileIo.h"
#include "core/text/Text.h"
#include "pcm/PcmLoad.h"

#include <algorithm>

namespace kavu {

namespace {

constexpr std::string_view kIdentifierWord = "FFI1";
constexpr int kMostIdentifierWord = 9999;
constexpr std::string_view kFirstTagBit = "ALT3";
constexpr int kMostFirstTagBit = 99;

bool hasFile(const PcmFormat& format, std::string_view name) {
    return fileExists(format.context().store.pathOf(name));
}

}  // namespace

SideLocations::SideLocations(PcmFormat& format) : format_(format) {
    if (!hasFile(format, kFormatSwitchFile) && !hasFile(format, kAltTagFile)) {
        return;
    }
    const auto records = readSideRecords(format, nullptr);
    if (const int fwp = leadingInt(records.formatSwitch.value(kIdentifierWord));
        format.isDataWord(fwp)) {
        all_.push_back(
            {kIdentifierWord, "Frame format identifier, word", fwp, fwp, -1, kMostIdentifierWord});
    }
    // Bits are counted from the beginning of the frame, from 1.
    const int bit = leadingInt(records.altTag.value(kFirstTagBit));
    int begin = 0;
    for (int fwp = 0; bit > 0 && fwp < format.wordsPerMinorFrame; ++fwp) {
        if (bit <= begin + format.wordLength(fwp)) {
            all_.push_back(
                {kFirstTagBit, "First tag, bit", bit, fwp, bit - begin - 1, kMostFirstTagBit});
            break;
        }
        begin += format.wordLength(fwp);
    }
}

int SideLocations::numberNow(const Location& location, const std::vector<int>& moves) const {
    const auto at = static_cast<std::size_t>(location.fwp);
    const int fwp = at < moves.size() ? moves[at] : -1;
    if (fwp < 0 || fwp >= format_.wordsPerMinorFrame) {
        return 0;
    }
    int number = fwp;
    if (location.bit >= 0) {
        number = location.bit + 1;
        for (int before = 0; before < fwp; ++before) {
            number += format_.wordLength(before);
        }
    }
    return number <= location.most ? number : 0;
}

std::vector<SideLocations::Left> SideLocations::left(const std::vector<int>& moves) const {
    std::vector<Left> left;
    for (const auto& location : all_) {
        if (const int now = numberNow(location, moves); now != location.number) {
            left.push_back({location.label, location.number, now});
        }
    }
    return left;
}

void SideLocations::adjust(UserInterface* parent, const std::vector<int>& moves) const {
    auto records = readSideRecords(format_, parent);
    bool changed = false;
    for (const auto& location : all_) {
        const int now = numberNow(location, moves);
        if (now == 0 || now == location.number) {
            continue;
        }
        auto& record = location.code == kIdentifierWord ? records.formatSwitch : records.altTag;
        record.set(location.code, std::to_string(now));
        changed = true;
    }
    if (changed) {
        (void)storeSideRecords(format_, parent, records);
    }
}

}  // namespace kavu
