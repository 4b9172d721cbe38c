#include "reports/content/ReportContent.h"

#include "core/TmatsDocument.h"
#include "core/files/FileIo.h"
#include "core/talk/SettingKeys.h"
#include "core/text/Clock.h"
#include "core/text/Text.h"
#include "core/text/TextEncoding.h"
#include "reports/layout/ReportLayout.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace kavu {

std::string_view ReportLine::caption() const {
    return trim(lead);
}

namespace {

/// A longer cell has this where the length of another stands, and its length behind it.
constexpr unsigned char kLongCell = 0xFF;

}  // namespace

void TableRow::add(std::string_view cell) {
    if (cell.size() < kLongCell) {
        text_ += static_cast<char>(cell.size());
    } else {
        const auto size = static_cast<std::uint32_t>(cell.size());
        std::array<char, sizeof size> bytes{};
        std::memcpy(bytes.data(), &size, sizeof size);
        text_ += static_cast<char>(kLongCell);
        text_.append(bytes.data(), bytes.size());
    }
    text_ += cell;
}

std::vector<std::string_view> TableRow::cells() const {
    std::vector<std::string_view> all;
    std::uint32_t size = 0;
    for (std::size_t at = 0; at < text_.size(); at += size) {
        size = static_cast<unsigned char>(text_[at++]);
        if (size == kLongCell) {
            std::memcpy(&size, text_.data() + at, sizeof size);
            at += sizeof size;
        }
        all.push_back(std::string_view(text_).substr(at, size));
    }
    return all;
}

ReportHead reportHead(const DocumentContext& context, const ReportLayout& layout,
                      std::string_view link, std::string_view titleKey, std::string_view leftKey,
                      std::string_view rightKey) {
    const auto& path = context.document.path;
    const auto now = context.clock.now();
    return {.title = layout.text(titleKey),
            .tmats = path.empty() ? "TMATS Project: " + std::string(kApplicationName)
                                  : "TMATS File: " + fileNameOf(path),
            .link = "Data Link: " + std::string(link),
            .date = dateText(now),
            .time = timeText(now),
            .left = layout.text(leftKey),
            .right = layout.text(rightKey)};
}

std::string dateLine(const ReportHead& head, std::string_view gap) {
    return "Date: " + head.date + std::string(gap) + "Time: " + head.time;
}

std::size_t shownWidth(std::string_view text) {
    const auto isAscii = [](char c) { return (static_cast<unsigned char>(c) & 0x80U) == 0; };
    if (std::all_of(text.begin(), text.end(), isAscii) || !isValidUtf8(text)) {
        return text.size();
    }
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
    }));
}

void appendPadded(std::string& line, std::string_view text, std::size_t width) {
    line += text;
    const auto shown = shownWidth(text);
    line.append(width > shown ? width - shown : 0, ' ');
}

bool isOnOneLine(std::string_view text) {
    return std::none_of(text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r'; });
}

std::string onOneLine(std::string_view text) {
    std::string line;
    line.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') {
            continue;
        }
        line += text[i] == '\r' || text[i] == '\n' ? ' ' : text[i];
    }
    return line;
}

}  // namespace kavu
