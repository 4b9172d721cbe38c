// The groups of a TMATS file as files of the working store: one table says how each is
// named, split, saved and called in messages.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace kavu {

inline constexpr int kLeastGroupIndex = 1;
inline constexpr int kMostGroupIndex = 99;

struct GroupKind {
    char letter;
    bool indexed;                  ///< has instances with a number
    std::string_view fileFormat;   ///< name in the working store, a printf format of the index
    std::string_view wildcard;     ///< matches the files of all instances
    std::string_view readTitle;    ///< section title of the status line while a file is read
    std::string_view saveTitle;    ///< progress text while it is saved
    std::string_view messageName;  ///< name in messages of a failed save
    int firstEdition;              ///< not saved in documents of an older edition
};

/// All groups but C, in the order in which they are saved. The C group comes between A
/// and H; it is generated and has no file of its own.
[[nodiscard]] std::span<const GroupKind> groupKinds();
/// The row of a letter. REQUIRES: one of G T R M P D B S A H V.
[[nodiscard]] const GroupKind& groupKind(char letter);
/// The name of a group's file.
[[nodiscard]] std::string groupFile(char letter, std::int64_t index = 0);
/// The name of the file of an A, B, D, P or S group; empty for an index out of 1 to 99, for
/// any other letter, and for S below edition 2005.
[[nodiscard]] std::string groupFileName(char letter, int index, int edition);

}  // namespace kavu
