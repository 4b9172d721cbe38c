#include "mdb/import/ImportLayout.h"

#include "core/text/Text.h"
#include "mdb/record/MdbFields.h"

#include <algorithm>
#include <array>

namespace kavu {

namespace {

constexpr std::array<ImportKindName, 3> kKinds{
    {{"Dbase File", "dbase"}, {"Delimited File", "delimited"}, {"Fixed Column File", "fixed"}}};

constexpr auto kDelimiters = std::to_array<ImportDelimiter>({{':', ": (Colon)"},
                                                             {';', "; (Semi-Colon)"},
                                                             {',', ", (Comma)"},
                                                             {'\t', "Tab (0x09)"},
                                                             {' ', "Space"},
                                                             {')', ")"},
                                                             {'(', "("},
                                                             {'*', "*"},
                                                             {'&', "&"},
                                                             {'^', "^"},
                                                             {'%', "%"},
                                                             {'$', "$"},
                                                             {'#', "#"},
                                                             {'@', "@"},
                                                             {'~', "~"},
                                                             {'|', "|"},
                                                             {'\\', "\\"},
                                                             {'/', "/"}});

bool endsIn(std::string_view path, std::string_view extension) {
    return path.size() >= extension.size() &&
           equalsIgnoreCase(path.substr(path.size() - extension.size()), extension);
}

/// Letters and digits alone: "MEAS_NAME" is "Meas Name".
std::string plainName(std::string_view name) {
    std::string plain;
    for (const char c : name) {
        if (isDigit(c) || (toLowerAscii(c) >= 'a' && toLowerAscii(c) <= 'z')) {
            plain += toLowerAscii(c);
        }
    }
    return plain;
}

}  // namespace

std::span<const ImportKindName, 3> importKinds() {
    return kKinds;
}

std::optional<ImportKind> importKindOf(std::string_view word) {
    for (std::size_t i = 0; i < kKinds.size(); ++i) {
        if (kKinds[i].word == word) {
            return static_cast<ImportKind>(i);
        }
    }
    return std::nullopt;
}

std::optional<ImportKind> importKindOfFile(std::string_view path) {
    if (endsIn(path, ".dbf")) {
        return ImportKind::Dbase;
    }
    if (endsIn(path, ".asc")) {
        return ImportKind::Fixed;
    }
    const bool isDelimited = endsIn(path, ".csv") || endsIn(path, ".txt") || endsIn(path, ".prn");
    return isDelimited ? std::optional(ImportKind::Delimited) : std::nullopt;
}

std::span<const ImportDelimiter> importDelimiters() {
    return kDelimiters;
}

char importDelimiterOfFile(std::string_view path) {
    return endsIn(path, ".txt") ? '\t' : endsIn(path, ".prn") ? ' ' : ',';
}

const ImportReference* ImportLayout::referenceOf(std::size_t field) const {
    const auto found = std::find_if(references.begin(), references.end(), [&](const auto& row) {
        return row.field == field && !row.first.empty();
    });
    return found == references.end() ? nullptr : &*found;
}

std::size_t importRowOf(std::size_t field, MdbVersion version) {
    for (std::size_t column = 0; column < columnCount(version); ++column) {
        if (columnIndex(column, version) == field) {
            return column + 1;
        }
    }
    return 0;
}

std::vector<ImportReference> matchImportNames(const std::vector<std::string>& names,
                                              MdbVersion version) {
    std::vector<ImportReference> references;
    for (std::size_t column = 0; column < columnCount(version); ++column) {
        const auto field = columnIndex(column, version);
        const auto label = plainName(mdbFields()[field].label);
        const auto found = std::find_if(names.begin(), names.end(), [&](const std::string& name) {
            const auto plain = plainName(name);
            return plain == label || (field == mdbfield::kName && plain == "name");
        });
        if (found != names.end()) {
            references.push_back({field, *found});
        }
    }
    return references;
}

}  // namespace kavu
