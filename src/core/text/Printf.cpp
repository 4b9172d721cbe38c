#include "core/text/Printf.h"

#include <fmt/args.h>
#include <fmt/printf.h>

namespace kavu {

std::string formatPrintf(std::string_view format, PrintfArgs args) {
    fmt::dynamic_format_arg_store<fmt::printf_context> store;
    for (const PrintfArg& arg : args) {
        std::visit([&store](const auto& value) { store.push_back(value); }, arg.value());
    }
    try {
        return fmt::vsprintf(fmt::string_view(format.data(), format.size()),
                             fmt::basic_format_args<fmt::printf_context>(store));
    } catch (const fmt::format_error&) {
        return std::string(format);
    }
}

}  // namespace kavu
