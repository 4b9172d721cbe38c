// The questions of the program's own that have a name in place of a number. A reply that was
// given in advance reaches a question by it; without such a reply the answer is the default
// button of the question, whatever is answered to all others.
#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace kavu {

namespace question {
/// Whether the former contents of a file are to be put back that was not written completely.
inline constexpr std::string_view kRestore = "restore";
/// Whether what an edit of a frame leaves behind is to be stored where the display shows it.
inline constexpr std::string_view kAdjust = "adjust";
/// What a save does with a file that another program has changed; yes overwrites it.
inline constexpr std::string_view kChangedFile = "changed-file";
/// Whether a rename takes along the references that it otherwise leaves as they are.
inline constexpr std::string_view kAllReferences = "all-references";
/// Whether the groups that belong to no data source go with one that is deleted.
inline constexpr std::string_view kUnreferenced = "unreferenced";
/// Whether a measurement database that another program has changed is read again, and the change
/// made to what is there now; without it nothing is written.
inline constexpr std::string_view kChangedDatabase = "changed-database";
/// Whether rows of a table that are marked as deleted are to go for good.
inline constexpr std::string_view kPurge = "purge";
}  // namespace question

inline constexpr auto kQuestionNames = std::to_array<std::string_view>(
    {question::kRestore, question::kAdjust, question::kChangedFile, question::kAllReferences,
     question::kUnreferenced, question::kChangedDatabase, question::kPurge});

[[nodiscard]] constexpr bool isQuestionName(std::string_view name) {
    return std::find(kQuestionNames.begin(), kQuestionNames.end(), name) != kQuestionNames.end();
}

}  // namespace kavu
