// The edits of a bus definition, each a form that is filled and left with OK: the checks of the
// forms, which the window and the command line share. An edit that is refused has told why, and has
// changed nothing.
#pragma once

#include "bus/definition/BusDefinition.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kavu {

struct DocumentContext;
class MeasurementNames;
class UserInterface;

/// What was entered into a form; what it does not name stays as it is.
struct BusForm {
    /// By codes without indices, as they are stored, with real line breaks. Those of the receive
    /// command, `RTRN` to `RDWC`, are of the first one of a message.
    std::vector<std::pair<std::string, std::string>> values{};
    std::optional<std::string> type{};                 ///< of a message, as the list shows it
    std::optional<std::vector<std::string>> tracks{};  ///< of a bus
};

class BusEdit {
  public:
    /// All must outlive the object; without names no measurement name is checked against other
    /// streams.
    BusEdit(DocumentContext& context, UserInterface* parent, BusDefinition& definition,
            const MeasurementNames* names = nullptr)
        : context_(context), parent_(parent), definition_(definition), names_(names) {}

    /// Adds a row at the end of those in the row at a place: a bus to the group, a message to a
    /// bus, a measurement to a message, a location to a measurement. It starts without values.
    bool add(const BusPlace& owner, const BusForm& form);
    /// Adds an empty row behind the others, whose form is filled and left piece by piece, and gives
    /// its place; nothing without an owner, which is reported. `takeBack` removes it again.
    std::optional<BusPlace> append(const BusPlace& owner);
    /// Removes the last row of those in a row without a question: it was added and not filled.
    /// REQUIRES: there is one.
    void takeBack(const BusPlace& owner);
    /// Fills the form of a row, or of the group.
    ///
    /// A message is refused with 376 (an address), 392 (a command word), 383 and 384 (something
    /// missing), 377, 378, 385 and 387 (an address that its type cannot have); what its type
    /// changes is told with 380, 382 and 386. A location is refused with 388 to 391 and 142, a
    /// measurement with 455, anything with 402 for a semi-colon.
    bool set(const BusPlace& place, const BusForm& form);
    /// Asks question 82 and removes a row. Without a parent nothing is removed.
    bool remove(const BusPlace& place);
    /// Asks and removes a track sequence, or a user defined word: those behind it move up.
    bool removeTrack(std::size_t bus, std::size_t track);
    bool removeUserWord(std::size_t bus, int word);
    /// Puts a copy of a row at the end of those of a place, as a paste does: its commands of the
    /// file stay with the row they belong to. False if rows of its level are elsewhere, or with 455
    /// for a measurement name of another stream.
    bool paste(const BusPlace& owner, BusLevel level, const GroupRow& row);

  private:
    [[nodiscard]] GroupRow* find(const BusPlace& place);
    bool refuse(const std::string& text);
    [[nodiscard]] bool ask(const std::string& title);
    /// Fills a row, which is that of the place or a new one behind the last.
    [[nodiscard]] bool fill(GroupRow& row, const BusPlace& place, const BusForm& form);
    [[nodiscard]] int streamNumber();
    /// False with message 455. REQUIRES: names to look at.
    [[nodiscard]] bool isEachNameFree(const GroupRow& row, BusLevel level);

    DocumentContext& context_;
    UserInterface* parent_;
    BusDefinition& definition_;
    const MeasurementNames* names_;
    std::optional<int> stream_{};
};

}  // namespace kavu
