#include "bus/definition/BusEdit.h"

#include "bus/definition/BusFormCheck.h"
#include "bus/definition/BusTerminalEdit.h"
#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "groups/DataSources.h"
#include "groups/MeasurementNames.h"

#include <algorithm>

namespace kavu {

namespace {

/// What a delete asks about, by the level of the row.
const char* deleteTitle(BusLevel level) {
    switch (level) {
        case BusLevel::Bus:
            return "Delete 1553 Bus Definition";
        case BusLevel::Message:
            return "Delete This Message";
        case BusLevel::Measurement:
            return "Delete This Measurement";
        case BusLevel::Track:
            return "Delete Track Sequence";
        case BusLevel::Location:
        case BusLevel::Group:
        case BusLevel::Receive:
            break;
    }
    return "Delete This Measurement Location";
}

std::string placeText(const BusPlace& place) {
    constexpr auto kNames =
        std::to_array<const char*>({"bus", "message", "measurement", "location"});
    std::string text;
    for (std::size_t i = 0; i < place.size(); ++i) {
        text += i == 0 ? "" : ", ";
        text += i < kNames.size() ? kNames[i] : "part";
        text += " " + std::to_string(place[i]);
    }
    return text;
}

std::string wordCode(const char* format, int word) {
    return formatPrintf(runtimeFormat(format), word);
}

}  // namespace

GroupRow* BusEdit::find(const BusPlace& place) {
    auto* const row = busRowAt(definition_, place);
    if (row == nullptr) {
        refuse(formatPrintf("There is no %s.", placeText(place)));
    }
    return row;
}

bool BusEdit::refuse(const std::string& text) {
    showBox(parent_, text, "Unable To Edit Bus Attributes");
    return false;
}

bool BusEdit::ask(const std::string& title) {
    return context_.messages.showTitled(parent_, -message::kAreYouSure, title, kYesNoBox) ==
           Button::Yes;
}

int BusEdit::streamNumber() {
    if (!stream_) {
        std::vector<std::string> links;
        (void)gatherDataLinks(context_, parent_, links);
        const auto found = std::find(links.begin(), links.end(), definition_.link);
        stream_ = found == links.end() ? 0 : static_cast<int>(found - links.begin()) + 1;
    }
    return *stream_;
}

bool BusEdit::fill(GroupRow& row, const BusPlace& place, const BusForm& form) {
    const auto level = levelOf(place);
    const bool isMessage = level == BusLevel::Message;
    if ((form.type && !isMessage) || (form.tracks && level != BusLevel::Bus)) {
        return refuse(form.type ? "Only a message has a type." : "Only a bus has tracks.");
    }
    const int edition = definition_.edition;
    const bool isArinc = isMessage && isArincBus(definition_.buses()[place.front() - 1], edition);
    const auto typeBefore = isMessage ? messageTypeOf(row, edition) : std::nullopt;
    BusFormCheck check(context_, parent_, row, level, edition);
    for (const auto& [stem, value] : form.values) {
        if (!check.enter(stem, value, isArinc)) {
            return false;
        }
    }
    if (form.tracks && !check.enterTracks(*form.tracks)) {
        return false;
    }
    if (isMessage) {
        const auto chosen = form.type ? findMessageType(*form.type) : std::nullopt;
        if (form.type && !chosen) {
            return refuse(formatPrintf("There is no message type '%s'.", *form.type));
        }
        if (chosen) {
            check.chooseType(*chosen);
        }
        return check.leaveMessage(chosen ? chosen : typeBefore, isArinc);
    }
    return level != BusLevel::Location || check.leaveLocation();
}

namespace {

/// False with message 455 if another stream has a name that a measurement is to have.
bool isNameFree(const DocumentContext& context, UserInterface* parent,
                const MeasurementNames& names, const std::string& name, int stream) {
    const auto other = names.checking() ? names.otherStream(name, stream) : std::nullopt;
    if (other) {
        context.messages.show(parent, 455, title::kError, kErrorBox, name, std::to_string(*other));
    }
    return !other;
}

}  // namespace

bool BusEdit::set(const BusPlace& place, const BusForm& form) {
    auto* const row = find(place);
    if (row == nullptr) {
        return false;
    }
    const auto level = levelOf(place);
    // The rows in it are no part of the form, and may be many.
    GroupRow changed;
    changed.values = row->values;
    changed.fileRow = row->fileRow;
    for (const auto inner : {BusLevel::Receive, BusLevel::Track}) {
        if (row->lists.contains(countOfLevel(inner))) {
            rowsOf(changed, inner) = rowsOf(std::as_const(*row), inner);
        }
    }
    if (!fill(changed, place, form)) {
        return false;
    }
    const auto name = std::string(busValue(changed, level, "MN"));
    if (level == BusLevel::Measurement && names_ != nullptr && !name.empty() &&
        name != busValue(*row, level, "MN") &&
        !isNameFree(context_, parent_, *names_, name, streamNumber())) {
        return false;
    }
    row->values = std::move(changed.values);
    for (auto& [count, rows] : changed.lists) {
        row->lists[count] = std::move(rows);
    }
    if (level == BusLevel::Message) {
        noteTerminals(definition_, place.front(), *row);
    }
    return true;
}

std::optional<BusPlace> BusEdit::append(const BusPlace& owner) {
    if (owner.size() >= kDeepestBusPlace) {
        refuse("A measurement location has no parts.");
        return std::nullopt;
    }
    auto* const outer = find(owner);
    if (outer == nullptr) {
        return std::nullopt;
    }
    auto place = owner;
    place.push_back(0);
    const auto level = levelOf(place);
    auto& rows = rowsOf(*outer, level);
    auto& row = rows.emplace_back();
    if (level == BusLevel::Message && definition_.edition >= kOneReceiveEdition) {
        (void)receiveOf(row);
    }
    place.back() = rows.size();
    if (level == BusLevel::Bus && definition_.terminals.size() < rows.size()) {
        definition_.terminals.resize(rows.size());
    }
    return place;
}

void BusEdit::takeBack(const BusPlace& owner) {
    auto place = owner;
    place.push_back(1);
    const auto level = levelOf(place);
    auto& outer = *busRowAt(definition_, owner);
    auto& rows = rowsOf(outer, level);
    rows.pop_back();
    if (level == BusLevel::Bus) {
        definition_.terminals.resize(std::max(kMostTerminalBuses, rows.size()));
    }
    if (rows.empty()) {
        outer.lists.erase(std::string(countOfLevel(level)));
    }
}

bool BusEdit::add(const BusPlace& owner, const BusForm& form) {
    const auto place = append(owner);
    if (!place) {
        return false;
    }
    if (!set(*place, form)) {
        takeBack(owner);
        return false;
    }
    return true;
}

bool BusEdit::isEachNameFree(const GroupRow& row, BusLevel level) {
    if (level == BusLevel::Measurement) {
        const std::string name(busValue(row, level, "MN"));
        return name.empty() || isNameFree(context_, parent_, *names_, name, streamNumber());
    }
    const auto inner = level == BusLevel::Bus ? BusLevel::Message : BusLevel::Measurement;
    const auto& rows = rowsOf(row, inner);
    return std::all_of(rows.begin(), rows.end(),
                       [&](const GroupRow& each) { return isEachNameFree(each, inner); });
}

bool BusEdit::paste(const BusPlace& owner, BusLevel level, const GroupRow& row) {
    auto* const outer = owner.size() < kDeepestBusPlace ? find(owner) : nullptr;
    auto place = owner;
    place.push_back(1);
    if (outer == nullptr || levelOf(place) != level ||
        (names_ != nullptr && !isEachNameFree(row, level))) {
        return false;
    }
    auto& copy = rowsOf(*outer, level).emplace_back(row);
    const auto forget = [](auto&& self, GroupRow& each) -> void {
        each.fileRow = 0;
        each.fileRows.clear();
        for (auto& [count, rows] : each.lists) {
            std::for_each(rows.begin(), rows.end(), [&](GroupRow& inner) { self(self, inner); });
        }
    };
    forget(forget, copy);
    if (level == BusLevel::Message) {
        noteTerminals(definition_, owner.front(), copy);
    }
    return true;
}

bool BusEdit::remove(const BusPlace& place) {
    if (place.empty()) {
        return refuse("A bus group cannot be deleted here. Delete its buses.");
    }
    if (find(place) == nullptr || !ask(deleteTitle(levelOf(place)))) {
        return false;
    }
    auto owner = place;
    owner.pop_back();
    const auto number = static_cast<std::ptrdiff_t>(place.back());
    auto& rows = rowsOf(*busRowAt(definition_, owner), levelOf(place));
    rows.erase(rows.begin() + number - 1);
    auto& terminals = definition_.terminals;
    if (place.size() == 1 && place.back() <= terminals.size()) {
        // The lists belong to their buses.
        terminals.erase(terminals.begin() + number - 1);
        terminals.resize(std::max(kMostTerminalBuses, rows.size()));
    }
    return true;
}

bool BusEdit::removeTrack(std::size_t bus, std::size_t track) {
    auto* const row = find({bus});
    if (row == nullptr || track < 1 || track > rowsOf(*row, BusLevel::Track).size() ||
        !ask(deleteTitle(BusLevel::Track))) {
        return false;
    }
    auto& rows = rowsOf(*row, BusLevel::Track);
    rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(track) - 1);
    return true;
}

bool BusEdit::removeUserWord(std::size_t bus, int word) {
    constexpr auto kCodes = std::to_array({"UMN%d", "U%dP", "U%dPT", "U%dM", "U%dT"});
    auto* const row = find({bus});
    if (row == nullptr || word < 1 || word > kUserDefinedWords ||
        !ask("Delete This User Defined Word?")) {
        return false;
    }
    for (int to = word; to <= kUserDefinedWords; ++to) {
        for (const auto* const code : kCodes) {
            const auto next =
                to == kUserDefinedWords
                    ? std::string()
                    : std::string(busValue(*row, BusLevel::Bus, wordCode(code, to + 1)));
            setBusValue(*row, BusLevel::Bus, wordCode(code, to), next);
        }
    }
    return true;
}

}  // namespace kavu
