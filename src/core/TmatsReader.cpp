#include "core/TmatsReader.h"

#include "core/command/CommandPath.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"

#include <algorithm>
#include <cstdlib>

namespace kavu {

namespace {

constexpr char kFiller = 26;  // Ctrl-Z

constexpr bool isLeadingSpace(char c) {
    return c == '\n' || c == '\r' || c == '\t' || c == ' ' || c == kFiller;
}

/// Skips what precedes a command: white space and Ctrl-Z, which are counted.
void skipLeadingSpace(ByteSource& source, std::uint64_t& filler) {
    for (auto window = source.window(); !window.empty(); window = source.window()) {
        std::size_t at = 0;
        while (at < window.size() && isLeadingSpace(window[at])) {
            filler += window[at++] == kFiller ? 1 : 0;
        }
        source.take(at);
        if (at < window.size()) {
            return;
        }
    }
}

/// Reads bytes from a place. False if the source has fewer.
bool takeBytes(ByteSource& source, std::uint64_t from, std::size_t count, std::string& bytes) {
    source.seek(from);
    bytes.clear();
    while (bytes.size() < count) {
        const auto window = source.window().substr(0, count - bytes.size());
        if (window.empty()) {
            return false;
        }
        bytes.append(window);
        source.take(window.size());
    }
    return true;
}

/// Appends the bytes of a command and normalises its line ends: a line feed without a
/// carriage return before it gets one, a run of carriage returns becomes one.
class CommandText {
  public:
    explicit CommandText(std::string& text) : text_(text) { text.clear(); }

    void append(std::string_view bytes) {
        if (bytes.find('\n') == std::string_view::npos &&
            bytes.find('\r') == std::string_view::npos) {
            text_.append(bytes);
            previous_ = bytes.back();
            return;
        }
        text_.reserve(text_.size() + bytes.size() + 16);
        for (const char c : bytes) {
            appendOne(c);
        }
    }
    [[nodiscard]] long lineFeeds() const { return lineFeeds_; }

  private:
    void appendOne(char c) {
        if (c == '\n') {
            ++lineFeeds_;
            if (previous_ != '\r') {
                text_.push_back('\r');
            }
            text_.push_back('\n');
        } else if (c != '\r' || previous_ != '\r') {
            text_.push_back(c);
        }
        previous_ = c;
    }

    std::string& text_;
    char previous_ = 0;
    long lineFeeds_ = 0;
};

/// Appends the bytes up to and including the next `;`. False if there is none.
bool takeThroughSemicolon(ByteSource& source, CommandText& text) {
    for (auto window = source.window(); !window.empty(); window = source.window()) {
        const auto semicolon = window.find(';');
        const bool complete = semicolon != std::string_view::npos;
        const auto count = complete ? semicolon + 1 : window.size();
        text.append(window.substr(0, count));
        source.take(count);
        if (complete) {
            return true;
        }
    }
    return false;
}

/// The text up to its first `;`, if there is no blank in front of that; empty otherwise.
std::string_view trimmedCommandIn(std::string_view text) {
    const auto command = text.substr(0, text.find(';') + 1);
    const bool isTrimmed = command.size() <= 2 || command[command.size() - 2] != ' ';
    return isTrimmed ? command : std::string_view();
}

/// The command at the front of some text if it is whole there and is as it is to be: on one
/// line, without blanks in front of its `;`. Empty otherwise.
std::string_view wholeCommandIn(std::string_view text) {
    const auto command = trimmedCommandIn(text);
    return isPrintable(command) || !holdsLineBreak(command) ? command : std::string_view();
}

/// Takes the next command if it is whole in the window; nothing is taken otherwise. Ctrl-Z in front
/// of it is counted.
std::string_view takeWholeCommand(ByteSource& source, std::uint64_t& filler) {
    const auto window = source.window();
    std::size_t first = 0;
    while (first < window.size() && isLeadingSpace(window[first])) {
        ++first;
    }
    const auto command = wholeCommandIn(window.substr(first));
    if (!command.empty()) {
        for (const char c : window.substr(0, first)) {
            filler += c == kFiller ? 1 : 0;
        }
        source.take(first + command.size());
    }
    return command;
}

/// Puts the `;` directly after the last character that is not a blank.
void trimBeforeSemicolon(std::string& command) {
    if (command.size() <= 2) {
        return;
    }
    std::size_t end = command.size() - 1;
    while (end > 0 && command[end - 1] == ' ') {
        --end;
    }
    if (end < command.size() - 1) {
        command[end] = ';';
        command.resize(end + 1);
    }
}

constexpr const char* kTooLong =
    "The TMATS command '%s:%s;'%swas too long. This field can only be %d characters long.";

struct LimitReport {
    const char* title;
    const char* closing;
};
constexpr LimitReport kCut{"ERROR Parsing TMATS File", "This field has been truncated."};
constexpr LimitReport kKept{
    "TMATS File Warning", "This field will be processed even though it was longer than expected."};

}  // namespace

std::optional<std::string_view> TmatsReader::viewNextRaw(ByteSource& source, std::string& room,
                                                         long* lineCounter, std::size_t* length) {
    if (substitutions_.empty()) {
        if (const auto whole = takeWholeCommand(source, filler_); !whole.empty()) {
            if (lineCounter != nullptr) {
                ++*lineCounter;
            }
            if (length != nullptr) {
                *length = whole.size();
            }
            return whole;
        }
    }
    if (!readRaw(source, room, lineCounter, length)) {
        return std::nullopt;
    }
    return room;
}

std::optional<std::string_view> TmatsReader::viewNext(ByteSource& source, std::string& room,
                                                      long* lineCounter, std::size_t* length) {
    auto command = viewNextRaw(source, room, lineCounter, length);
    while (command && isComment(*command)) {
        command = viewNextRaw(source, room, lineCounter, length);
    }
    return command;
}

std::string_view TmatsReader::takeLines(ByteSource& source, unsigned max, unsigned& count,
                                        std::string_view head) {
    constexpr std::string_view kLineEnd = "\r\n";
    skipLeadingSpace(source, filler_);
    const auto window = source.window();
    std::size_t end = 0;
    for (count = 0; count < max && substitutions_.empty(); ++count) {
        const auto rest = window.substr(end);
        if (!rest.starts_with(head)) {
            break;
        }
        const auto command = trimmedCommandIn(rest);
        const auto next = end + command.size() + kLineEnd.size();
        // Neither a line break nor one of the bytes that stand for it is printable.
        if (command.empty() || isLeadingSpace(command.front()) || isComment(command) ||
            !isPrintable(command) ||
            window.substr(end + command.size(), kLineEnd.size()) != kLineEnd) {
            break;
        }
        end = next;
    }
    source.take(end);
    return window.substr(0, end);
}

std::uint64_t cutFiller(ByteSource& source) {
    using namespace std::string_view_literals;
    constexpr std::uint64_t kBlock = 64 * 1024;
    const auto start = source.position();
    auto end = source.size();
    bool isPadded = false;
    bool endsCommand = false;
    std::string block;
    for (auto last = std::string::npos; last == std::string::npos && end > start;) {
        const auto from = end - std::min(end - start, kBlock);
        if (!takeBytes(source, from, static_cast<std::size_t>(end - from), block)) {
            break;
        }
        last = block.find_last_not_of(" \t\r\n\0\x1A"sv);
        const auto filler = last == std::string::npos ? 0 : last + 1;
        isPadded = isPadded || block.find_first_of("\0\x1A"sv, filler) != std::string::npos;
        endsCommand = filler > 0 && block[last] == ';';
        end = from + filler;
    }
    source.seek(start);
    if (!isPadded || !endsCommand) {
        return 0;
    }
    source.endAt(end);
    return source.size() - end;
}

bool TmatsReader::nextRawCommand(ByteSource& source, std::string& command, long* lineCounter,
                                 std::size_t* length) {
    const auto view = viewNextRaw(source, command, lineCounter, length);
    if (view && view->data() != command.data()) {
        command.assign(*view);
    }
    return view.has_value();
}

/// Reads a command whose text may lie in several windows and may have to be changed.
bool TmatsReader::readRaw(ByteSource& source, std::string& command, long* lineCounter,
                          std::size_t* length) {
    skipLeadingSpace(source, filler_);
    CommandText text(command);
    const bool complete = takeThroughSemicolon(source, text);
    if (complete) {
        trimBeforeSemicolon(command);
        if (!substitutions_.empty()) {
            substitute(command);
        }
    }
    if (lineCounter != nullptr) {
        *lineCounter += text.lineFeeds() + 1;
    }
    if (length != nullptr) {
        *length = command.size();
    }
    if (!complete) {
        command.clear();
    }
    return complete;
}

bool TmatsReader::nextCommand(ByteSource& source, std::string& command, long* lineCounter,
                              std::size_t* length) {
    while (nextRawCommand(source, command, lineCounter, length)) {
        if (!isComment(command)) {
            return true;
        }
    }
    return false;
}

std::string TmatsReader::nextCommandString(ByteSource& source, long* lineCounter) {
    std::string command;
    nextCommand(source, command, lineCounter);
    return command;
}

std::optional<std::string_view> TmatsReader::readFieldForward(UserInterface* parent,
                                                              ByteSource& source,
                                                              std::string_view code, int limit) {
    yieldToInterface(parent);
    if (!nextCommand(source, current_)) {
        return std::nullopt;
    }
    const auto command = viewCommand(current_);
    if (command.value.empty() || !equalsIgnoreCase(command.code, code)) {
        return std::nullopt;
    }
    return applyLimit(parent, command.code, command.value, limit);
}

std::string_view TmatsReader::applyLimit(UserInterface* parent, std::string_view code,
                                         std::string_view value, int limit) {
    const auto size = static_cast<std::size_t>(std::llabs(limit));
    if (limit == 0 || value.size() <= size) {
        return value;
    }
    reportLimit(parent, code, value, limit);
    if (truncated_ != nullptr) {
        *truncated_ = 1;
    }
    return limit > 0 ? value.substr(0, size) : value;
}

void TmatsReader::reportLimit(UserInterface* parent, std::string_view code, std::string_view value,
                              int limit) {
    const auto& report = limit > 0 ? kCut : kKept;
    const auto size = std::llabs(limit);
    const std::string text =
        formatPrintf(kTooLong, code, value, "\n", size) + "\n\n" + report.closing;
    if (!logPath_.empty()) {
        if (!reported_.insert(std::string(code) + ":" + std::string(value)).second) {
            return;
        }
        FileWriter log;
        if (log.open(logPath_, WriteMode::Append).ok()) {
            log.write(formatPrintf("%s:\n\n\t", report.title));
            log.write(formatPrintf(kTooLong, code, value, "\n\t", size));
            log.write(formatPrintf("\n\t%s\n\n", report.closing));
            (void)log.close();
            if (parent != nullptr) {
                parent->logged({0, 0, report.title, text});
            }
            return;
        }
    }
    showBox(parent, text, report.title);
}

std::optional<std::string_view> TmatsReader::findCode(UserInterface* parent, ByteSource& source,
                                                      const std::string& code, int limit) {
    if (!source.isOpen()) {
        return std::nullopt;
    }
    const auto start = source.position();
    while (!source.atEnd()) {
        if (const auto value = readFieldForward(parent, source, code, limit)) {
            return value;
        }
    }
    source.seek(0);
    while (source.position() < start && !source.atEnd()) {
        if (const auto value = readFieldForward(parent, source, code, limit)) {
            return value;
        }
    }
    return std::nullopt;
}

bool TmatsReader::findIntCode(UserInterface* parent, ByteSource& source, const std::string& code,
                              int& value) {
    const auto text = findCode(parent, source, code, 0);
    value = text ? std::max(0, leadingInt(*text)) : 0;
    return text.has_value();
}

std::optional<std::string_view> TmatsReader::findBinaryCode(UserInterface* parent,
                                                            ByteSource& source, FileWriter* log,
                                                            bool acceptX, std::string_view prefix,
                                                            const std::string& code, int limit) {
    const auto value = findCode(parent, source, std::string(prefix) + code, limit);
    const auto allowed = acceptX ? std::string_view("01xX") : std::string_view("01");
    if (!value || value->find_first_not_of(allowed) == std::string_view::npos) {
        return value;
    }
    if (log != nullptr) {
        log->write(formatPrintf("ERROR: The following TMATS command has errors: \"%s%s:%s;\"\n",
                                prefix, code, *value));
        log->write(
            "According to the TMATS specification, this value must be a binary string made\n"
            "up of zeros and ones");
        log->write(acceptX ? ", or the letter 'X'." : ". ");
        log->write("\n\n");
    }
    return std::nullopt;
}

std::optional<std::string> TmatsReader::findContaining(ByteSource& source,
                                                       const std::string& code) {
    const std::string pattern = "\\" + code + ":";
    std::string command;
    while (nextCommand(source, command)) {
        if (command.find(pattern) != std::string::npos) {
            return command;
        }
    }
    return std::nullopt;
}

std::string TmatsReader::fullCode(std::string_view prefix, std::string_view code, PrintfArgs args) {
    return std::string(prefix) + formatPrintf(code, args);
}

void TmatsReader::setLogFile(const std::string& path, int* truncated) {
    logPath_ = path;
    truncated_ = truncated;
    reported_.clear();
}

void TmatsReader::addSubstitution(std::string_view search, std::string_view replacement) {
    if (!search.empty()) {
        substitutions_.emplace_back(search, replacement);
    }
}

void TmatsReader::clearSubstitutions() {
    substitutions_.clear();
    substitutionFlags_ = 0;
}

void TmatsReader::substitute(std::string& command) {
    std::string changed = command;
    for (const auto& [search, replacement] : substitutions_) {
        changed = replaceAll(changed, search, replacement);
    }
    if (changed == command) {
        return;
    }
    command = std::move(changed);
    const bool comment = command.find("\\COM:") != std::string::npos;
    substitutionFlags_ |= substitution::kAny;
    if (comment && startsWithIgnoreCase(command, "C-")) {
        substitutionFlags_ |= substitution::kConversionComment;
    } else if (comment && startsWithIgnoreCase(command, "P-")) {
        substitutionFlags_ |= substitution::kPcmComment;
    } else {
        substitutionFlags_ |= substitution::kOutsideComments;
    }
}

}  // namespace kavu
