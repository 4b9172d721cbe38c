#include "app/bus/BusMessageSheet.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "bus/definition/BusFormCheck.h"
#include "bus/definition/BusRows.h"
#include "core/TmatsDocument.h"
#include "core/text/Printf.h"

#include <algorithm>

#include <QLabel>
#include <QVBoxLayout>

namespace kavu {

namespace {

using TerminalFields = BusTerminalFieldsPage::TerminalFields;
using Suggestions = BusTerminalFieldsPage::Suggestions;

constexpr std::string_view kMessageTypeCode = "TYPE";
constexpr char kMessagePage[] = "1553_EDIT_MESSAGE1";

/// The types as the entries of a choice. Their values are no beginnings of texts: one type's text
/// is the beginning of another's.
std::span<const Choice> typeChoices() {
    constexpr auto kValues =
        std::to_array<std::string_view>({"#0", "#1", "#2", "#3", "#4", "#5", "#6", "#7"});
    static const auto kChoices = [&] {
        std::array<Choice, kBusMessageTypes.size()> choices{};
        for (std::size_t i = 0; i < choices.size(); ++i) {
            choices[i] = {.value = kValues[i], .text = messageTypeText(kBusMessageTypes[i])};
        }
        return choices;
    }();
    return kChoices;
}

std::string_view typeValue(std::optional<BusMessageType> type) {
    const auto found = std::find(kBusMessageTypes.begin(), kBusMessageTypes.end(), type);
    return found == kBusMessageTypes.end()
               ? std::string_view()
               : typeChoices()[static_cast<std::size_t>(found - kBusMessageTypes.begin())].value;
}

std::optional<BusMessageType> typeOfValue(std::string_view value) {
    for (std::size_t i = 0; i < kBusMessageTypes.size(); ++i) {
        if (typeChoices()[i].value == value) {
            return kBusMessageTypes[i];
        }
    }
    return std::nullopt;
}

/// The order in which the first page shows its fields.
std::vector<Field> messagePageFields() {
    std::vector<Field> fields = {busFormField(BusLevel::Message, "MID"),
                                 busFormField(BusLevel::Message, "MNA"),
                                 {.code = kMessageTypeCode,
                                  .label = "Message Type:",
                                  .kind = FieldKind::Choice,
                                  .choices = typeChoices()}};
    for (const auto* const code :
         {"TRM", "TRN", "TRA", "STN", "STA", "DWC", "CWE", "CMD", "BMG\\FOT"}) {
        fields.push_back(busFormField(BusLevel::Message, code));
    }
    return fields;
}

const std::vector<Terminal>& knownTerminals(const BusFormSetup& setup, const BusPlace& place,
                                            TerminalKind kind) {
    const auto& lists = setup.definition.listKnownTerminals(place.front());
    return kind == TerminalKind::Remote ? lists.remote : lists.sub;
}

void suggest(Suggestions& all, std::string_view code, std::vector<std::string> texts) {
    std::erase(texts, std::string());
    const auto field = std::find_if(all.fields.begin(), all.fields.end(),
                                    [code](const Field& each) { return each.code == code; });
    if (field == all.fields.end() || texts.empty()) {
        return;
    }
    const auto& kept = all.texts.emplace_back(std::move(texts));
    auto& choices = all.choices.emplace_back();
    for (const auto& text : kept) {
        choices.push_back({.value = text, .text = text});
    }
    field->choices = choices;
}

Suggestions suggestionsOf(const BusFormSetup& setup, const BusPlace& place,
                          std::vector<Field> fields, std::vector<TerminalFields> terminals) {
    Suggestions all;
    all.fields = std::move(fields);
    all.terminals = std::move(terminals);
    // The fields look at what is in these lists.
    all.texts.reserve(all.terminals.size() * 2);
    all.choices.reserve(all.terminals.size() * 2);
    for (const auto& each : all.terminals) {
        std::vector<std::string> names;
        std::vector<std::string> addresses;
        for (const auto& [name, address] : knownTerminals(setup, place, each.kind)) {
            names.push_back(name);
            addresses.push_back(address);
        }
        suggest(all, each.name, std::move(names));
        suggest(all, each.address, std::move(addresses));
    }
    return all;
}

}  // namespace

// --- Terminals ----------------------------------------------------------------------------------

BusTerminalFieldsPage::BusTerminalFieldsPage(const BusFormSetup& setup, const char* resourceName,
                                             const std::string& title, std::vector<Field> fields,
                                             std::vector<TerminalFields> terminals,
                                             BusFormState& state)
    : BusTerminalFieldsPage(
          setup, resourceName, title,
          suggestionsOf(setup, state.place, std::move(fields), std::move(terminals)), state) {}

BusTerminalFieldsPage::BusTerminalFieldsPage(const BusFormSetup& setup, const char* resourceName,
                                             const std::string& title, Suggestions suggestions,
                                             BusFormState& state)
    : BusFieldPage(setup, resourceName, title, suggestions.fields, state),
      suggestions_(std::move(suggestions)) {
    connect(&fields(), &FieldForm::edited, this,
            [this](const QString& code) { follow(toBytes(code)); });
}

void BusTerminalFieldsPage::follow(std::string_view code) {
    for (const auto& each : suggestions_.terminals) {
        const bool isName = code == each.name;
        if (!isName && (code != each.address || !fields().value(each.name).empty())) {
            continue;
        }
        const auto entered = fields().value(code);
        const auto& known = knownTerminals(setup(), state().place, each.kind);
        const auto found = std::find_if(known.begin(), known.end(), [&](const Terminal& terminal) {
            return !entered.empty() && (isName ? terminal.name : terminal.address) == entered;
        });
        if (found != known.end()) {
            fields().editValue(isName ? each.address : each.name,
                               isName ? found->address : found->name);
        }
    }
}

// --- "Message Definition" -----------------------------------------------------------------------

BusMessagePage::BusMessagePage(const BusFormSetup& setup, BusFormState& state)
    : BusTerminalFieldsPage(
          setup, kMessagePage, "Message Definition", messagePageFields(),
          {{TerminalKind::Remote, "TRN", "TRA"}, {TerminalKind::Sub, "STN", "STA"}}, state) {
    connect(&fields(), &FieldForm::edited, this, [this](const QString& code) {
        if (toBytes(code) == kMessageTypeCode) {
            chooseType();
        }
    });
}

void BusMessagePage::chooseType() {
    const auto type = typeOfValue(fields().value(kMessageTypeCode));
    if (!type) {
        return;
    }
    GroupRow row;
    for (const auto* const code : {"TRM", "TRA"}) {
        setBusValue(row, BusLevel::Message, code, fields().value(code));
    }
    BusFormCheck check(setup().document, &form().ui, row, BusLevel::Message,
                       setup().definition.edition);
    check.chooseType(*type);
    for (const auto* const code : {"TRM", "TRA"}) {
        fields().editValue(code, busValue(row, BusLevel::Message, code));
    }
}

std::optional<std::string> BusMessagePage::chosenType() const {
    const auto now = valueOf(state().now, kMessageTypeCode);
    const auto type = typeOfValue(now);
    return type && now != valueOf(state().before, kMessageTypeCode)
               ? std::optional(std::string(messageTypeText(*type)))
               : std::nullopt;
}

// --- The sheet ----------------------------------------------------------------------------------

BusMessageSheet::BusMessageSheet(const BusFormSetup& setup, const BusPlace& message, bool isNew,
                                 QWidget* parent)
    : PropertySheet(setup.form, "1553_EDIT_MESSAGE",
                    isNew ? busRowTitle(BusLevel::Message, message.back()) : "Edit Bus Message",
                    "Last1553MsgPage", parent),
      state_(BusFormState::of(setup.definition, message)) {
    const int edition = setup.definition.edition;
    const auto type = messageTypeOf(*busRowAt(setup.definition, message), edition);
    if (type) {
        state_.before[std::string(kMessageTypeCode)] = typeValue(type);
        state_.now = state_.before;
    }
    auto first = std::make_unique<BusMessagePage>(setup, state_);
    first_ = first.get();
    addPage(std::move(first));
    addPage(std::make_unique<BusRowsPage>(setup, "1553_EDIT_MESSAGE2", "Measurements", message,
                                          "measurements"));
    addReceivePage(setup);
    addTextPages(setup);
    setWriter([this, &setup] {
        auto form = state_.changes();
        form.type = first_->chosenType();
        return setup.edit.set(state_.place, form);
    });
    if (isNew) {
        markChanged();
    }
}

void BusMessageSheet::addReceivePage(const BusFormSetup& setup) {
    const bool isSingle = setup.definition.edition >= kSingleReceiveEdition;
    auto fields = busFormFields(BusLevel::Message, "1553_EDIT_MESSAGE3");
    const auto command = busFormFields(BusLevel::Receive);
    fields.insert(fields.end(), command.begin(), command.end());
    auto page = std::make_unique<BusTerminalFieldsPage>(
        setup, isSingle ? "1553_EDIT_MESSAGE3" : "1553_EDIT_MESSAGE3_PRE_2011",
        "RT/RT Receive Command List", std::move(fields),
        std::vector<TerminalFields>{{TerminalKind::Remote, "RTRN", "RTRA"},
                                    {TerminalKind::Sub, "RSTN", "RSTA"}},
        state_);
    const auto commands =
        rowsOf(std::as_const(*busRowAt(setup.definition, state_.place)), BusLevel::Receive).size();
    if (commands > 1) {
        auto* const note = look::makeNote(
            toQString(formatPrintf("The message has %d receive commands. This is the first of "
                                   "them; the others stay as they are.",
                                   static_cast<int>(commands))),
            page.get());
        note->setObjectName(QStringLiteral("moreCommands"));
        page->layout()->addWidget(note);
    }
    addPage(std::move(page));
}

void BusMessageSheet::addTextPages(const BusFormSetup& setup) {
    const auto add = [&](const char* resourceName, const char* title) {
        addPage(std::make_unique<BusFieldPage>(
            setup, resourceName, title, busFormFields(BusLevel::Message, resourceName), state_));
    };
    add("1553_EDIT_MESSAGE4", "Special Processing");
    add("1553_EDIT_MESSAGE5", "Mode Code");
    const auto& bus = setup.definition.buses()[state_.place.front() - 1];
    if (isArincBus(bus, setup.definition.edition)) {
        add("1553_EDIT_MESSAGE6", "ARINC 429 Information");
    }
}

}  // namespace kavu
