#include "core/document/FieldIndex.h"

#include "core/talk/UserInterface.h"

namespace kavu {

namespace {

bool isWanted(std::string_view code, const std::vector<std::string_view>& fields) {
    if (fields.empty()) {
        return true;
    }
    const auto backslash = code.find('\\');
    const auto field = backslash == std::string_view::npos ? code : code.substr(backslash + 1);
    return std::any_of(fields.begin(), fields.end(), [field](std::string_view beginning) {
        return startsWithIgnoreCase(field, beginning);
    });
}

}  // namespace

FieldIndex::FieldIndex(TmatsReader& reader, const std::string& path,
                       const std::vector<std::string_view>& fields)
    : reader_(reader) {
    ByteSource source;
    status_ = source.open(path);
    if (!status_.ok()) {
        return;
    }
    std::string command;
    while (reader.nextCommand(source, command)) {
        const auto colon = command.find(':');
        if (colon == std::string::npos) {
            continue;
        }
        const auto code = std::string_view(command).substr(0, colon);
        auto value = std::string_view(command).substr(colon + 1);
        value.remove_suffix(value.ends_with(';') ? 1 : 0);
        // An empty value is no value: look-ups pass over it.
        if (!value.empty() && isWanted(code, fields)) {
            byCode_[lowerAscii(code)].push_back(commands_.size());
            commands_.push_back({std::string(code), std::string(value)});
        }
    }
    status_ = source.status();
}

std::optional<std::string_view> FieldIndex::find(UserInterface* parent, const std::string& code,
                                                 int limit) {
    yieldToInterface(parent);
    const auto it = byCode_.find(lowerAscii(code));
    if (it == byCode_.end()) {
        return std::nullopt;
    }
    const auto& places = it->second;
    auto place = std::lower_bound(places.begin(), places.end(), position_);
    if (place == places.end()) {
        place = places.begin();
    }
    const auto& command = commands_[*place];
    position_ = *place + 1;
    return reader_.applyLimit(parent, command.code, command.value, limit);
}

}  // namespace kavu
