// A part of a file that ends with a command, and its commands, which are found on two threads. What
// is done with them in their order is the caller's, meanwhile.
#pragma once

#include "core/command/CommandPath.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class ByteSource;
class TmatsReader;

/// A command, and what a pass asks of each, found without the others.
struct CutCommand {
    std::string_view text;  ///< within its block
    long lines = 0;         ///< by how much the line counter of the reader rises with it
    bool isPrintable = false;
    CodeShape shape;
};

class CommandBlock {
  public:
    /// Reads the next block in place of what is here. `rest` holds what was read behind the block
    /// before: the front of a command. False at the end of the source, where `rest` is what no
    /// command ends, and after a failure, which the source keeps.
    bool read(ByteSource& source, std::string& rest);
    /// Finds the commands, as `TmatsReader::viewNextRaw` does. `meanwhile` is called while that is
    /// done. With substitutions the reader counts what they hit, and the filler of the pieces.
    void cut(TmatsReader& reader, const std::function<void()>& meanwhile);

    /// Commands that are together in the file.
    struct Piece {
        std::string_view bytes;
        std::vector<CutCommand> commands;
        std::deque<std::string> changed;  ///< texts that are not as they are in the file
        std::uint64_t filler = 0;         ///< as `TmatsReader::takeSkippedFiller` gives it
    };
    /// Those of the block, in their order.
    [[nodiscard]] const std::vector<Piece>& pieces() const { return pieces_; }
    /// Where the block ends in the source.
    [[nodiscard]] std::uint64_t end() const { return end_; }
    void clear() { pieces_.clear(); }

  private:
    void divide(std::size_t size);
    static void cut(Piece& piece, TmatsReader& reader);

    std::string bytes_;
    std::uint64_t end_ = 0;
    std::vector<Piece> pieces_;
};

}  // namespace kavu
