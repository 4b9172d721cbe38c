// The window of the display: the grid with its zoom and its fields, the menus, the list of
// measurements. Edits are steps that others install; each accepted one can be undone.
#pragma once

#include "app/framework/FormContext.h"
#include "app/pcm/FrameGridAreas.h"
#include "app/pcm/PcmFormSteps.h"
#include "pcm/undo/StreamUndo.h"

#include <functional>
#include <memory>
#include <string>
#include <unordered_set>

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
    /// Deletes what is at the selected cell, with the question.
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
    void restorePlace();
    void storePlace();
    void readConversions();
    [[nodiscard]] std::string conversionValue(std::string_view name, std::string_view key) const;
    void setCellWidth(int width);
    /// What is shown of the stream has changed.
    void showOptions();
    void showZoom();
    void showSelection();

    // MajorFrameEdits.cpp
    void runEdit(const PcmFormSteps::Edit& step);
    void editPlace(const PcmFormSteps::EditPlace& step, int word, int frame, bool always);
    /// After every edit: takes it as a level of the undo and shows it.
    void edited(bool accepted);
    void streamChanged();
    void undo();
    void redo();
    void copyBlock();
    void goToMeasurement();
    void goToSubframe();
    void allowSameNames(bool allow);
    void showDatabase(bool shown);

    // MajorFrameMenus.cpp
    void makeMenus();
    QMenu* makeEditMenu();
    void makeSearchMenu();
    void makeViewMenu();
    void makeDatabaseMenu();
    void makeOptionsMenu();
    QAction* addEntry(QMenu& menu, const char* name, const QString& text,
                      const std::function<void()>& run, const QKeySequence& keys = {});
    /// An entry that runs a step; disabled, and saying so, while the step is not installed.
    QAction* addStep(QMenu& menu, const char* name, const QString& text,
                     const PcmFormSteps::Edit& step);
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
    std::unordered_set<std::string> conversions_;  ///< names with a record, in capitals

    FrameGridAreas* areas_ = nullptr;
    MeasurementList* list_ = nullptr;
    MajorFrameFind* find_ = nullptr;
    FrameKey* key_ = nullptr;
    QSplitter* splitter_ = nullptr;
    QMenuBar* menus_ = nullptr;
    QMenu* placeMenu_ = nullptr;
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
    QAction* copyAction_ = nullptr;
    QAction* databaseAction_ = nullptr;
    QWidget* database_ = nullptr;
};

}  // namespace kavu
