// Where a stream has its format identifier and its first tag. These are not of the model: the
// pages of the sheet keep them as text, by the number of a word and of a bit.
#pragma once

#include "pcm/PcmFormat.h"
#include "pcm/structure/PcmFormatEdit.h"

#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class UserInterface;

/// The locations of a stream before an edit of its frame.
class SideLocations {
  public:
    explicit SideLocations(PcmFormat& format);
    [[nodiscard]] bool empty() const { return all_.empty(); }

    /// A location that the edit has left behind.
    struct Left {
        std::string label;
        int before = 0;
        int now = 0;  ///< 0 if it is gone, or no number of the field's width
    };
    /// What the edit has left behind, by the new position of each word; -1 for one that is gone.
    [[nodiscard]] std::vector<Left> left(const std::vector<int>& moves) const;
    /// Stores the locations as they are now. A file that cannot be written is reported.
    void adjust(UserInterface* parent, const std::vector<int>& moves) const;

  private:
    struct Location {
        std::string_view code;
        std::string label;
        int number = 0;
        int fwp = 0;
        int bit = 0;  ///< in the word, from 0; -1 for a field that counts words
        int most = 0;
    };
    [[nodiscard]] int numberNow(const Location& location, const std::vector<int>& moves) const;

    PcmFormat& format_;
    std::vector<Location> all_;
};

}  // namespace kavu
