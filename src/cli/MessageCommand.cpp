// The command `message`: the tree of the message data of a link.
#include "application/Application.h"
#include "bus/StreamDataEdition.h"
#include "bus/message/MessageEdit.h"
#include "cli/EditRun.h"
#include "core/TmatsDocument.h"
#include "core/text/Text.h"

namespace kavu::cli {

namespace {

std::string shown(std::string text) {
    fromStoredForm(text);
    return text;
}

Json childrenJson(const MessageStream& node, const MessageStream& stream);

Json nodeJson(const MessageStream& node, const MessageStream& stream, int number) {
    Json row = Json::object();
    const auto columns = factsOf(node.kind).columns;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        row[std::string(columns[i].name)] =
            jsonText(shown(std::string(shownText(node, i, stream))));
    }
    Json members{{"number", number},
                 {"label", jsonText(shown(messageLabel(node, stream)))},
                 {"row", std::move(row)}};
    switch (node.kind) {
        case MessageKind::Stream:
            members["messages"] = childrenJson(node, stream);
            break;
        case MessageKind::Message:
            members["fields"] = childrenJson(fieldsOf(node), stream);
            members["measurements"] = childrenJson(measurementsOf(node), stream);
            break;
        case MessageKind::Measurement:
            members["locations"] = childrenJson(node, stream);
            break;
        default:
            break;
    }
    return members;
}

Json childrenJson(const MessageStream& node, const MessageStream& stream) {
    Json children = Json::array();
    for (const auto& child : node.children) {
        children.push_back(nodeJson(child, stream, static_cast<int>(children.size()) + 1));
    }
    return children;
}

void addText(const MessageStream& node, const MessageStream& stream, int level, std::string& text) {
    text += treeLine(level, messageLabel(node, stream));
    for (const auto& child : node.children) {
        addText(child, node.kind == MessageKind::Root ? child : stream, level + 1, text);
    }
}

void addModel(const MessageGroup& group, CommandOutput& output) {
    output.members["group"] = group.index;
    output.members["fields"] = {{"TA", jsonText(shown(group.testArticle))},
                                {"COM", jsonText(shown(group.comment))}};
    output.members["label"] = messageLabel(group.root, group.root);
    Json streams = Json::array();
    for (const auto& stream : group.root.children) {
        streams.push_back(nodeJson(stream, stream, static_cast<int>(streams.size()) + 1));
    }
    output.members["streams"] = std::move(streams);
}

}  // namespace

bool messageCommand(CommandContext& context, CommandOutput& output) {
    auto& application = context.application;
    auto& document = application.context();
    MessageGroup group;
    if (!knowsMessages(document, context.ui) || !isKnownLink(context) ||
        !loadMessages(document, context.ui, context.line.link, group)) {
        return false;
    }
    MessageEdit edit(document, group, &application.measurementNames());
    return finishEdit(
        context, output, edit, [&] { return storeMessages(document, context.ui, group); },
        [&](CommandOutput& printed) {
            context.line.json ? addModel(group, printed)
                              : addText(group.root, group.root, 0, printed.text);
        });
}

}  // namespace kavu::cli
