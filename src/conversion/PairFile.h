// A text file of pairs: a telemetry value and an engineering-unit value on each line.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

inline constexpr std::size_t kMostFilePairs = 1000000;

struct PairFile {
    std::vector<double> x;
    std::vector<double> y;
    std::string error;  ///< what is wrong with the file; then there are no values
};

/// The values are separated by a tab, a semi-colon, a comma or blanks, in all rows as in the
/// first, and may be in quotes. Blank rows, remarks that begin with `#`, and a first row whose
/// columns do not begin as numbers are ignored. Every other row must hold two finite numbers and
/// nothing else; a decimal comma is understood as `CommaRule` says.
[[nodiscard]] PairFile parsePairFile(std::string_view text);

/// The same file as the texts of the two boxes of the import, one value per line, spelled as in
/// the file but with decimal points.
struct PairColumns {
    std::string telemetry;
    std::string engineering;
    std::size_t count = 0;
    bool isOneColumn = false;  ///< no row, a head included, has a second cell
    std::string error;         ///< what is wrong with the file; then there are no values
};
[[nodiscard]] PairColumns splitPairFile(std::string_view text);

}  // namespace kavu
