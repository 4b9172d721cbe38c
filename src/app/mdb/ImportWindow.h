// "Import External File Into KAVU Database": a file of another tool, the database that takes it,
// where the value of each field is, and how the first rows come out.
#pragma once

#include "app/framework/HelpedDialog.h"
#include "mdb/import/ImportFile.h"
#include "mdb/import/ImportProfiles.h"

#include <memory>
#include <string>
#include <vector>

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QMenuBar;
class QRadioButton;
class QTableWidget;

namespace kavu {

struct DocumentContext;

class ImportWindow : public HelpedDialog {
    Q_OBJECT
  public:
    ImportWindow(FormContext& form, DocumentContext& document, QWidget* parent);
    ~ImportWindow() override;

    // What the entries of the menu and the buttons do.

    void openSource();
    void chooseTarget();
    void convert();
    void loadProfile();
    void saveProfile();
    /// Asks for the references of the selected field.
    void editReference();
    void clearReference();
    /// Maps the fields that a column of the file is named like.
    void matchNames();
    void showFields();

    /// As it is entered now.
    [[nodiscard]] ImportLayout layoutNow() const;

  private:
    void makeMenus();
    QWidget* makeSource();
    QWidget* makeTarget();
    QWidget* makeMapping();
    QWidget* makePreview();
    QLayout* makeButtons();

    [[nodiscard]] ImportKind kind() const;
    [[nodiscard]] MdbVersion version() const;
    [[nodiscard]] std::string source() const;
    [[nodiscard]] std::string target() const;
    [[nodiscard]] char delimiter() const;
    void takeSource(const std::string& path);
    /// After another kind of file or form of database: the references that are stored for them.
    void readReferences();
    void setReference(std::size_t field, const std::string& first, const std::string& second);
    void showReferences();
    void showPreview();
    void keepSettings();
    void changed();

    DocumentContext& document_;
    std::vector<ImportReference> references_;
    /// What the preview compares names with; read once for a target.
    std::unique_ptr<MeasurementDatabase> known_;
    bool filling_ = true;

    QMenuBar* menus_ = nullptr;
    QComboBox* kind_ = nullptr;
    QLineEdit* source_ = nullptr;
    QComboBox* delimiter_ = nullptr;
    QCheckBox* header_ = nullptr;
    QComboBox* version_ = nullptr;
    QLineEdit* target_ = nullptr;
    QRadioButton* append_ = nullptr;
    QRadioButton* overwrite_ = nullptr;
    QTableWidget* mapping_ = nullptr;
    QTableWidget* preview_ = nullptr;
    QLabel* state_ = nullptr;
};

/// Runs the window; what is converted goes to its target at once.
void importExternalFile(FormContext& form, DocumentContext& document, QWidget* parent);

}  // namespace kavu
