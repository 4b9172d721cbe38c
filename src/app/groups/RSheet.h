// The sheet over the recorder/reproducer group of a data source.
#pragma once

#include "app/framework/PropertySheet.h"
#include "groups/RGroup.h"
#include "groups/SourceEdit.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace kavu {

/// What the sheet takes from elsewhere in the document.
struct RecorderSurroundings {
    std::vector<std::string> sources{};  ///< the names of all data sources
    std::vector<std::string> links{};    ///< the names of all data links
    /// Opens the multiplex definition of the data source; without it there is no button. True
    /// if it changed the document.
    std::function<bool(FormContext& form, const std::string& source)> editMultiplex{};
    /// The same for message data, from 106-09 on.
    std::function<bool(FormContext& form, const std::string& source)> editMessages{};
};

class RecorderSheet : public PropertySheet {
    Q_OBJECT
  public:
    RecorderSheet(FormContext& form, DocumentContext& document, RecorderGroup group,
                  RecorderSurroundings around, QWidget* parent = nullptr);

    /// One of the buttons has changed the document, whatever became of the sheet.
    [[nodiscard]] bool changedElsewhere() const { return changedElsewhere_; }

  private:
    void addPages();
    void addButtons();
    /// A button that runs another editor; none without the editor.
    void addEditor(const char* name, const char* text,
                   const std::function<bool(FormContext&, const std::string&)>& edit);

    /// Runs another editor, and takes over what it did to the group.
    void editElsewhere(const std::function<bool(FormContext&, const std::string&)>& edit);

    FormContext& form_;
    DocumentContext& document_;
    RecorderGroup group_;
    RecorderSurroundings around_;
    bool changedElsewhere_ = false;
};

/// Reads the group of a data source and runs the sheet over it. True if the document has
/// changed.
bool editRecorder(FormContext& form, DocumentContext& document, const std::string& source,
                  RecorderSurroundings around);
/// The same in its own surroundings: the sources and links of the document, and the dialog over
/// the multiplex definition; and an editor of message data, if there is one.
bool editRecorder(
    FormContext& form, SourceParts parts, const std::string& source,
    const std::function<bool(FormContext& form, const std::string& source)>& editMessages = {});

}  // namespace kavu
