#include "groups/SourceTransfer.h"

#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "core/document/GroupFiles.h"
#include "core/talk/FileReports.h"
#include "core/talk/Messages.h"
#include "vocabulary/References.h"
#include "vocabulary/StreamType.h"

namespace kavu {

namespace {

/// Begins the names of staged files, which no pass over the groups sees.
constexpr const char* kStaged = "STAGED";
constexpr std::size_t kLongestName = kNameLimit;

std::string linkKey(std::string_view name) {
    return std::string(trimTrailingBlanks(name.substr(0, kNameLimit)));
}

/// The name of a group in message 303 ("Unable to create new").
std::string_view calledInMessage(char letter) {
    switch (letter) {
        case 'T':
            return "RF";
        case 'R':
            return "Tape";
        case 'M':
            return "Multiplex";
        case 'B':
            return stream_type::kBus1553.text;
        case 'S':
            return stream_type::kPacket.text;
        default:
            return "PCM Format";
    }
}

}  // namespace

SourceTransfer::~SourceTransfer() {
    for (auto& [key, group] : groups_) {
        if (!group.staged.empty()) {
            (void)group.writer.close();
            (void)deleteFile(group.staged);
        }
    }
}

void SourceTransfer::renameLink(std::string_view oldName, std::string newName) {
    links_[linkKey(oldName)] = std::move(newName);
}

IoStatus SourceTransfer::findIndex(char letter, int& index) const {
    std::unordered_set<int> planned;
    for (const auto& [key, group] : groups_) {
        if (key.first == letter) {
            planned.insert(group.newIndex);
        }
    }
    for (index = kLeastGroupIndex; index <= kMostGroupIndex; ++index) {
        PathKind kind = PathKind::Missing;
        auto status = probePath(context_.store.pathOf(groupFile(letter, index)), kind);
        if (!status.ok() || (kind == PathKind::Missing && !planned.contains(index))) {
            return status;
        }
    }
    index = 0;
    return {};
}

bool SourceTransfer::expect(UserInterface* parent, char letter, int oldIndex) {
    if (expects(letter, oldIndex)) {
        return true;
    }
    int index = 0;
    if (const auto status = findIndex(letter, index); !status.ok()) {
        reportUnableToRead(parent, status);
        return false;
    }
    if (index == 0) {
        context_.messages.show(parent, 303, title::kError, kErrorBox, calledInMessage(letter));
        return false;
    }
    auto& group = groups_[{letter, oldIndex}];
    group.newIndex = index;
    group.prefix = groupHead(letter, index);
    const auto path = context_.store.pathOf(kStaged + groupFile(letter, index));
    if (const auto status = group.writer.open(path, WriteMode::Truncate); !status.ok()) {
        reportUnableToWrite(parent, status);
        return false;
    }
    group.staged = path;
    return true;
}

std::string SourceTransfer::newValue(char letter, std::string_view code, std::string_view value) {
    const auto refers = refersTo(letter, code);
    if (refers == Refers::Source && letter != 'V') {  // what a vendor adds is copied as it is
        return source_;
    }
    if (namesLink(refers)) {
        const auto link = links_.find(linkKey(value));
        return link == links_.end() ? std::string(value) : link->second;
    }
    if (!value.empty() && namesMeasurement(refers)) {
        auto name = affixes_.applied(value);
        if (met_.emplace(value).second) {
            measurements_.emplace_back(value, name);
        }
        return name;
    }
    return std::string(value);
}

void SourceTransfer::take(char letter, int oldIndex, std::string_view command) {
    const auto found = groups_.find({letter, oldIndex});
    const auto view = viewCommand(command);
    if (found == groups_.end() || view.field.empty()) {
        return;
    }
    auto& writer = found->second.writer;
    writer.write(found->second.prefix);
    writer.write(view.field);
    writer.put(':');
    writer.write(newValue(letter, view.field, view.value));
    writer.write(";\r\n");
}

bool SourceTransfer::takeFile(UserInterface* parent, char letter, int oldIndex) {
    const auto status =
        forEachCommand(context_.reader, context_.store.pathOf(groupFile(letter, oldIndex)),
                       [&](const std::string& command) {
                           take(letter, oldIndex, command);
                           return true;
                       });
    if (!status.ok()) {
        reportUnableToRead(parent, status);
    }
    return status.ok() && !cancelRequested(parent);
}

bool SourceTransfer::tellTooLong(UserInterface* parent) const {
    for (const auto& [oldName, newName] : measurements_) {
        if (newName != oldName && newName.size() > kLongestName) {
            showBox(parent,
                    formatPrintf("With this prefix and suffix the name of measurement '%s' would "
                                 "be longer than %d characters.",
                                 oldName, kNameLimit),
                    "Measurement Prefix And Suffix");
            return true;
        }
    }
    return false;
}

bool SourceTransfer::moveIn(UserInterface* parent) {
    IoStatus status;
    for (auto& [key, group] : groups_) {
        status = status.ok() ? group.writer.close() : status;
    }
    for (auto& [key, group] : groups_) {
        const auto name = groupFile(key.first, group.newIndex);
        status = status.ok() ? context_.files.adopt(group.staged, name) : status;
        if (status.ok()) {
            group.staged.clear();
        }
    }
    if (!status.ok()) {
        reportUnableToWrite(parent, status);
    }
    return status.ok();
}

}  // namespace kavu
