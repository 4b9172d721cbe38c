#include "pcm/structure/StreamCounters.h"

#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "core/text/Text.h"
#include "pcm/structure/SubframeEdit.h"
#include "pcm/structure/WordContentsQuestion.h"
#include "vocabulary/PSubframeFields.h"
#include "vocabulary/SubframeCodes.h"

#include <algorithm>

namespace kavu {

namespace {

const IdCounter* counterNamed(const PcmFormat& format, std::string_view name) {
    const auto index = findIdCounter(format, name);
    return index ? &format.idCounters[static_cast<std::size_t>(*index)] : nullptr;
}

template <typename Field>
std::optional<int> numberOf(const PcmFormat& format, std::string_view name, Field field) {
    const auto* const counter = counterNamed(format, name);
    return counter == nullptr ? std::nullopt : std::optional((counter->*field).number());
}
template <typename Field>
std::optional<std::string> textOf(const PcmFormat& format, std::string_view name, Field field) {
    const auto* const counter = counterNamed(format, name);
    return counter == nullptr ? std::nullopt : std::optional((counter->*field).str());
}

/// Changes the counter of that name if `change` returns true; the format then counts as
/// changed.
template <typename Change>
bool changeCounter(PcmFormat& format, std::string_view name, const Change& change) {
    const auto index = findIdCounter(format, name);
    if (!index || !change(format.idCounters[static_cast<std::size_t>(*index)], *index)) {
        return false;
    }
    format.changed = true;
    return true;
}

template <typename Field>
bool setNumber(PcmFormat& format, std::string_view name, Field field, int value, int least,
               int most) {
    return changeCounter(format, name, [&](IdCounter& counter, int) {
        if (value < least || value > most) {
            return false;
        }
        counter.*field = std::to_string(value);
        return true;
    });
}

/// A subframe of that name, its record and its words.
struct Found {
    SubframeRef ref;
    Subframe record;
    std::vector<int> words;
};
std::optional<Found> subframeNamed(const PcmFormat& format, std::string_view name) {
    const auto ref = name.empty() ? std::nullopt : format.findSubframe(name);
    if (!ref || format.wordsOf(*ref).empty()) {
        return std::nullopt;
    }
    return Found{*ref, *format.subframe(*ref), format.wordsOf(*ref)};
}

bool saveChanged(PcmFormat& format, UserInterface* parent, const Found& found,
                 const Subframe& record) {
    return saveSubframe(format, parent, found.words.front(), record, found.record, found.words);
}

}  // namespace

bool createSFID(PcmFormat& format, UserInterface* parent, int fwp) {
    return canCreateAt(format, parent, fwp) && clearForCounter(format, parent, fwp) &&
           createIdCounter(format, parent, fwp).has_value();
}

bool deleteSFID(PcmFormat& format, UserInterface* parent, std::string_view name) {
    const auto index = findIdCounter(format, name);
    return index && deleteIdCounter(format, parent, wordOfIdCounter(format, *index));
}

int getNumberOfSFIDs(const PcmFormat& format) {
    return countIdCounters(format);
}

std::optional<SFIDInfo> getSFIDInfo(const PcmFormat& format, int number) {
    for (std::size_t i = 0; i < format.idCounters.size(); ++i) {
        const auto& counter = format.idCounters[i];
        if (!counter.name.empty() && --number == 0) {
            return SFIDInfo{counter.name.str(), wordOfIdCounter(format, static_cast<int>(i))};
        }
    }
    return std::nullopt;
}

std::optional<std::string> getSFIDCountDirection(const PcmFormat& format, std::string_view name) {
    return textOf(format, name, &IdCounter::countDirection);
}
bool setSFIDCountDirection(PcmFormat& format, std::string_view name, std::string_view direction) {
    return changeCounter(format, name, [&](IdCounter& counter, int) {
        for (const auto known : {kCountsUp, kCountsDown}) {
            if (equalsIgnoreCase(direction, known)) {
                counter.countDirection = known;
                updateEndValue(counter);
                return true;
            }
        }
        return false;
    });
}

std::optional<int> getSFIDCounterLength(const PcmFormat& format, std::string_view name) {
    return numberOf(format, name, &IdCounter::counterLength);
}
bool setSFIDCounterLength(PcmFormat& format, std::string_view name, int length) {
    return changeCounter(format, name, [&](IdCounter& counter, int index) {
        const int most = format.wordLength(wordOfIdCounter(format, index));
        if (length < 1 || length > std::min(most, 99)) {
            return false;
        }
        counter.counterLength = std::to_string(length);
        return true;
    });
}

std::optional<int> getSFIDEndFrame(const PcmFormat& format, std::string_view name) {
    return numberOf(format, name, &IdCounter::endFrame);
}
bool setSFIDEndFrame(PcmFormat& format, std::string_view name, int frame) {
    return changeCounter(format, name, [&](IdCounter& counter, int) {
        return setEndFrame(format, nullptr, counter, frame);
    });
}

std::optional<int> getSFIDEndValue(const PcmFormat& format, std::string_view name) {
    return numberOf(format, name, &IdCounter::endValue);
}
bool setSFIDEndValue(PcmFormat& format, std::string_view name, int value) {
    return setNumber(format, name, &IdCounter::endValue, value, 1, 999);
}

std::optional<int> getSFIDMSBStartBit(const PcmFormat& format, std::string_view name) {
    return numberOf(format, name, &IdCounter::msbStartBit);
}
bool setSFIDMSBStartBit(PcmFormat& format, std::string_view name, int bit) {
    return setNumber(format, name, &IdCounter::msbStartBit, bit, 1, 99);
}

bool setSFIDName(PcmFormat& format, UserInterface* parent, std::string_view oldName,
                 std::string_view newName) {
    return changeCounter(format, oldName, [&](IdCounter& counter, int index) {
        if (!checkIdCounterName(format, parent, index, newName)) {
            return false;
        }
        counter.name = newName;
        return true;
    });
}

std::optional<int> getSFIDStartFrame(const PcmFormat& format, std::string_view name) {
    return numberOf(format, name, &IdCounter::startFrame);
}
bool setSFIDStartFrame(PcmFormat& format, std::string_view name, int frame) {
    return changeCounter(format, name, [&](IdCounter& counter, int) {
        return setStartFrame(format, nullptr, counter, frame);
    });
}

std::optional<int> getSFIDStartValue(const PcmFormat& format, std::string_view name) {
    return numberOf(format, name, &IdCounter::initialValue);
}
bool setSFIDStartValue(PcmFormat& format, std::string_view name, int value) {
    return changeCounter(format, name, [&](IdCounter& counter, int) {
        if (value < 0 || value > 999) {
            return false;
        }
        counter.initialValue = std::to_string(value);
        updateEndValue(counter);
        return true;
    });
}

std::optional<std::string> getSFIDTransferOrder(const PcmFormat& format, std::string_view name) {
    return textOf(format, name, &IdCounter::transferOrder);
}
bool setSFIDTransferOrder(PcmFormat& format, std::string_view name, std::string_view order) {
    return changeCounter(format, name, [&](IdCounter& counter, int) {
        const auto& choices = p::choice::kTransferOrders;
        const bool known = std::any_of(choices.begin(), choices.end(), [&](const Choice& choice) {
            return choice.value == order && isKnownIn(format.edition(), choice);
        });
        if (!known) {
            return false;
        }
        counter.transferOrder = order;
        return true;
    });
}

std::optional<int> getSFIDWordLength(const PcmFormat& format, std::string_view name) {
    return numberOf(format, name, &IdCounter::wordLength);
}
bool setSFIDWordLength(PcmFormat& format, std::string_view name, int length) {
    return setNumber(format, name, &IdCounter::wordLength, length, 1, 99);
}

bool deleteSubframe(PcmFormat& format, UserInterface* parent, std::string_view name) {
    const auto found = subframeNamed(format, name);
    return found && deleteSubframe(format, parent, found->words.front(), true);
}

std::optional<int> getSubframeDepth(const PcmFormat& format, std::string_view name) {
    const auto found = subframeNamed(format, name);
    return found ? std::optional(found->record.depth.number()) : std::nullopt;
}
bool setSubframeDepth(PcmFormat& format, UserInterface* parent, std::string_view name, int depth) {
    const auto found = subframeNamed(format, name);
    if (!found) {
        return false;
    }
    auto record = found->record;
    record.depth = std::to_string(std::clamp(depth, 0, 999));
    return saveChanged(format, parent, *found, record);
}

std::optional<std::string> getSubframeIDCounter(const PcmFormat& format, std::string_view name) {
    const auto found = subframeNamed(format, name);
    return found ? std::optional(
                       format.idCounters[static_cast<std::size_t>(found->ref.counter)].name.str())
                 : std::nullopt;
}
bool setSubframeIDCounter(PcmFormat& format, UserInterface* parent, std::string_view name,
                          std::string_view counter) {
    const auto found = subframeNamed(format, name);
    if (!found) {
        return false;
    }
    const auto index = findIdCounter(format, counter);
    if (!index) {
        format.context().messages.show(parent, 359, title::kInternalError, kErrorBox);
        return false;
    }
    return getSubframeSlot(format, parent, *index) &&
           moveSubframeToCounter(format, found->words.front(), found->record, *index);
}

std::optional<SubframeLocations> getSubframeLocations(const PcmFormat& format,
                                                      std::string_view name) {
    const auto found = subframeNamed(format, name);
    if (!found) {
        return std::nullopt;
    }
    const auto& record = found->record;
    SubframeLocations locations{found->words.front(), 1, 0};
    if (record.isSupercommutated()) {
        locations.locations = record.supercommutated.number();
        locations.interval =
            record.locationMode == kFirstAndInterval ? record.interval.number() : 0;
    }
    return locations;
}
bool setSubframeLocations(PcmFormat& format, UserInterface* parent, std::string_view name,
                          int locations, int interval) {
    const auto found = subframeNamed(format, name);
    if (!found) {
        return false;
    }
    auto record = found->record;
    const bool single = locations == 1;
    const auto text = [](int number) { return std::to_string(std::clamp(number, 0, 99999)); };
    record.supercommutated =
        single ? std::string(kNotSupercommutated) : text(std::min(locations, 999));
    record.locationMode = single ? kNoLocationMode : kFirstAndInterval;
    record.interval = single ? "0" : text(interval > kMostSubframeInterval ? 0 : interval);
    return saveChanged(format, parent, *found, record);
}

std::optional<std::string> getSubframeName(const PcmFormat& format, int fwp) {
    const auto* const record = format.subframeOfWord(fwp);
    return record == nullptr ? std::nullopt : std::optional(record->name.str());
}
bool setSubframeName(PcmFormat& format, UserInterface* parent, std::string_view oldName,
                     std::string_view newName) {
    const auto found = subframeNamed(format, oldName);
    if (!found) {
        return false;
    }
    auto record = found->record;
    record.name = newName;
    return saveChanged(format, parent, *found, record);
}

}  // namespace kavu
