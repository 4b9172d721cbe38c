// Compares the reader with a second one that takes a character at a time, the wrapping
// look-ups with the index, and split commands with simple rules.
#include "Check.h"
#include "core/TmatsReader.h"
#include "core/document/CommandIndex.h"
#include "core/text/Text.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

namespace {

using namespace kavu;

struct Cut {
    bool found = false;
    std::string command;
    std::size_t length = 0;
};

/// Cuts commands one character at a time: slow, and simple enough to be trusted.
class SlowReader {
  public:
    explicit SlowReader(std::string_view text) : text_(text) {}

    Cut nextRaw(long& lines) {
        Cut cut;
        while (at_ < text_.size() && isDropped(text_[at_])) {
            ++at_;
        }
        std::string buffer;
        char previous = 0;
        while (at_ < text_.size() && !cut.found) {
            const char c = text_[at_++];
            if (c == '\n') {
                ++lines;
                buffer += previous == '\r' ? "\n" : "\r\n";
            } else if (c != '\r' || previous != '\r') {
                buffer += c;
            }
            previous = c;
            cut.found = c == ';';
        }
        ++lines;
        if (cut.found) {
            while (buffer.size() > 2 && buffer[buffer.size() - 2] == ' ') {
                buffer.erase(buffer.size() - 2, 1);
            }
            cut.command = buffer;
        }
        cut.length = buffer.size();
        return cut;
    }

    Cut next(long& lines) {
        auto cut = nextRaw(lines);
        while (cut.found && equalsIgnoreCase(cut.command.substr(0, 8), "COMMENT:")) {
            cut = nextRaw(lines);
        }
        return cut;
    }

  private:
    static bool isDropped(char c) {
        return std::string_view("\n\r\t \x1A").find(c) != std::string_view::npos;
    }

    std::string_view text_;
    std::size_t at_ = 0;
};

/// Cuts the text with both readers and returns the commands.
std::vector<std::string> compareCuts(std::string_view text, bool raw) {
    std::vector<std::string> commands;
    TmatsReader reader;
    SlowReader slow(text);
    auto source = ByteSource::fromMemory(text);
    long lines = 0;
    long slowLines = 0;
    for (bool found = true; found;) {
        std::string command;
        std::size_t length = 0;
        found = raw ? reader.nextRawCommand(source, command, &lines, &length)
                    : reader.nextCommand(source, command, &lines, &length);
        const auto expected = raw ? slow.nextRaw(slowLines) : slow.next(slowLines);
        KAVU_CHECK(found == expected.found);
        KAVU_CHECK(command == expected.command);
        KAVU_CHECK(length == expected.length);
        KAVU_CHECK(lines == slowLines);
        if (found) {
            commands.push_back(command);
        }
    }
    return commands;
}

void compareSubstitutions(std::string_view text, const std::vector<std::string>& commands) {
    TmatsReader reader;
    reader.addSubstitution("&", "&amp;");
    reader.addSubstitution("<", "&lt;");
    auto source = ByteSource::fromMemory(text);
    bool changed = false;
    for (const auto& command : commands) {
        std::string expected;
        for (const char c : command) {
            expected += c == '&' ? "&amp;" : c == '<' ? "&lt;" : std::string(1, c);
        }
        changed = changed || expected != command;
        std::string actual;
        std::size_t length = 0;
        KAVU_CHECK(reader.nextRawCommand(source, actual, nullptr, &length));
        KAVU_CHECK(actual == expected);
        KAVU_CHECK(length == expected.size());
    }
    KAVU_CHECK((reader.substitutionFlags() != 0) == changed);
    KAVU_CHECK(((reader.substitutionFlags() & substitution::kAny) != 0) == changed);
}

/// The text as a file that is opened by its path but never on a disk.
class MemoryFile {
  public:
    explicit MemoryFile(std::string_view text) : descriptor_(memfd_create("reader", MFD_CLOEXEC)) {
        KAVU_CHECK(descriptor_ >= 0);
        while (!text.empty()) {
            const auto written = write(descriptor_, text.data(), text.size());
            KAVU_CHECK(written > 0);
            text.remove_prefix(static_cast<std::size_t>(written));
        }
    }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile() { close(descriptor_); }
    [[nodiscard]] std::string path() const {
        return "/proc/self/fd/" + std::to_string(descriptor_);
    }

  private:
    int descriptor_;
};

/// Looks up codes of the text in an order that the text chooses, wrapping around the file
/// and in the index.
void compareLookUps(std::string_view text, const std::vector<std::string>& commands) {
    std::vector<std::string> codes = {"", "P-1\\MISSING"};
    for (const auto& command : commands) {
        if (codes.size() < 40) {
            codes.push_back(command.substr(0, command.find(':')));
            codes.push_back(lowerAscii(codes.back()));
        }
    }
    TmatsReader ringReader;
    TmatsReader indexReader;
    int ringTruncated = 0;
    int indexTruncated = 0;
    ringReader.setLogFile("", &ringTruncated);
    indexReader.setLogFile("", &indexTruncated);
    const MemoryFile file(text);
    auto ring = ByteSource::fromMemory(text);
    CommandIndex index;
    KAVU_CHECK(index.readFile(indexReader, file.path()).ok());
    std::uint32_t order = 2166136261u;
    for (const char c : text) {
        order = (order ^ static_cast<unsigned char>(c)) * 16777619u;
    }
    for (int i = 0; i < 24; ++i) {
        order = order * 1664525u + 1013904223u;
        // The codes are passed through `%s`, as they come from the text.
        const auto& code = codes[(order >> 8) % codes.size()];
        const int limit = static_cast<int>(order >> 28) - 8;
        const auto slow = ringReader.findField(nullptr, ring, "", "%s", limit, code);
        const auto fast = index.findField(indexReader, nullptr, code, limit);
        KAVU_CHECK(slow == fast);
        KAVU_CHECK(ringTruncated == indexTruncated);
        KAVU_CHECK(!slow || !slow->empty());
        KAVU_CHECK(!slow || limit <= 0 || slow->size() <= static_cast<std::size_t>(limit));
    }
}

void checkParts(const std::string& command) {
    const auto parts = splitCommand(command);
    const auto backslash = command.find('\\');
    KAVU_CHECK(parts.group == command.substr(0, backslash));
    KAVU_CHECK(parts.code.find(':') == std::string::npos);
    KAVU_CHECK(parts.value.find(';') == std::string::npos);
    std::string joined = parts.group;
    if (backslash != std::string::npos) {
        joined += "\\" + parts.code;
        const auto colon = command.find(':', backslash);
        joined += colon == std::string::npos ? "" : ":" + parts.value + ";";
    }
    // The command is cut at its first semicolon, so it has no other.
    KAVU_CHECK(joined == command);
}

/// Compares the four numbers with the C library where its behaviour is defined: texts
/// without a NUL and numbers that fit.
void checkIndices(const std::string& command) {
    const auto indices = parseCommandIndices(command);
    KAVU_CHECK(indices.count >= 0 && indices.count <= 4);
    const auto code = command.substr(0, command.find(':'));
    std::size_t digits = 0;
    for (const char c : code) {
        digits = isDigit(c) ? digits + 1 : 0;
        if (digits > 9 || c == '\0') {
            return;
        }
    }
    KAVU_CHECK(indices.letter == (code.empty() ? '\0' : code[0]));
    const auto backslash = code.find('\\');
    const auto hyphen = backslash == std::string::npos ? backslash : code.find('-', backslash);
    int n[4] = {0, 0, 0, 0};
    const int read =
        hyphen == std::string::npos
            ? 0
            : std::sscanf(code.c_str() + hyphen + 1, "%d-%d-%d-%d", &n[0], &n[1], &n[2], &n[3]);
    KAVU_CHECK(indices.count == (read < 0 ? 0 : read));
    for (int i = 0; i < 4; ++i) {
        KAVU_CHECK(indices.fields[i] == n[i]);
    }
    const bool hasGroup = code.size() > 1 && code[1] == '-';
    KAVU_CHECK(indices.group == (hasGroup ? std::atol(code.c_str() + 2) : 0));
}

void checkRecord(const std::string& comment) {
    auto parts = splitCommentRecord(comment);
    KAVU_CHECK(parts.record.size() + parts.plain.size() == comment.size());
    KAVU_CHECK(parts.record.empty() == (comment.find("[KAVU:") == std::string::npos));
    KAVU_CHECK(commentRecordValue(parts.record, "D1") == commentRecordValue(comment, "D1"));
    auto record = parts.record;
    setCommentRecordValue(record, "D1", "some:value");
    KAVU_CHECK(commentRecordValue(record, "D1") == "some:value");
    KAVU_CHECK(record.starts_with("[KAVU: ") && record.ends_with("]"));
    const auto once = record;
    setCommentRecordValue(record, "D1", "some:value");
    KAVU_CHECK(record == once);
    setCommentRecordValue(record, "D1", "");
    KAVU_CHECK(!commentRecordValue(record, "D1"));
    KAVU_CHECK(record.empty() || splitCommentRecord(record).plain.empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto raw = compareCuts(text, true);
    const auto commands = compareCuts(text, false);
    compareSubstitutions(text, raw);
    compareLookUps(text, commands);
    for (const auto& command : raw) {
        checkParts(command);
        checkIndices(command);
        checkRecord(command.substr(command.find(':') + 1));
    }
    checkRecord(std::string(text));
    return 0;
}
