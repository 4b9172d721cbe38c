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

/// The values are separated by a tab, a semi-colon, a comma or blanks, and may be in quotes.
/// Blank lines, lines that begin with `#`, columns after the second, and a first line whose
/// columns do not begin as numbers are ignored. Every other line must hold two finite
/// numbers.
[[nodiscard]] PairFile parsePairFile(std::string_view text);

/// The same file as the texts of the two boxes of the import, one value per line, spelled
/// as in the file.
struct PairColumns {
    std::string telemetry;
    std::string engineering;
    std::size_t count = 0;
    std::string error;  ///< what is wrong with the file; then there are no values
};
[[nodiscard]] PairColumns splitPairFile(std::string_view text);

}  // namespace kavu
