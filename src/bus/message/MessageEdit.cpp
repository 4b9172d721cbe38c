#include "bus/message/MessageEdit.h"

#include "core/TmatsDocument.h"
#include "core/text/Text.h"
#include "groups/MeasurementNames.h"
#include "groups/NamesInStreams.h"

#include <algorithm>

namespace kavu {

namespace {

/// The branches of a message, in the order of its children.
constexpr std::string_view kBranches = "FM";

MessageStream* childAt(MessageStream& node, const std::variant<int, char>& part) {
    if (const auto* const letter = std::get_if<char>(&part)) {
        const auto branch = kBranches.find(*letter);
        return node.kind == MessageKind::Message && branch != std::string_view::npos
                   ? &node.children[branch]
                   : nullptr;
    }
    const int number = std::get<int>(part);
    return node.kind != MessageKind::Message && number >= 1 &&
                   static_cast<std::size_t>(number) <= node.children.size()
               ? &node.children[static_cast<std::size_t>(number) - 1]
               : nullptr;
}

/// The entry of a list that is shown for a text: the first that begins with it, any case, else the
/// first of all.
std::string selectedEntry(const std::vector<std::string>& entries, std::string_view text) {
    const auto found = std::find_if(
        entries.begin(), entries.end(),
        [text](const std::string& entry) { return startsWithIgnoreCase(entry, text); });
    return found == entries.end() ? entries.front() : *found;
}

/// The entry that is meant by a text that is entered; empty if there is none.
std::string enteredEntry(const std::vector<std::string>& entries, std::string_view text) {
    const auto found =
        std::find_if(entries.begin(), entries.end(),
                     [text](const std::string& entry) { return equalsIgnoreCase(entry, text); });
    return found == entries.end() ? std::string() : *found;
}

/// What a form has after a text was entered. A list that is emptied shows what it shows for a
/// value that is missing.
std::string enteredText(const MessageForm& form, std::size_t column, const std::string& value) {
    const auto entries = form.entries(column);
    if (!entries.empty() && value.empty()) {
        return form.kind == MessageKind::Stream
                   ? entries.front()
                   : shownValue(*factsOf(form.kind).columns[column].field, {});
    }
    const auto entry = enteredEntry(entries, value);
    return entry.empty() ? withLineBreaks(value) : entry;
}

MessageForm openForm(const MessageStream& node, const MessageStream* stream) {
    const auto& facts = factsOf(node.kind);
    MessageForm form{.kind = node.kind,
                     .title = std::string(facts.formTitle),
                     .texts = node.row,
                     .former = node.row};
    if (stream != nullptr) {
        form.stream.kind = MessageKind::Stream;
        form.stream.row = stream->row;
    }
    for (std::size_t i = 0; i < form.texts.size(); ++i) {
        const auto entries = form.entries(i);
        if (node.kind == MessageKind::Stream && !entries.empty()) {
            form.texts[i] = selectedEntry(entries, form.texts[i]);
        } else if (node.kind == MessageKind::Measurement && form.texts[i].empty() &&
                   i != measurement_row::DataType && i != measurement_row::FloatingPoint &&
                   !entries.empty()) {
            // As a measurement is read that has no such command.
            form.texts[i] = shownValue(*facts.columns[i].field, {});
        }
    }
    return form;
}

}  // namespace

// --- The form -----------------------------------------------------------------------------------

bool MessageForm::isEnabled(std::size_t column) const {
    if (kind != MessageKind::Stream) {
        return applies(kind, column, texts, stream);
    }
    return applies(kind, column, texts, MessageStream{.kind = kind, .row = texts});
}

std::vector<std::string> MessageForm::entries(std::size_t column) const {
    return offeredTexts(*factsOf(kind).columns[column].field);
}

// --- The tree -----------------------------------------------------------------------------------

MessageEdit::MessageEdit(DocumentContext& context, MessageGroup& group,
                         const MeasurementNames* names)
    : context_(context),
      group_(group),
      names_(names),
      stream_(names == nullptr ? 0 : streamNumberOf(context, nullptr, group.link)) {}

MessageStream* MessageEdit::find(const GroupPlace& place) {
    auto* node = &group_.root;
    for (const auto& part : place) {
        node = node == nullptr ? nullptr : childAt(*node, part);
    }
    return node;
}

const MessageStream* MessageEdit::streamOf(const GroupPlace& place) {
    return place.empty() ? nullptr : childAt(group_.root, place.front());
}

MessageForm MessageEdit::formOf(const GroupPlace& place) {
    return openForm(*find(place), streamOf(place));
}

MessageForm MessageEdit::formOfNew(const GroupPlace& place) {
    auto form = openForm(newMessageNode(factsOf(find(place)->kind).child), streamOf(place));
    form.former.assign(form.texts.size(), {});
    return form;
}

bool MessageEdit::isNameFree(UserInterface* parent, const std::string& name) const {
    return name.empty() || names_ == nullptr ||
           isFreeInOtherStreams(context_, parent, *names_, name, stream_);
}

bool MessageEdit::check(UserInterface* parent, const MessageForm& form) const {
    const auto columns = factsOf(form.kind).columns;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const auto& text = form.texts[i];
        if (text == form.former[i]) {
            continue;
        }
        if (!hasNoSemicolon(context_, parent, text) || !hasNoComma(parent, text)) {
            return false;
        }
        const auto entries = form.entries(i);
        if (!entries.empty() && !text.empty() && enteredEntry(entries, text).empty()) {
            reportNoEntry(parent, text, entries);
            return false;
        }
        if (entries.empty() && !isWithinLimit(parent, text, columns[i].field->limit)) {
            return false;
        }
        if (columns[i].field->refersTo == Refers::MeasurementName && !isNameFree(parent, text)) {
            return false;
        }
    }
    return true;
}

bool MessageEdit::enter(UserInterface* parent, MessageForm& form, EnteredValues values) const {
    const auto columns = factsOf(form.kind).columns;
    const auto opened = form.texts;
    std::vector<std::pair<std::size_t, bool>> entered;
    for (const auto& [name, value] : values) {
        const auto column = std::find_if(
            columns.begin(), columns.end(),
            [&wanted = name](const MessageColumn& each) { return each.name == wanted; });
        if (column == columns.end()) {
            reportNoField(parent, name);
            return false;
        }
        const auto place = static_cast<std::size_t>(column - columns.begin());
        form.texts[place] = enteredText(form, place, value);
        entered.emplace_back(place, value.empty());
    }
    // The lists decide first, wherever among the values they are. What is shown as empty because it
    // does not apply may be entered as such, and keeps its text.
    for (const auto& [place, isEmpty] : entered) {
        if (form.isEnabled(place)) {
            continue;
        }
        if (!isEmpty) {
            reportDisabled(parent, columns[place].keyword);
            return false;
        }
        form.texts[place] = opened[place];
    }
    return check(parent, form);
}

bool MessageEdit::add(UserInterface* parent, const GroupPlace& place, EnteredValues values) {
    auto* const node = find(place);
    if (node == nullptr) {
        reportNoPlace(parent, place);
        return false;
    }
    if (factsOf(node->kind).child == MessageKind::Root) {
        reportNoAct(parent, place, "added");
        return false;
    }
    auto form = formOfNew(place);
    if (!enter(parent, form, values)) {
        return false;
    }
    auto child = newMessageNode(form.kind);
    child.row = std::move(form.texts);
    node->children.push_back(std::move(child));
    return true;
}

bool MessageEdit::setGroup(UserInterface* parent, EnteredValues values) {
    auto testArticle = group_.testArticle;
    auto comment = group_.comment;
    for (const auto& [name, value] : values) {
        const auto& field = name == message_field::kTestArticle.code ? message_field::kTestArticle
                                                                     : message_field::kComment;
        if (name != field.code) {
            reportNoField(parent, name);
            return false;
        }
        auto& text = &field == &message_field::kTestArticle ? testArticle : comment;
        auto entered = withLineBreaks(value);
        if (text != entered && (!hasNoSemicolon(context_, parent, entered) ||
                                !isWithinLimit(parent, entered, field.limit))) {
            return false;
        }
        text = std::move(entered);
    }
    group_.testArticle = std::move(testArticle);
    group_.comment = std::move(comment);
    return true;
}

bool MessageEdit::set(UserInterface* parent, const GroupPlace& place, EnteredValues values) {
    if (place.empty()) {
        return setGroup(parent, values);
    }
    auto* const node = find(place);
    if (node == nullptr) {
        reportNoPlace(parent, place);
        return false;
    }
    if (factsOf(node->kind).word.empty()) {
        reportNoAct(parent, place, "edited");
        return false;
    }
    auto form = formOf(place);
    if (!enter(parent, form, values)) {
        return false;
    }
    node->row = std::move(form.texts);
    return true;
}

bool MessageEdit::remove(UserInterface* parent, const GroupPlace& place) {
    const auto* const node = find(place);
    if (node == nullptr) {
        reportNoPlace(parent, place);
        return false;
    }
    const auto word = factsOf(node->kind).word;
    if (word.empty()) {
        reportNoAct(parent, place, "deleted");
        return false;
    }
    if (!asksToDelete(context_, parent, word)) {
        return false;
    }
    auto owner = place;
    owner.pop_back();
    auto& children = find(owner)->children;
    children.erase(children.begin() + std::get<int>(place.back()) - 1);
    return true;
}

bool MessageEdit::checkPasted(UserInterface* parent, const MessageStream& node) const {
    const auto columns = factsOf(node.kind).columns;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (!hasNoSemicolon(context_, parent, node.row[i]) ||
            (columns[i].field->refersTo == Refers::MeasurementName &&
             !isNameFree(parent, node.row[i]))) {
            return false;
        }
    }
    return std::all_of(node.children.begin(), node.children.end(),
                       [&](const MessageStream& child) { return checkPasted(parent, child); });
}

namespace {

void forgetFile(MessageStream& node) {
    node.fileRow = 0;
    node.fileRows = 0;
    std::for_each(node.children.begin(), node.children.end(), forgetFile);
}

}  // namespace

bool MessageEdit::paste(UserInterface* parent, const GroupPlace& owner, MessageStream node) {
    auto* const to = find(owner);
    if (to == nullptr || factsOf(to->kind).child != node.kind || !checkPasted(parent, node)) {
        return false;
    }
    forgetFile(node);
    to->children.push_back(std::move(node));
    return true;
}

}  // namespace kavu
