#include "mdb/import/ImportProfiles.h"

#include "core/talk/ProfileSettings.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"

#include <algorithm>

namespace kavu {

namespace {

constexpr std::string_view kSection = "Kavu9DbfImport";
/// The keys are the sections of the profiles, the values their titles.
constexpr std::string_view kList = "Kavu9DbfImportProfiles";
constexpr std::string_view kProfileSection = "Kavu9DbfImport ";
constexpr std::string_view kTitle = "Title";
constexpr std::string_view kType = "Type";
constexpr std::string_view kHeader = "Header";
constexpr std::string_view kDelimiter = "ImpFileDelim";
constexpr std::string_view kVersion = "ImpFileOutType";

ImportKind kindOf(int number) {
    return static_cast<ImportKind>(std::clamp(number, 0, 2));
}

/// A blank would be trimmed, and other signs may end a value: the delimiter is kept as its number.
std::string delimiterText(char delimiter) {
    return std::to_string(static_cast<int>(static_cast<unsigned char>(delimiter)));
}

char delimiterOf(int number) {
    const auto& all = importDelimiters();
    const auto found = std::find_if(all.begin(), all.end(), [&](const ImportDelimiter& delimiter) {
        return static_cast<unsigned char>(delimiter.character) == number;
    });
    return found == all.end() ? ',' : found->character;
}

/// A title as the key of a profile, which no sign of a title can end.
std::string keyOf(std::string_view title) {
    std::string key = "P";
    for (const char c : lowerAscii(trimBlanks(title))) {
        const bool isPlain = isDigit(c) || (c >= 'a' && c <= 'z');
        key += isPlain ? std::string(1, c)
                       : formatPrintf("_%2.2X", static_cast<int>(static_cast<unsigned char>(c)));
    }
    return key;
}

std::string sectionOf(std::string_view title) {
    return std::string(kProfileSection) + keyOf(title);
}

/// A text that a settings file gives back as it was: its value is trimmed, so quotes are not
/// enough for outer blanks; those mean nothing in a reference.
std::string plainValue(std::string_view text) {
    std::string value(trimBlanks(text));
    std::replace_if(
        value.begin(), value.end(), [](char c) { return c >= '\0' && c < ' '; }, ' ');
    return value;
}

}  // namespace

ImportSettings ImportSettings::read(const ProfileSettings& settings) {
    ImportSettings stored;
    stored.input = settings.profileText(kSection, "ImpFileIn");
    stored.kind = kindOf(settings.profileInteger(kSection, "ImpFileInType", 0));
    stored.delimiter = delimiterOf(settings.profileInteger(kSection, kDelimiter, ','));
    stored.output = settings.profileText(kSection, "ImpFileOut");
    stored.version =
        static_cast<MdbVersion>(std::clamp(settings.profileInteger(kSection, kVersion, 2), 0, 2));
    stored.overwrites = settings.profileInteger(kSection, "ImpFileOutOverwrite", 0) != 0;
    return stored;
}

void ImportSettings::write(ProfileSettings& settings) const {
    const std::pair<std::string_view, std::string> values[] = {
        {"ImpFileIn", input},
        {"ImpFileInType", std::to_string(static_cast<int>(kind))},
        {kDelimiter, delimiterText(delimiter)},
        {"ImpFileOut", output},
        {kVersion, std::to_string(static_cast<int>(version))},
        {"ImpFileOutOverwrite", overwrites ? "1" : "0"},
    };
    for (const auto& [key, value] : values) {
        settings.writeProfile(kSection, key, plainValue(value));
    }
}

std::vector<ImportReference> storedReferences(const ProfileSettings& settings, ImportKind kind,
                                              MdbVersion version) {
    std::vector<ImportReference> references;
    for (std::size_t column = 0; column < columnCount(version); ++column) {
        const auto field = columnIndex(column, version);
        const auto key =
            formatPrintf("_%d_%d_%d", static_cast<int>(kind), static_cast<int>(version), field);
        const auto number =
            kind == ImportKind::Delimited ? std::to_string(column + 1) : std::string();
        references.push_back({field, settings.profileText(kSection, "D1" + key, number),
                              settings.profileText(kSection, "D2" + key)});
    }
    return references;
}

void storeReference(ProfileSettings& settings, ImportKind kind, MdbVersion version,
                    const ImportReference& reference) {
    const auto key = formatPrintf("_%d_%d_%d", static_cast<int>(kind), static_cast<int>(version),
                                  reference.field);
    settings.writeProfile(kSection, "D1" + key, plainValue(reference.first));
    settings.writeProfile(kSection, "D2" + key, plainValue(reference.second));
}

std::vector<ImportProfile> listImportProfiles(const ProfileSettings& settings) {
    std::vector<ImportProfile> profiles;
    for (const auto& key : settings.profileKeys(kList)) {
        auto& profile = profiles.emplace_back();
        const auto section = std::string(kProfileSection) + key;
        profile.title = settings.profileText(section, kTitle);
        profile.layout.kind = kindOf(settings.profileInteger(section, kType, 0));
    }
    return profiles;
}

std::optional<ImportProfile> loadImportProfile(const ProfileSettings& settings,
                                               std::string_view title) {
    const auto section = sectionOf(title);
    ImportProfile profile{settings.profileText(section, kTitle)};
    if (profile.title.empty()) {
        return std::nullopt;
    }
    profile.layout.kind = kindOf(settings.profileInteger(section, kType, 0));
    profile.layout.delimiter = delimiterOf(settings.profileInteger(section, kDelimiter, ','));
    profile.layout.hasHeader = settings.profileInteger(section, kHeader, 0) != 0;
    const auto version =
        static_cast<MdbVersion>(std::clamp(settings.profileInteger(section, kVersion, 2), 0, 2));
    for (std::size_t column = 0; column < columnCount(version); ++column) {
        auto first = settings.profileText(section, formatPrintf("D1_%d", column + 1));
        if (!first.empty()) {
            profile.layout.references.push_back(
                {columnIndex(column, version), std::move(first),
                 settings.profileText(section, formatPrintf("D2_%d", column + 1))});
        }
    }
    return profile;
}

bool saveImportProfile(ProfileSettings& settings, const ImportProfile& profile,
                       MdbVersion version) {
    const auto title = plainValue(profile.title);
    if (title.empty()) {
        return false;
    }
    const auto section = sectionOf(title);
    const auto& layout = profile.layout;
    settings.writeProfile(section, std::nullopt, std::nullopt);
    settings.writeProfile(section, kTitle, title);
    settings.writeProfile(section, kType, std::to_string(static_cast<int>(layout.kind)));
    settings.writeProfile(section, kDelimiter, delimiterText(layout.delimiter));
    settings.writeProfile(section, kHeader, layout.hasHeader ? "1" : "0");
    settings.writeProfile(section, kVersion, std::to_string(static_cast<int>(version)));
    for (const auto& reference : layout.references) {
        const auto row = importRowOf(reference.field, version);
        if (row > 0 && !reference.first.empty()) {
            settings.writeProfile(section, formatPrintf("D1_%d", row), plainValue(reference.first));
            settings.writeProfile(section, formatPrintf("D2_%d", row),
                                  plainValue(reference.second));
        }
    }
    settings.writeProfile(kList, keyOf(title), title);
    return true;
}

bool deleteImportProfile(ProfileSettings& settings, std::string_view title) {
    if (!loadImportProfile(settings, title)) {
        return false;
    }
    settings.writeProfile(sectionOf(title), std::nullopt, std::nullopt);
    settings.writeProfile(kList, keyOf(title), std::nullopt);
    return true;
}

}  // namespace kavu
