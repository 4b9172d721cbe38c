// Which page of the manual describes a window: the topics of the help are resource names.
#pragma once

#include <string_view>

namespace kavu {

struct HelpPlace {
    std::string_view page;       ///< name of its file without ".md"
    std::string_view heading{};  ///< a heading of the page; empty: its beginning
};

/// The place of a topic, the resource name of a window or of one of its pages; the numbers of
/// pages do not count. A topic without a place is taken for the name of a manual page.
[[nodiscard]] HelpPlace helpPlace(std::string_view topic);

}  // namespace kavu
