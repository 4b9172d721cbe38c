#include "core/document/CommandIndex.h"

#include "core/TmatsReader.h"
#include "core/files/FileIo.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"

#include <algorithm>
#include <bit>
#include <cerrno>

namespace kavu {

namespace {

std::size_t hashOf(std::string_view code) {
    std::uint64_t hash = 14695981039346656037U;
    for (const char c : code) {
        hash = (hash ^ static_cast<unsigned char>(toLowerAscii(c))) * 1099511628211U;
    }
    return static_cast<std::size_t>(hash ^ (hash >> 32U));
}

bool isWanted(std::string_view command, std::span<const std::string_view> wanted) {
    if (wanted.empty()) {
        return true;
    }
    const auto view = viewCommand(command);
    // A code without a group part is all field.
    const auto field = view.field.data() == nullptr ? view.code : view.field;
    return view.hasColon &&
           std::any_of(wanted.begin(), wanted.end(), [field](std::string_view beginning) {
               return startsWithIgnoreCase(field, beginning);
           });
}

}  // namespace

IoStatus CommandIndex::read(TmatsReader& reader, ByteSource& source, Comments comments,
                            std::span<const std::string_view> wanted) {
    // Reserving keeps growth from taking twice the memory. A file larger than this may be
    // mostly one command.
    constexpr std::uint64_t kMostReserved = std::uint64_t{64} << 20U;
    if (wanted.empty() && source.size() > source.position()) {
        text_.reserve(text_.size() + static_cast<std::size_t>(std::min(
                                         kMostReserved, source.size() - source.position())));
    }
    bool fits = true;
    std::string command;
    while (fits && (comments == Comments::Keep ? reader.nextRawCommand(source, command)
                                               : reader.nextCommand(source, command))) {
        fits = !isWanted(command, wanted) || add(command);
    }
    return fits ? source.status() : IoStatus({}, EFBIG);
}

IoStatus CommandIndex::readFile(TmatsReader& reader, const std::string& path, Comments comments,
                                std::span<const std::string_view> wanted) {
    ByteSource source;
    if (auto status = source.open(path); !status.ok()) {
        return status;
    }
    auto status = read(reader, source, comments, wanted);
    return status.code() == EFBIG ? IoStatus(path, EFBIG) : status;
}

bool CommandIndex::readSome(TmatsReader& reader, ByteSource& source, std::size_t most) {
    std::string command;
    for (std::size_t i = 0; i < most; ++i) {
        if (!reader.nextRawCommand(source, command) || !add(command)) {
            return false;
        }
    }
    return true;
}

void CommandIndex::clear() {
    *this = CommandIndex();
}

CommandView CommandIndex::at(std::size_t place) const {
    return viewCommand(textOf(entries_[place]));
}

bool CommandIndex::add(std::string_view command) {
    constexpr std::size_t kMostText = kNone;
    constexpr std::size_t kMostCommand = kNone >> 1U;
    if (command.size() > kMostCommand || text_.size() + command.size() > kMostText) {
        return false;
    }
    const auto view = viewCommand(command);
    entries_.push_back({static_cast<std::uint32_t>(text_.size()),
                        view.hasColon ? static_cast<std::uint32_t>(view.code.size()) : kNone,
                        static_cast<std::uint32_t>(command.size()) & (kNone >> 1U), 0});
    text_.append(command);
    return true;
}

void CommandIndex::hash() const {
    if (slots_.size() < entries_.size()) {
        slots_.assign(std::bit_ceil(2 * entries_.size()), {});
        next_.clear();
    }
    auto i = next_.size();
    next_.resize(entries_.size(), kNone);
    for (; i < entries_.size(); ++i) {
        if (valueOf(entries_[i]).empty()) {
            continue;  // look-ups pass over it
        }
        auto& slot = slotOf(codeOf(entries_[i]));
        const auto place = static_cast<std::uint32_t>(i);
        (slot.first == kNone ? slot.first : next_[slot.last]) = place;
        slot.last = place;
    }
}

std::string_view CommandIndex::valueOf(const Entry& entry) const {
    if (entry.colon == kNone) {
        return {};
    }
    auto value = textOf(entry).substr(entry.colon + 1);
    value.remove_suffix(value.ends_with(';') ? 1 : 0);
    return value;
}

CommandIndex::Slot& CommandIndex::slotOf(std::string_view code) const {
    return slots_[hashOf(code) & (slots_.size() - 1)];
}

std::optional<CommandIndex::Found> CommandIndex::peek(std::string_view code) const {
    hash();
    if (slots_.empty()) {
        return std::nullopt;
    }
    auto found = kNone;
    for (auto i = slotOf(code).first; i != kNone; i = next_[i]) {
        const bool isAhead = i >= position_;
        if ((found == kNone || isAhead) && equalsIgnoreCase(codeOf(entries_[i]), code)) {
            found = i;
            if (isAhead) {
                break;
            }
        }
    }
    return found == kNone ? std::nullopt : std::optional(foundAt(found));
}

std::optional<CommandIndex::Found> CommandIndex::peekRead(std::string_view code) const {
    hash();
    for (auto i = slots_.empty() ? kNone : slotOf(code).first; i != kNone; i = next_[i]) {
        if (isRead(i) && equalsIgnoreCase(codeOf(entries_[i]), code)) {
            return foundAt(i);
        }
    }
    return std::nullopt;
}

std::optional<CommandIndex::Found> CommandIndex::find(std::string_view code) {
    auto found = peek(code);
    position_ = found ? found->place + 1 : position_;
    return found;
}

std::optional<std::string_view> CommandIndex::findField(TmatsReader& reader, UserInterface* parent,
                                                        std::string_view code, int limit) {
    yieldToInterface(parent);
    const auto found = find(code);
    return found ? std::optional(reader.applyLimit(parent, found->code, found->value, limit))
                 : std::nullopt;
}

std::optional<int> CommandIndex::findIntField(UserInterface* parent, std::string_view code) {
    yieldToInterface(parent);
    const auto found = find(code);
    return found ? std::optional(std::max(0, leadingInt(found->value))) : std::nullopt;
}

}  // namespace kavu
