// Message numbers that the compiler checks: a number without a text, or a text that does not
// fit the arguments of its call, does not compile.
#pragma once

#include "core/talk/MessageTexts.h"
#include "core/text/PrintfFormat.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <span>
#include <string_view>

namespace kavu {

[[nodiscard]] constexpr std::span<const MessageText> messageTable() {
    return kMessageTexts;
}
/// The text of a message, or nothing.
[[nodiscard]] constexpr std::optional<std::string_view> loadText(int id) {
    const auto* const row =
        std::lower_bound(std::begin(kMessageTexts), std::end(kMessageTexts), id,
                         [](const MessageText& m, int wanted) { return m.id < wanted; });
    return row == std::end(kMessageTexts) || row->id != id ? std::nullopt
                                                           : std::optional(row->text);
}

/// A number known only at run time: see `chosenMessage`.
struct ChosenMessage {
    int id;
};
/// The way past the check, for a message or a title that is not chosen among literals.
/// Nothing checks that there is such a number, or that its text fits the arguments: the place
/// needs a test. A number without a text is shown as "<Internal error: String not found>"; a
/// text that does not fit is shown unformatted.
[[nodiscard]] constexpr ChosenMessage chosenMessage(int id) {
    return {id};
}

/// The number of a message whose text fits arguments of these kinds. Negative, it stands for
/// the text of its absolute value, shown without a number.
template <PrintfKind... Kinds>
class BasicMessage {
  public:
    consteval BasicMessage(int id) : id_(id) {
        const auto text = loadText(id < 0 ? -id : id);
        if (!text) {
            numberHasNoText();
        } else if (!fitsArguments<Kinds...>(*text)) {
            textDoesNotFitItsArguments();
        }
    }
    constexpr BasicMessage(ChosenMessage chosen) : id_(chosen.id) {}

    [[nodiscard]] constexpr int id() const { return id_; }

  private:
    /// Never defined, and not constexpr: the call is the compiler's error message.
    static void numberHasNoText();
    static void textDoesNotFitItsArguments();

    int id_;
};

/// The number of a title: a text that takes no arguments, or 0 for none.
class MessageTitle {
  public:
    consteval MessageTitle(int id) : id_(id == 0 ? 0 : BasicMessage<>(id).id()) {}
    constexpr MessageTitle(ChosenMessage chosen) : id_(chosen.id) {}

    [[nodiscard]] constexpr int id() const { return id_; }

  private:
    int id_;
};

/// The message that fits arguments of these types. As the type of a parameter it is never
/// deduced: the arguments that follow decide. A message that is chosen at run time is chosen
/// among checked ones: `full ? MessageFor<int>(213) : MessageFor<int>(214)`.
template <typename... Args>
using MessageFor = BasicMessage<kPrintfKind<Args>...>;

}  // namespace kavu
