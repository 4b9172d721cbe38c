#include "groups/MeasurementNames.h"

#include "core/FileIo.h"
#include "core/GroupFiles.h"
#include "core/Messages.h"
#include "core/ProfileSettings.h"
#include "core/Text.h"
#include "core/TmatsReader.h"
#include "core/WorkingStore.h"
#include "groups/DataSources.h"

#include <algorithm>
#include <set>

namespace kavu {

namespace {

constexpr unsigned kPollEvery = 64;  // commands

/// True for the field of a measurement's name: in D and B groups "MN-", in S groups those
/// of telemetry, header and sub-channel measurements as well.
bool namesMeasurement(char letter, std::string_view field) {
    if (startsWithIgnoreCase(field, "MN-")) {
        return true;
    }
    return letter == 'S' &&
           (startsWithIgnoreCase(field, "TMN-") || startsWithIgnoreCase(field, "HMN-") ||
            startsWithIgnoreCase(field, "SMN-"));
}

/// The value of a command that names a measurement, or empty.
std::string_view measurementName(char letter, std::string_view command) {
    const auto backslash = command.find('\\');
    const auto colon = command.find(':');
    if (backslash == std::string_view::npos || colon == std::string_view::npos ||
        colon < backslash ||
        !namesMeasurement(letter, command.substr(backslash + 1, colon - backslash - 1))) {
        return {};
    }
    return command.substr(colon + 1, command.size() - colon - 2);
}

}  // namespace

struct MeasurementFiles::Names {
    Names(DocumentContext& context, UserInterface* parent)
        : d(context, parent, 'D'), b(context, parent, 'B'), s(context, parent, 'S') {}
    GroupNames d;
    GroupNames b;
    GroupNames s;
};

MeasurementFiles::MeasurementFiles(DocumentContext& context, UserInterface* parent)
    : context_(context), names_(std::make_unique<Names>(context, parent)) {}

MeasurementFiles::~MeasurementFiles() = default;

bool MeasurementFiles::forEachName(UserInterface* parent, std::string_view link,
                                   const std::function<void(std::string_view)>& take) const {
    char letter = 'D';
    int index = names_->d.indexOf(link);
    if (index == 0) {
        letter = 'B';
        index = names_->b.indexOf(link);
    }
    if (index == 0) {
        letter = 'S';
        index = names_->s.indexOf(link);
    }
    if (index == 0) {
        return true;
    }
    ByteSource source;
    IoStatus status = source.open(context_.store.pathOf(groupFile(letter, index)));
    std::string command;
    for (unsigned count = 1; status.ok() && context_.reader.nextCommand(source, command); ++count) {
        const auto name = measurementName(letter, command);
        if (!name.empty()) {
            take(name);
        }
        if (count % kPollEvery == 0 && cancelRequested(parent)) {
            return false;
        }
    }
    status = status.ok() ? source.status() : status;
    if (!status.ok()) {
        showBox(parent,
                formatPrintf("Unable to read '%s'\n\nReason: %s", status.path(), status.reason()),
                "Error Reading TMATS File");
    }
    return status.ok();
}

bool MeasurementNames::streamMeasurementNames(UserInterface* parent, std::string_view link,
                                              std::vector<std::string>& names) const {
    names.clear();
    return MeasurementFiles(context_, parent)
        .forEachName(parent, link, [&names](std::string_view name) { names.emplace_back(name); });
}

bool MeasurementNames::checkForDuplicates(UserInterface* parent) {
    forget(std::nullopt);
    if (!checking_) {
        return true;
    }
    setStatusText(parent, "Gathering measurement names");
    const MeasurementFiles files(context_, parent);
    std::set<std::string> seen;
    bool repeated = false;
    int stream = 0;
    for (const auto& link : gatherDataLinks(context_, parent)) {
        if (!seen.insert(link).second) {
            continue;  // one stream, however often its link is named
        }
        ++stream;
        setStatusText(parent, formatPrintf("Reading measurement names (Datalink '%s')", link));
        const bool read = files.forEachName(
            parent, link, [&](std::string_view name) { add(std::string(name), stream, repeated); });
        if (!read || cancelRequested(parent)) {
            forget(std::nullopt);
            return false;
        }
    }
    if (repeated) {
        context_.messages.show(parent, 456, title::kError, kErrorBox);
        setChecking(false, false);
    }
    return true;
}

void MeasurementNames::add(std::string&& name, int stream, bool& repeated) {
    const auto [place, isNew] = streams_.try_emplace(std::move(name), stream);
    if (isNew || place->second == stream) {
        return;
    }
    repeated = true;
    auto& further = furtherStreams_[place->first];
    if (std::find(further.begin(), further.end(), stream) == further.end()) {
        further.push_back(stream);
    }
}

void MeasurementNames::setChecking(bool on, bool save) {
    checking_ = on;
    if (save) {
        context_.settings.writeInteger("CheckForDupMeasurements", on ? 1 : 0);
    }
}

int MeasurementNames::measurementInOtherStream(std::string_view name, int stream) const {
    const auto place = streams_.find(std::string(name));
    if (place == streams_.end()) {
        return 0;
    }
    if (place->second != stream) {
        return place->second;
    }
    const auto further = furtherStreams_.find(name);
    return further == furtherStreams_.end() ? 0 : further->second.front();
}

void MeasurementNames::forget(std::optional<std::string_view> name) {
    if (!name) {
        streams_.clear();
        furtherStreams_.clear();
        return;
    }
    streams_.erase(std::string(*name));
    if (const auto further = furtherStreams_.find(*name); further != furtherStreams_.end()) {
        furtherStreams_.erase(further);
    }
}

}  // namespace kavu
