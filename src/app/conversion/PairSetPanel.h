// The detail window of pair sets: the list of the pairs, the choices of the fit, its numbers
// and, if wanted, the curve with the residuals under it. It is in the window that the sheet
// of a conversion record opens for the type.
//
// Every edit goes into the working copy of the record at once and is followed by a refit, so
// that there is nothing to store when the sheet closes, and nothing to undo when it is
// cancelled.
#pragma once

#include "app/framework/FormContext.h"

#include <memory>
#include <string>

#include <QWidget>

namespace kavu {

class ConversionStore;
class PairSetParts;

struct PairSetSetup {
    int bits = 0;           ///< word length of the measurement; 0 if it is not known
    bool plot = false;      ///< the window has its plot (`WantsPlot`)
    bool readOnly = false;  ///< the window shows the record and changes nothing
};

class PairSetPanel : public QWidget {
    Q_OBJECT
  public:
    /// `name` is a record whose working copy is up, and stays up while the panel lives. The
    /// object name is "PairSetsPlot" with the plot, else "PairSets".
    PairSetPanel(FormContext& form, DocumentContext& document, ConversionStore& conversions,
                 std::string name, const PairSetSetup& setup, QWidget* parent = nullptr);
    ~PairSetPanel() override;

    /// Fills the panel from the working copy, which somebody else has changed (the import of
    /// another record's values), and refits. Is no edit. The constructor does it too.
    void load();
    /// Refits with the limits, the units, the binary format as they are in the working copy:
    /// to be called when the pages have stored a change of these (`storeFitFields`).
    void refit();
    /// Takes a word size that is still in its field; false if it is refused, which has been
    /// reported.
    [[nodiscard]] bool validate();
    /// The edits are in the working copy; false if a file failed, which has been reported.
    [[nodiscard]] bool store();

    /// Not wider than what is entered or what comes of it.
    [[nodiscard]] QSize minimumSizeHint() const override;

  signals:
    /// The user has changed the record.
    void changed();

  protected:
    /// In a narrow window the plot and the result are below the pairs.
    void resizeEvent(QResizeEvent* event) override;

  private:
    std::unique_ptr<PairSetParts> parts_;
};

}  // namespace kavu
