#include "bus/GroupPlace.h"

#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "vocabulary/FieldRules.h"

namespace kavu {

namespace {

void refuse(UserInterface* parent, std::string text) {
    showBox(parent, std::move(text),
            std::string(loadText(title::kIllegalValueEntered).value_or("")));
}

}  // namespace

std::string placeText(const GroupPlace& place) {
    std::string text = "[";
    for (const auto& part : place) {
        text += text.size() > 1 ? ", " : "";
        if (const auto* const number = std::get_if<int>(&part)) {
            text += std::to_string(*number);
        } else {
            text.append("\"").append(1, std::get<char>(part)).append("\"");
        }
    }
    return text + "]";
}

void reportNoPlace(UserInterface* parent, const GroupPlace& place) {
    refuse(parent, formatPrintf("There is nothing at the place %s.", placeText(place)));
}

void reportNoAct(UserInterface* parent, const GroupPlace& place, std::string_view act) {
    refuse(parent, formatPrintf("Nothing can be %s at the place %s.", act, placeText(place)));
}

void reportNoField(UserInterface* parent, std::string_view name) {
    refuse(parent, formatPrintf("There is no field '%s' here.", name));
}

std::string withLineBreaks(std::string_view text) {
    return replaceAll(replaceAll(text, "\r\n", "\n"), "\n", "\r\n");
}

bool hasNoSemicolon(const DocumentContext& context, UserInterface* parent, std::string_view text) {
    if (!holdsSemicolon(text)) {
        return true;
    }
    context.messages.show(parent, 402, title::kIllegalValueEntered, kErrorBox);
    return false;
}

bool hasNoComma(UserInterface* parent, std::string_view text) {
    if (text.find(',') == std::string_view::npos) {
        return true;
    }
    refuse(parent,
           "You are not allowed to use a comma (,) as part of this field. Please remove the "
           "comma.");
    return false;
}

bool isWithinLimit(UserInterface* parent, std::string_view text, std::size_t limit) {
    if (limit == 0 || text.size() <= limit) {
        return true;
    }
    refuse(parent, formatPrintf("This string must be no more than %d characters long.",
                                static_cast<int>(limit)));
    return false;
}

void reportNoEntry(UserInterface* parent, std::string_view text,
                   const std::vector<std::string>& entries) {
    std::string all;
    for (const auto& entry : entries) {
        all += all.empty() ? "" : ", ";
        all += entry;
    }
    refuse(parent, formatPrintf("'%s' is not one of: %s.", text, all));
}

void reportDisabled(UserInterface* parent, std::string_view field) {
    refuse(parent, formatPrintf("'%s' does not apply here.", field));
}

bool asksToDelete(const DocumentContext& context, UserInterface* parent, std::string_view word) {
    return context.messages.showTitled(parent, -message::kAreYouSure,
                                       formatPrintf("Delete this %s", word),
                                       kYesNoBox) == Button::Yes;
}

}  // namespace kavu
