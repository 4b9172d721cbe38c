// What the windows of a PCM stream call in each other and in other folders. Who makes a form
// installs the step that opens it; an entry of a menu whose step is not installed is disabled.
//
// Steps edit the one stream that is in memory. They are given the window that they belong to,
// and give true if the stream (or what is shown of it) has changed.
#pragma once

#include "pcm/edit/FrameEditWords.h"
#include "pcm/edit/MeasurementEdit.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

class QSplitter;
class QWidget;

namespace kavu {

class ConversionStore;

struct PcmFormSteps {
    using Edit = std::function<bool(QWidget& window)>;
    using EditPlace = std::function<bool(QWidget& window, int fwp, int fn)>;
    /// Its prompts begin with the words that are selected.
    using EditWords = std::function<bool(QWidget& window, const SelectedWords& selected)>;

    /// "Edit Data Word Definition" for the place; with several measurements there it lets the
    /// user choose.
    EditPlace editMeasurementAt;
    /// The form of an async format at the place.
    EditPlace editAsyncAt;
    /// The form of the ID counter or of the subframe that the word belongs to; `fn` is of no
    /// meaning. False for any other word.
    EditPlace editSubframeAt;
    /// Asks what to make at the word, a subframe or an ID counter, and opens its form. Cancel
    /// there takes it back, and gives false.
    EditPlace createSubframeAt;

    Edit generateDataWords;   ///< "Initialize Undefined Measurements"
    Edit editSectionComment;  ///< "Measurement Section Comment Field"
    Edit editFilterList;      ///< "Measurement Selected Filter/Overwrite List"
    Edit editTaggedData;      ///< "Tagged Data Definitions"
    Edit editConversions;     ///< "Data Conversion Information"
    EditWords insertFwps;
    EditWords deleteFwps;
    EditWords moveFwps;
    Edit chooseDefinitionMode;  ///< "Measurement Definition Options"
    Edit generateReports;       ///< "Generate Reports"

    /// One entry of the menu of the database.
    struct DatabaseEntry {
        std::string text;  ///< with an "&"
        Edit run;
    };
    /// Without entries the menu is disabled, and there is no database.
    std::vector<DatabaseEntry> databaseEntries;
    /// False once the database has been switched off, which disables the menu; without it it is on.
    std::function<bool()> databaseIsOn{};
    /// Makes the pane of the database, which puts itself next to the grid: into the splitter of the
    /// window, or below it into the one around that.
    std::function<QWidget*(QSplitter& parts)> makeDatabasePane;

    /// The records of conversions; null if there are none.
    ConversionStore* conversions = nullptr;
    /// What the edits need of other folders.
    EditSteps edit;
};

}  // namespace kavu
