#include "conversion/DefinitionSheet.h"

#include "conversion/ConversionFields.h"
#include "conversion/DefinitionEdit.h"
#include "core/text/Text.h"
#include "vocabulary/CGroupFields.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>
#include <array>
#include <utility>

namespace kavu {

namespace {

constexpr int kUntypedEdition = 1996;
constexpr auto kFitFields = std::to_array<std::string_view>(
    {c::kMot1.code, c::kMot2.code, c::kMot3.code, c::kMot4.code, c::kBfm.code, c::kMn3.code});

std::vector<std::string_view> codesOf(const EuList& list) {
    std::vector<std::string_view> codes;
    for (const auto& column : list.columns) {
        codes.push_back(column.code);
    }
    return codes;
}

std::string fieldOf(const ProfileFile& file, std::string_view name, std::string_view code,
                    std::string_view otherwise = {}) {
    auto text = file.value(name, code, otherwise);
    fromStoredForm(text);
    return std::string(trimTrailingBlanks(text));
}

void readFields(const ProfileFile& file, std::string_view name, std::span<const Field> fields,
                DefinitionValues& values) {
    for (const auto& field : fields) {
        if (auto text = fieldOf(file, name, field.code); !text.empty()) {
            values.fields.insert_or_assign(std::string(field.code), std::move(text));
        }
    }
}

DefinitionValues::Rows readList(const DefinitionEdit& edit, const EuList& list) {
    if (list.isIn(edit.edition()) || list.firstEdition != c::kFirstAmbientList) {
        return edit.rows(list.countCode, codesOf(list), list.rowsIn(edit.edition()));
    }
    std::vector<std::string> row;
    for (const auto code : codesOf(list)) {
        row.push_back(edit.value(code));
    }
    const bool empty =
        std::all_of(row.begin(), row.end(), [](const auto& text) { return text.empty(); });
    return empty ? DefinitionValues::Rows{} : DefinitionValues::Rows{std::move(row)};
}

/// What differs from the working copy.
class Changes {
  public:
    explicit Changes(const DefinitionEdit& edit) : edit_(edit), file_(edit.copy()) {}

    void collect(std::string_view code, std::string text) {
        if (text != fieldOf(file_, edit_.name(), code)) {
            values_.emplace_back(code, std::move(text));
        }
    }
    void collect(std::span<const Field> fields, const DefinitionValues& now) {
        for (const auto& field : fields) {
            if (field.code != kTypeCode && field.code != kCommentCode) {
                collect(field.code, now.field(field.code));
            }
        }
    }
    /// The type as it is stored. In 106-96 voice and video are shown only by their
    /// fields.
    void collectType(const std::string& type) {
        if (type == shownType(file_, edit_.name(), edit_.edition())) {
            return;
        }
        collect(kTypeCode, storedType(type, edit_.edition()));
        if (edit_.edition() > kUntypedEdition) {
            return;
        }
        for (const std::string_view other : {"VOI", "VID"}) {
            if (!startsWithIgnoreCase(type, other)) {
                collect(std::string(other) + "\\E", "");
                collect(std::string(other) + "\\D", "");
            }
        }
    }
    [[nodiscard]] const DefinitionEdit::Values& values() const { return values_; }
    [[nodiscard]] bool store(DefinitionEdit& edit, UserInterface* parent) const {
        return values_.empty() || edit.setValues(parent, values_);
    }

  private:
    const DefinitionEdit& edit_;
    ProfileFile file_;
    DefinitionEdit::Values values_;
};

bool storeList(DefinitionEdit& edit, UserInterface* parent, const EuList& list,
               const DefinitionValues& now) {
    const auto rows = now.lists.find(list.countCode);
    if (rows == now.lists.end() || !list.isIn(edit.edition()) ||
        rows->second == readList(edit, list)) {
        return true;
    }
    return edit.setRows(parent, list.countCode, codesOf(list), rows->second,
                        list.rowsIn(edit.edition()));
}

}  // namespace

std::string DefinitionValues::field(std::string_view code) const {
    const auto it = fields.find(code);
    return it == fields.end() ? std::string() : it->second;
}

DefinitionValues readPages(const DefinitionEdit& edit) {
    const auto file = edit.copy();
    DefinitionValues values;
    for (const auto& page : euPages()) {
        readFields(file, edit.name(), page.fields, values);
        if (page.list != nullptr) {
            values.lists[std::string(page.list->countCode)] = readList(edit, *page.list);
        }
    }
    values.fields[std::string(kTypeCode)] = shownType(file, edit.name(), edit.edition());
    values.fields.erase(std::string(kCommentCode));
    if (auto comment = edit.comment(); !comment.empty()) {
        values.fields[std::string(kCommentCode)] = std::move(comment);
    }
    const auto& weights = bitWeightList();
    if (weights.isIn(edit.edition())) {
        values.lists[std::string(weights.countCode)] = readList(edit, weights);
    }
    return values;
}

bool storePages(DefinitionEdit& edit, UserInterface* parent, const DefinitionValues& now) {
    Changes changes(edit);
    for (const auto& page : euPages()) {
        changes.collect(page.fields, now);
    }
    changes.collectType(now.field(kTypeCode));
    if (!changes.store(edit, parent)) {
        return false;
    }
    for (const auto& page : euPages()) {
        if (page.list != nullptr && !storeList(edit, parent, *page.list, now)) {
            return false;
        }
    }
    // The comment comes last: where it is kept depends on the size of the rest.
    const auto comment = now.field(kCommentCode);
    return storeList(edit, parent, bitWeightList(), now) &&
           (comment == edit.comment() || edit.setComment(parent, comment));
}

std::optional<RefusedLimit> refusedLimit(const DefinitionEdit& edit,
                                         const DefinitionValues::Fields& now) {
    static constexpr std::pair<const Field&, const Field&> kLimitPairs[] = {
        {c::kMot2, c::kMot1}, {c::kMot4, c::kMot3}, {c::kMot6, c::kMot5}};
    const auto nameOf = [](const Field& field) {
        return std::string(field.label.substr(0, field.label.size() - 1));  // its colon
    };
    const auto textOf = [&now](const Field& field) {
        const auto it = now.find(field.code);
        return it == now.end() ? std::string() : it->second;
    };
    const auto file = edit.copy();
    for (const auto& [low, high] : kLimitPairs) {
        bool touched = false;
        std::array<std::optional<double>, 2> numbers;
        for (std::size_t i = 0; i < numbers.size(); ++i) {
            const auto& field = i == 0 ? low : high;
            const auto text = textOf(field);
            const bool edited = text != fieldOf(file, edit.name(), field.code);
            touched = touched || edited;
            numbers[i] = parseDouble(text);
            if (edited && !text.empty() && !numbers[i]) {
                return RefusedLimit{field.code,
                                    nameOf(field) + ": '" + text + "' is not a number."};
            }
        }
        if (touched && numbers[0] && numbers[1] && *numbers[0] >= *numbers[1]) {
            return RefusedLimit{low.code, nameOf(low) + " must be below " + nameOf(high) + "."};
        }
    }
    return std::nullopt;
}

DefinitionValues readDetail(const DefinitionEdit& edit, const DetailWindow& window) {
    DefinitionValues values;
    readFields(edit.copy(), edit.name(), window.fields, values);
    for (const auto& list : window.lists) {
        values.lists[std::string(list.countCode)] = readList(edit, list);
    }
    return values;
}

bool storeDetail(DefinitionEdit& edit, UserInterface* parent, const DetailWindow& window,
                 const DefinitionValues& now) {
    Changes changes(edit);
    changes.collect(window.fields, now);
    return changes.store(edit, parent) &&
           std::all_of(window.lists.begin(), window.lists.end(),
                       [&](const EuList& list) { return storeList(edit, parent, list, now); });
}

bool storeFitFields(DefinitionEdit& edit, UserInterface* parent, const DefinitionValues& now,
                    bool& changed) {
    Changes changes(edit);
    for (const auto code : kFitFields) {
        changes.collect(code, now.field(code));
    }
    changed = !changes.values().empty();
    return changes.store(edit, parent);
}

}  // namespace kavu
