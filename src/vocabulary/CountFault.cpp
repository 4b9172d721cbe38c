#include "vocabulary/CountFault.h"

#include "core/text/Printf.h"

namespace kavu {

std::string hiddenRowsText(std::string_view code, std::string_view stated, int highest) {
    return formatPrintf(
        "%s states %s, but the file has commands of number %d. The commands beyond "
        "the count are not used.",
        code, stated, highest);
}

std::string noNumberText(std::string_view code, std::string_view stated) {
    return formatPrintf("%s states '%s', which is no number.", code, stated);
}

}  // namespace kavu
