#include "core/document/GroupFile.h"

#include "core/TmatsReader.h"
#include "core/document/DocumentFiles.h"
#include "core/document/GroupFiles.h"
#include "core/files/FileIo.h"
#include "core/text/Text.h"

#include <unordered_set>

namespace kavu {

namespace {

/// The codes of commands are compared without regard to case and trailing blanks.
std::string codeKey(const CommandView& command) {
    return lowerAscii(keyOf(command));
}

std::unordered_set<std::string> codesOf(std::string_view text) {
    std::unordered_set<std::string> codes;
    auto source = ByteSource::fromMemory(text);
    TmatsReader reader;
    std::string command;
    while (reader.nextCommand(source, command)) {
        codes.insert(codeKey(viewCommand(command)));
    }
    return codes;
}

}  // namespace

IoStatus GroupFile::open(const DocumentFiles& files, TmatsReader& reader, char letter, int index,
                         GroupFile& group, Comments comments) {
    return openNamed(files, reader, groupFile(letter, index), group, comments);
}

IoStatus GroupFile::openNamed(const DocumentFiles& files, TmatsReader& reader, std::string name,
                              GroupFile& group, Comments comments) {
    group = {};
    group.name_ = std::move(name);
    auto status = group.commands_.readFile(reader, files.path(group.name_), comments);
    group.exists_ = status.ok();
    return status;
}

std::size_t GroupFile::firstOf(std::string_view code) const {
    std::size_t place = 0;
    while (place < commands_.size() && !equalsIgnoreCase(keyOf(commands_.at(place)), code)) {
        ++place;
    }
    return place;
}

std::string_view GroupFile::value(std::string_view code) const {
    for (std::size_t place = 0; place < commands_.size(); ++place) {
        const auto command = commands_.at(place);
        if (!command.value.empty() && equalsIgnoreCase(keyOf(command), code)) {
            return command.value;
        }
    }
    return {};
}

void GroupFile::set(std::string_view code, std::string_view stored,
                    const std::function<std::size_t()>& place) {
    auto at = firstOf(code);
    if (at == commands_.size()) {
        at = place();
        // What is in front of a command, such as a comment on it, stays there.
        while (at > 0 && at < commands_.size() && commands_.at(at - 1).head.empty()) {
            --at;
        }
    }
    rebuild(code, at, std::string(code).append(":").append(stored).append(";"));
}

void GroupFile::erase(std::string_view code) {
    rebuild(code, commands_.size() + 1, {});
}

void GroupFile::rebuild(std::string_view withoutCode, std::size_t at, std::string_view added) {
    CommandIndex all;
    for (std::size_t place = 0; place <= commands_.size(); ++place) {
        if (place == at) {
            all.add(added);
        }
        if (place == commands_.size()) {
            break;
        }
        if (const auto command = commands_.at(place);
            !equalsIgnoreCase(keyOf(command), withoutCode)) {
            all.add(command.text);
            if (commands_.isRead(place)) {
                all.markRead(all.size() - 1);
            }
        }
    }
    commands_ = std::move(all);
    changed_ = true;
}

void GroupFile::recode(const std::function<bool(std::string& code)>& change) {
    CommandIndex left;
    for (std::size_t place = 0; place < commands_.size(); ++place) {
        const auto command = commands_.at(place);
        std::string text(command.code);
        if (command.hasColon && !change(text)) {
            continue;
        }
        left.add(text.append(command.text.substr(command.code.size())));
        if (commands_.isRead(place)) {
            left.markRead(left.size() - 1);
        }
    }
    commands_ = std::move(left);
    changed_ = true;
}

std::vector<std::string> GroupFile::leftovers(std::string_view rewritten) const {
    const auto written = codesOf(rewritten);
    std::unordered_set<std::string> read;
    for (std::size_t place = 0; place < commands_.size(); ++place) {
        if (commands_.isRead(place)) {
            read.insert(codeKey(commands_.at(place)));
        }
    }
    std::vector<std::string> lost;
    for (std::size_t place = 0; place < commands_.size(); ++place) {
        const auto command = commands_.at(place);
        if (command.head.empty()) {
            continue;
        }
        const auto code = codeKey(command);
        const bool isWritten = written.contains(code);
        const bool isRepeat = read.contains(code);
        if (!commands_.isRead(place) && isWritten == isRepeat) {
            lost.emplace_back(command.text);
        }
    }
    return lost;
}

IoStatus GroupFile::store(DocumentFiles& files) const {
    std::string bytes;
    for (std::size_t place = 0; place < commands_.size(); ++place) {
        bytes.append(commands_.at(place).text).append("\r\n");
    }
    return files.put(name_, bytes);
}

}  // namespace kavu
