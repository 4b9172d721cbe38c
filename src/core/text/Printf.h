// printf formatting with checked arguments: message texts, composed codes and the names
// of working files are printf formats in this system.
#pragma once

#include "core/text/PrintfFormat.h"

#include <concepts>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <variant>

namespace kavu {

/// One argument of a printf format: a number or a text.
class PrintfArg {
  public:
    template <std::integral T>
    PrintfArg(T value) : value_(static_cast<std::int64_t>(value)) {}
    PrintfArg(double value) : value_(value) {}
    PrintfArg(std::string_view value) : value_(value) {}
    PrintfArg(const std::string& value) : value_(std::string_view(value)) {}
    PrintfArg(const char* value) : value_(std::string_view(value)) {}

    [[nodiscard]] const auto& value() const { return value_; }

  private:
    std::variant<std::int64_t, double, std::string_view> value_;
};

using PrintfArgs = std::initializer_list<PrintfArg>;

/// Formats as printf does in the "C" locale. A format that does not fit its arguments gives
/// the format text itself: a report must never be the thing that fails. Unchecked: for layers
/// that pass on a format and arguments that their caller has checked.
[[nodiscard]] std::string formatPrintf(std::string_view format, PrintfArgs args);

/// The same for a literal, which the compiler checks. `format` comes from the program, never
/// from a file; one that is taken from a table goes through `runtimeFormat`.
template <typename... Args>
[[nodiscard]] std::string formatPrintf(PrintfFormat<Args...> format, const Args&... args) {
    return formatPrintf(format.text(), PrintfArgs{PrintfArg(args)...});
}

}  // namespace kavu
