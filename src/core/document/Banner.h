// The banner that a save puts at the head of a file: five comments that state when it was saved and
// by what. It belongs to the file that is written, and to no document: a load passes over it, and
// the next save writes another.
#pragma once

#include "core/text/Clock.h"

#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

/// The maker of a file, for the banner.
inline constexpr const char* kBannerMaker = "Written by the Kavu Telemetry Workbench, TMATS Editor";
inline constexpr const char* kBannerHelp =
    "Help: the manual that comes with the program (kavu-cli --help)";
inline constexpr std::size_t kBannerLines = 5;

/// The commands of the banner, each on a line.
[[nodiscard]] std::string bannerText(const CivilTime& now, bool created);

/// A comment of a file: a command that begins with "COMMENT:".
struct FileComment {
    long line = 0;
    std::string text;
};

/// Separates the banner from the other comments of a file, whose commands it is given in their
/// order.
class BannerFilter {
  public:
    /// Takes the next comment, and gives those that are known to be in no banner now.
    [[nodiscard]] std::vector<FileComment> add(FileComment comment);
    /// Another command follows, or the end of the file: gives what is left.
    [[nodiscard]] std::vector<FileComment> end();
    /// True if `end` gives something.
    [[nodiscard]] bool isWaiting() const { return !waiting_.empty(); }

  private:
    [[nodiscard]] bool isBanner() const;

    std::deque<FileComment> waiting_;  ///< fewer than a banner has
};

}  // namespace kavu
