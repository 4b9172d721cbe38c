// The P group bound to its model: its plain attributes and what it keeps next to the model.
// They drive the reader, the writer, the settings of new formats and the sheets.
#pragma once

#include "vocabulary/PGroupFields.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

struct PcmAttributes;

/// An attribute of the format: a text or a number.
struct PcmAttribute {
    Field field;
    /// The key of the setting that a new format takes it from; empty if there is none.
    std::string_view setting{};
    std::string_view fallback{};  ///< the value of a new format without that setting
    std::string_view (*text)(const PcmAttributes&) = nullptr;
    void (*setText)(PcmAttributes&, std::string_view) = nullptr;
    int PcmAttributes::*number = nullptr;
};

/// The commands with one value, in the order in which they are written. `MF4` and `MF5` are
/// among them: the pattern is held as it is shown, and written in binary.
[[nodiscard]] std::span<const PcmAttribute> pcmAttributes();
/// Null if no attribute has this code.
[[nodiscard]] const PcmAttribute* findPcmAttribute(std::string_view code);

/// The fields of a page in the order in which it shows them.
[[nodiscard]] std::vector<Field> pcmPageFields(std::string_view page);

/// The words that have a length of their own: MFW
[[nodiscard]] std::span<const Field> wordLengthFields();

// What is kept in working files, in the order in which it is written.
[[nodiscard]] std::span<const Field> formatSwitchFields();  ///< FFI, MLC, FSC
[[nodiscard]] std::span<const Field> altTagFields();        ///< ALT
[[nodiscard]] std::span<const Field> frameFilterFields();   ///< MFF, from 106-09 on

}  // namespace kavu
