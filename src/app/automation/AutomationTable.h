// The methods of the bus as tables, which are made from the type library: `make_tables.py`.
#pragma once

#include <span>
#include <string_view>

#include <QVariant>

namespace kavu {

struct AutomationMethods;

struct AutomationMethod {
    std::string_view name;
    std::string_view signature;  ///< of its arguments on the bus
    /// REQUIRES: arguments of this signature. Gives the results in order; throws what the method
    /// throws.
    QVariantList (*call)(AutomationMethods& methods, const QVariantList& arguments);
};

struct AutomationInterface {
    std::string_view name;
    std::string_view path;  ///< of its object
    std::span<const AutomationMethod> methods;
    /// The type library of this interface, as it is installed.
    std::string_view library;

    /// The answer of the object to Introspect: the interface element alone, without its node.
    [[nodiscard]] std::string_view introspection() const {
        const auto begin = library.find("  <interface ");
        return library.substr(begin, library.rfind("</node>") - begin);
    }
};

/// In the order of the type library. The name of an object on the bus is that of its path with
/// periods.
[[nodiscard]] std::span<const AutomationInterface> automationInterfaces();

}  // namespace kavu
