// The fields of a database record in one table: what they are called, what they may hold in each
// edition, where they are in the XML form, and which field of a conversion record they become.
#pragma once

#include "mdb/record/MdbRecord.h"

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kavu {

/// A code of the TMATS file and the word for it in the XML form.
struct MdbWord {
    std::string_view code;
    std::string_view text;
};

struct MdbField {
    std::string_view label;
    std::size_t limit = 0;             ///< bytes; 0 is no limit
    std::string_view allowed{};        ///< values with blanks between; empty allows any text
    std::string_view key{};            ///< of a conversion record; empty for others
    std::string_view element{};        ///< path under `Measurement`, steps with `/` between
    std::span<const MdbWord> words{};  ///< of the XML form; empty for a text that stands as it is
};

/// What is called so in messages, JSON documents and lists, in the order of the indices. Limits and
/// lists that depend on the edition are those of `MdbFieldTable`.
[[nodiscard]] std::span<const MdbField, mdbfield::kCount> mdbFields();

/// The index of a field by its label, in any case, or by its decimal index; nothing for any other
/// text.
[[nodiscard]] std::optional<std::size_t> mdbFieldIndex(std::string_view labelOrIndex);

/// The fields that a stream takes from a database: those of the word, and all of the conversion.
[[nodiscard]] constexpr bool isStreamField(std::size_t index) {
    return (index >= mdbfield::kMask && index <= mdbfield::kParity) ||
           (index >= mdbfield::kFirstConversion && index < mdbfield::kCount);
}

/// A value that a field may not have.
struct MdbFault {
    enum class Kind { TooLong, NotAllowed };
    Kind kind = Kind::TooLong;
    std::size_t index = 0;
    std::size_t limit = 0;       ///< of a text that is too long
    std::string_view allowed{};  ///< the list that the value is not in
};

/// Limits and lists of one edition.
class MdbFieldTable {
  public:
    explicit MdbFieldTable(int edition);

    [[nodiscard]] std::size_t limit(std::size_t index) const { return rows_[index].limit; }
    /// The allowed values with blanks between; empty for a field that may hold any text.
    [[nodiscard]] std::string_view allowed(std::size_t index) const { return rows_[index].allowed; }
    /// Adds the faults of one value: too long, and not one of the list. Lists compare exactly; an
    /// empty text is always allowed.
    void check(std::size_t index, std::string_view value, std::vector<MdbFault>& faults) const;

  private:
    struct Row {
        std::size_t limit = 0;
        std::string_view allowed{};
    };
    std::array<Row, mdbfield::kCount> rows_;
};

/// The word of the XML form for a code, and the way back; what the field has no word for stands as
/// it is.
[[nodiscard]] std::string_view toXmlWord(const MdbField& field, std::string_view code);
[[nodiscard]] std::string_view fromXmlWord(const MdbField& field, std::string_view text);

}  // namespace kavu
