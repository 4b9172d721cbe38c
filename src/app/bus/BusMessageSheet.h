// "Edit Bus Message": a message of a bus with its measurements, its receive command, and its texts.
#pragma once

#include "app/bus/BusPages.h"
#include "bus/definition/BusMessageType.h"
#include "bus/definition/BusTerminalEdit.h"

namespace kavu {

/// A page of fields of a message, whose terminals can be chosen from those known of the bus: a name
/// gives its address, and an address its name if there is none yet.
class BusTerminalFieldsPage : public BusFieldPage {
    Q_OBJECT
  public:
    /// Where a page has a terminal, by the codes of its fields.
    struct TerminalFields {
        TerminalKind kind;
        std::string_view name;
        std::string_view address;
    };
    /// What the lists of the terminals offer; the page keeps it.
    struct Suggestions {
        std::vector<Field> fields{};
        std::vector<TerminalFields> terminals{};
        std::vector<std::vector<std::string>> texts{};
        std::vector<std::vector<Choice>> choices{};
    };

    BusTerminalFieldsPage(const BusFormSetup& setup, const char* resourceName,
                          const std::string& title, std::vector<Field> fields,
                          std::vector<TerminalFields> terminals, BusFormState& state);

  private:
    BusTerminalFieldsPage(const BusFormSetup& setup, const char* resourceName,
                          const std::string& title, Suggestions suggestions, BusFormState& state);
    void follow(std::string_view code);

    Suggestions suggestions_;
};

/// The first page. A type that is chosen sets what it demands, and says so.
class BusMessagePage : public BusTerminalFieldsPage {
    Q_OBJECT
  public:
    BusMessagePage(const BusFormSetup& setup, BusFormState& state);

    /// The type that was chosen from the list, as it shows it; nothing if none was.
    [[nodiscard]] std::optional<std::string> chosenType() const;

  private:
    void chooseType();
};

class BusMessageSheet : public PropertySheet {
    Q_OBJECT
  public:
    /// `setup` must outlive the sheet; a new message is in the definition already.
    BusMessageSheet(const BusFormSetup& setup, const BusPlace& message, bool isNew,
                    QWidget* parent);

  private:
    void addReceivePage(const BusFormSetup& setup);
    void addTextPages(const BusFormSetup& setup);

    BusFormState state_;
    BusMessagePage* first_ = nullptr;
};

}  // namespace kavu
