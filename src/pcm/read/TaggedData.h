// Measurements that have no place in the frame but are located by tags. They are held in a
// working file of the D group, from which a save takes them. Lists are those of the group.
#pragma once

#include "pcm/model/FixedText.h"
#include "pcm/model/RecordField.h"
#include "vocabulary/DGroupFields.h"
#include "vocabulary/Field.h"
#include "vocabulary/FieldRules.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class PcmFormat;
class UserInterface;

// The codes of values, without their numbers.
namespace tagged_code {

inline constexpr auto kName = codeHead(measurement_field::kName.code);
inline constexpr auto kWordLength = codeHead(tagged_field::kWordLength.code);

}  // namespace tagged_code

/// One tag of a measurement: its values by the codes of `taggedTagFields`.
struct TaggedTag {
    FieldValues values;
    [[nodiscard]] bool operator==(const TaggedTag&) const = default;
};
/// Values by the codes of `taggedFields`.
struct TaggedMeasurement {
    int list = 1;
    FieldValues values;
    std::vector<TaggedTag> tags;

    [[nodiscard]] std::string name() const;
    [[nodiscard]] bool operator==(const TaggedMeasurement&) const = default;
};

inline constexpr std::size_t kMostTags = 999;

/// The fields of a measurement and of a tag, without indices, in the order of the file.
[[nodiscard]] std::span<const Field> taggedFields();
[[nodiscard]] std::span<const Field> taggedTagFields();
/// The code of a tag's command, with its indices: "TD2-n-m-k".
[[nodiscard]] std::string tagPattern(const Field& field);

/// True if the edition has tagged data: 106-11 and later.
[[nodiscard]] bool hasTaggedData(const PcmFormat& format);
/// In the order of the file. Nothing if it cannot be read, which has been reported.
[[nodiscard]] std::optional<std::vector<TaggedMeasurement>> readTaggedData(PcmFormat& format,
                                                                           UserInterface* parent);
/// Writes them; the format then counts as changed. False if the file cannot be written,
/// which has been reported.
bool storeTaggedData(PcmFormat& format, UserInterface* parent,
                     const std::vector<TaggedMeasurement>& measurements);
/// Checks a new name: messages 334 (a measurement of the frame has it) and 339 (another
/// tagged one has it). An empty name is refused with a text.
[[nodiscard]] bool checkTaggedName(const PcmFormat& format, UserInterface* parent,
                                   std::span<const TaggedMeasurement> others,
                                   std::string_view name);

}  // namespace kavu
