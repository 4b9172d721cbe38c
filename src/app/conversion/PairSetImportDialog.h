// "Import Pair Sets": two boxes with one value a line, which take columns from a spreadsheet or
// a file of pairs, and replace the list on OK.
#pragma once

#include "app/framework/FormContext.h"
#include "conversion/PairSet.h"

#include <string>
#include <utility>

#include <QDialog>

class QGridLayout;
class QLabel;
class QPlainTextEdit;

namespace kavu {

class PairSetImportDialog : public QDialog {
    Q_OBJECT
  public:
    /// `boxes` are the texts that the two boxes show at first.
    PairSetImportDialog(FormContext& form, const PairSet& pairs,
                        const std::pair<std::string, std::string>& boxes,
                        QWidget* parent = nullptr);

    /// The list as it was imported.
    [[nodiscard]] const PairSet& pairs() const { return pairs_; }

    /// Refuses what is no number, with the row; then nothing is imported.
    void accept() override;

  private:
    QPlainTextEdit* makeBox(const char* name, const char* label, const std::string& text,
                            QGridLayout& grid, int column);
    void fill(const std::pair<std::string, std::string>& boxes);
    /// Two columns that were pasted into `box`: they go into both if the user wants it.
    void takeColumns(const QPlainTextEdit& box, const std::pair<std::string, std::string>& columns);
    void readPairFile();
    void showCount();

    FormContext& form_;
    PairSet pairs_;
    QPlainTextEdit* telemetry_ = nullptr;
    QPlainTextEdit* engineering_ = nullptr;
    QLabel* count_ = nullptr;
};

}  // namespace kavu
