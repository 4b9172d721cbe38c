#include "app/pcm/WordSteps.h"

#include "app/conversion/ConversionForms.h"
#include "app/framework/DialogDoor.h"
#include "app/mdb/StreamDatabase.h"
#include "app/pcm/CommentDialog.h"
#include "app/pcm/DefinitionOptionsDialog.h"
#include "app/pcm/EditDataWordDialog.h"
#include "app/pcm/FilterListDialog.h"
#include "app/pcm/GenerateDialog.h"
#include "app/pcm/PcmFormSteps.h"
#include "application/Application.h"
#include "conversion/ConversionStore.h"
#include "core/talk/ProfileSettings.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "pcm/PcmFormat.h"
#include "pcm/edit/FrameEditWords.h"
#include "pcm/write/PcmSave.h"
#include "pcm/write/WordFrameConversion.h"

#include <memory>
#include <vector>

namespace kavu {

namespace {

constexpr char kNewMeasurement[] = "<New measurement>";

/// The measurement to edit: empty is a new one, nothing if the user chose none.
std::optional<std::string> chooseMeasurement(FormContext& form, const PcmFormat& format, int fwp,
                                             int fn) {
    std::vector<std::string> names;
    for (int n = 1; const auto at = format.measurementAt(fwp, fn, n, true); ++n) {
        names.push_back(format.cells().measurement(at).name.str());
    }
    if (names.empty()) {
        return std::string();
    }
    if (names.size() == 1) {
        return names.front();
    }
    names.emplace_back(kNewMeasurement);
    const int choice = form.ui.chooseFromList(
        formatPrintf("Edit Data Word Definition (FWP: %d  FN: %d)", fwp, fn), names);
    if (choice < 0 || static_cast<std::size_t>(choice) >= names.size()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(choice) + 1 == names.size()
               ? std::string()
               : names[static_cast<std::size_t>(choice)];
}

bool generate(FormContext& form, PcmFormat& format, const WordSteps& words, QWidget& window) {
    auto steps = words.generate;
    steps.changeDefaults = [&](UserInterface*, DataWordDefaults& defaults) {
        GenerateDialog dialog(form, format, defaults, &window);
        if (runDialog(form.door, dialog) != QDialog::Accepted) {
            return false;
        }
        defaults = dialog.defaults();
        return true;
    };
    return generateDataWords(format, &form.ui, steps).value_or(0) > 0;
}

void installConversionSteps(WordSteps& steps, FormContext& form, Application& application) {
    auto& conversions = application.conversions();
    auto& document = application.context();
    steps.edit.names = &application.measurementNames();
    steps.edit.deleteConversion = [&conversions](UserInterface* parent, std::string_view name) {
        conversions.deleteDefinition(parent, std::string(name));
    };
    steps.edit.conversions = &conversions;
    steps.save.renameConversion = [&conversions](UserInterface* parent, std::string_view from,
                                                 std::string_view to) {
        conversions.renameDefinition(parent, std::string(to), std::string(from));
    };
    steps.generate.createConversion = [&conversions](UserInterface* parent, std::string_view name,
                                                     const DataWordDefaults&) {
        // The defaults are in the settings by now.
        conversions.createDefaultDefinition(parent, std::string(name), false);
    };
    steps.generate.conversions = &conversions;
    steps.editConversion = [&form, &document, &conversions](QWidget& window,
                                                            const std::string& name, int bits) {
        return kavu::editConversion(form, document, conversions, name, {.bits = bits}, &window);
    };
}

}  // namespace

bool editMeasurementAt(FormContext& form, PcmFormat& format, const WordSteps& steps,
                       QWidget* window, int fwp, int fn) {
    const auto name = chooseMeasurement(form, format, fwp, fn);
    return name && editMeasurement(form, format, steps, window, fwp, fn, *name);
}

bool editMeasurement(FormContext& form, PcmFormat& format, const WordSteps& steps, QWidget* window,
                     int fwp, int fn, const std::string& name) {
    auto word = wordToEdit(format, &form.ui, fwp, fn, name);
    if (!word) {
        return false;
    }
    EditDataWordDialog dialog(form, format, steps, std::move(*word), window);
    runDialog(form.door, dialog);
    return dialog.hasStored() || dialog.hasStoredConversion();
}

std::optional<bool> chooseDefinitionMode(FormContext& form, QWidget* window, bool wordFrame) {
    DefinitionOptionsDialog dialog(wordFrame, window);
    return runDialog(form.door, dialog) == QDialog::Accepted ? std::optional(dialog.wordFrame())
                                                             : std::nullopt;
}

WordSteps makeWordSteps(FormContext& form, Application& application) {
    WordSteps steps;
    installConversionSteps(steps, form, application);
    installDatabaseSteps(steps, form, application);
    auto& format = application.pcmFormat();
    steps.saveFormat = [&form, &format] {
        const bool saved = savePcmFormat(format, &form.ui);
        format.changed = true;  // the windows that are open still save what they show
        return saved;
    };
    auto& settings = application.context().settings;
    steps.autoAdd = [&settings] {
        return AutoAdd{settings.get(setting::kDatabaseAddsRoot) != 0,
                       settings.get(setting::kDatabaseAddsChildren) != 0};
    };
    steps.keepAutoAdd = [&settings](const AutoAdd& wanted) {
        settings.overrideForThisRun(setting::kDatabaseAddsRoot, wanted.root ? 1 : 0);
        settings.overrideForThisRun(setting::kDatabaseAddsChildren, wanted.children ? 1 : 0);
    };
    return steps;
}

void installWordSteps(PcmFormSteps& steps, FormContext& form, PcmFormat& format,
                      const WordSteps& words) {
    steps.edit = words.edit;
    steps.editMeasurementAt = [&form, &format, words](QWidget& window, int fwp, int fn) {
        return editMeasurementAt(form, format, words, &window, fwp, fn);
    };
    steps.generateDataWords = [&form, &format, words](QWidget& window) {
        return generate(form, format, words, window);
    };
    steps.editSectionComment = [&form, &format](QWidget& window) {
        return editSectionComment(form, format, &window);
    };
    if (hasFilterList(format)) {
        steps.editFilterList = [&form, &format](QWidget& window) {
            return editFilterList(form, format, &window);
        };
    }
    steps.insertFwps = [&form, &format](QWidget&, const SelectedWords& selected) {
        return insertFwps(format, &form.ui, selected);
    };
    steps.deleteFwps = [&form, &format, words](QWidget&, const SelectedWords& selected) {
        return deleteFwps(format, &form.ui, words.edit, selected).value_or(0) > 0;
    };
    steps.moveFwps = [&form, &format](QWidget&, const SelectedWords& selected) {
        return moveFwps(format, &form.ui, selected);
    };
    if (format.edition() >= 2004 && format.edition() < 2011) {
        steps.chooseDefinitionMode = [&form, &format](QWidget& window) {
            return chooseWordFrameMode(format, &form.ui, [&](UserInterface&, bool wordFrame) {
                return chooseDefinitionMode(form, &window, wordFrame);
            });
        };
    }
}

}  // namespace kavu
