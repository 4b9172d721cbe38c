// "Edit PCM Attributes": the sheet over the format of the stream in memory. Its pages edit the
// stream as they go, since one attribute leads to others; a sheet that is left with Cancel
// leaves the stream to be dropped.
#pragma once

#include "app/framework/PropertySheet.h"
#include "pcm/structure/PcmFormatEdit.h"

#include <functional>
#include <memory>
#include <string_view>

#include <QObject>

class QPushButton;

namespace kavu {

class PcmFormat;

/// What all pages show and edit.
class PcmAttributesModel : public QObject {
    Q_OBJECT
  public:
    PcmAttributesModel(FormContext& formContext, PcmFormat& stream);

    FormContext& form;
    PcmFormat& format;
    PcmSideRecords side;

    /// False if it was refused; the pages show the old value again.
    bool edit(std::string_view code, std::string_view value);
    void setHexadecimal(bool hexadecimal);
    /// Lets the pages show the stream as it is now.
    void refresh() { emit changed(); }

    /// What the pages have stored besides the stream goes to its working files.
    [[nodiscard]] bool storeSide();

  signals:
    void changed();

  private:
    PcmSideRecords stored_;
};

/// What the buttons of the sheet open; without it a button is disabled. True if the stream was
/// edited.
struct PcmSheetCalls {
    /// The stream was written to its group files: what else was changed stays.
    std::function<void()> saved{};
    /// The sheet was left with Cancel: what was changed besides the stream since it was written
    /// last, or since the sheet was opened, is taken back.
    std::function<void()> cancelled{};
    std::function<bool(QWidget& window)> viewFrame{};
    std::function<bool(QWidget& window)> viewBus{};
    std::function<bool(QWidget& window)> viewPackets{};
    std::function<bool(QWidget& window)> reports{};
    /// The message data that the link has besides its format; without it there is no button.
    std::function<bool(QWidget& window)> editMessages{};
};

class PcmAttributesSheet : public PropertySheet {
    Q_OBJECT
  public:
    PcmAttributesSheet(FormContext& form, PcmFormat& format, PcmSheetCalls calls,
                       QWidget* parent = nullptr);

    [[nodiscard]] PcmAttributesModel& model() { return *model_; }

  private:
    void addPages();
    void addButtons();
    void showKind();
    [[nodiscard]] const std::function<bool(QWidget&)>& viewOfKind() const;

    std::unique_ptr<PcmAttributesModel> model_;
    PcmSheetCalls calls_;
    QPushButton* view_ = nullptr;
};

/// Runs the sheet over the stream in memory, and saves the stream on Apply and after OK. True if
/// the stream was written.
bool editPcmAttributes(FormContext& form, PcmFormat& format, PcmSheetCalls calls);

}  // namespace kavu
