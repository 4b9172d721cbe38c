// The editions of IRIG 106 that a document can have. An edition is its year.
#pragma once

#include <algorithm>
#include <array>
#include <string>

namespace kavu {

inline constexpr int kLatestEdition = 2011;

inline constexpr std::array<int, 9> kEditions = {1996, 1999, 2000, 2001, 2004,
                                                 2005, 2007, 2009, 2011};

/// True for the year of an edition.
[[nodiscard]] constexpr bool isEdition(int year) {
    return std::find(kEditions.begin(), kEditions.end(), year) != kEditions.end();
}
/// The two-digit number of a year: 1999 gives 99, 2004 gives 4.
[[nodiscard]] int editionNumber(int year);
/// The year of a two-digit number: 0 to 95 count from 2000, 96 and 99 from 1900; any other
/// number stays as it is (97 stays 97, 1999 stays 1999).
[[nodiscard]] int normalisedEdition(int number);
/// "106-04 (2004)"
[[nodiscard]] std::string editionText(int year);

}  // namespace kavu
