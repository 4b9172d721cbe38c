// The data of a conversion as one text, as the last field of a database record holds it, and the
// way back into the keys of a conversion record.
#pragma once

#include <string>
#include <string_view>

namespace kavu {

class ConversionStore;
class ProfileFile;
class UserInterface;

/// The data of a measurement's record for one type, with line breaks in stored form: of pair sets
/// the values up to the first pair with an empty half, of coefficients those up to "CO\N", an
/// empty one as 0. Empty for a type without such a text, and without a record.
[[nodiscard]] std::string euDataString(ConversionStore& store, const std::string& name,
                                       std::string_view type);
/// The same for a section of a chunk; the text of special processing is in the comment of the
/// record, which is not looked for.
[[nodiscard]] std::string euDataOf(const ProfileFile& chunk, const std::string& section,
                                   std::string_view type);

/// Puts the data into the record, and sets "DCT" to the type. False, and nothing is changed, for
/// an empty text, a type without such a text, and a text that holds neither a pair nor a term; also
/// if there is no record, or it cannot be written, which is reported. Items of the former
/// count beyond the new one go.
bool applyEuDataString(ConversionStore& store, UserInterface* parent, const std::string& name,
                       std::string_view type, std::string_view text);
/// The same in a section of a chunk, which the caller stores, for all types but "SP".
bool putEuData(ProfileFile& chunk, const std::string& section, std::string_view type,
               std::string_view text);

/// The type whose text is the comment of the record.
inline constexpr std::string_view kCommentType = "SP";

}  // namespace kavu
