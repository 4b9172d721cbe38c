// The window of the display: the grid with its zoom and its fields, the menus, the list of
// measurements. Edits are steps that others install; each accepted one can be undone.
#pragma once

#include "app/framework/FormContext.h"
#include "app/pcm/FrameGridAreas.h"
#include "app/pcm/PcmFormSteps.h"
#include "pcm/edit/BlockEdit.h"
#include "pcm/undo/StreamUndo.h"

#include <functional>
#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

#include <QDialog>

class QAction;
class QActionGroup;
class QLabel;
class QLineEdit;
class QMenu;
class QMenuBar;
class QPushButton;
class QSlider;
class QSplitter;

namespace kavu {

class FrameKey;
class MajorFrameFind;
class MeasurementList;

class MajorFrameWindow : public QDialog {
    Q_OBJECT
  public:
    /// Makes the drawing areas; nothing if they cannot be had.
    using MakeAreas =
        std::function<std::unique_ptr<FrameGridAreas>(const PcmFormat& format, QWidget* parent)>;

    MajorFrameWindow(FormContext& form, PcmFormat& format, PcmFormSteps& steps,
                     const MakeAreas& makeAreas, QWidget* parent);

    /// False if the drawing areas could not be had: the window cannot be shown then.
    [[nodiscard]] bool isMade() const { return areas_ != nullptr; }
    [[nodiscard]] bool displayChanged() const { return displayChanged_; }
    [[nodiscard]] FrameGridAreas& areas() { return *areas_; }

    /// What a double click does: edits the place, or asks what an empty one becomes.
    void editCell(int word, int frame);
    /// Edits the ID counter or the subframe of a word, or asks which of them to make there.
    void editLabel(int word);
    /// Deletes what is in the selected block, with one question; in a single cell with several
    /// measurements the user chooses one.
    void deleteCell();
    /// The place of a Go To field, or of both.
    bool goToText(const QLineEdit& field);

    void done(int result) override;

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    // MajorFrameWindow.cpp
    void arrange();
    QWidget* makeBottomRow();
    QWidget* makeZoom();
    QLineEdit* makeGoTo(const char* name, const QString& text);
    void connectParts();
    void readConversions();
    [[nodiscard]] std::string conversionValue(std::string_view name, std::string_view key) const;
    void setCellWidth(int width);
    /// What is shown of the stream has changed.
    void showOptions();
    void showZoom();
    void showSelection();
    void escape();

    // MajorFrameEdits.cpp
    void runEdit(const PcmFormSteps::Edit& step, const char* title);
    void runWords(const PcmFormSteps::EditWords& step, const char* title);
    void editPlace(const PcmFormSteps::EditPlace& step, int word, int frame, bool always,
                   const char* title);
    /// After every edit: takes it as a level of the undo, of that name, and shows it.
    void edited(bool accepted, std::string_view title);
    void streamChanged();
    void undo();
    void redo();
    /// The list and the marks go where the selection goes.
    void followSelection();
    void goToMeasurement();
    void goToSubframe();
    [[nodiscard]] std::string subframeHere() const;
    void allowSameNames(bool allow);
    void showDatabase(bool shown);

    // MajorFrameBlocks.cpp
    [[nodiscard]] BlockArea selectedArea() const;
    void copyBlock();
    void cutBlock();
    void pasteBlock();
    void fillBlock(FillDirection direction);

    // MajorFrameLayout.cpp
    void restorePlace();
    void storePlace();
    void restoreLayout();
    void storeLayout();

    // MajorFrameMenus.cpp
    void makeMenus();
    QMenu* makeEditMenu();
    void addBlockEntries(QMenu& menu);
    void addFrameEntries(QMenu& menu);
    void addWordEntries(QMenu& menu, const std::string& ofMenu);
    void makeStripMenus();
    void setColours(bool calm);
    void makeSearchMenu();
    void makeViewMenu();
    void makeDatabaseMenu();
    void makeOptionsMenu();
    QAction* addEntry(QMenu& menu, const char* name, const QString& text,
                      const std::function<void()>& run, const QKeySequence& keys = {});
    /// An entry that runs a step; disabled, and saying so, while the step is not installed.
    QAction* addStep(QMenu& menu, const char* name, const QString& text,
                     const PcmFormSteps::Edit& step, const char* title);
    QAction* addWordStep(QMenu& menu, const char* name, const QString& text,
                         const PcmFormSteps::EditWords& step, const char* title);
    /// Two entries of which one is checked.
    void addPair(QMenu& menu, const char* name, const QString& on, const QString& off, bool isOn,
                 const std::function<void(bool)>& change);
    void updateMenus();

    FormContext& form_;
    PcmFormat& format_;
    PcmFormSteps& steps_;
    StreamUndo undo_;
    bool displayChanged_ = false;
    bool isClosed_ = false;
    int menuFrame_ = 1;                            ///< that the menu of the frames was opened at
    std::unordered_set<std::string> conversions_;  ///< names with a record, in capitals

    FrameGridAreas* areas_ = nullptr;
    MeasurementList* list_ = nullptr;
    MajorFrameFind* find_ = nullptr;
    FrameKey* key_ = nullptr;
    QSplitter* splitter_ = nullptr;
    QMenuBar* menus_ = nullptr;
    QMenu* placeMenu_ = nullptr;
    QMenu* wordMenu_ = nullptr;   ///< of the labels and numbers of words
    QMenu* frameMenu_ = nullptr;  ///< of the numbers of frames
    QSlider* zoom_ = nullptr;
    QLabel* percent_ = nullptr;
    QLineEdit* fwp_ = nullptr;
    QLineEdit* fn_ = nullptr;
    QLabel* status_ = nullptr;
    QPushButton* close_ = nullptr;
    QPushButton* help_ = nullptr;
    QAction* undoAction_ = nullptr;
    QAction* redoAction_ = nullptr;
    QAction* editAction_ = nullptr;
    QAction* deleteAction_ = nullptr;
    std::vector<QAction*> blockActions_;  ///< that need a selected cell
    QAction* databaseAction_ = nullptr;
    QWidget* database_ = nullptr;
};

}  // namespace kavu
