#include "pcm/edit/FrameEditMask.h"

#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"
#include "core/talk/UserInterface.h"
#include "pcm/model/FrameSyncPattern.h"
#include "vocabulary/DGroupFields.h"

#include <algorithm>

namespace kavu {

namespace {

constexpr std::size_t kMostBits = 64;
constexpr std::size_t kBitsOfDigit = 4;

bool showsHexadecimal(const DocumentContext& context) {
    return context.settings.get(setting::kHexadecimalMasks);
}

bool isBinary(std::string_view text) {
    return !text.empty() && text.find_first_not_of("01") == std::string_view::npos;
}
bool isHexadecimal(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789ABCDEF") == std::string_view::npos;
}

/// Entered from the left: digits beyond the bits of the word are dropped, and missing ones
/// are 0.
std::string fitHexadecimal(std::string digits, std::size_t bits) {
    while (digits.size() * kBitsOfDigit > bits) {
        digits.pop_back();
    }
    while (digits.size() < bits && digits.size() * kBitsOfDigit < bits) {
        digits += '0';
    }
    return digits;
}

std::size_t bitsOf(int wordLength) {
    return std::min(static_cast<std::size_t>(std::max(0, wordLength)), kMostBits);
}

std::string fitBinary(std::string mask, std::size_t bits) {
    mask.resize(bits, '0');
    return mask;
}

}  // namespace

std::string fullMask(const DocumentContext& context, std::string_view mask, int wordLength) {
    std::string shown(mask);
    if (shown.empty()) {
        shown = context.settings.get(setting::kMask);
    }
    if (shown == kFullWord) {
        return shown;
    }
    const auto bits = static_cast<std::size_t>(std::max(0, wordLength));
    if (bits > 0 && shown.size() < bits) {
        shown.insert(0, bits - shown.size(), '0');
    } else if (bits > 0) {
        shown.erase(0, shown.size() - bits);
    }
    return shown.find('0') == std::string::npos ? std::string(kFullWord) : shown;
}

std::string shownMask(const DocumentContext& context, std::string_view mask, int wordLength) {
    auto shown = fullMask(context, mask, wordLength);
    return shown == kFullWord || !showsHexadecimal(context) ? shown : binaryToHex(shown);
}

std::optional<std::string> enteredMask(const DocumentContext& context, UserInterface* parent,
                                       std::string_view text, int wordLength) {
    if (!showsHexadecimal(context)) {
        return enteredBinaryMask(context, parent, text, wordLength);
    }
    if (text == kFullWord) {
        return std::string(text);
    }
    if (text.size() > kMostBits / kBitsOfDigit || !isHexadecimal(text)) {
        context.messages.show(parent, 143, title::kIllegalValueEntered, kErrorBox);
        return std::nullopt;
    }
    std::string mask(text);
    const auto bits = bitsOf(wordLength);
    if (bits == 0) {
        return hexToBinary(mask);
    }
    // For a length between two numbers of digits the surplus bits at the right are
    // dropped.
    return fitBinary(hexToBinary(fitHexadecimal(std::move(mask), bits)), bits);
}

std::optional<std::string> enteredBinaryMask(const DocumentContext& context, UserInterface* parent,
                                             std::string_view text, int wordLength) {
    if (text == kFullWord) {
        return std::string(text);
    }
    if (text.size() > kMostBits || !isBinary(text)) {
        context.messages.show(parent, 142, title::kIllegalValueEntered, kErrorBox);
        return std::nullopt;
    }
    const auto bits = bitsOf(wordLength);
    return bits == 0 ? std::string(text) : fitBinary(std::string(text), bits);
}

std::optional<std::string> editBitmask(const DocumentContext& context, UserInterface* parent,
                                       std::string_view mask, std::string_view key,
                                       int wordLength) {
    if (parent == nullptr) {
        return std::nullopt;
    }
    TextPrompt prompt;
    prompt.title = "Bitmask";
    prompt.prompt =
        showsHexadecimal(context) ? "Enter Hex Bitmask (or FW)" : "Enter Binary Bitmask (or FW)";
    prompt.initial = shownMask(context, mask, wordLength);
    prompt.limit = kMostBits;
    while (const auto text = parent->enterText(prompt)) {
        if (auto entered = enteredMask(context, parent, *text, wordLength)) {
            if (!key.empty()) {
                context.settings.write(key, *entered);
            }
            return entered;
        }
        prompt.initial = *text;
    }
    return std::nullopt;
}

}  // namespace kavu
