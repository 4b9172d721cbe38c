// What became of the commands of a file: each must be in the file that was saved, or somebody must
// have been told that it is not.
#pragma once

#include "Check.h"
#include "core/TmatsReader.h"
#include "core/command/CommandPath.h"
#include "core/document/Banner.h"
#include "core/text/Text.h"
#include "core/text/TextEncoding.h"
#include "support/RecordingInterface.h"

#include <algorithm>
#include <cstdio>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace kavu::fuzz {

/// A command of a file as a save writes it.
struct FileCommand {
    bool isComment = false;
    char letter = 0;  ///< 0 for a comment
    std::int64_t group = 0;
    std::string text;  ///< with real line breaks
    std::string field;
    std::string value;

    /// The command whatever its group's number is.
    [[nodiscard]] std::string withoutGroup() const {
        return field.empty() ? text
                             : std::string(1, letter) + "\\" + lowerAscii(field) + ":" + value;
    }
};

/// A command as it comes out of a save and a read of what was saved.
inline std::string normalised(std::string text) {
    constexpr int kPasses = 3;  // a line break of the one form may make one of the other
    for (int pass = 0; pass < kPasses; ++pass) {
        fromStoredForm(text);
        auto source = ByteSource::fromMemory(text);
        TmatsReader reader;
        std::string command;
        if (reader.nextRawCommand(source, command)) {
            text = command;
        }
    }
    return text;
}

inline FileCommand fileCommand(const std::string& raw) {
    FileCommand command;
    command.text = normalised(raw);
    command.isComment = isComment(command.text);
    if (command.isComment) {
        return command;
    }
    const auto view = viewCommand(command.text);
    command.letter = command.text.front();
    if (!view.head.empty()) {
        dropLeadingZeros(command.text);
        const auto whole = viewCommand(command.text);
        command.field = trimRight(whole.field);
        command.value = whole.value;
    }
    command.group = command.text.size() > 2 && command.text[1] == '-'
                        ? leadingInteger(std::string_view(command.text).substr(2))
                        : 0;
    return command;
}

/// The commands of a file; the banner of a save is none of them.
inline std::vector<FileCommand> commandsOf(std::string_view bytes) {
    std::vector<FileCommand> commands;
    auto source = ByteSource::fromMemory(bytes);
    if (bytes.starts_with(kByteOrderMark)) {
        source.take(kByteOrderMark.size());
    }
    (void)cutFiller(source);
    TmatsReader reader;
    BannerFilter banner;
    std::string raw;
    const auto addAll = [&commands](const std::vector<FileComment>& comments) {
        for (const auto& comment : comments) {
            commands.push_back(fileCommand(comment.text));
        }
    };
    while (reader.nextRawCommand(source, raw)) {
        if (isComment(raw)) {
            addAll(banner.add({0, raw}));
            continue;
        }
        addAll(banner.end());
        commands.push_back(fileCommand(raw));
    }
    addAll(banner.end());
    return commands;
}

/// A command of a group that documents have, whatever its number.
inline bool isOfKnownGroup(const FileCommand& command) {
    if (command.text.size() < 2) {
        return false;
    }
    const char second = command.text[1];
    return (second == '\\' && (command.letter == 'G' || command.letter == 'H')) ||
           (second == '-' &&
            std::string_view("TRMPDBASVC").find(command.letter) != std::string_view::npos);
}
inline bool isOfSavedGroup(const FileCommand& command) {
    return isOfKnownGroup(command) && (command.text[1] == '\\' || command.letter == 'C' ||
                                       (command.group >= 1 && command.group <= 99));
}

/// All that was told, as one text.
inline std::string everythingTold(const test::RecordingInterface& ui) {
    std::string text;
    for (const auto& note : ui.notes) {
        text += note + "\n";
    }
    for (const auto& log : ui.logs) {
        text += log.text + "\n";
    }
    for (const auto& box : ui.boxes) {
        text += box.text + box.details + "\n";
    }
    return text;
}

/// The number in front of the remark that contains `part`, 1 for one that begins with a word.
inline long numberTold(const test::RecordingInterface& ui, std::string_view part) {
    for (const auto& note : ui.notes) {
        if (note.find(part) != std::string::npos) {
            return isDigit(note.front()) ? static_cast<long>(leadingInteger(note)) : 1;
        }
    }
    return 0;
}

/// The commands of `before` that are not among those of `after`, repetitions counted.
inline std::vector<const FileCommand*> lostCommands(
    const std::vector<FileCommand>& before, const std::vector<FileCommand>& after,
    const std::function<std::string(const FileCommand&)>& key) {
    std::map<std::string, long> left;
    for (const auto& command : after) {
        ++left[key(command)];
    }
    std::vector<const FileCommand*> lost;
    for (const auto& command : before) {
        if (--left[key(command)] < 0) {
            lost.push_back(&command);
        }
    }
    return lost;
}

// --- The C group --------------------------------------------------------------------------------
// It is written from records: under other numbers, and in an order and a form of its own.

/// True for a command that belongs to the records. One that cannot be taken apart is kept as it is.
inline bool isOfConversions(const FileCommand& command) {
    return command.letter == 'C' && !command.field.empty();
}

/// The command as it is written from a record, whatever the number of that is.
inline std::string recordKey(const FileCommand& command) {
    const auto field = lowerAscii(trim(command.field));
    const auto value = trimBlanks(command.value);
    const bool isName = field.starts_with("dcn");
    if (field == "sr") {
        return field;  // cut to the precision of the settings
    }
    if (field.ends_with("\\n")) {
        // A count is written as its number.
        return field + ":" + std::to_string(std::max(0, leadingInt(value)));
    }
    return isName ? "dcn:" + std::string(trimRight(value)) : field + ":" + std::string(value);
}

/// Checks that each command of the C groups is among the saved ones, or was told of: by the number
/// of those that are no part of their record, by a message on a value or a name, or with its group.
inline void checkConversions(const std::vector<FileCommand>& before,
                             const std::vector<FileCommand>& after,
                             const test::RecordingInterface& ui) {
    std::map<std::int64_t, std::string> names;
    std::map<std::string, int> uses;
    for (const auto& command : before) {
        const auto value = trimRight(trimBlanks(command.value));
        if (isOfConversions(command) && startsWithIgnoreCase(trim(command.field), "DCN") &&
            !value.empty() && names.emplace(command.group, value).second) {
            ++uses[std::string(cutToBytes(value, 32))];
        }
    }
    const bool hasRefused = ui.countLogs(317) > 0;
    const bool hasCut = ui.countLogs(315) + ui.countLogs(318) > 0;
    const auto told = everythingTold(ui);
    long leftOut = 0;
    const FileCommand* example = nullptr;
    for (const auto* const lost : lostCommands(before, after, recordKey)) {
        const auto name = names.find(lost->group);
        const bool isNamed = name != names.end();
        if (!isOfConversions(*lost) || trimBlanks(lost->value).empty() ||
            (!isNamed && told.find("without a name (DCN)") != std::string::npos) ||
            (isNamed && hasRefused && uses[std::string(cutToBytes(name->second, 32))] > 1) ||
            (hasCut && told.find(trim(lost->field)) != std::string::npos)) {
            continue;
        }
        ++leftOut;
        example = lost;
    }
    if (leftOut > numberTold(ui, "no part of ")) {
        std::fprintf(stderr, "lost: %ld like %s\n", leftOut, example->text.c_str());
        KAVU_CHECK(false);
    }
}

}  // namespace kavu::fuzz
