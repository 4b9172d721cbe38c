#include "core/text/Text.h"
#include "pcm/PcmFormat.h"

namespace kavu {

void PcmFormat::subframeNamed(SubframeRef ref) {
    const auto* const record = subframe(ref);
    if (record == nullptr || record->name.empty() || !subframeIndex_.namesValid) {
        return;
    }
    // A name that is already indexed stays: the first entry of a name counts.
    subframeIndex_.exact.emplace(record->name.str(), ref);
    subframeIndex_.folded.emplace(lowerAscii(record->name), ref);
}

}  // namespace kavu
