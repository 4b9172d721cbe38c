// What reports have in common as long as the program runs: the layout file that is open, and the
// number of the next page.
#pragma once

#include "reports/layout/ReportLayout.h"

#include <optional>
#include <string>
#include <string_view>

namespace kavu {

class ReportDesk {
  public:
    /// The context must outlive it.
    explicit ReportDesk(DocumentContext& context) : context_(context), file_(context) {}

    [[nodiscard]] LayoutFile& file() { return file_; }
    /// The layout that counts: that of the open file, else that of the settings. It is valid until
    /// a file is opened or closed.
    [[nodiscard]] ReportLayout layout();
    /// Stores a value there. False if it could not be, which is reported.
    bool set(UserInterface* parent, std::string_view key, std::string_view value);

    /// Saves the open file if it has changed and the user wants it, "has changed. Do you wish to
    /// save it first?"; without a parent it is left. False if the file is to stay open: after a
    /// Cancel, or a save that failed.
    bool mayLeave(UserInterface* parent);
    /// Opens another file, after the question, and False if the present one stays.
    bool open(UserInterface* parent, const std::string& path);
    /// Back to the layout of the settings; false as above.
    bool close(UserInterface* parent);

    int nextPage = 1;  ///< of a print run

  private:
    DocumentContext& context_;
    LayoutFile file_;
};

/// Asks for the number of the first page. Nothing after a Cancel; a number below 1 is refused with
/// message 161 ("greater than"), and asked for again.
[[nodiscard]] std::optional<int> askStartPage(const Messages& messages, UserInterface& ui,
                                              int present);

}  // namespace kavu
