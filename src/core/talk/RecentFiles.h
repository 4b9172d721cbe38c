// The files that were opened last, in the settings: newest first, at most nine.
#pragma once

#include <string>
#include <vector>

namespace kavu {

class ProfileSettings;

inline constexpr const char* kRecentSection = "KAVU_Opened_Files";
inline constexpr std::size_t kMostRecentFiles = 9;

/// All that are kept, including those that no longer exist.
[[nodiscard]] std::vector<std::string> recentFiles(const ProfileSettings& settings);
/// Those for the menu: a file that is missing now may be back tomorrow, so it is kept but
/// not offered.
[[nodiscard]] std::vector<std::string> offeredRecentFiles(const ProfileSettings& settings);
/// Puts a file at the head of the list, by its absolute path.
void rememberFile(ProfileSettings& settings, const std::string& file);

}  // namespace kavu
