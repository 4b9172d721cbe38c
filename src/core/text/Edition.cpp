#include "core/text/Edition.h"

#include "core/text/Printf.h"
#include "core/text/Text.h"

namespace kavu {

int editionNumber(int year) {
    return leadingInt(formatPrintf("%4.4d", year).substr(2));
}

int normalisedEdition(int number) {
    if (number >= 0 && number <= 95) {
        return number + 2000;
    }
    return number == 96 || number == 99 ? number + 1900 : number;
}

std::string editionText(int year) {
    return formatPrintf("106-%2.2d (%4.4d)", editionNumber(year), year);
}

}  // namespace kavu
