#include "bus/definition/BusFormCheck.h"

#include "bus/definition/BusTitles.h"
#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "vocabulary/DGroupFields.h"
#include "vocabulary/FieldRefusals.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>

namespace kavu {

namespace {

constexpr auto kAddresses = std::to_array<std::string_view>({"TRA", "STA", "RTRA", "RSTA"});
constexpr auto kCommandWords = std::to_array<std::string_view>({"CMD", "RCMD"});
constexpr auto kBitMasks = std::to_array<std::string_view>({"U1M", "U2M", "U3M", "MBM"});

template <std::size_t N>
bool isOneOf(const std::array<std::string_view, N>& stems, std::string_view stem) {
    return std::find(stems.begin(), stems.end(), stem) != stems.end();
}

bool isMadeOf(std::string_view text, std::string_view characters) {
    return text.find_first_not_of(characters) == std::string_view::npos;
}

/// In the bytes of a group file, with line breaks as they are entered.
std::string enteredText(std::string_view value) {
    auto text = replaceAll(replaceAll(value, "\r\n", "\n"), "\n", "\r\n");
    toStoredForm(text);
    return text;
}

/// The entry kind that says whether a word is in use.
std::string_view entryOf(std::string_view word) {
    return word == "CMD" ? "CWE" : "RCWE";
}

}  // namespace

bool BusFormCheck::refuse(std::string_view stem, const std::string& why) {
    showBox(parent_, formatPrintf("%s: %s", std::string(stem), why),
            std::string(loadText(title::kIllegalValueEntered).value_or("")));
    return false;
}

// --- Values -------------------------------------------------------------------------------------

bool BusFormCheck::checkSemicolon(std::string_view value) {
    if (!holdsSemicolon(value)) {
        return true;
    }
    context_.messages.show(parent_, message::kNoSemicolon, title::kIllegalCharacter, kErrorBox);
    return false;
}

bool BusFormCheck::checkAddress(std::string_view value) {
    if (isMadeOf(value, "01X")) {
        return true;
    }
    context_.messages.showTitled(parent_, 376, "Invalid Address Entered", kErrorBox);
    return false;
}

bool BusFormCheck::checkCommandWord(std::string_view value) {
    if (isMadeOf(value, "0123456789ABCDEFabcdef")) {
        return true;
    }
    context_.messages.show(parent_, 392, title::kIllegalValueEntered, kErrorBox);
    return false;
}

bool BusFormCheck::checkMask(std::string_view value) {
    if (value == kFullWord || (isMadeOf(value, "01") && value.size() <= kMaskWidth)) {
        return true;
    }
    context_.messages.showTitled(parent_, 142, "Invalid BitMask Entered", kErrorBox);
    return false;
}

bool BusFormCheck::checkForm(const Field& field, std::string_view value, bool isArinc) {
    const auto stem = stemOf(field.code);
    if (auto why = editionRefusal(field, edition_); !why.empty()) {
        return refuse(stem, why);
    }
    if ((stem == "LBL" || stem == "SDI") && !isArinc) {
        return refuse(stem, "Only the messages of an ARINC 429 bus have it.");
    }
    if (stem == "DLN") {
        return refuse(stem, "Other groups depend on this value. Use 'link rename' to change it.");
    }
    if (!checkSemicolon(value) || (isOneOf(kAddresses, stem) && !checkAddress(value)) ||
        (isOneOf(kCommandWords, stem) && !checkCommandWord(value)) ||
        (isOneOf(kBitMasks, stem) && !checkMask(value))) {
        return false;
    }
    if (field.kind != FieldKind::Comment && holdsStoredBreak(value)) {
        return refuse(stem, "The value can only be one line long.");
    }
    const auto why = valueRefusal(field, value, edition_);
    return why.empty() || refuse(stem, why);
}

bool BusFormCheck::enter(std::string_view stem, std::string_view value, bool isArinc) {
    const auto* field = findBusField(level_, stem);
    auto* row = &row_;
    auto level = level_;
    if (field == nullptr && level_ == BusLevel::Message) {
        level = BusLevel::Receive;
        field = findBusField(level, stem);
        row = field == nullptr ? row : &receiveOf(row_);
    }
    if (field == nullptr) {
        return refuse(stem, "The form has no such field.");
    }
    const auto known = stemOf(field->code);
    entered_.push_back(known);
    const auto entered = enteredText(value);
    if (entered == row->value(field->code)) {
        return true;
    }
    if (!checkForm(*field, entered, isArinc)) {
        return false;
    }
    auto stored = storedValue(*field, entered, edition_);
    if (isOneOf(kAddresses, known) && !stored.empty() && stored.size() < kTerminalAddressWidth) {
        stored.insert(0, kTerminalAddressWidth - stored.size(), '0');
    }
    row->set(field->code, stored);
    return true;
}

bool BusFormCheck::enterTracks(const std::vector<std::string>& tracks) {
    const auto& field = busFields(BusLevel::Track).front();
    const auto& before = rowsOf(row_, BusLevel::Track);
    std::vector<GroupRow> rows;
    for (std::size_t i = 0; i < tracks.size(); ++i) {
        auto row = i < before.size() ? before[i] : GroupRow();
        const auto entered = enteredText(tracks[i]);
        if (entered != row.value(field.code)) {
            if (!checkForm(field, entered, false)) {
                return false;
            }
            row.set(field.code, storedValue(field, entered, edition_));
        }
        rows.push_back(std::move(row));
    }
    rowsOf(row_, BusLevel::Track) = std::move(rows);
    return true;
}

// --- Messages -----------------------------------------------------------------------------------

bool BusFormCheck::usesCommandWord(std::string_view entry) const {
    constexpr int kCommandWordEdition = 2011;
    return edition_ >= kCommandWordEdition && message(entry) == kCommandWordValue;
}

void BusFormCheck::dropDerivedWords() {
    for (const auto word : kCommandWords) {
        const auto entry = entryOf(word);
        const bool isChosen =
            std::find(entered_.begin(), entered_.end(), entry) != entered_.end() ||
            std::find(entered_.begin(), entered_.end(), word) != entered_.end();
        if (isChosen && message(entry) == kCommandWordDerived) {
            setBusValue(row_, BusLevel::Message, word, {});
        }
    }
}

void BusFormCheck::chooseType(BusMessageType type) {
    const auto mode = modeOfType(type);
    if (!mode.empty() && message("TRM") != mode) {
        setBusValue(row_, BusLevel::Message, "TRM", mode);
        const auto* const field = findBusField(BusLevel::Message, "TRM");
        const auto shown =
            field->choices[static_cast<std::size_t>(choiceIndex(field->choices, mode))];
        context_.messages.show(parent_, 382, title::kInvalidMode, kNoteBox, shown.text);
    }
    const bool toAll =
        type == BusMessageType::BroadcastMode || type == BusMessageType::ControllerBroadcast;
    if (toAll && message("TRA") != kBroadcastAddress) {
        setBusValue(row_, BusLevel::Message, "TRA", kBroadcastAddress);
        context_.messages.show(parent_, 380, title::kInvalidRemoteTerminal, kNoteBox);
    }
}

bool BusFormCheck::checkMissing(bool isArinc) {
    if (isArinc || usesCommandWord("CWE")) {
        return true;
    }
    const auto isMissing = [&](std::string_view name, std::string_view address) {
        return message(name).empty() && message(address).empty();
    };
    const std::string_view missing = isMissing("TRN", "TRA")   ? "Remote"
                                     : isMissing("STN", "STA") ? "Sub"
                                                               : "";
    if (!missing.empty()) {
        context_.messages.show(parent_, 383, title::kInformationMissing, kErrorBox, missing);
        return false;
    }
    if (message("DWC").empty()) {
        context_.messages.show(parent_, 384, title::kInformationMissing, kErrorBox);
        return false;
    }
    return true;
}

bool BusFormCheck::checkRemote(BusMessageType type) {
    const bool mayBeAll =
        type == BusMessageType::BroadcastMode || type == BusMessageType::ControllerBroadcast;
    if (mayBeAll || message("TRA") != kBroadcastAddress) {
        return true;
    }
    context_.messages.show(parent_, isRtToRt(type) ? MessageFor<>(385) : MessageFor<>(377),
                           title::kInvalidRemoteTerminal, kErrorBox);
    return false;
}

bool BusFormCheck::checkSub(BusMessageType type) {
    const auto address = message("STA");
    // Where the command word says it, the address may be empty.
    if (address.empty() && usesCommandWord("CWE")) {
        return true;
    }
    if (isModeCommand(type) && !isModeAddress(address)) {
        context_.messages.show(parent_, 378, title::kInvalidSubTerminal, kErrorBox);
        return false;
    }
    if (isRtToRt(type) && isModeAddress(address)) {
        context_.messages.show(parent_, 387, title::kInvalidSubTerminal, kErrorBox);
        return false;
    }
    return true;
}

bool BusFormCheck::checkReceive(BusMessageType type) {
    auto& command = receiveOf(row_);
    const auto remote = addressNumber(busValue(command, BusLevel::Receive, "RTRA"));
    if (type == BusMessageType::RtToRt && remote == kBroadcastNumber) {
        context_.messages.show(parent_, 385, title::kInvalidRemoteTerminal, kErrorBox);
        return false;
    }
    const auto address = busValue(command, BusLevel::Receive, "RSTA");
    const int sub = addressNumber(address);
    const bool isInWord = address.empty() && usesCommandWord("RCWE");
    if (!isInWord && (sub == 0 || sub == kBroadcastNumber)) {
        context_.messages.show(parent_, 387, title::kInvalidSubTerminal, kErrorBox);
        return false;
    }
    if (type == BusMessageType::RtToRtBroadcast && remote != kBroadcastNumber) {
        setBusValue(command, BusLevel::Receive, "RTRA", kBroadcastAddress);
        context_.messages.show(parent_, 386, title::kInvalidRemoteTerminal, kNoteBox);
    }
    return true;
}

bool BusFormCheck::leaveMessage(std::optional<BusMessageType> type, bool isArinc) {
    dropDerivedWords();
    if (!checkMissing(isArinc)) {
        return false;
    }
    if (isArinc || !type) {
        return true;
    }
    return checkRemote(*type) && checkSub(*type) && (!isRtToRt(*type) || checkReceive(*type));
}

// --- Locations ----------------------------------------------------------------------------------

bool BusFormCheck::leaveLocation() {
    const auto isMissing = [&](std::string_view stem, MessageFor<> id) {
        if (!busValue(row_, BusLevel::Location, stem).empty()) {
            return false;
        }
        context_.messages.show(parent_, id, title::kMeasurementError, kErrorBox);
        return true;
    };
    return !isMissing("MWN", 388) && !isMissing("MBM", 389) && !isMissing("MTO", 390) &&
           !isMissing("MFP", 391);
}

}  // namespace kavu
