// The compile-time check of printf formats: a literal that does not fit its arguments, in
// count or in kind, does not compile.
#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <span>
#include <string_view>
#include <type_traits>

namespace kavu {

/// What a printf conversion takes: `%d`, `%u`, `%x`, `%c` an integer, `%g` a floating point
/// number, `%s` a text.
enum class PrintfKind : char { Integer, Floating, Text };

/// The kind of an argument of this type, as `PrintfArg` stores it.
template <typename T>
inline constexpr PrintfKind kPrintfKind =
    std::integral<T>                                  ? PrintfKind::Integer
    : std::convertible_to<const T&, std::string_view> ? PrintfKind::Text
                                                      : PrintfKind::Floating;

/// True if the conversions of a format take exactly these arguments, in this order. A `*` for
/// width or precision takes an integer. Numbered arguments (`%1$d`), `%p` and `%n` never fit.
[[nodiscard]] constexpr bool fitsArguments(std::string_view format,
                                           std::span<const PrintfKind> arguments) {
    constexpr std::string_view kFlags = "-+ #0";
    constexpr std::string_view kDigits = "0123456789";
    constexpr std::string_view kLengths = "hlLjzt";
    std::size_t at = 0;
    std::size_t taken = 0;
    const auto isAtOneOf = [&](std::string_view set) {
        return at < format.size() && set.find(format[at]) != std::string_view::npos;
    };
    const auto takes = [&](PrintfKind kind) {
        return taken < arguments.size() && arguments[taken++] == kind;
    };
    const auto passNumber = [&] {
        if (isAtOneOf("*")) {
            ++at;
            return takes(PrintfKind::Integer);
        }
        while (isAtOneOf(kDigits)) {
            ++at;
        }
        return true;
    };
    for (; (at = format.find('%', at)) != std::string_view::npos; ++at) {
        ++at;
        if (isAtOneOf("%")) {
            continue;
        }
        while (isAtOneOf(kFlags)) {
            ++at;
        }
        bool fits = passNumber();
        if (isAtOneOf(".")) {
            ++at;
            fits = passNumber() && fits;
        }
        while (isAtOneOf(kLengths)) {
            ++at;
        }
        if (isAtOneOf("diouxXc")) {
            fits = takes(PrintfKind::Integer) && fits;
        } else if (isAtOneOf("eEfFgGaA")) {
            fits = takes(PrintfKind::Floating) && fits;
        } else {
            fits = isAtOneOf("s") && takes(PrintfKind::Text) && fits;
        }
        if (!fits) {
            return false;
        }
    }
    return taken == arguments.size();
}

/// The same for a list of kinds that is known at compile time.
template <PrintfKind... Kinds>
[[nodiscard]] constexpr bool fitsArguments(std::string_view format) {
    constexpr std::array<PrintfKind, sizeof...(Kinds)> kKinds{Kinds...};
    return fitsArguments(format, std::span<const PrintfKind>(kKinds));
}

/// A format known only at run time: see `runtimeFormat`.
struct RuntimeFormat {
    std::string_view text;
};
/// The way past the check, for a format that is taken from a table of the program. Nothing
/// checks that it fits its arguments: the table needs a test. One that does not fit is
/// shown unformatted. Never for a text from a file.
[[nodiscard]] constexpr RuntimeFormat runtimeFormat(std::string_view text) {
    return {text};
}

/// A printf format that fits arguments of these kinds. The compiler checks one made of a
/// literal or a constant. It refers to the text, which must outlive it.
template <PrintfKind... Kinds>
class BasicPrintfFormat {
  public:
    template <std::convertible_to<std::string_view> Literal>
    consteval BasicPrintfFormat(const Literal& format) : text_(format) {
        if (!fitsArguments<Kinds...>(text_)) {
            formatDoesNotFitItsArguments();
        }
    }
    constexpr BasicPrintfFormat(RuntimeFormat format) : text_(format.text) {}

    [[nodiscard]] constexpr std::string_view text() const { return text_; }

  private:
    /// Never defined, and not constexpr: the call is the compiler's error message.
    static void formatDoesNotFitItsArguments();

    std::string_view text_;
};

/// The format that fits arguments of these types. As the type of a parameter it is never
/// deduced: the arguments that follow decide.
template <typename... Args>
using PrintfFormat = BasicPrintfFormat<kPrintfKind<Args>...>;

}  // namespace kavu
