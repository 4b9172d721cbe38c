// The commands of one measurement in the D group, in the order of the file.
#pragma once

#include "pcm/PcmFormat.h"
#include "vocabulary/Field.h"

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class FileWriter;

/// Empty texts write nothing, numbers are always written. What cannot be expressed is
/// reported in a box (295 to 297), and the rest of the measurement is written.
class MeasurementCommands {
  public:
    /// `prefix` is that of the group, such as "D-1\".
    MeasurementCommands(PcmFormat& format, UserInterface* parent, FileWriter& writer,
                        std::string prefix);

    /// Writes measurement `m` of list `l`, both from 1. The cell at a word and an index of the
    /// word's cells gives all attributes and the first location.
    void write(int l, int m, CellRef cell, int fwp, int index);

  private:
    /// A cell that holds the measurement, in the first repetition of its word.
    struct Hit {
        CellRef cell;
        int fwp;
        int fn;
    };

    void text(const Field& field, std::string_view value, std::initializer_list<int> more = {});
    void number(const Field& field, long value, std::initializer_list<int> more = {});
    void setCode(const Field& field, std::initializer_list<int> more);
    void cannotFindOthers(MessageTitle titleId);
    [[nodiscard]] std::string_view subframeName(int fwp) const;
    /// All hits by ascending frame, and within a frame by ascending word.
    [[nodiscard]] std::vector<Hit> hits() const;

    void writeLocations();
    void writeMinorWord();
    void writeSubframe();
    void writeMinorSupercom();
    void writeMinorFragmented();
    void writeSubframeSupercom();
    void writeSubframeFragmented();
    void writeFragmentsOf(int s, std::string_view subframe, const std::vector<Hit>& all);
    void writeWordFrame();
    void writeWordFrameFragment(const WordFrameFragment& fragment, int k, int f);

    PcmFormat& format_;
    UserInterface* parent_;
    FileWriter& writer_;
    std::string prefix_;
    const int edition_;
    const bool namesCounter_;

    Measurement measurement_;
    int fwp_ = 0;
    int index_ = 0;
    std::string suffix_;  ///< "-l-m"
    std::string code_;
};

}  // namespace kavu
