#include "reports/layout/ReportLayout.h"

#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Text.h"

#include <algorithm>

namespace kavu {

namespace {

/// The key of this name, whatever the number of columns.
std::optional<LayoutKey> findKey(std::string_view name) {
    static const auto kKeys = layoutKeys(0, 0);
    const auto found = std::find_if(kKeys.begin(), kKeys.end(), [name](const LayoutKey& key) {
        return equalsIgnoreCase(key.key, name);
    });
    if (found != kKeys.end()) {
        return *found;
    }
    const bool isColumn = startsWithIgnoreCase(name, layout_key::kColumn) &&
                          name.size() > layout_key::kColumn.size() &&
                          std::all_of(name.begin() + 1, name.end(), isDigit);
    return isColumn ? std::optional(LayoutKey{.key = std::string(name), .otherwise = "0"})
                    : std::nullopt;
}

std::string withRealBreaks(std::string text) {
    fromStoredForm(text);
    return text;
}

}  // namespace

ReportLayout::ReportLayout(ProfileSettings& settings)
    : read_([&settings](std::string_view key) -> std::optional<std::string> {
          // No value of a file holds a line break.
          constexpr std::string_view kMissing = "\n";
          auto value = settings.profileText(kReportSection, key, kMissing);
          return value == kMissing ? std::nullopt : std::optional(std::move(value));
      }),
      write_([&settings](std::string_view key, std::string_view value) {
          settings.writeProfile(kReportSection, key, value);
          return true;
      }) {}

ReportLayout::ReportLayout(ProfileFile& file)
    : read_([&file](std::string_view key) { return file.value(kReportSection, key); }),
      write_([&file](std::string_view key, std::string_view value) {
          return file.setValue(kReportSection, key, value);
      }) {}

std::string ReportLayout::text(std::string_view key) const {
    const auto row = findKey(key);
    if (!row) {
        return {};
    }
    auto value = stored(key);
    return value && canHave(*row, *value) ? withRealBreaks(std::move(*value)) : row->otherwise;
}

int ReportLayout::number(std::string_view key) const {
    return leadingInt(text(key));
}

std::optional<int> ReportLayout::option(std::string_view key, const Messages& messages,
                                        UserInterface* parent) const {
    const auto row = findKey(key);
    const auto value = stored(key);
    if (row && value && !canHave(*row, *value)) {
        messages.show(parent, 404, title::kError, kErrorBox, key);
        return std::nullopt;
    }
    return number(key);
}

bool ReportLayout::set(std::string_view key, std::string_view value) {
    std::string text(value);
    toStoredForm(text);
    return ProfileFile::canBeKey(key) && ProfileFile::canBeValue(text) && write_(key, text);
}

}  // namespace kavu
