// The custom strings that become part of the comments of new records.
#include "conversion/DefinitionEdit.h"
#include "core/TmatsDocument.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Text.h"

#include <algorithm>

namespace kavu {

namespace {

constexpr std::string_view kSection = setting::kCommentStrings.section;

std::string rowKey(const char* key, std::size_t row) {
    return key + std::to_string(row + 1);
}

}  // namespace

std::vector<CommentString> readCommentStrings(const DocumentContext& context) {
    const auto& settings = context.settings;
    const int count = settings.get(setting::kCommentStrings);
    std::vector<CommentString> strings;
    for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
        CommentString row;
        row.enabled = settings.profileInteger(kSection, rowKey("E", i), 0) != 0;
        row.inReports = settings.profileInteger(kSection, rowKey("R", i), 1) != 0;
        row.text = settings.profileText(kSection, rowKey("S", i));
        row.value = settings.profileText(kSection, rowKey("D", i));
        fromStoredForm(row.text);
        fromStoredForm(row.value);
        strings.push_back(std::move(row));
    }
    return strings;
}

void writeCommentStrings(DocumentContext& context, std::span<const CommentString> strings) {
    auto& settings = context.settings;
    settings.writeProfile(kSection, std::nullopt, std::nullopt);
    settings.set(setting::kCommentStrings, static_cast<int>(strings.size()));
    for (std::size_t i = 0; i < strings.size(); ++i) {
        const auto& row = strings[i];
        std::string text = row.text;
        std::string value = row.value;
        toStoredForm(text);
        toStoredForm(value);
        settings.writeProfile(kSection, rowKey("E", i), row.enabled ? "1" : "0");
        settings.writeProfile(kSection, rowKey("R", i), row.inReports ? "1" : "0");
        settings.writeProfile(kSection, rowKey("S", i), text);
        settings.writeProfile(kSection, rowKey("D", i), value);
    }
}

std::string defaultComment(std::span<const CommentString> strings) {
    std::string comment;
    for (const auto& row : strings) {
        if (row.enabled && !row.text.empty()) {
            comment += comment.empty() ? "" : "\r\n";
            comment += row.text;
            comment += row.value.empty() ? "" : " " + row.value;
        }
    }
    return comment;
}

std::string commentStringValue(std::string_view comment, std::string_view text) {
    text = trim(text);
    if (text.empty()) {
        return {};
    }
    for (const auto& line : splitLines(comment)) {
        const auto shown = trim(line);
        if (shown.starts_with(text)) {
            return std::string(trim(shown.substr(text.size())));
        }
    }
    return {};
}

}  // namespace kavu
