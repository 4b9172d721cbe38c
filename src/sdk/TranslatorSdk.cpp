#include "sdk/TranslatorSdk.h"

#include "core/document/GroupFiles.h"
#include "core/document/OpenDocument.h"
#include "core/files/FileIo.h"
#include "core/text/Edition.h"
#include "core/text/Text.h"
#include "groups/Migration.h"
#include "sdk/SdkParts.h"
#include "vocabulary/PGroupFields.h"

#include <algorithm>
#include <new>
#include <utility>

namespace kavu {

int SdkLink::group(char letter) const {
    const auto place = kLinkLetters.find(letter);
    return place == std::string_view::npos ? 0 : groups[place];
}

TranslatorSdk::TranslatorSdk(const Environment& environment, const Clock& clock,
                             RandomSource& random, int instance)
    : instance_(instance),
      parts_(std::make_unique<SdkParts>(
          instance, [this](const std::string& text) { writeError(text); }, environment, clock,
          random)) {}

TranslatorSdk::~TranslatorSdk() {
    try {
        close();
    } catch (const std::bad_alloc&) {
        return;  // the working store goes with the next run
    }
}

// --- Open and close -----------------------------------------------------------------------------

bool TranslatorSdk::open(const std::string& path, UserInterface* progress) {
    if (isActive_) {
        writeError("ERROR: SDK already active.\n\n");
        return false;
    }
    errors_.clear();
    setStatusText(progress, "Parsing TMATS file");
    if (!canRead(path) || !isPlainFile(path)) {
        return refuse(progress,
                      formatPrintf("Unable to open '%s'. Please check TMATS pathname.", path),
                      "Unable To Open TMATS File");
    }
    parts_->talk.setWatcher(progress);
    if (!read(path, progress)) {
        freeAll();
        return refuse(progress, formatPrintf("Unable to parse TMATS '%s'", path),
                      "Unable To Parse TMATS File");
    }
    path_ = path;
    isActive_ = true;
    setStatusText(progress, "TMATS file parsed");
    return true;
}

bool TranslatorSdk::read(const std::string& path, UserInterface* progress) {
    try {
        return startStore(progress) && split(path, progress) && nameFiles() &&
               listStreams(progress);
    } catch (const std::bad_alloc&) {
        freeAll();
        writeError("ERROR: Unable to allocate memory for a session.\n\n");
        return false;
    }
}

bool TranslatorSdk::refuse(UserInterface* progress, const std::string& text,
                           const std::string& title) {
    writeError(text + "\n\n");
    showBox(progress, text, title);
    return false;
}

bool TranslatorSdk::startStore(UserInterface* progress) {
    auto& store = parts_->document.store;
    if (!store.active() && !store.activate(progress, kApplicationName, parts_->random)) {
        return false;
    }
    parts_->files.removeAll();
    return true;
}

bool TranslatorSdk::split(const std::string& path, UserInterface* progress) {
    auto& document = parts_->document;
    const ProgressScope window(progress, ProgressMode::WithCancel);
    const LoadScope scope(document.files);
    document.document.path = absolutePath(path);
    document.document.kind = DocumentKind::TmatsFile;
    const bool isSplit = splitIntoGroupFiles(document.context, &parts_->talk, path);
    setProgressBar(progress, -1);
    // What the session leaves if it is killed is nothing that could be recovered.
    (void)document.files.removeIfThere(working::kStoreRecord);
    return isSplit;
}

bool TranslatorSdk::nameFiles() {
    auto& document = parts_->document;
    for (const auto& kind : groupKinds()) {
        const int last = kind.indexed ? kMostGroupIndex : 0;
        for (int index = kind.indexed ? kLeastGroupIndex : 0; index <= last; ++index) {
            const auto status = parts_->files.link(groupFile(kind.letter, index),
                                                   parts_->files.groupName(kind.letter, index));
            if (!status.ok()) {
                reportUnreadable(status);
                return false;
            }
        }
    }
    auto status = parts_->files.link(working::kData1, parts_->files.conversionsName());
    if (status.ok()) {
        status = parts_->conversions.index(document.reader,
                                           parts_->files.pathOf(parts_->files.conversionsName()));
    }
    if (!status.ok()) {
        reportUnreadable(status);
    }
    return status.ok();
}

bool TranslatorSdk::listStreams(UserInterface* progress) {
    auto& context = parts_->document.context;
    auto* const talk = &parts_->talk;
    IoStatus failure;
    int version = kLatestEdition;
    (void)detectVersions(context, talk, version, &failure);
    context.document.version = version;
    std::vector<std::string> named;
    if (!failure.ok() || !readDataSources(context, talk, sources_) ||
        !gatherDataLinks(context, talk, named)) {
        return false;
    }
    for (const char letter : std::string_view("PDBASTRMV")) {
        if (!parts_->names.try_emplace(letter, context, talk, letter).first->second.complete()) {
            return false;
        }
    }
    for (auto& name : named) {
        addLink(std::move(name), true);
    }
    for (const char letter : std::string_view("PBAS")) {
        for (const auto& entry : parts_->names.at(letter).entries()) {
            addLink(entry.name, false);
        }
    }
    for (auto& link : links_) {
        setStatusText(progress,
                      formatPrintf("...Gathering PCM Stream Info (Stream %d)", link.number));
        yieldToInterface(progress);
        if (cancelRequested(progress)) {
            return false;
        }
        if (const auto group = readGroup(parts_->document.reader, 'P', link.group('P'))) {
            link.type = group->value(p::kTf.code).value_or(std::string_view());
        }
    }
    return true;
}

void TranslatorSdk::addLink(std::string name, bool isNamed) {
    if (!parts_->linkPlaces.try_emplace(name, links_.size()).second) {
        return;
    }
    SdkLink link;
    link.number = static_cast<int>(links_.size()) + 1;
    link.isNamed = isNamed;
    for (std::size_t i = 0; i < SdkLink::kLinkLetters.size(); ++i) {
        link.groups[i] = parts_->names.at(SdkLink::kLinkLetters[i]).find(name);
    }
    link.name = std::move(name);
    links_.push_back(std::move(link));
}

void TranslatorSdk::close() {
    freeAll();
    isActive_ = false;
    path_.clear();
}

void TranslatorSdk::freeAll() {
    auto& document = parts_->document;
    sources_.clear();
    links_.clear();
    stream_ = 0;
    measurements_.clear();
    measurementNames_.clear();
    foldedMeasurementNames_.clear();
    parts_->names.clear();
    parts_->linkPlaces.clear();
    parts_->conversions.clear();
    if (document.store.active()) {
        parts_->format.closeFormat();
        parts_->files.removeAll();
        document.store.deactivate(nullptr);
    }
    parts_->talk.setWatcher(nullptr);
    document.document = {};
}

int TranslatorSdk::version() const {
    return parts_->document.document.version;
}

// --- Links and groups ---------------------------------------------------------------------------

const SdkLink* TranslatorSdk::findLink(std::string_view name) const {
    const auto found = parts_->linkPlaces.find(name);
    return found == parts_->linkPlaces.end() ? nullptr : &links_[found->second];
}

std::optional<SdkGroup> TranslatorSdk::openGroup(char letter, std::int64_t number) {
    return readGroup(parts_->reader, letter, number);
}

std::optional<SdkGroup> TranslatorSdk::readGroup(TmatsReader& reader, char letter,
                                                 std::int64_t number) {
    const bool isSingle = letter == 'G' || letter == 'H';
    if (!parts_->document.store.active() || (!isSingle && number < kLeastGroupIndex)) {
        return std::nullopt;
    }
    CommandIndex commands;
    const auto name = parts_->files.groupName(letter, isSingle ? 0 : number);
    if (const auto status = commands.readFile(reader, parts_->files.pathOf(name)); !status.ok()) {
        if (!isMissing(status)) {
            reportUnreadable(status);
        }
        return std::nullopt;
    }
    return SdkGroup(letter, isSingle ? 0 : number, std::move(commands));
}

std::optional<SdkGroup> TranslatorSdk::openGroup(char letter, std::string_view name) {
    const auto found = parts_->names.find(letter);
    return found == parts_->names.end() ? std::nullopt
                                        : openGroup(letter, found->second.find(name));
}

std::vector<int> TranslatorSdk::groupNumbers(char letter) const {
    std::vector<int> numbers;
    const auto found = parts_->names.find(letter);
    if (found != parts_->names.end()) {
        numbers = found->second.nameless();
        for (const auto& entry : found->second.entries()) {
            numbers.push_back(entry.index);
        }
        std::sort(numbers.begin(), numbers.end());
    }
    return numbers;
}

// --- Conversion records -------------------------------------------------------------------------

std::size_t TranslatorSdk::conversionCount() const {
    return parts_->conversions.size();
}
std::int64_t TranslatorSdk::conversionNumber(std::size_t place) const {
    return parts_->conversions.number(place);
}
const std::string& TranslatorSdk::conversionName(std::size_t place) const {
    return parts_->conversions.name(place);
}
std::optional<std::size_t> TranslatorSdk::findConversion(std::int64_t number) const {
    return parts_->conversions.findNumber(number);
}
std::optional<std::size_t> TranslatorSdk::findConversion(const std::string& name) const {
    return parts_->conversions.findName(name);
}

std::optional<SdkGroup> TranslatorSdk::openConversion(std::size_t place) {
    CommandIndex commands;
    if (const auto status = parts_->conversions.read(parts_->reader, place, commands);
        !status.ok()) {
        reportUnreadable(status);
        return std::nullopt;
    }
    return SdkGroup('C', parts_->conversions.number(place), std::move(commands));
}

// --- Texts --------------------------------------------------------------------------------------

void TranslatorSdk::addSubstitution(std::string_view from, std::string_view to) {
    if (!from.empty()) {
        substitutions_.emplace_back(from, to);
        parts_->reader.addSubstitution(from, to);
    }
}

void TranslatorSdk::clearSubstitutions() {
    substitutions_.clear();
    parts_->reader.clearSubstitutions();
}

std::string TranslatorSdk::substituted(std::string_view text) const {
    std::string changed(text);
    for (const auto& [from, to] : substitutions_) {
        changed = replaceAll(changed, from, to);
    }
    return changed;
}

void TranslatorSdk::writeError(std::string text) {
    if (parts_->document.store.active()) {
        (void)parts_->files.appendError(text);
    }
    errors_.push_back(std::move(text));
}

void TranslatorSdk::reportUnreadable(const IoStatus& status) {
    writeError(formatPrintf("ERROR: Unable to read '%s': %s\n\n", status.path(), status.reason()));
}

std::string TranslatorSdk::errorPath() const {
    return parts_->files.pathOf(parts_->files.errorName());
}

}  // namespace kavu
