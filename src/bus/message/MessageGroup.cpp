#include "bus/message/MessageGroup.h"

#include "bus/LengthReport.h"
#include "bus/RowReader.h"
#include "bus/StoreRows.h"
#include "core/TmatsDocument.h"
#include "core/TmatsReader.h"
#include "core/talk/FileReports.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"
#include "groups/DataSources.h"
#include "groups/GroupRecord.h"
#include "groups/GroupScan.h"
#include "groups/SourceList.h"

#include <algorithm>
#include <cctype>

namespace kavu {

namespace {

constexpr std::string_view kMessageGroup = "Message Data (S)";

// --- One value ----------------------------------------------------------------------------------

enum class Mapping {
    Plain,   ///< as it is
    Binary,  ///< one of the choices is known, all else is as it is
    Known,   ///< the choices are known in any case, all else is as it is
    Upper,   ///< as `Known`, and all is stored in capitals
    Exact,   ///< the choices are known by their very values
    OneOf,   ///< what is none of the others is the last choice
};

Mapping mappingOf(const Field& field) {
    static const std::unordered_map<std::string_view, Mapping> kMappings = {
        {message_field::kDataType.code, Mapping::Binary},
        {message_field::kLayout.code, Mapping::Known},
        {message_field::kStreamOrientation.code, Mapping::Known},
        {message_field::kMeasurementType.code, Mapping::Upper},
        {message_field::kFloatingPoint.code, Mapping::Exact},
        {message_field::kParity.code, Mapping::OneOf},
        {message_field::kParityOrder.code, Mapping::OneOf},
        {message_field::kOrientation.code, Mapping::OneOf},
    };
    const auto found = kMappings.find(field.code);
    return found == kMappings.end() ? Mapping::Plain : found->second;
}

/// The choice that stands for all that is not one: no parity, trailing the word, big endian.
const Choice& otherwise(const Field& field) {
    return field.code == message_field::kOrientation.code ? field.choices.front()
                                                          : field.choices.back();
}

/// Null if no choice that a list offers has this value (or this text).
const Choice* choiceOf(const Field& field, std::string_view Choice::*part, std::string_view text,
                       bool anyCase = true) {
    const auto found =
        std::find_if(field.choices.begin(), field.choices.end(), [&](const Choice& each) {
            return !each.text.empty() &&
                   (anyCase ? equalsIgnoreCase(each.*part, text) : each.*part == text);
        });
    return found == field.choices.end() ? nullptr : &*found;
}

std::string upperAscii(std::string_view text) {
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(), toUpperAscii);
    return upper;
}

// --- Reading ------------------------------------------------------------------------------------

class TreeReader {
  public:
    explicit TreeReader(RowReader& rows) : rows_(rows) {}

    /// False if the user has cancelled.
    [[nodiscard]] bool read(MessageStream& node, const MessageStream* stream, RowNumbers at) {
        const auto& facts = factsOf(node.kind);
        const auto& around = stream == nullptr ? node : *stream;
        for (std::size_t i = 0; i < facts.columns.size(); ++i) {
            // A text that does not apply is not read: what the file has of it is no part of this.
            if (applies(node.kind, i, node.row, around)) {
                const auto& field = *facts.columns[i].field;
                node.row[i] = shownValue(field, rows_.text(field, at));
            }
        }
        if (node.kind == MessageKind::Message) {
            return read(node.children[0], stream, at) && read(node.children[1], stream, at);
        }
        return facts.count == nullptr || readChildren(node, stream, at);
    }

  private:
    [[nodiscard]] bool readChildren(MessageStream& node, const MessageStream* stream,
                                    RowNumbers at) {
        const auto& facts = factsOf(node.kind);
        const auto* const inner = node.kind == MessageKind::Stream ? &node : stream;
        node.fileRows = rows_.count(*facts.count, at);
        node.children.reserve(node.fileRows);
        for (std::size_t i = 1; i <= node.fileRows; ++i) {
            auto& child = node.children.emplace_back(newMessageNode(facts.child));
            child.fileRow = i;
            if (rows_.cancelled() || !read(child, inner, at.row(i))) {
                return false;
            }
        }
        return true;
    }

    RowReader& rows_;
};

// --- Writing ------------------------------------------------------------------------------------

/// The rows of a node as the table of the group has them.
GroupRow recordOf(const MessageStream& node, const MessageStream& stream);

void addRows(const MessageStream& node, const MessageStream* stream, GroupRow& record) {
    const std::string count(factsOf(node.kind).count->code);
    auto& rows = record.lists[count];
    rows.reserve(node.children.size());
    for (const auto& child : node.children) {
        rows.push_back(recordOf(child, stream == nullptr ? child : *stream));
    }
    auto& read = record.fileRows[count];
    for (std::size_t i = 1; i <= node.fileRows; ++i) {
        read.insert(read.end(), i);
    }
}

GroupRow recordOf(const MessageStream& node, const MessageStream& stream) {
    GroupRow record;
    record.fileRow = node.fileRow;
    const auto& facts = factsOf(node.kind);
    for (std::size_t i = 0; i < facts.columns.size(); ++i) {
        if (applies(node.kind, i, node.row, stream)) {
            const auto& field = *facts.columns[i].field;
            record.set(field.code, storedValue(field, node.row[i]));
        }
    }
    if (node.kind == MessageKind::Message) {
        addRows(fieldsOf(node), &stream, record);
        addRows(measurementsOf(node), &stream, record);
    } else if (facts.count != nullptr) {
        addRows(node, &stream, record);
    }
    return record;
}

}  // namespace

std::string shownValue(const Field& field, std::string_view stored) {
    const auto mapping = mappingOf(field);
    const auto* const known = mapping == Mapping::Plain ? nullptr
                                                        : choiceOf(field, &Choice::value, stored,
                                                                   mapping != Mapping::Exact);
    switch (mapping) {
        case Mapping::Plain:
            break;
        case Mapping::Binary:
            if (known != nullptr && known == field.choices.data()) {
                return std::string(known->text);
            }
            break;
        case Mapping::OneOf:
            return std::string((known == nullptr ? otherwise(field) : *known).text);
        case Mapping::Known:
        case Mapping::Upper:
        case Mapping::Exact:
            if (known != nullptr) {
                return std::string(known->text);
            }
            break;
    }
    return std::string(stored);
}

std::string storedValue(const Field& field, std::string_view shown) {
    const auto mapping = mappingOf(field);
    if (shown.empty() || mapping == Mapping::Plain) {
        return std::string(shown);
    }
    const auto* const known = choiceOf(field, &Choice::text, shown, mapping != Mapping::Exact);
    switch (mapping) {
        case Mapping::Plain:
            break;
        case Mapping::Binary:
            if (known != nullptr && known == field.choices.data()) {
                return std::string(known->value);
            }
            break;
        case Mapping::Upper:
            return upperAscii(shown);
        case Mapping::OneOf:
        case Mapping::Known:
        case Mapping::Exact:
            if (known != nullptr) {
                return std::string(known->value);
            }
            break;
    }
    return std::string(shown);
}

bool loadMessages(DocumentContext& context, UserInterface* parent, std::string_view link,
                  MessageGroup& group) {
    group = MessageGroup{.link = std::string(link)};
    group.root = newMessageNode(MessageKind::Root);
    group.index = std::max(0, findGroupIndex(context, parent, 'S', link));
    if (group.index == 0) {
        return true;
    }
    setStatusText(parent, "Initializing Message Information...");
    const LengthReport lengths(context, parent);
    const auto status =
        GroupFile::open(context.files, context.reader, 'S', group.index, group.kept);
    if (!status.ok()) {
        reportUnableToRead(parent, status);
        return false;
    }
    RowReader rows(context.reader, parent, group.kept.commands(), groupHead('S', group.index),
                   messageFields());
    (void)rows.text(message_field::kDataLink);
    group.testArticle = rows.warnedText(message_field::kTestArticle);
    const bool complete = TreeReader(rows).read(group.root, nullptr, {});
    group.comment = rows.warnedText(message_field::kComment);
    group.corrected = lengths.hasAny();
    setStatusText(parent, "Edit Message Information.");
    return complete;
}

bool storeMessages(DocumentContext& context, UserInterface* parent, MessageGroup& group) {
    const int index =
        group.index > 0 ? group.index : indexForNew(context, parent, 'S', kMessageGroup);
    if (index == 0) {
        return false;
    }
    GroupRow record;
    record.set(message_field::kDataLink.code, group.link);
    record.set(message_field::kTestArticle.code, group.testArticle);
    record.set(message_field::kComment.code, group.comment);
    addRows(group.root, nullptr, record);
    if (!storeRows(context, parent, index, messageFields(), record, group.kept)) {
        return false;
    }
    group.index = index;
    return true;
}

std::string messageSheetTitle(std::string_view link) {
    return formatPrintf("Edit Message Attributes - Data Link: %s", link);
}

}  // namespace kavu
