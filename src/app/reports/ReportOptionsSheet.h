// "Report Options": the titles, headers and styles of the reports. Its pages edit a copy of the
// keys of a layout, which OK stores.
#pragma once

#include "app/framework/PropertySheet.h"
#include "reports/layout/ReportLayout.h"

#include <map>
#include <string>
#include <string_view>

class QButtonGroup;
class QComboBox;
class QLineEdit;
class QPlainTextEdit;

namespace kavu {

class ReportDesk;

/// Values by the keys of a layout, with real line breaks.
using ReportOptionValues = std::map<std::string, std::string, std::less<>>;

/// The title of a report with its headers.
class ReportTitlePage : public PropertyPage {
    Q_OBJECT
  public:
    struct Keys {
        std::string_view title;
        std::string_view left;
        std::string_view right;
    };
    /// `values` must outlive the page. `locations` adds the choice of which places of a
    /// supercommutated measurement are shown; a bus cannot choose.
    ReportTitlePage(FormContext& form, const char* resourceName, const std::string& title,
                    const Keys& keys, ReportOptionValues& values, bool locations = false,
                    bool isBus = false);

    void load() override;
    [[nodiscard]] bool store() override;

  private:
    Keys keys_;
    ReportOptionValues& values_;
    QPlainTextEdit* title_ = nullptr;
    QLineEdit* left_ = nullptr;
    QLineEdit* right_ = nullptr;
    QButtonGroup* places_ = nullptr;
};

/// The style of the report of the major frame.
class ReportFramePage : public PropertyPage {
    Q_OBJECT
  public:
    ReportFramePage(FormContext& form, ReportOptionValues& values);

    void load() override;
    [[nodiscard]] bool store() override;

  private:
    ReportOptionValues& values_;
    std::map<std::string_view, QButtonGroup*> groups_{};  ///< by their key
};

/// The number of a page, and where it stands.
class ReportNumberPage : public PropertyPage {
    Q_OBJECT
  public:
    ReportNumberPage(FormContext& form, ReportOptionValues& values);

    void load() override;
    [[nodiscard]] bool store() override;

  private:
    ReportOptionValues& values_;
    QComboBox* place_ = nullptr;
    QLineEdit* text_ = nullptr;
};

class ReportOptionsSheet : public PropertySheet {
    Q_OBJECT
  public:
    /// The desk must outlive the sheet.
    ReportOptionsSheet(FormContext& form, ReportDesk& desk, bool isBus, QWidget* parent = nullptr);

  private:
    ReportOptionValues values_;
};

/// Runs the sheet over the layout that counts. True if something was stored.
bool editReportOptions(FormContext& form, ReportDesk& desk, bool isBus, QWidget* parent);
/// The same from the main menu: with no layout open it asks for the settings or a file, which is
/// saved after the sheet and closed again.
bool editReportOptionsAsked(FormContext& form, ReportDesk& desk, QWidget* parent);

}  // namespace kavu
