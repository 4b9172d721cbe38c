#include "groups/ConversionMigration.h"

#include "conversion/ConversionFields.h"
#include "conversion/ConversionSections.h"
#include "core/TmatsDocument.h"
#include "core/files/ProfileFile.h"
#include "core/talk/Messages.h"
#include "core/talk/UserInterface.h"
#include "core/text/Clock.h"
#include "core/text/Text.h"
#include "groups/DateForms.h"
#include "vocabulary/CGroupFields.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace kavu {

namespace {

/// A change of one key: of one old value, or of any if that is empty; without a new value
/// the key is removed.
struct KeyRule {
    std::string_view key;
    std::string_view oldValue = {};
    std::optional<std::string_view> newValue = std::nullopt;
};

constexpr auto kKeysTo99 = std::to_array<KeyRule>({{c::kTrd4.code, "OTH", "O"}});

constexpr auto kKeysTo96 = std::to_array<KeyRule>({
    {c::kTrd4.code, "O", "OTH"},
    {"MNA"},
    {"MN\\N"},
    {c::kBfm.code, "FPT", "OTH"},
    {c::kMot5.code},
    {c::kMot6.code},
    {c::kDct.code, "PTM"},
    {c::kDct.code, "BTM"},
    {c::kDct.code, "VOI"},
    {c::kDct.code, "VID"},
    {c::kDpN.code},
    {c::kDpcN.code},
    {"PTM"},
    {"BTM"},
});

constexpr auto kKeysWithout00 = std::to_array<KeyRule>({
    {c::kFpf.code},
    {c::kBfm.code, "BCD", "OTH"},
    {c::kBfm.code, "SIM", "SIG"},
});

constexpr auto kMatrixKeys = std::to_array<std::string_view>({"MA1", "MA2", "MA3"});
constexpr std::size_t kVoiceEncodingLimit = 4;
constexpr std::size_t kLongestShownValue = 80;

/// One record that is being changed.
class Record {
  public:
    Record(ProfileFile& chunk, std::string_view name) : chunk_(chunk), name_(name) {}

    [[nodiscard]] std::string get(std::string_view key) const {
        return chunk_.value(name_, key).value_or(std::string());
    }
    void set(std::string_view key, std::string_view value) {
        chunk_.setValue(name_, key, value);
        changed_ = true;
    }
    void remove(std::string_view key) {
        if (chunk_.value(name_, key)) {
            chunk_.removeKey(name_, key);
            changed_ = true;
        }
    }
    [[nodiscard]] std::vector<std::string> keys() const { return chunk_.keyNames(name_); }
    [[nodiscard]] const std::string& name() const { return name_; }
    [[nodiscard]] bool changed() const { return changed_; }

  private:
    ProfileFile& chunk_;
    std::string name_;
    bool changed_ = false;
};

void applyKeyRules(Record& record, std::span<const KeyRule> rules) {
    for (const auto& rule : rules) {
        if (!rule.oldValue.empty() && !equalsIgnoreCase(record.get(rule.key), rule.oldValue)) {
            continue;
        }
        if (rule.newValue) {
            record.set(rule.key, *rule.newValue);
        } else {
            record.remove(rule.key);
        }
    }
}

void convertRecordDate(DocumentContext& context, UserInterface* parent, Record& record,
                       int sourceYear) {
    const auto text = record.get(c::kTrd5.code);
    const auto date = convertDate(text, sourceYear, context.clock.now().year);
    if (!date) {
        return;
    }
    record.set(c::kTrd5.code, date->text);
    if (date->doubtful) {
        reportDoubtfulDate(context, parent, "TRD5 of measurement " + record.name(), text,
                           date->text);
    }
}

/// Voice and video had no conversion types of their own in 1996.
void setMediaType(Record& record) {
    const auto type = record.get(c::kDct.code);
    if (!type.empty() && !equalsIgnoreCase(type, "NON")) {
        return;
    }
    if (!record.get(c::kVoiE.code).empty() || !record.get(c::kVoiD.code).empty()) {
        record.set(c::kDct.code, "VOI");
    } else if (!record.get(c::kVidE.code).empty() || !record.get(c::kVidD.code).empty()) {
        record.set(c::kDct.code, "VID");
    }
}

void cutVoiceEncoding(Record& record) {
    const auto encoding = record.get(c::kVoiE.code);
    if (encoding.empty()) {
        return;
    }
    const auto cut = encoding.substr(0, kVoiceEncodingLimit);
    if (!equalsIgnoreCase(cut, "CVSD") && !equalsIgnoreCase(cut, "OTHR")) {
        record.remove(c::kVoiE.code);
    } else if (cut != encoding) {
        record.set(c::kVoiE.code, cut);
    }
}

void moveMatrixToRows(Record& record) {
    bool any = false;
    for (const auto key : kMatrixKeys) {
        if (const auto value = record.get(key); !value.empty()) {
            record.set(std::string(key) + "-1", value);
            any = true;
        }
        record.remove(key);
    }
    if (any) {
        record.set("MA\\N", "1");
    }
}

void moveMatrixFromRows(Record& record) {
    for (const auto key : kMatrixKeys) {
        const auto row = std::string(key) + "-1";
        if (const auto value = record.get(row); !value.empty()) {
            record.set(key, value);
        }
        record.remove(row);
    }
}

/// Removes what has list indices and does not exist in edition 1996: the second and later
/// rows of the calibration matrix, and the constants of derived parameters.
void removeRows(Record& record) {
    for (const auto& key : record.keys()) {
        const bool constant = startsWithIgnoreCase(key, "DPC-");
        const bool matrix =
            std::any_of(kMatrixKeys.begin(), kMatrixKeys.end(), [&key](std::string_view beginning) {
                return startsWithIgnoreCase(key, std::string(beginning) + "-") &&
                       leadingInteger(std::string_view(key).substr(beginning.size() + 1)) >= 2;
            });
        if (constant || matrix) {
            record.remove(key);
        }
    }
}

/// While a document is read its values have the limits of its own edition; now those of the target
/// hold. `number` is that of the record in the group.
void cutToLimits(DocumentContext& context, UserInterface* parent, Record& record, long number) {
    for (const auto& key : record.keys()) {
        const auto limit = conversionLimit(key, context.document.version);
        const auto value = record.get(key);
        if (limit > 0 && value.size() > static_cast<std::size_t>(limit)) {
            const auto shown = cutToBytes(value, kLongestShownValue);
            context.messages.log(
                parent, 315, title::kErrorReadingConversion, record.name(), number, key,
                std::string(shown) + (shown.size() < value.size() ? "..." : ""), limit);
            record.set(key, cutToBytes(value, static_cast<std::size_t>(limit)));
        }
    }
}

void changeRecord(DocumentContext& context, UserInterface* parent, Record& record,
                  RecordChange change) {
    switch (change) {
        case RecordChange::To99:
            applyKeyRules(record, kKeysTo99);
            convertRecordDate(context, parent, record, 1996);
            moveMatrixToRows(record);
            cutVoiceEncoding(record);
            setMediaType(record);
            break;
        case RecordChange::To96:
            applyKeyRules(record, kKeysTo96);
            convertRecordDate(context, parent, record, 1999);
            moveMatrixFromRows(record);
            removeRows(record);
            break;
        case RecordChange::Without00:
            applyKeyRules(record, kKeysWithout00);
            break;
    }
}

}  // namespace

bool migrateRecords(DocumentContext& context, ConversionStore& conversions, UserInterface* parent,
                    RecordChange change, IoStatus& status) {
    bool changed = false;
    long number = 0;
    status = forEachRecord(context, conversions, [&](ProfileFile& chunk, std::string_view name) {
        if (cancelRequested(parent)) {
            return false;
        }
        if (!name.empty()) {
            ++number;
            Record record(chunk, name);
            changeRecord(context, parent, record, change);
            if (change != RecordChange::Without00) {
                cutToLimits(context, parent, record, number);
            }
            if (record.changed() && record.keys().empty()) {
                // A section without a key is no record: it would be listed nowhere, and another one
                // of its name could be made.
                record.set(kNameCode, name);
            }
            changed = changed || record.changed();
        }
        return true;
    });
    return changed;
}

}  // namespace kavu
