// The editor of a group that is kept as text: one large field over its commands.
#pragma once

#include "app/framework/PropertySheet.h"
#include "app/framework/QtText.h"
#include "groups/GroupText.h"

#include <memory>
#include <vector>

class QPlainTextEdit;

namespace kavu {

class GenericEditPage : public PropertyPage {
    Q_OBJECT
  public:
    GenericEditPage(FormContext& form, DocumentContext& document, GroupText group,
                    QWidget* parent = nullptr);

    /// The text that would be stored: lines that were not edited have the bytes they had.
    [[nodiscard]] std::string text() const;

    void load() override;
    /// Refuses an unfinished command, and asks about commands of other groups.
    [[nodiscard]] bool validate() override;
    [[nodiscard]] bool store() override;

  private:
    DocumentContext& document_;
    GroupText group_;
    std::vector<ShownText> lines_;
    QPlainTextEdit* edit_ = nullptr;
};

/// The dialog over a group that `readGroupText` has read.
[[nodiscard]] std::unique_ptr<PropertySheet> makeGenericEditDialog(FormContext& form,
                                                                   DocumentContext& document,
                                                                   GroupText group);

/// The menu's command: reads the group (of a data source, for V), runs the dialog over it.
/// True if it was stored.
bool editGroupText(FormContext& form, DocumentContext& document, char letter,
                   const std::string& source = {});

}  // namespace kavu
