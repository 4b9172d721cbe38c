// What is read of the element of a group: the rows of the vocabulary as a tree, in which each
// element that repeats is a level with rows of its own.
#pragma once

#include "vocabulary/Field.h"
#include "xml/bridge/BridgeValues.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

/// Steps down from the element of a level. With an attribute it is that of the last element.
struct ReadPath {
    std::vector<std::string_view> steps;
    std::string_view attribute{};
};

/// How a row is read that is more than the text of an element.
enum class ReadAs {
    Text,
    SyncPattern,       ///< the text, after its length
    Presence,          ///< "Y" where the element is
    LocationLength,    ///< the length of the measurement, for each of its locations
    FragmentNumber,    ///< the number of the row
    Subcommutation,    ///< ranges of frames, which hold for each location of the record
    Coefficients,      ///< terms by their number
    Calibrations,      ///< rows of three values side by side
    SingleSubcarrier,  ///< without a number if there is but one
    Contacts,          ///< the columns of all contacts
    Sources            ///< the names and types of the data sources
};

struct ReadLevel;

/// A value, or a level.
struct ReadItem {
    const Field* field = nullptr;  ///< of a level its count; null if it has none
    std::string_view code{};       ///< the pattern that is written; empty without a field
    std::vector<ReadPath> paths;   ///< tried in this order
    ReadAs how = ReadAs::Text;
    std::unique_ptr<ReadLevel> level;  ///< null for a value
};

struct ReadLevel {
    std::vector<ReadItem> items;  ///< in the order in which they are written
};

/// What is read of a group in one dialect. The name of its source or link is none of it.
[[nodiscard]] const ReadLevel& readPlan(char letter, XmlDialect dialect);

/// The paths of a field in one dialect, in the order in which they are tried; none if it is not
/// read.
[[nodiscard]] std::vector<std::string_view> readPaths(const Field& field, XmlDialect dialect);
/// The code that a field is read into.
[[nodiscard]] constexpr std::string_view codeFromXml(const Field& field, XmlDialect dialect) {
    return dialect == XmlDialect::Classic && !field.codeFromXml.empty() ? field.codeFromXml
                                                                        : field.code;
}

}  // namespace kavu
