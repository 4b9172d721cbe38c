#include "app/reports/LayoutFiles.h"

#include "app/framework/FormContext.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "reports/ReportDesk.h"
#include "reports/layout/ReportColumns.h"

#include <utility>
#include <vector>

namespace kavu {

namespace {

FilePrompt layoutPrompt(const char* title, bool forSaving, const std::string& path) {
    FilePrompt prompt;
    prompt.title = title;
    prompt.filters = {{"KAVU-9 Report Layout Files", "*.rpt"}};
    prompt.forSaving = forSaving;
    prompt.path = path;
    prompt.extension = ".rpt";
    prompt.confirmsOverwrite = forSaving;
    prompt.own = path;
    return prompt;
}

}  // namespace

bool openLayoutFile(FormContext& form, ReportDesk& desk) {
    if (!desk.mayLeave(&form.ui)) {
        return false;
    }
    const auto choice =
        form.ui.chooseFile(layoutPrompt("Open Report Layout File", false, desk.file().path()));
    return choice && desk.file().open(&form.ui, choice->path);
}

bool saveLayoutFile(FormContext& form, DocumentContext& document, ReportDesk& desk) {
    return desk.file().isOpen() ? desk.file().save(&form.ui)
                                : saveLayoutFileAs(form, document, desk);
}

bool saveLayoutFileAs(FormContext& form, DocumentContext& document, ReportDesk& desk) {
    const auto choice = form.ui.chooseFile(
        layoutPrompt("Save KAVU-9 Report Layout File As", true, desk.file().path()));
    if (!choice) {
        return false;
    }
    if (desk.file().isOpen()) {
        return desk.file().saveAs(&form.ui, choice->path);
    }
    std::vector<std::pair<std::string, std::string>> values;
    const auto layout = desk.layout();
    for (const auto& key : layoutKeys(document)) {
        values.emplace_back(key.key, layout.text(key.key));
    }
    if (!desk.file().create(&form.ui, choice->path)) {
        return false;
    }
    for (const auto& [key, value] : values) {
        if (!desk.file().set(&form.ui, key, value)) {
            desk.file().close();
            return false;
        }
    }
    if (!desk.file().save(&form.ui)) {
        desk.file().close();
        return false;
    }
    return true;
}

std::string layoutLine(ReportDesk& desk) {
    return formatPrintf("Report Layout File: %s",
                        desk.file().isOpen() ? desk.file().path() : std::string("(None)"));
}

}  // namespace kavu
