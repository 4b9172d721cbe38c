// The operations on ID counters and subframes.
#pragma once

#include "pcm/PcmFormat.h"
#include "pcm/PcmLoad.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

[[nodiscard]] int countIdCounters(const PcmFormat& format);  ///< named ones
[[nodiscard]] bool idCounterNameExists(const PcmFormat& format, std::string_view name);
[[nodiscard]] std::string generateIdCounterName(const PcmFormat& format);
/// A new counter at that word; its index, or nothing with message 177.
std::optional<int> createIdCounter(PcmFormat& format, UserInterface* parent, int fwp);
bool deleteIdCounter(PcmFormat& format, UserInterface* parent, int fwp);

[[nodiscard]] bool subframeNameExists(const PcmFormat& format, std::string_view name);

/// Who asks for a subframe: a person, the making of hidden subframes (question 357), or a
/// measurement that is being read (question 358).
enum class HiddenMode { Shown = 0, Hidden = 1, ForMeasurement = -1 };

struct SubframeRequest {
    int fwp = 0;
    std::optional<std::string_view> name;  ///< of the measurement for `ForMeasurement`
    HiddenMode hidden = HiddenMode::Shown;
    int depth = 0;  ///< 0 is the counter's end frame
    int locations = 1;
    int interval = 0;
};
/// Messages 352, 354, 355, 357, 358. `question` keeps a No for the rest of a load; null asks
/// each time.
bool createSubframe(PcmFormat& format, UserInterface* parent, const SubframeRequest& request,
                    CounterQuestion* question = nullptr);
/// Gives every plain word its hidden subframe.
void makeHiddenSubframes(PcmFormat& format, UserInterface* parent,
                         CounterQuestion* question = nullptr);
bool deleteSubframe(PcmFormat& format, UserInterface* parent, int fwp, bool cellsToo);

/// Index of a free entry of the counter's array; nothing with message 352.
std::optional<int> getSubframeSlot(PcmFormat& format, UserInterface* parent, int counter);
bool moveSubframeToCounter(PcmFormat& format, int fwp, const Subframe& record, int counter);
/// The rules on leaving the form: messages 341 to 351, 353, 354, 160.
bool saveSubframe(PcmFormat& format, UserInterface* parent, int fwp, const Subframe& record,
                  const Subframe& old, const std::vector<int>& everyLocation);
void resetWord(PcmFormat& format, UserInterface* parent, int fwp, bool cellsToo);
/// Message 231.
[[nodiscard]] bool canCreateAt(const PcmFormat& format, UserInterface* parent, int fwp);

}  // namespace kavu
