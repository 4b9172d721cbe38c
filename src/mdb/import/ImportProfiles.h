// Mappings that are kept under a title, and the settings of the form of the last import.
#pragma once

#include "mdb/import/ImportLayout.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class ProfileSettings;

/// What the form starts with.
struct ImportSettings {
    std::string input;
    ImportKind kind = ImportKind::Dbase;
    char delimiter = ',';
    std::string output;
    MdbVersion version = MdbVersion::Xml;
    bool overwrites = false;

    [[nodiscard]] static ImportSettings read(const ProfileSettings& settings);
    void write(ProfileSettings& settings) const;
};

/// The stored references for a kind of file and a form of database. Of a delimited file a field
/// for which nothing is stored has the number of its row.
[[nodiscard]] std::vector<ImportReference> storedReferences(const ProfileSettings& settings,
                                                            ImportKind kind, MdbVersion version);
/// Stores one reference; an empty one is stored as such.
void storeReference(ProfileSettings& settings, ImportKind kind, MdbVersion version,
                    const ImportReference& reference);

struct ImportProfile {
    std::string title;
    ImportLayout layout{};
};

/// Titles and kinds, in the order in which they were saved first. The layouts have no references.
[[nodiscard]] std::vector<ImportProfile> listImportProfiles(const ProfileSettings& settings);
/// The profile of a title, in any case; nothing if there is none.
[[nodiscard]] std::optional<ImportProfile> loadImportProfile(const ProfileSettings& settings,
                                                             std::string_view title);
/// Saves a profile in place of one of the same title. False for a title that is blank.
bool saveImportProfile(ProfileSettings& settings, const ImportProfile& profile, MdbVersion version);
/// False if there is none.
bool deleteImportProfile(ProfileSettings& settings, std::string_view title);

}  // namespace kavu
