#include "groups/DateForms.h"

#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"

namespace kavu {

namespace {

/// The number of two digits at a place, or -1.
int twoDigits(std::string_view text, std::size_t at) {
    return isDigit(text[at]) && isDigit(text[at + 1]) ? (text[at] - '0') * 10 + (text[at + 1] - '0')
                                                      : -1;
}

/// True if hour, minute and second follow a date of `length` characters.
bool hasTime(std::string_view text, std::size_t length) {
    return text.size() == length + 9 && text[length] == '-' && text[length + 3] == '-' &&
           text[length + 6] == '-';
}

/// The time of day after a converted date. The first conversion of its format is invalid:
/// it stays in the text as it is and takes no value, so hour and minute go to the other
/// two. Files of other programs were written and are read this way.
std::string timeTail(std::string_view text, std::size_t at) {
    return "-%2,2d" + formatPrintf("-%2.2d-%2.2d", leadingInt(text.substr(at + 1, 2)),
                                   leadingInt(text.substr(at + 4, 2)));
}

}  // namespace

std::optional<ConvertedDate> convertDate(std::string_view text, int sourceYear, int currentYear) {
    const bool shortYear = sourceYear <= 1996;
    const std::size_t length = shortYear ? 8 : 10;
    if (text.size() < length || text[2] != '-' || text[5] != '-') {
        return std::nullopt;
    }
    const int first = twoDigits(text, 0);
    const int second = twoDigits(text, 3);
    // Of a year of four digits the first two are ignored.
    const int year = twoDigits(text, length - 2);
    if (first < 0 || second < 0 || year < 0) {
        return std::nullopt;
    }
    ConvertedDate date;
    if (shortYear) {
        const int full = 2000 + year > currentYear ? 1900 + year : 2000 + year;
        date.text = formatPrintf("%2.2d-%2.2d-%4.4d", second, first, full);
    } else {
        date.text = formatPrintf("%2.2d-%2.2d-%2.2d", first, second, year);
    }
    date.doubtful = text.size() > length;
    if (hasTime(text, length)) {
        date.text += timeTail(text, length);
    }
    return date;
}

void reportDoubtfulDate(DocumentContext& context, UserInterface* parent, const std::string& where,
                        std::string_view before, std::string_view after) {
    context.messages.logText(
        parent, title::kWarning,
        formatPrintf("The date '%s' (%s) was written as '%s'. The part after the date could not "
                     "be converted. Please correct this date.",
                     before, where, after));
}

}  // namespace kavu
