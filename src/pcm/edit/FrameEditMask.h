// Masks as the user sees and enters them. The model keeps them in binary; the setting
// `HexBM` decides how they are shown, `DMask` what replaces a missing one.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kavu {

struct DocumentContext;
class UserInterface;

/// A mask of the model in binary, for a word of this many bits: padded or cut at the left,
/// and "FW" for one without a 0. A length of 0 means unknown.
[[nodiscard]] std::string fullMask(const DocumentContext& context, std::string_view mask,
                                   int wordLength);
/// The same in the notation of the setting.
[[nodiscard]] std::string shownMask(const DocumentContext& context, std::string_view mask,
                                    int wordLength);

/// The mask of the model for a text in the notation of the setting: cut or padded at the
/// right. Nothing with message 142 or 143 ("invalid bit mask").
[[nodiscard]] std::optional<std::string> enteredMask(const DocumentContext& context,
                                                     UserInterface* parent, std::string_view text,
                                                     int wordLength);

/// The same for a text in binary, or "FW", whatever the setting says: message 142.
[[nodiscard]] std::optional<std::string> enteredBinaryMask(const DocumentContext& context,
                                                           UserInterface* parent,
                                                           std::string_view text, int wordLength);

/// Prompts for a mask until it is valid or cancelled; nothing without a parent. With `key` it
/// is stored in that setting, in binary.
std::optional<std::string> editBitmask(const DocumentContext& context, UserInterface* parent,
                                       std::string_view mask, std::string_view key, int wordLength);

}  // namespace kavu
