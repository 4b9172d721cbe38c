// The pairs of a measurement as a table for other programs.
#pragma once

#include <string>

namespace kavu {

class PairSet;
struct FitResult;

/// A row of titles, then a row for each pair: its number and its values as they were typed, and
/// with a fit the corrected value and the error, with all of their digits, and a `*` if the error
/// is out of tolerance. A value that holds the separator, a quote or a line break is in quotes.
/// Lines end in a line feed. REQUIRES: the result is that of these pairs, or has no fit.
[[nodiscard]] std::string pairTable(const PairSet& pairs, const FitResult& result, char separator);

}  // namespace kavu
