// "Import TMATS XML" and "Export TMATS XML": the form of the XML document, the file to write, the
// data links of an export, and what of the document the chosen form will lose.
#pragma once

#include "app/framework/HelpedDialog.h"
#include "application/XmlExchange.h"
#include "core/talk/UserInterface.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

class QCheckBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QVBoxLayout;

namespace kavu {

class RowModel;

/// What differs between the two directions.
struct XmlDialogSetup {
    const char* resourceName;
    std::string title;
    std::string inputLabel;
    std::string input;  ///< shown only
    std::string outputLabel;
    FilePrompt output;   ///< asks for the output; its path is the one that is proposed
    std::string accept;  ///< the button, with its "&"
    std::string lossColumn;
    std::string fault{};  ///< why there is nothing to convert; empty if there is
    XmlDialect dialect = XmlDialect::Classic;
    std::vector<std::string> links{};  ///< to choose from; without any there is no choice
    /// What will be lost of these links, or of all if there are none; nothing after a cancel.
    std::function<std::optional<XmlLossTable>(XmlDialect, const std::vector<std::string>& links)>
        losses{};
    /// Why a path cannot be the output; empty if it can.
    std::function<std::string(const std::string& path)> refusal{};
};

class XmlDialog : public HelpedDialog {
    Q_OBJECT
  public:
    XmlDialog(FormContext& form, XmlDialogSetup setup, QWidget* parent);

    [[nodiscard]] XmlDialect dialect() const;
    [[nodiscard]] std::string output() const;
    /// Those that are checked; empty if all are.
    [[nodiscard]] std::vector<std::string> links() const;

    /// Refuses an output that is empty, that cannot be taken or that the user does not want
    /// replaced, and an export of no link.
    void accept() override;
    /// What the button does.
    void browse();

  private:
    void addInput(QVBoxLayout& column);
    void addLinks(QVBoxLayout& column);
    void addLosses(QVBoxLayout& column);
    void addOutput(QVBoxLayout& column);
    void addButtons(QVBoxLayout& column);
    /// Counts again for what is chosen.
    void showLosses();
    void stay(const std::string& reason, QWidget& field);
    [[nodiscard]] bool mayReplace(const std::string& path);

    XmlDialogSetup setup_;
    std::string agreed_;  ///< the path whose file the user has agreed to replace
    QCheckBox* schema_ = nullptr;
    QListWidget* links_ = nullptr;
    QLabel* summary_ = nullptr;
    RowModel* losses_ = nullptr;
    QWidget* lossList_ = nullptr;
    QLineEdit* output_ = nullptr;
};

}  // namespace kavu
