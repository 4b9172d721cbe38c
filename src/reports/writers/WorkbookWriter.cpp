#include "reports/writers/WorkbookWriter.h"

#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "core/text/TextEncoding.h"

#include <algorithm>

namespace kavu {

namespace {

constexpr std::size_t kMostNameCharacters = 31;
constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

/// At most so many characters of a text.
std::string_view cutToCharacters(std::string_view utf8, std::size_t most) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const bool begins = (static_cast<unsigned char>(utf8[i]) & 0xC0U) != 0x80U;
        if (begins && count++ == most) {
            return utf8.substr(0, i);
        }
    }
    return utf8;
}

std::string permittedName(std::string_view name) {
    std::string text = workbookText(name);
    for (auto& c : text) {
        if (std::string_view(":\\/?*[]\n\t").find(c) != std::string_view::npos) {
            c = '_';
        }
    }
    if (text.starts_with('\'')) {
        text.front() = '_';
    }
    if (text.ends_with('\'')) {
        text.back() = '_';
    }
    return text.empty() ? "Sheet" : text;
}

std::size_t digitsFrom(std::string_view text, std::size_t at) {
    std::size_t end = at;
    while (end < text.size() && isDigit(text[end])) {
        ++end;
    }
    return end - at;
}

}  // namespace

int WorkbookWriter::style(const CellStyle& style) {
    const auto found = std::find(styles_.begin(), styles_.end(), style);
    if (found != styles_.end()) {
        return static_cast<int>(found - styles_.begin());
    }
    styles_.push_back(style);
    return static_cast<int>(styles_.size()) - 1;
}

int WorkbookWriter::styleOfDate(int style) {
    CellStyle dated = style < 0 ? CellStyle{} : styles_[static_cast<std::size_t>(style)];
    if ((dated.flags & style_flag::kNumberFormats) != 0) {
        return style;
    }
    dated.flags |= style_flag::kShortDate;
    return this->style(dated);
}

std::string WorkbookWriter::freeName(std::string_view name) {
    const auto whole = permittedName(name);
    for (int part = 1;; ++part) {
        const auto end = part == 1 ? std::string() : formatPrintf(" (Part %d)", part);
        auto tried = std::string(cutToCharacters(whole, kMostNameCharacters - end.size())) + end;
        const auto lower = lowerAscii(tried);
        if (std::find(names_.begin(), names_.end(), lower) == names_.end()) {
            names_.push_back(lower);
            return tried;
        }
    }
}

bool isWorkbookNumber(std::string_view text) {
    std::size_t at = text.starts_with('-') || text.starts_with('+') ? 1 : 0;
    auto digits = digitsFrom(text, at);
    at += digits;
    if (at < text.size() && text[at] == '.') {
        const auto behind = digitsFrom(text, at + 1);
        digits += behind;
        at += 1 + behind;
    }
    if (digits == 0) {
        return false;
    }
    if (at < text.size() && toUpperAscii(text[at]) == 'E') {
        ++at;
        at += at < text.size() && (text[at] == '-' || text[at] == '+') ? 1 : 0;
        const auto exponent = digitsFrom(text, at);
        // One of more digits is beyond every number of a workbook.
        if (exponent == 0 || exponent > 2) {
            return false;
        }
        at += exponent;
    }
    return at == text.size() && digits < 200;
}

bool isPlainMarkup(std::string_view bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](char c) {
        return c >= ' ' && c <= '~' && c != '&' && c != '<' && c != '>' && c != '"' && c != '\'';
    });
}

std::string workbookText(std::string_view bytes) {
    const auto utf8 = toUtf8(bytes);
    std::string text;
    text.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const char c = utf8[i];
        const std::string_view rest = std::string_view(utf8).substr(i);
        if (c == '\r') {
            text += rest.starts_with("\r\n") ? "" : " ";
        } else if (static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\t') {
            text += kReplacement;
        } else if (rest.starts_with("\xEF\xBF\xBE") || rest.starts_with("\xEF\xBF\xBF")) {
            text += kReplacement;
            i += 2;
        } else {
            text += c;
        }
    }
    return text;
}

}  // namespace kavu
