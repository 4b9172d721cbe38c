// What the program says about itself.
#pragma once

#include <string>
#include <string_view>

namespace kavu {

struct InstalledParts {
    bool reports = false;
    bool database = false;
};

/// The text of the about box: version, the edition of the standard, installed parts, and
/// the closing words.
[[nodiscard]] std::string aboutText(const InstalledParts& parts);
/// From 1994 to the current year.
[[nodiscard]] std::string rightsText(int currentYear);

/// The closing words as the program keeps them: every bit inverted, so that a search for
/// texts in the program's file does not find them.
[[nodiscard]] std::string_view storedClosingWords();
/// The same in clear.
[[nodiscard]] std::string closingWords();

}  // namespace kavu
