#include "vocabulary/FieldRefusals.h"

#include "core/text/Edition.h"
#include "core/text/Printf.h"
#include "vocabulary/FieldRules.h"

namespace kavu {

std::string editionRefusal(const Field& field, int edition) {
    if (isKnownIn(edition, field)) {
        return {};
    }
    return edition < field.firstEdition
               ? formatPrintf("It is known from IRIG %s on, and this document is of IRIG %s.",
                              editionText(field.firstEdition), editionText(edition))
               : formatPrintf("It is known up to IRIG %s, and this document is of IRIG %s.",
                              editionText(field.lastEdition), editionText(edition));
}

std::string valueRefusal(const Field& field, std::string_view value, int edition) {
    switch (checkValue(field, value, edition)) {
        case ValueFault::None:
            return {};
        case ValueFault::Semicolon:
            return "A value cannot hold a semi-colon.";
        case ValueFault::NoChoice:
            return "The value is not one of: " + choiceList(field, edition) + ".";
        case ValueFault::BadDate:
            return formatPrintf("The value is not of the form %s.", field.kind == FieldKind::Date
                                                                        ? dateForm(edition)
                                                                        : dateTimeForm(edition));
        case ValueFault::NotDigits:
            return "The value is not made of digits.";
        case ValueFault::TooMany:
            return formatPrintf("The list can have %d rows.", static_cast<int>(field.rows));
        case ValueFault::TooLong:
            break;
    }
    return formatPrintf("The value can only be %d characters long.",
                        static_cast<int>(limitIn(edition, field)));
}

}  // namespace kavu
