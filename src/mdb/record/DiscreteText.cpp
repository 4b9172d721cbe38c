#include "mdb/record/DiscreteText.h"

#include "core/text/Text.h"

#include <algorithm>
#include <optional>

namespace kavu {

namespace {

std::optional<std::vector<DiscretePair>> readQuoted(std::string_view text) {
    std::vector<DiscretePair> pairs;
    text = trimBlanks(text);
    while (!text.empty()) {
        const auto equals = text.find('=');
        if (equals == std::string_view::npos || equals == 0 ||
            text.substr(0, equals).find_first_of(" \"") != std::string_view::npos ||
            !text.substr(equals + 1).starts_with('"')) {
            return std::nullopt;
        }
        const auto end = text.find('"', equals + 2);
        if (end == std::string_view::npos) {
            return std::nullopt;
        }
        pairs.emplace_back(text.substr(0, equals), text.substr(equals + 2, end - equals - 2));
        text.remove_prefix(end + 1);
        if (!text.empty() && text.front() != ' ') {
            return std::nullopt;
        }
        text = trimBlanks(text);
    }
    return pairs;
}

std::optional<std::vector<DiscretePair>> readPieces(std::string_view text) {
    std::vector<DiscretePair> pairs;
    while (!text.empty()) {
        const auto end = text.find(';');
        const auto piece = trimBlanks(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (piece.empty()) {
            continue;
        }
        const auto equals = piece.find('=');
        if (equals == std::string_view::npos || equals == 0 ||
            piece.find('=', equals + 1) != std::string_view::npos ||
            piece.substr(0, equals).find(' ') != std::string_view::npos) {
            return std::nullopt;
        }
        pairs.emplace_back(piece.substr(0, equals), trimBlanks(piece.substr(equals + 1)));
    }
    return pairs;
}

std::string withUnderscores(std::string_view text) {
    if (text.empty()) {
        return "_";
    }
    std::string written(text);
    std::replace(written.begin(), written.end(), ' ', '_');
    return written;
}

std::string withBlanks(std::string_view text) {
    std::string read(text);
    std::replace(read.begin(), read.end(), '_', ' ');
    return std::string(trimBlanks(read));
}

}  // namespace

std::vector<std::string_view> blankSeparated(std::string_view text) {
    std::vector<std::string_view> words;
    while (true) {
        const auto begin = text.find_first_not_of(' ');
        if (begin == std::string_view::npos) {
            return words;
        }
        text.remove_prefix(begin);
        const auto end = std::min(text.find(' '), text.size());
        words.push_back(text.substr(0, end));
        text.remove_prefix(end);
    }
}

std::vector<DiscretePair> readDiscrete(std::string_view text) {
    if (auto quoted = readQuoted(text); quoted && !quoted->empty()) {
        return std::move(*quoted);
    }
    if (auto pieces = readPieces(text); pieces && !pieces->empty()) {
        return std::move(*pieces);
    }
    std::vector<DiscretePair> pairs;
    const auto words = blankSeparated(text);
    for (std::size_t i = 0; i < words.size(); i += 2) {
        pairs.emplace_back(words[i],
                           i + 1 < words.size() ? withBlanks(words[i + 1]) : std::string());
    }
    return pairs;
}

std::string writeDiscrete(const std::vector<DiscretePair>& pairs) {
    std::string text;
    for (const auto& [value, event] : pairs) {
        text += text.empty() ? "" : " ";
        text += withUnderscores(value) + " " + withUnderscores(event);
    }
    return text;
}

std::string quotedDiscrete(const std::vector<DiscretePair>& pairs) {
    std::string text;
    for (const auto& [value, event] : pairs) {
        auto shown = event;
        std::replace(shown.begin(), shown.end(), '"', '\'');
        std::erase_if(shown, [](char c) {
            return c == '\r' || c == '\n' || c == kStoredCarriageReturn || c == kStoredLineFeed;
        });
        text += (text.empty() ? "" : " ") + value + "=\"" + shown + "\"";
    }
    return text;
}

bool isQuotedDiscrete(std::string_view text) {
    return readQuoted(text).has_value();
}

}  // namespace kavu
