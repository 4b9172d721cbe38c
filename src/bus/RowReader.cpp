#include "bus/RowReader.h"

#include "core/TmatsReader.h"
#include "core/document/CommandIndex.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"

#include <algorithm>

namespace kavu {

namespace {

/// Rows without a command that a file may state beyond the number of its commands.
constexpr std::size_t kMostRowsInAll = 100'000;

}  // namespace

RowReader::RowReader(TmatsReader& reader, UserInterface* parent, CommandIndex& commands,
                     std::string prefix, std::span<const Field> table)
    : reader_(reader),
      parent_(parent),
      commands_(commands),
      prefix_(std::move(prefix)),
      lists_(table) {}

std::string RowReader::codeOf(const Field& field, const RowNumbers& at) const {
    return prefix_ + fieldCode(field.code, at.at);
}

std::string RowReader::text(const Field& field, RowNumbers at) {
    const auto found = commands_.find(codeOf(field, at));
    if (!found) {
        return {};
    }
    commands_.markRead(found->place);
    return std::string(found->value);
}

std::string RowReader::warnedText(const Field& field, RowNumbers at) {
    auto value = text(field, at);
    (void)reader_.applyLimit(parent_, codeOf(field, at), value, -static_cast<int>(field.limit));
    return value;
}

std::size_t RowReader::numberInFile(const Field& field, const RowNumbers& at, std::size_t stated) {
    if (!inFile_) {
        inFile_.emplace(commands_, lists_, prefix_);
    }
    const auto list =
        std::find_if(lists_.all().begin(), lists_.all().end(),
                     [&](const GroupLists::List& each) { return each.count.code == field.code; });
    const auto& numbers = inFile_->of(*list, at);
    const auto most = std::min(stated, commands_.size());
    const auto past = numbers.upper_bound(most);
    return past == numbers.begin() ? 0 : *std::prev(past);
}

std::size_t RowReader::count(const Field& field, RowNumbers at) {
    const auto value = text(field, at);
    auto stated = static_cast<std::size_t>(std::max(0, leadingInt(value)));
    if (stated > kMostEmptyRows || rows_ + stated > commands_.size() + kMostRowsInAll) {
        stated = numberInFile(field, at, stated);
    }
    rows_ += stated;
    return stated;
}

bool RowReader::cancelled() {
    if (++polls_ % kPollEvery == 0) {
        yieldToInterface(parent_);
    }
    return polls_ % kPollEvery == 0 && cancelRequested(parent_);
}

}  // namespace kavu
