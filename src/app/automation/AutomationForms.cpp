#include "app/automation/AutomationForms.h"

#include "app/bus/StreamDataForms.h"
#include "app/conversion/ConversionForms.h"
#include "app/groups/GSheet.h"
#include "app/groups/MultiplexDialog.h"
#include "app/groups/RSheet.h"
#include "app/groups/SelectSourceDialog.h"
#include "app/groups/TSheet.h"
#include "app/pcm/IdCounterDialog.h"
#include "app/pcm/PcmForms.h"
#include "app/pcm/SubframeDialog.h"
#include "app/pcm/WordSteps.h"
#include "application/Application.h"
#include "pcm/PcmFormat.h"

namespace kavu {

namespace {

SourceParts dataSourceParts(Application& application) {
    return {application.context(), application.conversions(), application.measurementNames()};
}

bool markEdited(PcmFormat& format, bool isEdited) {
    format.changed = format.changed || isEdited;
    return isEdited;
}

}  // namespace

AutomationForms::AutomationForms(Application& application, AutomationDoor& door)
    : application_(application), door_(door), ui_(nullptr, door) {
    application.setDefinitionModeStep([this](UserInterface&, bool wordFrame) {
        auto form = formContext(ui_, door_, application_.context());
        return chooseDefinitionMode(form, ui_.dialogParent(), wordFrame);
    });
}

UserInterface* AutomationForms::parentOf(std::int64_t hWnd) {
    door_.setParentWindow(hWnd);
    return &ui_;
}

bool AutomationForms::run(std::int64_t hWnd, const std::function<bool(FormContext&)>& edit) {
    door_.setParentWindow(hWnd);
    door_.forgetResult();
    auto form = formContext(ui_, door_, application_.context());
    return edit(form) || door_.wasAccepted();
}

bool AutomationForms::editGeneral(std::int64_t hWnd) {
    return run(hWnd, [this](FormContext& form) {
        return kavu::editGeneral(form, dataSourceParts(application_));
    });
}

bool AutomationForms::editMultiplex(std::int64_t hWnd) {
    return run(hWnd, [this](FormContext& form) {
        const auto source = selectDataSource(form, dataSourceParts(application_), 'M');
        return source && kavu::editMultiplex(form, dataSourceParts(application_), source->name);
    });
}

bool AutomationForms::editRf(std::int64_t hWnd) {
    return run(hWnd, [this](FormContext& form) {
        const auto source = selectDataSource(form, dataSourceParts(application_), 'T');
        return source && editTransmission(form, dataSourceParts(application_), source->name);
    });
}

bool AutomationForms::editTape(std::int64_t hWnd) {
    return run(hWnd, [this](FormContext& form) {
        const auto source = selectDataSource(form, dataSourceParts(application_), 'R');
        return source && editRecorder(form, dataSourceParts(application_), source->name,
                                      [this](FormContext& sheet, const std::string& name) {
                                          return editMessagesOf(sheet, application_, name);
                                      });
    });
}

bool AutomationForms::editFormat(std::int64_t hWnd) {
    return run(hWnd, [this](FormContext& form) { return editLoadedStream(form, application_); });
}

bool AutomationForms::showDisplay(std::int64_t hWnd) {
    return run(hWnd, [this](FormContext& form) {
        (void)showLoadedStream(form, application_);
        // It is closed, and has no Cancel.
        return true;
    });
}

bool AutomationForms::editCounter(std::int64_t hWnd, int counter) {
    return run(hWnd, [this, counter](FormContext& form) {
        auto& format = application_.pcmFormat();
        for (int fwp = 1; format.isDataWord(fwp); ++fwp) {
            const auto& word = format.word(fwp);
            if (word.type == WordType::IdCounter && word.idCounterIndex == counter) {
                return markEdited(format, editIdCounter(form, format, nullptr, fwp, false));
            }
        }
        return false;
    });
}

bool AutomationForms::editSubframe(std::int64_t hWnd, int counter, int subframe) {
    return run(hWnd, [this, counter, subframe](FormContext& form) {
        auto& format = application_.pcmFormat();
        const auto& words = format.wordsOf({counter, subframe});
        return !words.empty() &&
               markEdited(format, kavu::editSubframe(form, format, nullptr, words.front(), false));
    });
}

bool AutomationForms::editDataWord(std::int64_t hWnd, int fwp, int fn, const std::string& name) {
    return run(hWnd, [&](FormContext& form) {
        auto& format = application_.pcmFormat();
        const auto steps = makeWordSteps(form, application_);
        return markEdited(
            format, name.empty() ? editMeasurementAt(form, format, steps, nullptr, fwp, fn)
                                 : editMeasurement(form, format, steps, nullptr, fwp, fn, name));
    });
}

bool AutomationForms::editConversion(std::int64_t hWnd, const std::string& measurement) {
    return run(hWnd, [&](FormContext& form) {
        const auto& format = application_.pcmFormat();
        ConversionSheetSetup setup;
        if (const auto place = Occurrences(format, measurement).next(); place) {
            setup.bits = format.wordLength(place->fwp);
        }
        return kavu::editConversion(form, application_.context(), application_.conversions(),
                                    measurement, setup);
    });
}

}  // namespace kavu
