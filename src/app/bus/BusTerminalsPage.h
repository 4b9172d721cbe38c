// "Defined Terminals" of a bus: what is known of its remote terminals and of its sub terminals,
// and the terminals that the user has kept as defaults.
#pragma once

#include "app/bus/BusPages.h"
#include "bus/definition/BusTerminalEdit.h"

namespace kavu {

class BusTerminalsPage : public PropertyPage {
    Q_OBJECT
  public:
    BusTerminalsPage(const BusFormSetup& setup, std::size_t bus, QWidget* parent = nullptr);

    void load() override;
    [[nodiscard]] bool store() override { return true; }

  protected:
    /// The messages of the bus may have made more terminals known.
    void showEvent(QShowEvent* event) override;

  private:
    [[nodiscard]] EditableList* makeList(TerminalKind kind, const char* name, const char* title);
    [[nodiscard]] const std::vector<Terminal>& terminals(TerminalKind kind) const;
    [[nodiscard]] std::optional<ListRow> editTerminal(TerminalKind kind, int row);
    void saveDefaults();
    void loadDefaults();

    const BusFormSetup& setup_;
    std::size_t bus_;
    EditableList* remote_ = nullptr;
    EditableList* sub_ = nullptr;
};

}  // namespace kavu
