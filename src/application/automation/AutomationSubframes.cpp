#include "application/automation/AutomationSubframes.h"

#include "application/automation/AutomationSession.h"
#include "application/automation/AutomationValues.h"
#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "core/text/Printf.h"
#include "pcm/PcmFormat.h"
#include "pcm/structure/SubframeEdit.h"
#include "vocabulary/SubframeCodes.h"

#include <algorithm>

namespace kavu {

namespace {

constexpr std::string_view kSubframeTitle = "Subframe";
constexpr int kNoSubframeName = 353;

/// A subframe that a caller has named.
struct NamedSubframe {
    PcmFormat& format;
    SubframeRef ref;

    [[nodiscard]] const Subframe& record() const { return *format.subframe(ref); }
    [[nodiscard]] int firstWord() const { return format.wordsOf(ref).front(); }
    [[nodiscard]] const IdCounter& counter() const {
        return format.idCounters[static_cast<std::size_t>(ref.counter)];
    }
};

/// Throws `NoDocument`, `NoFormat` and `NotFound`; the latter for hidden ones, too.
NamedSubframe requireSubframe(AutomationSession& session, const std::string& name) {
    auto& format = session.requireFormat();
    for (const auto& form : storedForms(name)) {
        const auto ref = form.empty() ? std::nullopt : format.findSubframe(form);
        const auto* const record = ref ? format.subframe(*ref) : nullptr;
        if (record != nullptr && record->name.view() == form && !record->hidden &&
            !format.wordsOf(*ref).empty()) {
            return {format, *ref};
        }
    }
    throwNotFound("subframe", name);
}

/// Stores a changed record under the rules of the subframe's dialog.
void save(AutomationSession& session, std::int64_t hWnd, const NamedSubframe& subframe,
          const Subframe& record) {
    session.edit(hWnd, kSubframeTitle, [&](AutomationTalk& talk) {
        const auto words = subframe.format.wordsOf(subframe.ref);
        const Subframe before = subframe.record();
        return saveSubframe(subframe.format, &talk, words.front(), record, before, words);
    });
}

/// What `CreateSubframe` was asked for.
struct Request {
    int fwp;
    std::string name;
    int depth;
    int locations;
    int interval;
};

template <typename... Args>
bool refuse(const PcmFormat& format, AutomationTalk& talk, MessageFor<Args...> id,
            MessageTitle titleId, const Args&... args) {
    format.context().messages.show(&talk, id, titleId, kErrorBox, args...);
    return false;
}

bool checkPlaces(const PcmFormat& format, AutomationTalk& talk, const Request& request) {
    if (request.locations < 1 || request.locations > kMostSupercomLocations) {
        return refuse(format, talk, 160, title::kInvalidSupercomLocations, 1,
                      kMostSupercomLocations);
    }
    const bool hasInterval = request.locations > 1;
    if (request.interval < (hasInterval ? 1 : 0) ||
        (hasInterval && request.interval > kMostSubframeInterval)) {
        return refuse(format, talk, 160, title::kInvalidInterval, 1, kMostSubframeInterval);
    }
    for (int i = 0; i < request.locations; ++i) {
        if (!canCreateAt(format, &talk, request.fwp + i * request.interval)) {
            return false;
        }
    }
    return true;
}

/// The rules that the dialog of a subframe checks, before one is made.
bool checkRequest(const PcmFormat& format, AutomationTalk& talk, const Request& request) {
    if (format.implicitSubframes || format.edition() >= kHiddenSubframesEdition) {
        return refuse(format, talk, 233, title::kNote);
    }
    if (!checkPlaces(format, talk, request)) {
        return false;
    }
    const auto counter = std::find_if(format.idCounters.begin(), format.idCounters.end(),
                                      [](const IdCounter& record) { return !record.name.empty(); });
    if (counter == format.idCounters.end()) {
        return refuse(format, talk, 355, title::kError);
    }
    for (const auto& form : storedForms(request.name)) {
        if (!form.empty() && !checkSubframeName(format, &talk, {}, form)) {
            return false;
        }
    }
    return request.depth < 1 ||
           checkSubframeDepth(format, &talk, static_cast<int>(counter - format.idCounters.begin()),
                              request.depth);
}

}  // namespace

void AutomationSubframes::CreateSubframe(std::int64_t hWnd, std::int32_t fwp,
                                         const std::string& name, std::int32_t depth,
                                         std::int32_t numberOfLocs, std::int32_t interval) {
    auto& format = session_.requireFormat();
    requireRange(fwp, 1, format.wordsPerMinorFrame - 1, "frame word position");
    session_.edit(hWnd, kSubframeTitle, [&](AutomationTalk& talk) {
        if (!name.empty()) {
            requireNewName(talk, session_.context().messages, name, kNoSubframeName);
        }
        if (!checkRequest(format, talk, {fwp, name, depth, numberOfLocs, interval})) {
            return false;
        }
        SubframeRequest request;
        request.fwp = fwp;
        if (!name.empty()) {
            request.name = name;
        }
        request.depth = depth;
        request.locations = numberOfLocs;
        request.interval = numberOfLocs == 1 ? 0 : interval;
        return createSubframe(format, &talk, request);
    });
}

void AutomationSubframes::DeleteSubframe(std::int64_t hWnd, const std::string& name) {
    const auto subframe = requireSubframe(session_, name);
    session_.edit(hWnd, kSubframeTitle, [&](AutomationTalk& talk) {
        return deleteSubframe(subframe.format, &talk, subframe.firstWord(), true);
    });
}

void AutomationSubframes::EditSubframe(std::int64_t hWnd, const std::string& name) {
    const auto subframe = requireSubframe(session_, name);
    session_.editInWindow(kSubframeTitle, [&](AutomationWindows& windows) {
        return windows.editSubframe(hWnd, subframe.ref.counter, subframe.ref.index);
    });
}

std::int32_t AutomationSubframes::GetSubframeDepth(const std::string& name) {
    return numberOfText(requireSubframe(session_, name).record().depth, "depth");
}

void AutomationSubframes::SetSubframeDepth(std::int64_t hWnd, const std::string& name,
                                           std::int32_t depth) {
    const auto subframe = requireSubframe(session_, name);
    auto record = subframe.record();
    if (record.depth.view() == std::to_string(depth)) {
        return;
    }
    record.depth = std::to_string(std::clamp(depth, 0, 999));
    save(session_, hWnd, subframe, record);
}

std::string AutomationSubframes::GetSubframeIDCounter(const std::string& sfName) {
    return shownText(requireSubframe(session_, sfName).counter().name);
}

void AutomationSubframes::SetSubframeIDCounter(std::int64_t hWnd, const std::string& sfName,
                                               const std::string& iDName) {
    const auto subframe = requireSubframe(session_, sfName);
    auto& format = subframe.format;
    std::optional<int> counter;
    for (const auto& form : storedForms(iDName)) {
        counter = counter ? counter : findIdCounter(format, form);
    }
    if (!counter) {
        throwNotFound("ID counter", iDName);
    }
    if (*counter == subframe.ref.counter) {
        return;
    }
    session_.edit(hWnd, kSubframeTitle, [&](AutomationTalk& talk) {
        return checkSubframeDepth(format, &talk, *counter, subframe.record().depth.number()) &&
               getSubframeSlot(format, &talk, *counter) &&
               moveSubframeToCounter(format, subframe.firstWord(), Subframe(subframe.record()),
                                     *counter);
    });
}

SubframePlaces AutomationSubframes::GetSubframeLocations(const std::string& name) {
    const auto subframe = requireSubframe(session_, name);
    const auto& record = subframe.record();
    SubframePlaces places{subframe.firstWord(), 1, 0};
    if (record.isSupercommutated()) {
        places.NumberOfLocs = numberOfText(record.supercommutated, "number of locations");
        places.Interval = record.locationMode == kFirstAndInterval
                              ? numberOfText(record.interval, "interval")
                              : 0;
    }
    return places;
}

void AutomationSubframes::SetSubframeLocations(std::int64_t hWnd, const std::string& name,
                                               std::int32_t numberOfLocs, std::int32_t interval) {
    const auto subframe = requireSubframe(session_, name);
    auto record = subframe.record();
    const bool isSingle = numberOfLocs == 1;
    // A number that does not fit into the field is none that it can have.
    const auto fitting = [](int number, int most) {
        return std::to_string(number < 0 || number > most ? 0 : number);
    };
    record.supercommutated =
        isSingle ? std::string(kNotSupercommutated) : fitting(numberOfLocs, kMostSupercomLocations);
    record.locationMode = isSingle ? kNoLocationMode : kFirstAndInterval;
    record.interval = isSingle ? "0" : fitting(interval, kMostSubframeInterval);
    const auto& now = subframe.record();
    const bool isSame = isSingle ? !now.isSupercommutated()
                                 : now.supercommutated == record.supercommutated &&
                                       now.locationMode == record.locationMode &&
                                       now.interval == record.interval;
    if (!isSame) {
        save(session_, hWnd, subframe, record);
    }
}

std::string AutomationSubframes::GetSubframeName(std::int32_t fwp) {
    const auto& format = session_.requireFormat();
    requireRange(fwp, 1, format.wordsPerMinorFrame - 1, "frame word position");
    const auto* const record = format.subframeOfWord(fwp);
    if (record == nullptr || record->hidden) {
        throw AutomationError(AutomationFault::NotFound,
                              formatPrintf("There is no subframe at word %d.", fwp));
    }
    return shownText(record->name);
}

void AutomationSubframes::SetSubframeName(std::int64_t hWnd, const std::string& oldName,
                                          const std::string& newName) {
    const auto subframe = requireSubframe(session_, oldName);
    const auto former = subframe.record().name.str();
    const auto stored = storedText(newName, former);
    if (stored == former) {
        return;
    }
    session_.edit(hWnd, kSubframeTitle, [&](AutomationTalk& talk) {
        auto& format = subframe.format;
        requireNewName(talk, session_.context().messages, stored, kNoSubframeName);
        for (const auto& form : storedForms(newName)) {
            if (!checkSubframeName(format, &talk, former, form)) {
                return false;
            }
        }
        format.idCounters[static_cast<std::size_t>(subframe.ref.counter)]
            .subframes[static_cast<std::size_t>(subframe.ref.index)]
            .name = stored;
        format.subframesChanged();
        return true;
    });
}

}  // namespace kavu
