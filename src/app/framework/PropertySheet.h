// A sheet of pages on tabs: the shape of nearly every editor.
#pragma once

#include "app/framework/FormContext.h"
#include "core/talk/UserInterface.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <QDialog>
#include <QString>
#include <QWidget>

class QDialogButtonBox;
class QHBoxLayout;
class QPushButton;
class QTabWidget;

namespace kavu {

/// A page. Its resource name is its objectName, and its topic in the help.
class PropertyPage : public QWidget {
    Q_OBJECT
  public:
    PropertyPage(FormContext& form, const char* resourceName, const std::string& title,
                 QWidget* parent = nullptr);

    /// Model to controls. Called once, when the page joins its sheet.
    virtual void load() = 0;
    /// Says what is wrong and puts the focus there, and gives false; the sheet stays open.
    [[nodiscard]] virtual bool validate() { return true; }
    /// Controls to model. False (it has been reported) keeps the sheet open.
    [[nodiscard]] virtual bool store() = 0;

    [[nodiscard]] bool isChanged() const { return changed_; }
    /// The sheet has stored the page and stays open.
    void markStored() { changed_ = false; }
    [[nodiscard]] const std::string& title() const { return title_; }
    [[nodiscard]] FormContext& form() const { return form_; }

  signals:
    void changed();

  protected:
    /// To be called for every edit of the user, and not by `load`.
    void markChanged();

  private:
    FormContext& form_;
    std::string title_;
    bool changed_ = false;
};

enum class SheetResult {
    NotCreated,  ///< too many sheets, which has been reported
    Cancelled,
    Unchanged,  ///< closed with OK, and nothing had changed: nothing was stored
    Stored,
};

class PropertySheet : public QDialog {
    Q_OBJECT
  public:
    /// `pageKey` is the key in the section `PropSheet` under which the page that was open
    /// last is kept (counted from 1); empty keeps none.
    PropertySheet(FormContext& form, const char* resourceName, const std::string& title,
                  std::string pageKey, QWidget* parent = nullptr);

    /// Takes the page, loads it and puts it on the next tab.
    PropertyPage& addPage(std::unique_ptr<PropertyPage> page);
    /// A button below the pages, as "Edit Multiplex Info". The Tab key comes to it between the
    /// pages and OK.
    QPushButton* addButton(const char* name, const QString& text);
    /// A button that stores as OK does and leaves the sheet open. What was stored stays, even if
    /// the sheet is left with Cancel.
    QPushButton* addApply();
    /// Called on OK after all pages have stored, to write what they stored: false (it has
    /// been reported) keeps the sheet open.
    void setWriter(std::function<bool()> writer) { writer_ = std::move(writer); }
    /// Marks the sheet changed by something that is on no page.
    void markChanged();

    /// Something was done that Cancel could not take back: the sheet can only be stored from
    /// now on, and closing its window is OK.
    void disableCancel();

    [[nodiscard]] bool isChanged() const;
    [[nodiscard]] SheetResult sheetResult() const { return result_; }
    [[nodiscard]] int pageCount() const { return static_cast<int>(pages_.size()); }
    [[nodiscard]] PropertyPage& page(int index) const;
    void openPage(int index);
    /// Opens a page in place of the remembered one when the sheet is shown.
    void openFirst(int index);
    [[nodiscard]] int openedPage() const;

    /// OK: all pages are checked, then all are stored, then the writer runs.
    void accept() override;
    /// Cancel: asks if something has changed.
    void reject() override;

  protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void rememberPage(int index);
    void openHelp();
    [[nodiscard]] bool validatePages();
    [[nodiscard]] bool storePages();
    void apply();
    void showApply();
    [[nodiscard]] Button ask(const char* question, Buttons buttons);
    void fitToScreen();
    void putButtonsLast();

    FormContext& form_;
    std::string pageKey_;
    std::vector<PropertyPage*> pages_;
    std::function<bool()> writer_;
    bool changedElsewhere_ = false;
    bool cancelDisabled_ = false;
    bool pageRestored_ = false;
    bool checking_ = false;
    SheetResult result_ = SheetResult::Cancelled;
    QTabWidget* tabs_ = nullptr;
    QHBoxLayout* tools_ = nullptr;  ///< made with the first button
    QDialogButtonBox* buttons_ = nullptr;
    QPushButton* apply_ = nullptr;  ///< if there is one
};

/// Runs a sheet through the door, unless too many are up.
SheetResult runPropertySheet(FormContext& form, PropertySheet& sheet);

}  // namespace kavu
