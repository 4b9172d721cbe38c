// "Change Default Attributes?": what the measurements have in common that are about to be made
// for all places without one.
#pragma once

#include "app/framework/FormContext.h"
#include "pcm/edit/FrameEditGenerate.h"

#include <QDialog>

class QComboBox;

namespace kavu {

class CodeBox;
class MaskControl;
class PcmFormat;

class GenerateDialog : public QDialog {
    Q_OBJECT
  public:
    GenerateDialog(FormContext& form, const PcmFormat& format, const DataWordDefaults& defaults,
                   QWidget* parent);

    [[nodiscard]] DataWordDefaults defaults() const;

  private:
    DataWordDefaults before_;
    CodeBox* parity_ = nullptr;
    CodeBox* parityOrder_ = nullptr;
    CodeBox* order_ = nullptr;
    MaskControl* mask_ = nullptr;
    QComboBox* format_ = nullptr;
    QComboBox* type_ = nullptr;
};

}  // namespace kavu
