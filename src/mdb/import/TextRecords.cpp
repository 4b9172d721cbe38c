#include "mdb/import/TextRecords.h"

#include "core/text/Text.h"
#include "core/text/TextEncoding.h"

#include <algorithm>
#include <cerrno>

namespace kavu {

namespace {

constexpr std::size_t kMostQuotedLines = 100;
constexpr char kEndByte = 26;

/// Splits one record, of one line or, within quotes, of several.
class Splitter {
  public:
    Splitter(LineReader& lines, char delimiter, std::vector<std::string>& fields)
        : lines_(lines), delimiter_(delimiter), fields_(fields), text_(lines.take()) {}

    void run() {
        skipBlanks();
        if (at_ == text_.size()) {
            return;  // a blank line
        }
        while (takeField()) {
        }
    }

  private:
    [[nodiscard]] bool isBlank(char c) const {
        return (c == ' ' || c == '\t') && (c != delimiter_ || delimiter_ == ' ');
    }
    void skipBlanks() {
        while (at_ < text_.size() && isBlank(text_[at_])) {
            ++at_;
        }
    }

    /// True if another field follows.
    bool takeField() {
        skipBlanks();
        if (delimiter_ == ' ' && at_ == text_.size()) {
            return false;  // blanks at the end are no delimiter
        }
        if (at_ == text_.size() || text_[at_] != '"' || !takeQuoted()) {
            const auto end = std::min(text_.find(delimiter_, at_), text_.size());
            fields_.emplace_back(trimBlanks(std::string_view(text_).substr(at_, end - at_)));
            at_ = end;
        }
        if (at_ == text_.size()) {
            return false;
        }
        ++at_;  // the delimiter
        return true;
    }

    /// Takes a field in quotes and goes to the delimiter after it; false, with nothing taken, if
    /// it is not closed in front of one.
    bool takeQuoted() {
        const auto size = text_.size();
        std::string value;
        std::size_t line = 0;  // ahead of those in the text
        for (auto at = at_ + 1;; ++at) {
            while (at >= text_.size()) {
                const auto* const next = mayExtend_ && taken_ + line + 1 < kMostQuotedLines
                                             ? lines_.ahead(line)
                                             : nullptr;
                if (next == nullptr) {
                    // Whatever else is open in this record will not be closed there either.
                    mayExtend_ = false;
                    text_.resize(size);
                    return false;
                }
                text_ += '\n' + *next;
                ++line;
            }
            if (text_[at] != '"') {
                value += text_[at];
            } else if (at + 1 < text_.size() && text_[at + 1] == '"') {
                value += text_[at++];
            } else if (const auto end = endAfter(at + 1); end) {
                take(value, *end, line);
                return true;
            } else {
                text_.resize(size);
                return false;
            }
        }
    }

    void take(std::string_view value, std::size_t end, std::size_t lines) {
        fields_.emplace_back(trimBlanks(value));
        at_ = end;
        taken_ += lines;
        for (; lines > 0; --lines) {
            (void)lines_.take();
        }
    }

    /// The delimiter or end of the text that follows from `at` on, blanks apart.
    [[nodiscard]] std::optional<std::size_t> endAfter(std::size_t at) const {
        while (at < text_.size() && isBlank(text_[at]) && delimiter_ != ' ') {
            ++at;
        }
        const bool isEnd = at == text_.size() || text_[at] == delimiter_;
        return isEnd ? std::optional(at) : std::nullopt;
    }

    LineReader& lines_;
    char delimiter_;
    std::vector<std::string>& fields_;
    std::string text_;
    std::size_t at_ = 0;
    std::size_t taken_ = 0;  ///< lines beyond the first
    bool mayExtend_ = true;
};

}  // namespace

const std::string* LineReader::ahead(std::size_t distance) {
    while (lines_.size() <= distance) {
        if (!readLine()) {
            return nullptr;
        }
    }
    return &lines_[distance];
}

std::string LineReader::take() {
    auto line = std::move(lines_.front());
    lines_.pop_front();
    return line;
}

double LineReader::percent() const {
    const auto size = static_cast<double>(source_.size());
    return size > 0 ? std::min(100.0, 100.0 * static_cast<double>(source_.position()) / size) : 0;
}

bool LineReader::readLine() {
    std::string line;
    char end = '\0';
    while (end == '\0' && status_.ok()) {
        const auto window = source_.window();
        if (window.empty()) {
            status_ = source_.status();
            break;
        }
        const auto length = std::min(window.find_first_of("\r\n"), window.size());
        line.append(window.substr(0, length));
        end = length < window.size() ? window[length] : '\0';
        source_.take(length + (end == '\0' ? 0 : 1));
        if (line.size() > kMostBytes) {
            status_ = {{}, EFBIG};
        }
    }
    if (end == '\r' && source_.window().starts_with('\n')) {
        source_.take(1);
    }
    if (end == '\0' && line.ends_with(kEndByte)) {
        line.pop_back();
    }
    if (isAtBegin_ && line.starts_with(kByteOrderMark)) {
        line.erase(0, kByteOrderMark.size());
    }
    isAtBegin_ = false;
    if (!status_.ok() || (end == '\0' && line.empty())) {
        return false;
    }
    lines_.push_back(std::move(line));
    return true;
}

bool takeDelimited(LineReader& lines, char delimiter, std::vector<std::string>& fields) {
    fields.clear();
    if (lines.ahead(0) == nullptr) {
        return false;
    }
    Splitter(lines, delimiter, fields).run();
    return true;
}

std::optional<std::string_view> cutColumns(std::string_view line, std::size_t start,
                                           std::size_t size) {
    const bool countsBytes = !isValidUtf8(line);
    const auto skip = [&](std::size_t at, std::size_t count) {
        for (; count > 0 && at < line.size(); --count) {
            ++at;
            while (!countsBytes && at < line.size() &&
                   (static_cast<unsigned char>(line[at]) & 0xC0U) == 0x80U) {
                ++at;
            }
        }
        return at;
    };
    const auto from = skip(0, start - 1);
    if (from >= line.size()) {
        return std::nullopt;
    }
    return line.substr(from, skip(from, size) - from);
}

}  // namespace kavu
