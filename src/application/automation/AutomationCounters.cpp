#include "application/automation/AutomationCounters.h"

#include "application/automation/AutomationSession.h"
#include "application/automation/AutomationValues.h"
#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "core/text/Printf.h"
#include "pcm/PcmFormat.h"
#include "pcm/structure/SubframeEdit.h"
#include "pcm/structure/WordContentsQuestion.h"
#include "vocabulary/PSubframeFields.h"

#include <algorithm>

namespace kavu {

namespace {

constexpr std::string_view kCounterTitle = "ID Counter";
constexpr int kNoCounterName = 361;
/// Values and frames have three digits, lengths and bits two.
constexpr int kMostValue = 999;
constexpr int kMostLength = 99;

/// A counter that a caller has named.
struct NamedCounter {
    PcmFormat& format;
    int index;

    [[nodiscard]] IdCounter& record() const {
        return format.idCounters[static_cast<std::size_t>(index)];
    }
};

/// Throws `NoDocument`, `NoFormat` and `NotFound`.
NamedCounter requireCounter(AutomationSession& session, const std::string& name) {
    auto& format = session.requireFormat();
    for (const auto& form : storedForms(name)) {
        if (const auto index = findIdCounter(format, form)) {
            return {format, *index};
        }
    }
    throwNotFound("ID counter", name);
}

template <typename Field>
std::int32_t numberOf(AutomationSession& session, const std::string& name, Field field,
                      std::string_view what) {
    return numberOfText(requireCounter(session, name).record().*field, what);
}

template <typename Field>
std::string textOf(AutomationSession& session, const std::string& name, Field field) {
    return shownText(requireCounter(session, name).record().*field);
}

/// One change of a counter without a window.
void change(AutomationSession& session, const NamedCounter& counter,
            const std::function<bool(AutomationTalk&, IdCounter&)>& work) {
    session.edit(0, kCounterTitle,
                 [&](AutomationTalk& talk) { return work(talk, counter.record()); });
}

template <typename Field>
void setNumber(AutomationSession& session, const NamedCounter& counter, Field field, int value) {
    change(session, counter, [&](AutomationTalk&, IdCounter& record) {
        record.*field = std::to_string(value);
        return true;
    });
}

/// A word that is in use takes no counter: what would be lost is not asked about here.
bool isFreeForCounter(const PcmFormat& format, AutomationTalk& talk, int fwp) {
    if (!canCreateAt(format, &talk, fwp)) {
        return false;
    }
    if (!lostToCounter(format, fwp).empty()) {
        format.context().messages.show(&talk, 231, title::kError, kErrorBox);
        return false;
    }
    return true;
}

/// The first word of a hidden subframe of the counter that holds a measurement, or -1.
int wordInUse(const PcmFormat& format, int counter) {
    const auto& subframes = format.idCounters[static_cast<std::size_t>(counter)].subframes;
    for (std::size_t i = 0; i < subframes.size(); ++i) {
        for (const int fwp : format.wordsOf({counter, static_cast<int>(i)})) {
            if (subframes[i].hidden && holdsAnything(format, fwp)) {
                return fwp;
            }
        }
    }
    return -1;
}

/// The limit of a counter's length: its word length, or that of its word where that is no number.
int mostCounterLength(const NamedCounter& counter) {
    const int length = counter.record().wordLength.number();
    return length > 0 ? length
                      : counter.format.wordLength(wordOfIdCounter(counter.format, counter.index));
}

}  // namespace

void AutomationCounters::CreateSFID(std::int64_t hWnd, std::int32_t fwp) {
    auto& format = session_.requireFormat();
    requireRange(fwp, 1, format.wordsPerMinorFrame - 1, "frame word position");
    session_.edit(hWnd, kCounterTitle, [&](AutomationTalk& talk) {
        return isFreeForCounter(format, talk, fwp) && clearForCounter(format, nullptr, fwp) &&
               createIdCounter(format, &talk, fwp).has_value();
    });
}

void AutomationCounters::DeleteSFID(std::int64_t hWnd, const std::string& name) {
    const auto counter = requireCounter(session_, name);
    session_.edit(hWnd, kCounterTitle, [&](AutomationTalk& talk) {
        if (const int fwp = wordInUse(counter.format, counter.index); fwp > 0) {
            session_.context().messages.show(&talk, 360, title::kUnableToDeleteIdCounter, kErrorBox,
                                             formatPrintf("Frame Word Position %d", fwp));
            return false;
        }
        return deleteIdCounter(counter.format, &talk,
                               wordOfIdCounter(counter.format, counter.index));
    });
}

void AutomationCounters::EditSFID(std::int64_t hWnd, const std::string& name) {
    const auto counter = requireCounter(session_, name);
    session_.editInWindow(kCounterTitle, [&](AutomationWindows& windows) {
        return windows.editCounter(hWnd, counter.index);
    });
}

std::int32_t AutomationCounters::GetNumberOfSFIDs() {
    return countIdCounters(session_.requireFormat());
}

CounterPlace AutomationCounters::GetSFIDInfo(std::int32_t sFIDNumber) {
    const auto& format = session_.requireFormat();
    requireRange(sFIDNumber, 1, countIdCounters(format), "number of the ID counter");
    int named = 0;
    const auto it = std::find_if(format.idCounters.begin(), format.idCounters.end(),
                                 [&](const IdCounter& counter) {
                                     named += counter.name.empty() ? 0 : 1;
                                     return named == sFIDNumber;
                                 });
    const auto index = static_cast<int>(it - format.idCounters.begin());
    return {shownText(it->name), wordOfIdCounter(format, index)};
}

std::string AutomationCounters::GetSFIDCountDirection(const std::string& name) {
    return textOf(session_, name, &IdCounter::countDirection);
}

void AutomationCounters::SetSFIDCountDirection(const std::string& name,
                                               const std::string& direction) {
    const auto counter = requireCounter(session_, name);
    const auto code = requireCode(p::choice::kCountDirections, counter.format.edition(), direction,
                                  "count direction");
    change(session_, counter, [&](AutomationTalk&, IdCounter& record) {
        record.countDirection = code;
        updateEndValue(record);
        return true;
    });
}

std::int32_t AutomationCounters::GetSFIDCounterLength(const std::string& name) {
    return numberOf(session_, name, &IdCounter::counterLength, "counter length");
}

void AutomationCounters::SetSFIDCounterLength(const std::string& name, std::int32_t length) {
    const auto counter = requireCounter(session_, name);
    requireRange(length, 1, kMostLength, "counter length");
    change(session_, counter, [&](AutomationTalk& talk, IdCounter& record) {
        if (const int most = mostCounterLength(counter); length > most) {
            session_.context().messages.show(&talk, 362, title::kIllegalValueEntered, kErrorBox,
                                             most);
            return false;
        }
        record.counterLength = std::to_string(length);
        return true;
    });
}

std::int32_t AutomationCounters::GetSFIDEndFrame(const std::string& name) {
    return numberOf(session_, name, &IdCounter::endFrame, "end frame");
}

void AutomationCounters::SetSFIDEndFrame(const std::string& name, std::int32_t value) {
    const auto counter = requireCounter(session_, name);
    requireRange(value, 0, kMostValue, "end frame");
    change(session_, counter, [&](AutomationTalk& talk, IdCounter& record) {
        return setEndFrame(counter.format, &talk, record, value);
    });
}

std::int32_t AutomationCounters::GetSFIDEndValue(const std::string& name) {
    return numberOf(session_, name, &IdCounter::endValue, "end value");
}

void AutomationCounters::SetSFIDEndValue(const std::string& name, std::int32_t value) {
    const auto counter = requireCounter(session_, name);
    requireRange(value, 0, kMostValue, "end value");
    setNumber(session_, counter, &IdCounter::endValue, value);
}

std::int32_t AutomationCounters::GetSFIDMSBStartBit(const std::string& name) {
    return numberOf(session_, name, &IdCounter::msbStartBit, "MSB start bit");
}

void AutomationCounters::SetSFIDMSBStartBit(const std::string& name, std::int32_t startBit) {
    const auto counter = requireCounter(session_, name);
    // What is below 1 has a message of its own.
    requireRange(std::max(startBit, 1), 1, kMostLength, "MSB start bit");
    change(session_, counter, [&](AutomationTalk& talk, IdCounter& record) {
        return setMsbStartBit(counter.format, &talk, record, startBit);
    });
}

void AutomationCounters::SetSFIDName(std::int64_t hWnd, const std::string& oldName,
                                     const std::string& newName) {
    const auto counter = requireCounter(session_, oldName);
    const auto former = counter.record().name.str();
    const auto stored = storedText(newName, former);
    if (stored == former) {
        return;
    }
    session_.edit(hWnd, kCounterTitle, [&](AutomationTalk& talk) {
        auto& format = counter.format;
        requireNewName(talk, session_.context().messages, stored, kNoCounterName);
        for (const auto& form : storedForms(newName)) {
            if (!checkIdCounterName(format, &talk, counter.index, form)) {
                return false;
            }
        }
        counter.record().name = stored;
        for (auto& definition : format.wordFrameDefinitions) {
            if (definition.idCounterName == former) {
                definition.idCounterName = stored;
            }
        }
        return true;
    });
}

std::int32_t AutomationCounters::GetSFIDStartFrame(const std::string& name) {
    return numberOf(session_, name, &IdCounter::startFrame, "start frame");
}

void AutomationCounters::SetSFIDStartFrame(const std::string& name, std::int32_t frame) {
    const auto counter = requireCounter(session_, name);
    requireRange(frame, 0, kMostValue, "start frame");
    change(session_, counter, [&](AutomationTalk& talk, IdCounter& record) {
        return setStartFrame(counter.format, &talk, record, frame);
    });
}

std::int32_t AutomationCounters::GetSFIDStartValue(const std::string& name) {
    return numberOf(session_, name, &IdCounter::initialValue, "start value");
}

void AutomationCounters::SetSFIDStartValue(const std::string& name, std::int32_t value) {
    const auto counter = requireCounter(session_, name);
    requireRange(value, 0, kMostValue, "start value");
    change(session_, counter, [&](AutomationTalk&, IdCounter& record) {
        record.initialValue = std::to_string(value);
        updateEndValue(record);
        return true;
    });
}

std::string AutomationCounters::GetSFIDTransferOrder(const std::string& name) {
    return textOf(session_, name, &IdCounter::transferOrder);
}

void AutomationCounters::SetSFIDTransferOrder(const std::string& name,
                                              const std::string& transferOrder) {
    const auto counter = requireCounter(session_, name);
    const auto code = requireCode(p::choice::kTransferOrders, counter.format.edition(),
                                  transferOrder, "transfer order");
    change(session_, counter, [&](AutomationTalk&, IdCounter& record) {
        record.transferOrder = code;
        return true;
    });
}

std::int32_t AutomationCounters::GetSFIDWordLength(const std::string& name) {
    return numberOf(session_, name, &IdCounter::wordLength, "word length");
}

void AutomationCounters::SetSFIDWordLength(const std::string& name, std::int32_t length) {
    const auto counter = requireCounter(session_, name);
    requireRange(length, 1, kMostLength, "word length");
    setNumber(session_, counter, &IdCounter::wordLength, length);
}

}  // namespace kavu
