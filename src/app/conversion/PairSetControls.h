// The controls of the panel of pair sets, by name, and their state.
#pragma once

#include "app/framework/FormContext.h"

class QCheckBox;
class QComboBox;
class QBoxLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QWidget;

namespace kavu {

class EditableList;

/// One value of the series plot: what was entered, and what the curve makes of it.
struct SeriesControls {
    QLineEdit* value = nullptr;
    QPushButton* edit = nullptr;
    QLineEdit* computed = nullptr;
};

struct PairSetControls {
    EditableList* list = nullptr;
    QPushButton* import = nullptr;
    QPushButton* paste = nullptr;
    QPushButton* copy = nullptr;
    QPushButton* savePairs = nullptr;

    QCheckBox* curve = nullptr;
    QWidget* choices = nullptr;  ///< all that is about a curve
    QComboBox* order = nullptr;
    QCheckBox* useBestFit = nullptr;
    QLabel* bestFit = nullptr;
    QComboBox* maxOrder = nullptr;
    QCheckBox* allCounts = nullptr;
    QLineEdit* defaultBits = nullptr;
    QCheckBox* sorted = nullptr;

    QCheckBox* series = nullptr;
    SeriesControls zero;
    SeriesControls cal;

    QListWidget* coefficients = nullptr;
    QLineEdit* correlation = nullptr;
    QLineEdit* rms = nullptr;
    QLabel* trust = nullptr;

    QBoxLayout* columns = nullptr;  ///< what is entered, and what comes of it
    QCheckBox* showPlot = nullptr;
    QWidget* plotSide = nullptr;
    QLabel* pointer = nullptr;
    QPushButton* attributes = nullptr;
    QPushButton* print = nullptr;
    QPushButton* save = nullptr;
};

/// Columns of the list.
enum PairColumn { kPairNumber, kPairTelemetry, kPairEngineering, kPairComputed, kPairError };

/// Makes and places the controls of `panel`, with the two views of the plot among them.
[[nodiscard]] PairSetControls makePairSetControls(FormContext& form, QWidget& panel,
                                                  QWidget* curveView, QWidget* residualView,
                                                  bool readOnly);

}  // namespace kavu
