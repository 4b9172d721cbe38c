#include "core/document/CommandBlock.h"

#include "core/TmatsReader.h"
#include "core/files/FileIo.h"
#include "core/text/Text.h"
#include "core/text/TwoThreads.h"

#include <algorithm>

namespace kavu {

namespace {

constexpr std::size_t kBlock = 1024 * 1024;
constexpr std::size_t kPiece = 64 * 1024;

}  // namespace

bool CommandBlock::read(ByteSource& source, std::string& rest) {
    pieces_.clear();
    bytes_.assign(rest);
    rest.clear();
    std::size_t end = 0;
    while (bytes_.size() < kBlock || end == 0) {
        const auto window = source.window();
        if (window.empty()) {
            break;
        }
        if (const auto last = window.rfind(';'); last != std::string_view::npos) {
            end = bytes_.size() + last + 1;
        }
        bytes_.append(window);
        source.take(window.size());
    }
    rest.assign(bytes_, end);
    bytes_.resize(end);
    end_ = source.position() - rest.size();
    return end > 0;
}

void CommandBlock::cut(TmatsReader& reader, const std::function<void()>& meanwhile) {
    // What a substitution hits is counted in one place.
    const bool isShared = reader.hasSubstitutions();
    divide(isShared ? bytes_.size() : kPiece);
    forEachOnTwoThreads(
        pieces_.size(),
        [&](std::size_t place, std::size_t) {
            TmatsReader own;
            cut(pieces_[place], isShared ? reader : own);
            pieces_[place].filler = own.takeSkippedFiller();
        },
        meanwhile);
}

/// Every `;` ends a command, whatever is around it.
void CommandBlock::divide(std::size_t size) {
    for (std::string_view left = bytes_; !left.empty();) {
        const auto last = left.find(';', std::min(size, left.size()) - 1);
        pieces_.emplace_back().bytes = left.substr(0, last + 1);
        left.remove_prefix(last + 1);
    }
}

void CommandBlock::cut(Piece& piece, TmatsReader& reader) {
    constexpr std::size_t kUsualLength = 32;
    piece.commands.reserve(piece.bytes.size() / kUsualLength);
    auto source = ByteSource::fromMemory(piece.bytes);
    std::string room;
    long line = 0;
    for (long before = 0;; before = line) {
        const auto command = reader.viewNextRaw(source, room, &line);
        if (!command) {
            return;
        }
        auto text = *command;
        if (text.data() == room.data()) {
            text = piece.changed.emplace_back(text);
        }
        piece.commands.push_back({text, line - before, isPrintable(text), shapeOfCode(text)});
    }
}

}  // namespace kavu
