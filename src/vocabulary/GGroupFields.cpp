#include "vocabulary/GGroupFields.h"

#include "core/text/Text.h"
#include "vocabulary/ListFields.h"

#include <algorithm>
#include <array>
#include <vector>

namespace kavu {

namespace {

constexpr std::string_view kInfoPage = "GeneralInfo1";
constexpr std::string_view kContactPage = "GeneralInfo2";
constexpr std::string_view kSourcePage = "GeneralInfo3";
constexpr std::string_view kCommentPage = "GeneralInfo4";

constexpr auto kYesNo = std::to_array<Choice>({{"Y", "Yes", "Yes"}, {"N", "No", "No"}});
constexpr auto kClassifications = std::to_array<Choice>({
    {"U", "Unclassified", "Unclassified"},
    // Other programs use this spelling in XML.
    {.value = "C", .text = "Confidential", .xml = "Confidental", .schema = "Confidential"},
    {"S", "Secret", "Secret"},
    {"T", "Top Secret", "Top Secret"},
    {"O", "Other", "Other"},
});
constexpr auto kTypes = std::to_array<Choice>({
    {"RF", "RF", "RF"},
    {"TAP", "Tape", "Tape"},
    {"STO", "Storage", "Storage", 2004},
    {.value = "DSS",
     .text = "Distributed Source",
     .firstEdition = 2009,
     .schema = "Distributed Source"},
    {.value = "DRS", .text = "Direct Source", .firstEdition = 2009, .schema = "Direct Source"},
    {.value = "REP", .text = "Reproducer", .firstEdition = 2009, .schema = "Reproducer"},
    {"OTH", "Other", "Other"},
});

constexpr auto kFields = std::to_array<Field>({
    {.code = "PN",
     .label = "Program Name:",
     .page = kInfoPage,
     .limit = 16,
     .element = "ProgramName"},
    {.code = "TA", .label = "Test Item:", .page = kInfoPage, .limit = 64, .element = "TestItem"},
    {.code = "106", .limit = 2, .kind = FieldKind::Digits, .element = "RevisionLevel"},
    {.code = "OD",
     .label = "Origination Date:",
     .page = kInfoPage,
     .limit = 10,
     .kind = FieldKind::Date,
     .element = "OriginationDate",
     .limit1996 = 8},
    {.code = "RN",
     .label = "Number:",
     .box = "Revision",
     .page = kInfoPage,
     .limit = 4,
     .element = "Revision/Number"},
    {.code = "RD",
     .label = "Date:",
     .box = "Revision",
     .page = kInfoPage,
     .limit = 10,
     .kind = FieldKind::Date,
     .element = "Revision/Date",
     .limit1996 = 8},
    {.code = "UN",
     .label = "Number:",
     .box = "Update",
     .page = kInfoPage,
     .limit = 2,
     .element = "Update/Number"},
    {.code = "UD",
     .label = "Date:",
     .box = "Update",
     .page = kInfoPage,
     .limit = 10,
     .kind = FieldKind::Date,
     .element = "Update/Date",
     .limit1996 = 8},
    {.code = "TN",
     .label = "Number:",
     .box = "Test",
     .page = kInfoPage,
     .limit = 16,
     .element = "TestNumber"},
    {.code = kContactCount,
     .page = kContactPage,
     .kind = FieldKind::Count,
     .element = "PointOfContact",
     .rows = kMostContacts},
    {.code = "POC1-n",
     .label = "Name",
     .page = kContactPage,
     .limit = 24,
     .element = "PointOfContact/Name",
     .list = kContactCount,
     .missing = "Unknown"},
    {.code = "POC2-n",
     .label = "Agency",
     .page = kContactPage,
     .limit = 48,
     .element = "PointOfContact/Agency",
     .list = kContactCount},
    {.code = "POC3-n",
     .label = "Address",
     .page = kContactPage,
     .limit = 48,
     .element = "PointOfContact/Address",
     .list = kContactCount},
    {.code = "POC4-n",
     .label = "Phone",
     .page = kContactPage,
     .limit = 20,
     .element = "PointOfContact/Telephone",
     .codeRead = "POC42-n",
     .list = kContactCount},
    {.code = kSourceCount,
     .page = kSourcePage,
     .kind = FieldKind::Count,
     .element = "DataSource",
     .rows = kMostSources},
    {.code = kSourceName,
     .label = "Name",
     .page = kSourcePage,
     .limit = 32,
     .element = "DataSource/@Name",
     .list = kSourceCount,
     .refersTo = Refers::SourceName},
    {.code = kSourceType,
     .label = "Type",
     .page = kSourcePage,
     .limit = kSourceTypeWidth,
     .kind = FieldKind::Choice,
     .element = "DataSource/@Type",
     .choices = kTypes,
     .list = kSourceCount},
    {.code = "TI1",
     .label = "Duration:",
     .box = "Test",
     .page = kInfoPage,
     .limit = 4,
     .element = "TestInformation/Duration"},
    {.code = "TI2",
     .label = "Pre-Test:",
     .box = "Test Requirements",
     .page = kInfoPage,
     .limit = 1,
     .kind = FieldKind::Choice,
     .element = "TestInformation/PreTestRequirement",
     .choices = kYesNo},
    {.code = "TI3",
     .label = "Post-Test:",
     .box = "Test Requirements",
     .page = kInfoPage,
     .limit = 1,
     .kind = FieldKind::Choice,
     .element = "TestInformation/PostTestRequirement",
     .choices = kYesNo},
    {.code = "SC",
     .label = "Security Classification:",
     .page = kInfoPage,
     .limit = 1,
     .kind = FieldKind::Choice,
     .element = "SecurityClassification",
     .choices = kClassifications},
    {.code = "COM",
     .label = "Comments:",
     .page = kCommentPage,
     .kind = FieldKind::Comment,
     .element = "Comments"},
});
// The name that the file had; only the schema of XML has it.
constexpr Field kFileName{.code = "FN", .bridgeOnly = true, .elementSchema = "TmatsFileName"};

constexpr auto kDates = std::to_array<AutomaticDate>({
    {.field = {}, .date = "OD"},
    {.field = "RN", .date = "RD"},
    {.field = "UN", .date = "UD"},
});

}  // namespace

std::span<const Field> generalFields() {
    return kFields;
}

std::span<const Field> generalVocabulary() {
    static const auto fields = [] {
        std::vector<Field> all(kFields.begin(), kFields.end());
        all.push_back(kFileName);
        return all;
    }();
    return fields;
}

std::span<const Field> contactFields() {
    return listFields(kFields, kContactCount);
}

std::span<const Field> sourceFields() {
    return listFields(kFields, kSourceCount);
}

std::span<const AutomaticDate> generalDates() {
    return kDates;
}

std::vector<Choice> sourceTypes(int edition) {
    return choicesOf(Field{.choices = kTypes}, edition);
}

std::string_view sourceTypeText(std::string_view stored, int edition) {
    for (const auto& type : kTypes) {
        if (isKnownIn(edition, type) && equalsIgnoreCase(type.value, stored)) {
            return type.text;
        }
    }
    return kTypes.back().text;
}

std::string_view storedSourceType(std::string_view text) {
    const auto it = std::find_if(kTypes.begin(), kTypes.end(),
                                 [&](const Choice& type) { return type.text == text; });
    return it == kTypes.end() ? kTypes.back().value : it->value;
}

}  // namespace kavu
