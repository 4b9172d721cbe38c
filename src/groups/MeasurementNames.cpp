#include "groups/MeasurementNames.h"

#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/DocumentHistory.h"
#include "core/document/GroupFiles.h"
#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"
#include "groups/DataSources.h"
#include "vocabulary/References.h"

#include <algorithm>

namespace kavu {

StreamFiles::StreamFiles(DocumentContext& context, UserInterface* parent)
    : context_(context),
      measurements_(context, parent, 'D'),
      buses_(context, parent, 'B'),
      messages_(context, parent, 'S') {}

bool StreamFiles::complete() const {
    return measurements_.complete() && buses_.complete() && messages_.complete();
}

bool StreamFiles::readNames(UserInterface* parent, std::string_view link,
                            const std::function<void(std::string_view)>& take) const {
    char letter = 'D';
    int index = measurements_.find(link);
    if (index == 0) {
        letter = 'B';
        index = buses_.find(link);
    }
    if (index == 0) {
        letter = 'S';
        index = messages_.find(link);
    }
    if (index == 0) {
        return true;
    }
    bool cancelled = false;
    unsigned count = 0;
    const auto status =
        forEachCommand(context_.reader, context_.store.pathOf(groupFile(letter, index)),
                       [&](std::string_view command) {
                           if (mayRefer(letter, afterHead(command))) {
                               const auto view = viewCommand(command);
                               if (refersTo(letter, view.field) == Refers::MeasurementName &&
                                   !view.value.empty()) {
                                   take(view.value);
                               }
                           }
                           if (++count % kPollEvery == 0) {
                               yieldToInterface(parent);
                               cancelled = cancelRequested(parent);
                           }
                           return !cancelled;
                       });
    if (!status.ok()) {
        reportUnableToRead(parent, status);
    }
    return status.ok() && !cancelled;
}

MeasurementNames::MeasurementNames(DocumentContext& context)
    : context_(context), checking_(context.settings.get(setting::kCheckDuplicates)) {
    context_.history.addListener(*this);
}

MeasurementNames::~MeasurementNames() {
    context_.history.removeListener(*this);
}

void MeasurementNames::documentChanged(const DocumentChange& change) {
    if (change.kind == DocumentChange::Undone || change.kind == DocumentChange::Redone) {
        checkForDuplicates(nullptr);
    } else if (change.kind == DocumentChange::Closed) {
        forget(std::nullopt);
    }
}

bool MeasurementNames::checkForDuplicates(UserInterface* parent) {
    setStatusText(parent, "Gathering measurement names");
    streams_.clear();
    forgotten_.clear();
    std::vector<std::string> links;
    bool complete = gatherDataLinks(context_, parent, links);
    bool repeated = false;
    if (complete) {
        const StreamFiles files(context_, parent);
        complete = files.complete();
        for (std::size_t i = 0; complete && i < links.size(); ++i) {
            setStatusText(parent,
                          formatPrintf("Reading measurement names (Datalink '%s')", links[i]));
            complete = !cancelRequested(parent) &&
                       files.readNames(parent, links[i], [&](std::string_view name) {
                           repeated = add(name, static_cast<int>(i) + 1) || repeated;
                       });
        }
    }
    setStatusText(parent, {});
    if (!complete) {
        streams_.clear();
        return false;
    }
    if (repeated && checking_) {
        context_.messages.show(parent, 456, title::kError, kErrorBox);
        setChecking(false, false);
    }
    return true;
}

void MeasurementNames::setChecking(bool on, bool save) {
    checking_ = on;
    if (save) {
        context_.settings.set(setting::kCheckDuplicates, on);
    }
}

bool MeasurementNames::measurementInOtherStream(std::string_view name, int stream) const {
    return otherStream(name, stream).has_value();
}

std::optional<int> MeasurementNames::otherStream(std::string_view name, int stream) const {
    const auto it = streams_.find(name);
    if (it == streams_.end()) {
        return std::nullopt;
    }
    if (it->second.first != stream) {
        return it->second.first;
    }
    return it->second.others.empty() ? std::nullopt : std::optional(it->second.others.front());
}

std::optional<std::string> MeasurementNames::spelled(std::string_view name) const {
    if (streams_.find(name) != streams_.end()) {
        return std::string(name);
    }
    const auto it = std::find_if(streams_.begin(), streams_.end(), [name](const auto& entry) {
        return equalsIgnoreCase(entry.first, name);
    });
    return it == streams_.end() ? std::nullopt : std::optional(it->first);
}

void MeasurementNames::forget(std::optional<std::string_view> name) {
    if (!name) {
        streams_.clear();
        forgotten_.clear();
    } else if (const auto it = streams_.find(*name); it != streams_.end()) {
        forgotten_.emplace_back(it->first, std::move(it->second));
        streams_.erase(it);
    }
}

std::vector<std::string> MeasurementNames::forgotten(std::size_t from) const {
    std::vector<std::string> names;
    for (std::size_t i = from; i < forgotten_.size(); ++i) {
        names.push_back(forgotten_[i].first);
    }
    return names;
}

void MeasurementNames::recall(std::size_t count) {
    while (forgotten_.size() > count) {
        auto& [name, streams] = forgotten_.back();
        streams_.insert_or_assign(std::move(name), std::move(streams));
        forgotten_.pop_back();
    }
}

bool MeasurementNames::streamMeasurementNames(UserInterface* parent, std::string_view link,
                                              std::vector<std::string>& names) const {
    const StreamFiles files(context_, parent);
    return files.complete() &&
           files.readNames(parent, link, [&](std::string_view name) { names.emplace_back(name); });
}

std::vector<std::string> MeasurementNames::names() const {
    std::vector<std::string> all;
    all.reserve(streams_.size());
    for (const auto& entry : streams_) {
        all.push_back(entry.first);
    }
    std::sort(all.begin(), all.end());
    return all;
}

bool MeasurementNames::add(std::string_view name, int stream) {
    const auto it = streams_.find(name);
    if (it == streams_.end()) {
        streams_.emplace(name, Streams{stream, {}});
        return false;
    }
    auto& streams = it->second;
    // Streams are added in order: one that is there already is the last.
    if (streams.others.empty() ? streams.first != stream : streams.others.back() != stream) {
        streams.others.push_back(stream);
    }
    return !streams.others.empty();
}

}  // namespace kavu
