// The page of a sheet that is the tree of a group.
#pragma once

#include "app/framework/PropertySheet.h"

namespace kavu {

class GroupTreeEditor;
class GroupTreeModel;

class GroupTreePage : public PropertyPage {
    Q_OBJECT
  public:
    /// `spoken` is what a screen reader calls the tree. The model must outlive the page.
    GroupTreePage(FormContext& form, const char* resourceName, const std::string& title,
                  GroupTreeModel& model, const QString& spoken, QWidget* parent = nullptr);

    [[nodiscard]] GroupTreeEditor& editor() const { return *editor_; }
    void load() override {}
    /// The tree edits its group as it goes.
    [[nodiscard]] bool store() override { return true; }

  private:
    GroupTreeEditor* editor_ = nullptr;
};

}  // namespace kavu
