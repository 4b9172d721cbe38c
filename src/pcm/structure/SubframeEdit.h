// The operations on ID counters and subframes. They mark the format as changed; a null
// parent is silent.
#pragma once

#include "pcm/PcmFormat.h"
#include "pcm/PcmLoad.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

// --- ID counters ----------------------------------------------------------------------------

[[nodiscard]] int countIdCounters(const PcmFormat& format);  ///< named ones
/// Compared exactly.
[[nodiscard]] bool idCounterNameExists(const PcmFormat& format, std::string_view name);
/// The index of the counter of that name, compared exactly; nothing for an empty name.
[[nodiscard]] std::optional<int> findIdCounter(const PcmFormat& format, std::string_view name);
/// The first word that holds the counter with this index, or -1.
[[nodiscard]] int wordOfIdCounter(const PcmFormat& format, int counter);
/// "SFID", then "SFID2" and so on: the first that is not in use.
[[nodiscard]] std::string generateIdCounterName(const PcmFormat& format);
/// The value of a counter in its end frame, computed from its initial value and its frames.
/// Nothing for a direction that is neither up nor down. It may be below 1, which no counter
/// sends.
[[nodiscard]] std::optional<int> expectedEndValue(const IdCounter& counter);
/// Sets the end value to the expected one, at least 1; with an unknown direction it stays.
void updateEndValue(IdCounter& counter);
/// Makes a new counter at that word. Returns its index, or nothing with message 177 ("too
/// large").
std::optional<int> createIdCounter(PcmFormat& format, UserInterface* parent, int fwp);
/// Asks question 129 ("permanently delete this ID Counter"), but not without a parent. False
/// with message 360 ("cannot delete") while a subframe refers to the counter, and with 359
/// ("Could not locate") if the word holds none. Empty hidden subframes are deleted with it.
bool deleteIdCounter(PcmFormat& format, UserInterface* parent, int fwp);

// The rules of the fields while a counter is edited. The frames change the end value.

/// At least 1: message 366.
bool setMsbStartBit(PcmFormat& format, UserInterface* parent, IdCounter& counter, int bit);
/// 1 to the number of frames, below the end frame: messages 363, 364.
bool setStartFrame(PcmFormat& format, UserInterface* parent, IdCounter& counter, int frame);
/// 1 to the number of frames, above the start frame: messages 363, 364.
bool setEndFrame(PcmFormat& format, UserInterface* parent, IdCounter& counter, int frame);
/// A new name of the counter with this index: messages 361, 365.
[[nodiscard]] bool checkIdCounterName(const PcmFormat& format, UserInterface* parent, int counter,
                                      std::string_view name);
/// Checks and stores the counter at a word when its dialog is accepted: messages 361,
/// 365, 362; the counter's length may not exceed the length of its word. The subframes
/// stay.
bool saveIdCounter(PcmFormat& format, UserInterface* parent, int fwp, const IdCounter& record);

// --- subframes ------------------------------------------------------------------------------

/// Compared exactly, over all counters.
[[nodiscard]] bool subframeNameExists(const PcmFormat& format, std::string_view name);

/// What a subframe is made for: the user, the making of hidden subframes (question 357),
/// or a measurement that is being read (question 358).
enum class HiddenMode { Shown = 0, Hidden = 1, ForMeasurement = -1 };

struct SubframeRequest {
    int fwp = 0;
    std::optional<std::string_view> name =
        std::nullopt;  ///< of the measurement for `ForMeasurement`
    HiddenMode hidden = HiddenMode::Shown;
    int depth = 0;  ///< 0 is the counter's end frame
    int locations = 1;
    int interval = 0;
};
/// Messages 352, 354, 355, 357, 358. Fails without a message if one of its words is not a
/// plain word. `question` keeps a No for the rest of a load; null asks each time. What a
/// plain word holds in every minor frame stays in every frame of a hidden subframe.
bool createSubframe(PcmFormat& format, UserInterface* parent, const SubframeRequest& request,
                    CounterQuestion* question = nullptr);
/// Gives every plain word its hidden subframe.
void makeHiddenSubframes(PcmFormat& format, UserInterface* parent,
                         CounterQuestion* question = nullptr);
/// Asks question 123 ("permanently delete"), but not without a parent. All words of the
/// subframe become plain words.
bool deleteSubframe(PcmFormat& format, UserInterface* parent, int fwp, bool cellsToo);

/// Index of a free entry of the counter's array; nothing with message 352 ("PCM format
/// too big").
std::optional<int> getSubframeSlot(PcmFormat& format, UserInterface* parent, int counter);
/// Moves the subframe of a word to another counter and gives it this record.
bool moveSubframeToCounter(PcmFormat& format, int fwp, const Subframe& record, int counter);
/// The name of a subframe that has been `former` until now: messages 353, 354.
[[nodiscard]] bool checkSubframeName(const PcmFormat& format, UserInterface* parent,
                                     std::string_view former, std::string_view name);
/// The depth of a subframe of the counter with this index: messages 349 to 351.
[[nodiscard]] bool checkSubframeDepth(const PcmFormat& format, UserInterface* parent, int counter,
                                      int depth);
/// Checks and stores a subframe when its dialog is accepted: messages 341 to 344, 346 to
/// 351, 353, 354, 160. `fwp` is the word that is edited, `old` the record before,
/// `everyLocation` the words of an "EL".
bool saveSubframe(PcmFormat& format, UserInterface* parent, int fwp, const Subframe& record,
                  const Subframe& old, const std::vector<int>& everyLocation);
/// Makes the word a plain one. Only the first frame's measurements stay, and with `cellsToo`
/// none.
void resetWord(PcmFormat& format, UserInterface* parent, int fwp, bool cellsToo);
/// True if a counter or subframe can be made at the word. Message 231 ("already contains
/// measurements").
[[nodiscard]] bool canCreateAt(const PcmFormat& format, UserInterface* parent, int fwp);
/// What was made at a word that the user has chosen; its dialog comes next, and after a
/// Cancel there what was made is deleted again.
enum class Created { Nothing, Subframe, IdCounter };
/// From 106-11 on only a counter can be made. Before that the user chooses; while new
/// measurements do not use subframe definitions only the counter is offered, after message
/// 233 ("'Create Subframe' function has been disabled"). Nothing is made without a parent
/// to choose. Messages 231, 177, 355.
Created createAt(PcmFormat& format, UserInterface* parent, int fwp);
/// True if a word holds a measurement or an async slot in any frame.
[[nodiscard]] bool holdsAnything(const PcmFormat& format, int fwp);

}  // namespace kavu
