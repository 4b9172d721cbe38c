// "Report Generation": which reports of a stream are made, and where they go.
#pragma once

#include "app/framework/FormContext.h"
#include "app/framework/QtText.h"
#include "reports/ReportRun.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>

#include <QDialog>

class QAction;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QVBoxLayout;

namespace kavu {

class ReportDesk;

/// What a report window works on; all of it outlives the window.
struct ReportWindowSetup {
    FormContext& form;
    DocumentContext& document;
    ConversionStore& conversions;
    ReportDesk& desk;
    const PcmFormat* format = nullptr;  ///< the stream in memory; null for a bus
    const BusDefinition* bus = nullptr;
    bool checksFormat = false;  ///< "PCM Format Attributes" is checked at first
};

class ReportWindow : public QDialog {
    Q_OBJECT
  public:
    explicit ReportWindow(const ReportWindowSetup& setup, QWidget* parent = nullptr);

    /// Saves the fields, then makes the reports.
    void generate();
    [[nodiscard]] int startPage() const { return startPage_; }

  private:
    void makeMenus(QVBoxLayout& column);
    QWidget* makeReports();
    QWidget* makeDestination();
    QWidget* makeDelimited();
    QWidget* makeColumns();
    void makeButtons(QVBoxLayout& column);
    QWidget* makePath(const char* name, const char* key, const QString& label);

    void load();
    /// Saves the fields to the keys of the layout; false if one could not be, which is reported.
    bool store();
    void showLayout();
    void enableFields();
    void browse(QLineEdit& path);
    void chooseStartPage();
    void editOptions();
    void showText(const std::string& path);
    void print(std::vector<ReportContent> reports);
    bool mayWrite(const std::string& path);
    [[nodiscard]] bool isBus() const { return setup_.bus != nullptr; }

    const ReportWindowSetup setup_;
    int startPage_ = 1;
    std::set<std::string> written_{};            ///< files that need no question any more
    std::map<std::string, ShownText> shown_{};   ///< of paths, by their key
    std::map<std::string, QCheckBox*> boxes_{};  ///< by their key
    QComboBox* destination_ = nullptr;
    QComboBox* font_ = nullptr;
    QComboBox* sort_ = nullptr;
    QListWidget* columns_ = nullptr;
    QWidget* reportPath_ = nullptr;
    QWidget* delimitedPath_ = nullptr;
    QLabel* layoutName_ = nullptr;
    QAction* pageAction_ = nullptr;
    QAction* closeAction_ = nullptr;
};

}  // namespace kavu
