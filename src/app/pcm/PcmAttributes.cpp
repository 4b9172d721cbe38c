#include "app/pcm/PcmAttributes.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/FieldForm.h"
#include "app/framework/QtText.h"
#include "app/framework/SheetTabs.h"
#include "app/pcm/PcmFieldsPage.h"
#include "app/pcm/PcmFilterPage.h"
#include "app/pcm/PcmSwitchPage.h"
#include "core/talk/UserInterface.h"
#include "pcm/PcmFormat.h"
#include "pcm/edit/FrameAdjust.h"
#include "pcm/model/PcmFormatFields.h"
#include "pcm/write/PcmSave.h"

#include <QPushButton>

namespace kavu {

namespace {

constexpr int kFilterEdition = 2009;

}  // namespace

PcmAttributesModel::PcmAttributesModel(FormContext& formContext, PcmFormat& stream)
    : form(formContext),
      format(stream),
      side(readSideRecords(stream, &formContext.ui)),
      stored_(side) {}

bool PcmAttributesModel::edit(std::string_view code, std::string_view value) {
    const bool taken = editFrameAttribute(format, &form.ui, code, value);
    emit changed();
    return taken;
}

void PcmAttributesModel::setHexadecimal(bool hexadecimal) {
    editHexFsp(format, hexadecimal);
    emit changed();
}

bool PcmAttributesModel::storeSide() {
    if (side == stored_) {
        return true;
    }
    if (!storeSideRecords(format, &form.ui, side)) {
        return false;
    }
    stored_ = side;
    return true;
}

PcmAttributesSheet::PcmAttributesSheet(FormContext& form, PcmFormat& format, PcmSheetCalls calls,
                                       QWidget* parent)
    : PropertySheet(form, "PCM_ATTRIBUTES", "Edit PCM Attributes", "LastPcmFmtPage", parent),
      model_(std::make_unique<PcmAttributesModel>(form, format)),
      calls_(std::move(calls)) {
    setStatusText(&form.ui, "Initializing Stream Format Information...");
    addPages();
    addButtons();
    connect(model_.get(), &PcmAttributesModel::changed, this, &PcmAttributesSheet::showKind);
    addApply();
    setWriter([this] {
        if (!model_->storeSide() || !savePcmFormat(model_->format, &model_->form.ui)) {
            return false;
        }
        if (calls_.saved) {
            calls_.saved();
        }
        return true;
    });
    showKind();
}

void PcmAttributesSheet::addPages() {
    auto& model = *model_;
    const auto add = [&](const char* name, const char* pageTitle) {
        addPage(std::make_unique<PcmFieldsPage>(model, name, pageTitle));
    };
    add(pcm_page::kInputData, "Input Data");
    add(pcm_page::kStream, "Stream Attributes");
    addPage(std::make_unique<PcmSyncPage>(model));
    add(pcm_page::kSyncCriteria, "Sync Criteria");
    addPage(std::make_unique<PcmSwitchPage>(model));
    addPage(std::make_unique<FieldPage>(model.form, pcm_page::kAltTag, "Alt Tag/Data",
                                        altTagFields(), model.side.altTag.values));
    add(pcm_page::kComments, "Comments");
    if (model.format.edition() >= kFilterEdition) {
        addPage(std::make_unique<PcmFilterPage>(model));
    }
    showAllTabs(*this);
}

void PcmAttributesSheet::addButtons() {
    view_ = addButton("viewEditStream", QStringLiteral("&View/Edit Stream"));
    auto* const reports = addButton("reports", QStringLiteral("&Reports"));
    reports->setEnabled(static_cast<bool>(calls_.reports));
    connect(view_, &QPushButton::clicked, this, [this] {
        const auto& call = viewOfKind();
        if (call && call(*this)) {
            markChanged();
        }
        model_->refresh();
    });
    connect(reports, &QPushButton::clicked, this, [this] { calls_.reports(*this); });
    if (calls_.editMessages) {
        auto* const messages = addButton("editMessages", QStringLiteral("Edit Message &Data"));
        connect(messages, &QPushButton::clicked, this, [this] {
            if (calls_.editMessages(*this)) {
                markChanged();
            }
        });
    }
}

const std::function<bool(QWidget&)>& PcmAttributesSheet::viewOfKind() const {
    const auto& format = model_->format;
    return format.isBusStream       ? calls_.viewBus
           : isPacketStream(format) ? calls_.viewPackets
                                    : calls_.viewFrame;
}

void PcmAttributesSheet::showKind() {
    const auto& format = model_->format;
    setWindowTitle(toQString(attributesTitle(format)));
    setStatusText(&model_->form.ui, attributesStatus(format));
    view_->setEnabled(static_cast<bool>(viewOfKind()));
}

bool editPcmAttributes(FormContext& form, PcmFormat& format, PcmSheetCalls calls) {
    const int saveCount = format.saveCount;
    PcmAttributesSheet sheet(form, format, calls);
    const auto result = runPropertySheet(form, sheet);
    if (result == SheetResult::Unchanged) {
        // What the load has corrected is saved, though nothing was edited.
        (void)savePcmFormat(format, &form.ui);
    } else if (result != SheetResult::Stored && calls.cancelled) {
        calls.cancelled();
    }
    setStatusText(&form.ui, {});
    return format.saveCount != saveCount;
}

}  // namespace kavu
