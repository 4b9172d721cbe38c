// The checks of one form of a bus definition, on the row that it is about to become.
#pragma once

#include "bus/definition/BusDefinition.h"
#include "bus/definition/BusMessageType.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

struct DocumentContext;
class UserInterface;

class BusFormCheck {
  public:
    /// `code` names the row in reports, as in "B-1\MID-1-2". REQUIRES: all outlive the object.
    BusFormCheck(DocumentContext& context, UserInterface* parent, GroupRow& row, BusLevel level,
                 int edition)
        : context_(context), parent_(parent), row_(row), level_(level), edition_(edition) {}

    /// Sets a value as the control of the form does. A value that is there already is not looked
    /// at: limits are limits of what is entered. False if it is refused, which is reported.
    [[nodiscard]] bool enter(std::string_view stem, std::string_view value, bool isArinc);
    /// Sets the track sequences of a bus; false as above.
    [[nodiscard]] bool enterTracks(const std::vector<std::string>& tracks);
    /// Sets what a chosen type demands, and reports it.
    void chooseType(BusMessageType type);
    /// The checks of the OK of a message: what is missing, and what the type in force refuses.
    [[nodiscard]] bool leaveMessage(std::optional<BusMessageType> type, bool isArinc);
    /// The checks of the OK of a location.
    [[nodiscard]] bool leaveLocation();

  private:
    [[nodiscard]] bool refuse(std::string_view stem, const std::string& why);
    [[nodiscard]] bool checkSemicolon(std::string_view value);
    [[nodiscard]] bool checkAddress(std::string_view value);
    [[nodiscard]] bool checkCommandWord(std::string_view value);
    [[nodiscard]] bool checkMask(std::string_view value);
    [[nodiscard]] bool checkForm(const Field& field, std::string_view value, bool isArinc);
    /// A word whose entry was chosen to be derived from other fields goes.
    void dropDerivedWords();
    [[nodiscard]] bool checkMissing(bool isArinc);
    [[nodiscard]] bool checkRemote(BusMessageType type);
    [[nodiscard]] bool checkSub(BusMessageType type);
    [[nodiscard]] bool checkReceive(BusMessageType type);
    [[nodiscard]] std::string_view message(std::string_view stem) const {
        return busValue(row_, BusLevel::Message, stem);
    }
    [[nodiscard]] bool usesCommandWord(std::string_view entry) const;

    DocumentContext& context_;
    UserInterface* parent_;
    GroupRow& row_;
    BusLevel level_;
    int edition_;
    std::vector<std::string_view> entered_{};  ///< what was given, changed or not
};

}  // namespace kavu
