// The forms of the conversions to engineering units: gives the main window their editors, and the
// pictures their makers.
#pragma once

#include <string>

class QWidget;

namespace kavu {

class Application;
class ConversionStore;
class MainWindow;
struct DocumentContext;
struct FormContext;

/// What the sheet of a record knows of its measurement.
struct ConversionSheetSetup {
    int bits = 0;           ///< word length of the measurement; 0 if it is not known
    bool readOnly = false;  ///< the sheet shows the record and changes nothing
};

/// The sheet of the conversion of one measurement, which gets a record if it has none. True if
/// the record was stored; the document then counts as changed. An empty name is reported.
bool editConversion(FormContext& form, DocumentContext& document, ConversionStore& store,
                    const std::string& name, const ConversionSheetSetup& setup = {},
                    QWidget* parent = nullptr);

/// The list of all records, each of which opens its sheet. True if records have changed.
bool editAllConversions(FormContext& form, DocumentContext& document, ConversionStore& store,
                        QWidget* parent = nullptr);

void installConversionForms(MainWindow& window, Application& application);

}  // namespace kavu
