#include "pcm/structure/SubframeRecordEdit.h"

#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "pcm/structure/SubframeEdit.h"

#include <algorithm>

namespace kavu {

SubframeEditing subframeEditing(const PcmFormat& format, int fwp) {
    const auto& word = format.word(fwp);
    SubframeEditing editing;
    if (const auto* const record = format.subframeOfWord(fwp)) {
        editing.record = *record;
        editing.counter = word.idCounterIndex;
        editing.everyLocation = format.wordsOf({word.idCounterIndex, word.subframeIndex});
    }
    return editing;
}

bool saveSubframeEditing(PcmFormat& format, UserInterface* parent, int fwp,
                         const SubframeEditing& editing) {
    const auto old = subframeEditing(format, fwp);
    const bool moves = editing.counter != old.counter && old.counter >= 0;
    const bool changed = format.changed;
    // The depth is checked against the counter that the subframe follows.
    if (moves && (!getSubframeSlot(format, parent, editing.counter) ||
                  !moveSubframeToCounter(format, fwp, old.record, editing.counter))) {
        return false;
    }
    if (saveSubframe(format, parent, fwp, editing.record, old.record, editing.everyLocation)) {
        return true;
    }
    if (moves) {
        moveSubframeToCounter(format, fwp, old.record, old.counter);
        format.changed = changed;
    }
    return false;
}

bool addLocation(const PcmFormat& format, UserInterface* parent, std::vector<int>& locations,
                 int fwp) {
    if (fwp < 1) {
        format.context().messages.show(parent, 161, title::kIllegalValueEntered, kErrorBox, 0);
        return false;
    }
    const auto at = std::lower_bound(locations.begin(), locations.end(), fwp);
    if (at == locations.end() || *at != fwp) {
        locations.insert(at, fwp);
    }
    return true;
}

}  // namespace kavu
