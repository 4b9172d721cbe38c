#include "core/talk/LoadNotes.h"

#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"

namespace kavu {

namespace {

constexpr std::string_view kGroupLetters = "GTRMPDBACHVS";
constexpr std::size_t kSampleLength = 60;

/// The start of the first line after line one that begins like a command, or npos.
std::size_t embeddedCommand(std::string_view command) {
    constexpr std::string_view kLineEnds = "\r\n\x14\x15";
    for (auto at = command.find_first_of(kLineEnds); at != std::string_view::npos;
         at = command.find_first_of(kLineEnds, at)) {
        at = command.find_first_not_of("\r\n\x14\x15 \t", at);
        if (at == std::string_view::npos) {
            break;
        }
        if (!leadingCode(command.substr(at)).empty()) {
            return at;
        }
    }
    return std::string_view::npos;
}

}  // namespace

std::string_view leadingCode(std::string_view line) {
    if (line.size() < 3 || kGroupLetters.find(line[0]) == std::string_view::npos) {
        return {};
    }
    std::size_t at = 1;
    if (line[at] == '-') {
        const auto digits = ++at;
        while (at < line.size() && isDigit(line[at])) {
            ++at;
        }
        if (at == digits) {
            return {};
        }
    }
    if (at >= line.size() || line[at] != '\\') {
        return {};
    }
    const auto end = line.find_first_of(":;\r\n\x14\x15 ", at);
    const bool complete = end != std::string_view::npos && line[end] == ':' && end > at + 1;
    return complete ? line.substr(0, end) : std::string_view();
}

void LoadNotes::Finding::add(long at, std::string_view command) {
    if (count++ == 0) {
        line = at;
        sample = std::string(cutToBytes(command, kSampleLength));
        sample += command.size() > kSampleLength ? "..." : "";
        for (char& c : sample) {
            c = c >= 0 && c < ' ' ? ' ' : c;
        }
    }
}

void LoadNotes::comment(long line, std::string_view command, bool kept) {
    if (!kept) {
        comments_.add(line, command);
    }
    if (const auto at = embeddedCommand(command); at != std::string_view::npos) {
        swallowing_.add(line, command.substr(at));
    }
}

void LoadNotes::severalLines(long line, std::string_view command) {
    if (const auto at = embeddedCommand(command); at != std::string_view::npos) {
        swallowed_.add(line, command.substr(at));
    }
}

std::string LoadNotes::Finding::text(PrintfFormat<long, std::string> one,
                                     PrintfFormat<long, long, std::string> many) const {
    return count == 1  ? formatPrintf(one, line, sample)
           : count > 1 ? formatPrintf(many, count, line, sample)
                       : std::string();
}

void LoadNotes::tell(UserInterface* parent, bool opened) const {
    if (parent == nullptr) {
        return;
    }
    tellLeftOut(*parent, opened);
    tellKept(*parent);
}

void LoadNotes::tellLeftOut(UserInterface& parent, bool opened) const {
    const auto tell = [&parent, opened](const std::string& text) {
        if (!text.empty()) {
            opened ? parent.loadRemark(text) : parent.note(text);
        }
    };
    if (byteOrderMark_) {
        tell("The file begins with a byte order mark. It is left out.");
    }
    if (filler_ > 0) {
        tell(
            formatPrintf("%llu bytes of filler (NUL or Ctrl-Z) follow the last command. "
                         "They are left out.",
                         filler_));
    }
    if (fillerBetween_ > 0) {
        tell(formatPrintf("%llu bytes of filler (Ctrl-Z) in front of commands are left out.",
                          fillerBetween_));
    }
    tell(unknown_.text("Line %ld: a command of no known group is left out: %s",
                       "%ld commands of no known group are left out, the first at line %ld: %s"));
    tell(range_.text("Line %ld: a command whose group index is not 1 to 99 will not be saved: %s",
                     "%ld commands whose group index is not 1 to 99 will not be saved, the first "
                     "at line %ld: %s"));
    tell(zeros_.text("Line %ld: an index with a 0 at its front is read as its number: %s",
                     "%ld commands have an index with a 0 at its front, which is read as its "
                     "number, the first at line %ld: %s"));
    tell(standIns_.text("Line %ld: a byte 20 or 21 of a value will be saved as a line break: %s",
                        "%ld values hold a byte 20 or 21, which will be saved as a line break, the "
                        "first at line %ld: %s"));
    tell(comments_.text("Line %ld: a comment of the file is left out: %s",
                        "%ld comments of the file are left out, the first at line %ld: %s"));
}

void LoadNotes::tellKept(UserInterface& parent) const {
    const auto tell = [&parent](const std::string& text) {
        if (!text.empty()) {
            parent.note(text);
        }
    };
    if (nulBytes_.count > 0) {
        tell(
            formatPrintf("NUL bytes were found in %ld commands, the first at line %ld. "
                         "They are kept as they are.",
                         nulBytes_.count, nulBytes_.line));
    }
    tell(swallowing_.text(
        "Line %ld: a COMMENT without its semicolon takes the command after it along: %s",
        "%ld COMMENTs without their semicolon take the commands after them along, the first at "
        "line %ld: %s"));
    tell(unsplit_.text(
        "Line %ld: a command without a colon, or without a backslash in front of it, is kept as it "
        "is: %s",
        "%ld commands without a colon, or without a backslash in front of it, are kept as they "
        "are, "
        "the first at line %ld: %s"));
    tell(swallowed_.text(
        "Line %ld: a value holds what looks like another command; is a semicolon missing in "
        "front of it? %s",
        "%ld values hold what looks like another command, as if a semicolon were missing, the "
        "first at line %ld: %s"));
}

}  // namespace kavu
