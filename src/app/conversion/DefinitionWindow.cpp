#include "app/conversion/DefinitionWindow.h"

#include "app/conversion/PairSetPanel.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/framework/WindowCare.h"
#include "conversion/DefinitionEdit.h"
#include "conversion/PairSetPage.h"
#include "core/talk/ProfileSettings.h"

#include <algorithm>

#include <QCloseEvent>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>

namespace kavu {

namespace {

/// The panel of pair sets keeps its record itself.
class PairSetDetail : public DefinitionDetail {
  public:
    PairSetDetail(FormContext& form, DocumentContext& document, ConversionStore& store,
                  const std::string& name, const PairSetSetup& setup, QWidget* parent)
        : DefinitionDetail(parent),
          panel_(new PairSetPanel(form, document, store, name, setup, this)) {
        auto* const layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(panel_);
        connect(panel_, &PairSetPanel::changed, this, &DefinitionDetail::changed);
    }
    void load() override { panel_->load(); }
    [[nodiscard]] bool validate() override { return panel_->validate(); }
    [[nodiscard]] bool store() override { return panel_->store(); }
    void followPages() override { panel_->refit(); }

  private:
    PairSetPanel* panel_;
};

DefinitionDetail* makeDetail(FormContext& form, DocumentContext& document, ConversionStore& store,
                             DefinitionEdit& edit, const DetailWindow& window,
                             const ConversionSheetSetup& setup, QWidget* parent) {
    if (window.type == "PRS") {
        PairSetSetup pairs;
        pairs.bits = setup.bits;
        pairs.plot = std::string_view(window.resource) == "PairSetsPlot";
        pairs.readOnly = setup.readOnly;
        return new PairSetDetail(form, document, store, edit.name(), pairs, parent);
    }
    DetailForm* made = nullptr;
    if (window.type == "COE" || window.type == "NPC") {
        const auto derive = [&document, &store, &form, name = edit.name()] {
            return PairSetPage(document, store, name).deriveCoefficients(&form.ui);
        };
        made = new CoefficientDetail(form, edit, window, derive, parent);
    } else {
        made = new DetailForm(form, edit, window, parent);
    }
    made->build();
    made->setEnabled(!setup.readOnly);
    return made;
}

}  // namespace

DefinitionWindow::DefinitionWindow(FormContext& form, DocumentContext& document,
                                   ConversionStore& store, DefinitionEdit& edit,
                                   const DetailWindow& window, const ConversionSheetSetup& setup,
                                   QWidget* sheet)
    : QDialog(sheet, Qt::Tool | Qt::WindowCloseButtonHint),
      content_(makeDetail(form, document, store, edit, window, setup, this)) {
    setObjectName(QLatin1String(window.resource));
    setWindowTitle(toQString(std::string(window.title) + ": " + edit.name()));
    setHelpTopic(*this, window.type == std::string_view("PRS") ? "PairSets" : "ConversionDetail");
    auto* const layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    // On a small screen, or with large letters, the content scrolls.
    auto* const area = new QScrollArea(this);
    area->setObjectName(QStringLiteral("scroll"));
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(content_);
    layout->addWidget(area);
    // The Enter key ends a field here, it presses no button.
    for (auto* const button : findChildren<QPushButton*>()) {
        button->setAutoDefault(false);
    }
    const auto margins = layout->contentsMargins();
    const QSize around(margins.left() + margins.right(), margins.top() + margins.bottom());
    resize(look::scrollingSize(
        *this, (content_->sizeHint().expandedTo(content_->minimumSizeHint()) + around)
                   .expandedTo({look::charactersWide(*this, 44), look::unit(*this) * 12})));
}

DefinitionWindow::~DefinitionWindow() {
    // First: the dialog hides when it goes, and a field that loses the focus then ends its edit.
    delete content_;
}

void DefinitionWindow::standBeside(const QWidget& sheet) {
    const auto around = sheet.screen()->availableGeometry();
    const auto at = sheet.frameGeometry();
    move(std::clamp(at.right() + look::unit(*this), around.left(),
                    std::max(around.left(), around.right() - width())),
         std::clamp(at.top(), around.top(), std::max(around.top(), around.bottom() - height())));
}

void DefinitionWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    emit hideRequested();
}

}  // namespace kavu
