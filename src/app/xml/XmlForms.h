// The entries of File, Import and File, Export.
#pragma once

#include "app/framework/FormContext.h"
#include "app/xml/XmlDialog.h"

namespace kavu {

class Application;
class MainWindow;

void installXmlForms(MainWindow& window, Application& application);

/// The dialog of an import whose file has been read, and of an export that is open. What it is made
/// of must outlive it.
[[nodiscard]] XmlDialogSetup importSetup(FormContext& form, const TmatsDocument& document,
                                         XmlImport& import);
[[nodiscard]] XmlDialogSetup exportSetup(FormContext& form, const TmatsDocument& document,
                                         XmlExport& exported);

}  // namespace kavu
