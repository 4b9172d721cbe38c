#include "app/pcm/SheetSteps.h"

#include "app/pcm/AsyncDialogs.h"
#include "app/pcm/IdCounterDialog.h"
#include "app/pcm/PcmFormSteps.h"
#include "app/pcm/SubframeDialog.h"
#include "app/pcm/TaggedDataDialog.h"
#include "pcm/PcmFormat.h"
#include "pcm/read/TaggedData.h"
#include "pcm/structure/SubframeEdit.h"
#include "pcm/undo/StreamUndo.h"

namespace kavu {

namespace {

bool editAt(FormContext& form, PcmFormat& format, QWidget& window, int fwp, bool isNew) {
    return format.wordType(fwp) == WordType::IdCounter
               ? editIdCounter(form, format, &window, fwp, isNew)
               : editSubframe(form, format, &window, fwp, isNew);
}

}  // namespace

void installSheetSteps(PcmFormSteps& steps, FormContext& form, PcmFormat& format) {
    steps.editSubframeAt = [&form, &format](QWidget& window, int fwp, int) {
        return editAt(form, format, window, fwp, false);
    };
    steps.createSubframeAt = [&form, &format](QWidget& window, int fwp, int) {
        // A counter may take a word that is in use: Cancel gives back what was there.
        StreamUndo before(format);
        if (createAt(format, &form.ui, fwp) == Created::Nothing) {
            return false;
        }
        const bool edited = editAt(form, format, window, fwp, true);
        if (!edited && before.commit()) {
            before.undo();
        }
        return edited;
    };
    steps.editAsyncAt = [&form, &format](QWidget& window, int fwp, int fn) {
        return editAsyncAt(form, format, &window, fwp, fn);
    };
    if (hasTaggedData(format)) {
        steps.editTaggedData = [&form, &format](QWidget& window) {
            return editTaggedData(form, format, &window);
        };
    }
}

}  // namespace kavu
