// A file that does not state its edition is read as the settings say. When it reads better as one
// of another edition, this finds out which.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace kavu {

class Application;
class UserInterface;

struct EditionHint {
    int readAs = 0;           ///< the edition of the settings
    std::size_t reports = 0;  ///< what a reading reports, all streams included
    int better = 0;
    std::size_t betterReports = 0;
};

/// Larger files are not tried: they would be read once for each edition.
inline constexpr std::uint64_t kLargestTried = std::uint64_t{4} << 20;

/// Reads the document's file as one of each edition, the nearest ones first, until a reading
/// reports nothing. Nothing if the file states an edition, is larger than `kLargestTried` or
/// cannot be read, if it was cancelled, and if no other edition reports less.
[[nodiscard]] std::optional<EditionHint> findBetterEdition(Application& application,
                                                           UserInterface* parent);
/// The hint in a sentence.
[[nodiscard]] std::string hintText(const EditionHint& hint);

}  // namespace kavu
