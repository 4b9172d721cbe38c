#include "conversion/DefinitionEdit.h"

#include "conversion/ConversionFields.h"
#include "conversion/ConversionStore.h"
#include "conversion/EuVocabulary.h"
#include "conversion/SampleRate.h"
#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/command/CommandPath.h"
#include "core/document/Transaction.h"
#include "core/files/FileIo.h"
#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Clock.h"
#include "core/text/Text.h"
#include "vocabulary/CGroupFields.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>

namespace kavu {

namespace {

/// More than any list of a record has; a count from a file is not trusted beyond it.
constexpr int kMostRows = 9999;
constexpr int kNoOtherRecords = 435;
constexpr int kSaveDefaults = 437;

/// The rows of a list: those that its count states, and those behind it up to the `most` that the
/// list can have.
std::size_t rowCountOf(const ProfileFile& file, std::string_view section,
                       std::string_view countCode, std::span<const std::string_view> codes,
                       int most) {
    int rows = std::clamp(file.integer(section, countCode, 0), 0, kMostRows);
    for (const auto& key : most > rows ? file.keyNames(section) : std::vector<std::string>()) {
        const auto cut = cutAtRow(key, 0);
        const bool isOfList = cut && std::any_of(codes.begin(), codes.end(), [&](auto code) {
                                  return equalsIgnoreCase(codeHead(key), code);
                              });
        const auto row = isOfList ? clampedCount(cut->rest, kMostRows) : 0;
        rows = static_cast<int>(row) <= most ? std::max(rows, static_cast<int>(row)) : rows;
    }
    return static_cast<std::size_t>(rows);
}

std::string rowKey(std::string_view code, std::size_t row) {
    return std::string(code) + "-" + std::to_string(row + 1);
}

void put(ProfileFile& file, const std::string& section, const std::string& key, std::string value) {
    toStoredForm(value);
    if (value.empty()) {
        file.removeKey(section, key);
    } else {
        (void)file.setValue(section, key, value);
    }
}

/// Keys that describe the record itself and not its conversion.
bool staysWithRecord(std::string_view key) {
    return equalsIgnoreCase(key, recordkey::kTemplate) ||
           equalsIgnoreCase(key, recordkey::kChanged) || equalsIgnoreCase(key, kCommentCode);
}

}  // namespace

std::optional<DefinitionEdit> DefinitionEdit::open(DocumentContext& context, ConversionStore& store,
                                                   UserInterface* parent, const std::string& name) {
    bool wasTemplate = false;
    if (!store.openDefinitionForEdit(parent, name, wasTemplate)) {
        return std::nullopt;
    }
    return DefinitionEdit(context, store, store.locateDefinition(name).section, wasTemplate);
}

std::string DefinitionEdit::workingPath() const {
    return context_->store.pathOf(working::kData1);
}

bool DefinitionEdit::report(UserInterface* parent, const IoStatus& status,
                            std::string_view action) const {
    if (!status.ok()) {
        context_->messages.showFailure(parent, status, 313, title::kErrorReadingConversion,
                                       kErrorBox, action, status.path());
    }
    return status.ok();
}

std::string DefinitionEdit::value(std::string_view code, std::string_view otherwise) const {
    auto text = ProfileFile(workingPath()).value(name_, code, otherwise);
    fromStoredForm(text);
    return std::string(trimTrailingBlanks(text));
}

bool DefinitionEdit::setValues(UserInterface* parent, const Values& values) {
    ProfileFile file(workingPath());
    if (!report(parent, file.load(), "Read") || !file.containsExactly(name_)) {
        return false;
    }
    for (const auto& [code, text] : values) {
        put(file, name_, code, text);
    }
    return report(parent, file.flush(), "Write/Create");
}

std::vector<std::vector<std::string>> DefinitionEdit::rows(std::string_view countCode,
                                                           std::span<const std::string_view> codes,
                                                           int most) const {
    const ProfileFile file(workingPath());
    const auto count = rowCountOf(file, name_, countCode, codes, most);
    std::vector<std::vector<std::string>> rows;
    for (std::size_t i = 0; i < count; ++i) {
        std::vector<std::string> row;
        for (const auto code : codes) {
            row.push_back(file.value(name_, rowKey(code, i), ""));
            fromStoredForm(row.back());
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

bool DefinitionEdit::setRows(UserInterface* parent, std::string_view countCode,
                             std::span<const std::string_view> codes,
                             const std::vector<std::vector<std::string>>& rows, int most) {
    ProfileFile file(workingPath());
    if (!report(parent, file.load(), "Read") || !file.containsExactly(name_)) {
        return false;
    }
    const auto former = rowCountOf(file, name_, countCode, codes, most);
    (void)file.setValue(name_, countCode, std::to_string(rows.size()));
    for (std::size_t i = 0; i < std::max(former, rows.size()); ++i) {
        for (std::size_t column = 0; column < codes.size(); ++column) {
            const bool held = i < rows.size() && column < rows[i].size();
            put(file, name_, rowKey(codes[column], i), held ? rows[i][column] : std::string());
        }
    }
    return report(parent, file.flush(), "Write/Create");
}

ProfileFile DefinitionEdit::copy() const {
    ProfileFile file(workingPath());
    (void)file.load();
    return file;
}

int DefinitionEdit::edition() const {
    return context_->document.version;
}

std::string DefinitionEdit::comment() const {
    return store_->readEuComment(name_, true);
}

bool DefinitionEdit::setComment(UserInterface* parent, std::string text) {
    return store_->writeEuComment(parent, name_, std::move(text), true);
}

std::string releaseStamp(const DocumentContext& context) {
    return tmatsDateTime(context.clock.now(), context.document.version);
}

bool DefinitionEdit::stampRelease(UserInterface* parent, bool setByHand) {
    return setByHand || setValues(parent, {{std::string(c::kCrt.code), releaseStamp(*context_)}});
}

DefinitionEdit::Import DefinitionEdit::importValues(UserInterface* parent,
                                                    const std::string& source) {
    const auto place = store_->locateDefinition(source);
    if (!place.found) {
        return Import::NoSource;
    }
    const auto chunk = store_->chunk(place.chunk);
    IoStatus read = chunk->load();
    std::string comment;
    if (read.ok()) {
        comment = store_->readEuComment(place.section, false, &read);
    }
    ProfileFile file(workingPath());
    if (!report(parent, read, "Read") || !report(parent, file.load(), "Read") ||
        !file.containsExactly(name_)) {
        return Import::Failed;
    }
    const auto former = file.value(name_, kTypeCode, kNoType);
    for (const auto& key : file.keyNames(name_)) {
        if (!staysWithRecord(key)) {
            file.removeKey(name_, key);
        }
    }
    for (const auto& key : chunk->keyNames(place.section)) {
        if (!staysWithRecord(key)) {
            (void)file.setValue(name_, key, chunk->value(place.section, key, ""));
        }
    }
    const auto type = file.value(name_, kTypeCode, kNoType);
    if (!report(parent, file.flush(), "Write/Create") ||
        !store_->writeEuComment(parent, name_, std::move(comment), true) ||
        !store_->separatePairs(parent, name_, true)) {
        return Import::Failed;
    }
    context_->settings.set(setting::kLastCopied, source);
    return equalsIgnoreCase(former, type) ? Import::SameType : Import::OtherType;
}

bool DefinitionEdit::removeWorkingCopy(UserInterface* parent) const {
    const auto remove = [&](const std::string& path) {
        PathKind kind = PathKind::Missing;
        return report(parent, probePath(path, kind), "Read") &&
               (kind == PathKind::Missing || report(parent, deleteFile(path), "Delete"));
    };
    const bool copyGone = remove(workingPath());
    return remove(commentCopyPath(context_->store, name_)) && copyGone;
}

bool DefinitionEdit::store(UserInterface* parent) {
    const auto options = sampleRateOptions(context_->settings);
    Values values{{std::string(recordkey::kChanged), "1"}};
    if (options.check) {
        auto rate = value(c::kSr.code);
        trimSampleRate(rate, options);
        values.emplace_back(c::kSr.code, std::move(rate));
    }
    if (!inTransaction(*context_, parent, OperationId::EditConversion, [&] {
            return setValues(parent, values) && store_->commitDefinitionEdit(parent, name_);
        })) {
        return false;
    }
    wasTemplate_ = false;
    return removeWorkingCopy(parent);
}

bool DefinitionEdit::cancel(UserInterface* parent) {
    const bool gone = removeWorkingCopy(parent);
    if (!wasTemplate_) {
        return gone;
    }
    // The record was made only to be shown, and is deleted in the same way.
    Transaction transaction(*context_, OperationId::EditConversion);
    return store_->deleteDefinition(parent, name_) && transaction.commitUnasked().ok() && gone;
}

std::vector<std::string> importSources(DocumentContext& context, ConversionStore& store,
                                       UserInterface* parent, const std::string& name,
                                       std::string* preselected) {
    auto names = store.definitionNames(-1).value_or(std::vector<std::string>());
    std::erase_if(names, [&](const std::string& one) { return equalsIgnoreCase(one, name); });
    if (names.empty()) {
        context.messages.show(parent, kNoOtherRecords, title::kNote, kNoteBox);
        return names;
    }
    if (preselected != nullptr) {
        const auto last = context.settings.get(setting::kLastCopied);
        *preselected = std::find(names.begin(), names.end(), last) != names.end() ? last : "";
    }
    return names;
}

// --- Defaults ----------------------------------------------------------------------------

bool saveTypeDefaults(DocumentContext& context, UserInterface* parent, std::string_view format,
                      std::string_view type) {
    if (context.messages.show(parent, kSaveDefaults, title::kNote, kYesNoBox, eutext::kDefaultsOf,
                              eutext::kDefaultsNote) != Button::Yes) {
        return false;
    }
    context.settings.set(setting::kBinaryFormat, storedType(format));
    context.settings.set(setting::kConversionType, storedType(type));
    return true;
}

void saveLinkTypeDefault(DocumentContext& context, std::string_view linkType) {
    context.settings.set(setting::kConversionLinkType, storedType(linkType));
}

void saveClassificationDefault(DocumentContext& context, std::string_view classification) {
    context.settings.set(setting::kConversionClassification, storedClassification(classification));
}

void saveContactDefaults(DocumentContext& context, std::span<const std::string> contact) {
    static constexpr TextKey kKeys[] = {setting::kContactName, setting::kContactAgency,
                                        setting::kContactAddress, setting::kContactTelephone};
    for (std::size_t i = 0; i < std::size(kKeys) && i < contact.size(); ++i) {
        std::string value = contact[i];
        toStoredForm(value);
        context.settings.set(kKeys[i], value);
    }
}

// --- The list of all records -------------------------------------------------------------

std::vector<DefinitionRow> definitionRows(DocumentContext& context, ConversionStore& store,
                                          std::string_view filter) {
    std::vector<DefinitionRow> rows;
    const bool all = filter.empty() || filter == eutext::kAllMeasurements;
    for (const auto number : store.chunkNumbers()) {
        const auto chunk = store.chunk(number);
        for (const auto& section : chunk->sections()) {
            if (section.name().empty() || !section.hasKeys()) {
                continue;
            }
            auto type = typeText(shownType(*chunk, section.name(), context.document.version),
                                 context.document.version);
            if (all || type == filter) {
                rows.push_back({section.name(), std::move(type)});
            }
        }
    }
    return rows;
}

std::vector<std::string> definitionFilters(int edition) {
    std::vector<std::string> filters{std::string(eutext::kAllMeasurements)};
    for (const auto text : ConversionStore::conversionTypeList(edition)) {
        filters.emplace_back(text);
    }
    return filters;
}

bool deleteDefinitionRow(DocumentContext& context, ConversionStore& store, UserInterface* parent,
                         std::vector<DefinitionRow>& rows, std::size_t& selection) {
    if (selection >= rows.size() ||
        context.messages.show(parent, -message::kAreYouSure, title::kDeleteEntry, kYesNoBox) !=
            Button::Yes ||
        !inTransaction(context, parent, OperationId::DeleteConversion, [&] {
            return store.deleteDefinition(parent, rows[selection].measurement);
        })) {
        return false;
    }
    rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(selection));
    if (selection > 0 && selection == rows.size()) {
        --selection;
    }
    return true;
}

}  // namespace kavu
