// The one question of an edit of a block: all that it would take away or do otherwise than asked.
#pragma once

#include <set>
#include <string>
#include <utility>
#include <vector>

namespace kavu {

class UserInterface;

enum class BlockAnswer { Cancel, Replace, Beside };
enum class FillAnswer { Cancel, NewNames, SameMeasurements };

struct BlockQuestion {
    /// A measurement that stands in the way, or that is to be deleted.
    struct Occupant {
        std::string name;
        std::size_t here = 0;   ///< places in the block
        std::size_t all = 0;    ///< places in the stream
        bool goes = false;      ///< nothing of it would be left
        bool isShared = false;  ///< another stream needs its conversion, which stays
    };
    std::vector<Occupant> inTheWay;
    std::set<std::string> asyncStreams;
    std::vector<std::pair<std::string, std::string>> renamed;
    std::vector<std::string> leftOut;  ///< made of fragments
    std::set<std::string> cutMasks;    ///< of a longer word

    /// Asks what becomes of what is in the way, unless there is nothing to say. Without a parent
    /// nothing is replaced.
    [[nodiscard]] BlockAnswer ask(UserInterface* parent, const std::string& title,
                                  const std::string& what) const;
    /// Asks in any case; without a parent further places.
    [[nodiscard]] FillAnswer askFill(UserInterface* parent) const;
    /// Asks before all of `inTheWay` and `asyncStreams` are deleted; true without a parent.
    [[nodiscard]] bool mayDelete(UserInterface* parent) const;

  private:
    [[nodiscard]] std::string remarks() const;
};

}  // namespace kavu
