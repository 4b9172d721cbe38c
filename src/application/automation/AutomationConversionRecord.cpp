#include "application/automation/AutomationConversionRecord.h"

#include "application/Application.h"
#include "application/automation/AutomationSession.h"
#include "application/automation/AutomationValues.h"
#include "conversion/ConversionFields.h"
#include "conversion/ConversionStore.h"
#include "conversion/DefinitionEdit.h"
#include "core/TmatsDocument.h"
#include "core/document/Transaction.h"
#include "core/text/Printf.h"
#include "groups/MeasurementNames.h"
#include "pcm/PcmFormat.h"
#include "pcm/undo/StreamUndo.h"

#include <optional>

namespace kavu {

namespace {

constexpr std::string_view kRecord = "data conversion record";

[[noreturn]] void throwFileError(const IoStatus& status) {
    throw AutomationError(AutomationFault::FileError, status.path() + ": " + status.reason());
}

void require(const IoStatus& status) {
    if (!status.ok()) {
        throwFileError(status);
    }
}

void require(bool isDone, const AutomationTalk& talk) {
    if (!isDone) {
        throw talk.failure();
    }
}

/// Exact spellings come first, in either encoding.
std::optional<RecordPlace> findRecord(ConversionStore& conversions, const std::string& name) {
    std::optional<RecordPlace> similar;
    for (const auto& form : storedForms(name)) {
        auto place = conversions.locateDefinition(form);
        if (place.found && place.section == form) {
            return place;
        }
        if (place.found && !similar) {
            similar = std::move(place);
        }
    }
    return similar;
}

/// The record counts as edited, which no file that is saved tells.
void markEdited(AutomationSession& session, const std::string& record, AutomationTalk& talk) {
    auto& conversions = session.application().conversions();
    const auto place = conversions.locateDefinition(record);
    const auto chunk = conversions.chunk(place.chunk);
    require(chunk->load());
    require(chunk->setValue(place.section, recordkey::kChanged, "1"), talk);
    require(conversions.store(place.chunk, *chunk));
}

/// What was changed besides the loaded stream is a level of its own, which no later call of the
/// stream takes back.
void settleStream(AutomationSession& session, std::string_view title) {
    if (session.application().pcmFormat().loaded()) {
        (void)session.history().commit(true, title);
    }
}

/// True if the document differs from before: the record was made, or is no template any more.
bool runChange(AutomationSession& session, const std::string& record, const RecordChange& change,
               AutomationTalk& talk) {
    auto& conversions = session.application().conversions();
    const bool isNew = !conversions.locateDefinition(record).found;
    auto edit = DefinitionEdit::open(session.context(), conversions, &talk, record);
    if (!edit) {
        throw talk.failure();
    }
    try {
        if (change(*edit, talk) || isNew || edit->wasTemplate()) {
            require(edit->store(&talk), talk);
            return true;
        }
    } catch (...) {
        // Only the working copy: the record itself is put back with the operation.
        (void)edit->cancel(nullptr);
        throw;
    }
    require(edit->cancel(&talk), talk);
    markEdited(session, record, talk);
    return false;
}

}  // namespace

FoundRecord requireRecord(AutomationSession& session, const std::string& name) {
    session.requireDocument();
    auto& conversions = session.application().conversions();
    const auto place = findRecord(conversions, name);
    if (!place) {
        throwNotFound(kRecord, name);
    }
    auto chunk = conversions.chunk(place->chunk);
    require(chunk->load());
    return {std::move(chunk), place->section};
}

std::string requireConvertible(AutomationSession& session, const std::string& name) {
    session.requireDocument();
    auto& application = session.application();
    if (const auto place = findRecord(application.conversions(), name)) {
        return place->section;
    }
    const auto& format = application.pcmFormat();
    for (const auto& form : storedForms(name)) {
        if (form.empty()) {
            break;
        }
        if (format.loaded() && format.hasMeasurement(form)) {
            const auto place = format.cells().places(form).front();
            const auto cell = format.cells().firstAt(place.word, place.index, form);
            return format.cells().measurement(cell).name.str();
        }
        if (auto known = application.measurementNames().spelled(form)) {
            return std::move(*known);
        }
    }
    throwNotFound("measurement", name);
}

std::string valueOrNone(AutomationSession& session, const std::string& record,
                        std::string_view code) {
    auto& conversions = session.application().conversions();
    const auto place = conversions.locateDefinition(record);
    return place.found ? conversions.chunk(place.chunk)->value(place.section, code, "")
                       : std::string();
}

void requireField(AutomationSession& session, const Field& field, std::string_view what) {
    const int edition = session.context().document.version;
    if (edition < field.firstEdition) {
        throw AutomationError(AutomationFault::NotInEdition,
                              formatPrintf("A document of %d has no %s.", edition, what));
    }
}

void changeRecord(AutomationSession& session, const std::string& record,
                  const RecordChange& change) {
    auto& context = session.context();
    auto talk = session.talkFor(0);
    Transaction operation(context, OperationId::EditConversion);
    // An error leaves the block with the operation open: its files are put back.
    const bool changes = runChange(session, record, change, talk);
    require(changes ? operation.commit() : operation.commitUnasked());
    settleStream(session, operationName(OperationId::EditConversion));
}

}  // namespace kavu
