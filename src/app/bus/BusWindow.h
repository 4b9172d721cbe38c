// "Edit Bus Attributes": the bus group of a data link, its buses as a tree, and the rows of the
// selected branch as a list.
#pragma once

#include "app/bus/BusPages.h"
#include "app/bus/BusTree.h"

#include <functional>

class QHBoxLayout;
class QPushButton;

namespace kavu {

class BusRowsPanel;
class GroupTreeEditor;

class BusWindow : public EditDialog {
    Q_OBJECT
  public:
    /// `setup` must outlive the window. `pack` writes the group; false (it has been reported) keeps
    /// the window open.
    BusWindow(const BusFormSetup& setup, std::function<bool()> pack, QWidget* parent);
    ~BusWindow() override;

    [[nodiscard]] GroupTreeEditor& editor() const { return *editor_; }
    [[nodiscard]] BusRowsPanel& panel() const { return *panel_; }

  protected:
    [[nodiscard]] bool store() override;

  private:
    void makeFields();
    void makeTree();
    void makeButtons();
    void showRows();
    void openRow(std::size_t row);
    void editComments();
    void addFromDatabase();

    const BusFormSetup& setup_;
    std::function<bool()> pack_;
    BusFormState state_;
    BusTree tree_;
    FieldForm* fields_ = nullptr;
    GroupTreeEditor* editor_ = nullptr;
    BusRowsPanel* panel_ = nullptr;
    QPushButton* database_ = nullptr;
};

}  // namespace kavu
