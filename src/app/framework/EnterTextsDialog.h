// The dialog that asks for several texts at once.
#pragma once

#include "app/framework/QtText.h"
#include "core/talk/UserInterface.h"

#include <string>
#include <vector>

#include <QDialog>

class QLineEdit;

namespace kavu {

class EnterTextsDialog : public QDialog {
    Q_OBJECT
  public:
    /// A field for each prompt, named "value0", "value1", ...; a semi-colon and what is longer
    /// than its limit are refused.
    EnterTextsDialog(UserInterface& ui, const std::string& title,
                     const std::vector<TextPrompt>& prompts, QWidget* parent);

    /// The texts; what was not edited has the bytes of its prompt.
    [[nodiscard]] std::vector<std::string> values() const;

    void accept() override;

  private:
    struct Line {
        QLineEdit* edit;
        ShownText initial;
        std::size_t limit;
    };

    UserInterface& ui_;
    std::vector<Line> lines_;
};

}  // namespace kavu
