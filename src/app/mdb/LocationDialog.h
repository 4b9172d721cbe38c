// "Change Measurement Database Version/Location": which file is the database, and how it is stored.
#pragma once

#include "app/framework/HelpedDialog.h"
#include "mdb/record/MdbRecord.h"

#include <string>

class QComboBox;
class QLineEdit;

namespace kavu {

class LocationDialog : public HelpedDialog {
    Q_OBJECT
  public:
    LocationDialog(FormContext& form, const std::string& path, MdbVersion version, QWidget* parent);

    [[nodiscard]] std::string path() const;
    [[nodiscard]] MdbVersion version() const;

    /// An empty path is refused.
    void accept() override;

  private:
    void browse();

    QComboBox* version_ = nullptr;
    QLineEdit* path_ = nullptr;
};

/// A list of the three forms, with one of them chosen.
[[nodiscard]] QComboBox* makeVersionList(const char* objectName, MdbVersion version,
                                         QWidget* parent);

}  // namespace kavu
