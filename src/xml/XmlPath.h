// Paths of the XML document layer: XPath below the root element, such as "/Measurement/Name".
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kavu {

/// The path as it is looked up: with the root path ("//" and the name of the root) in front
/// unless it begins with it, and without a "/" at its end. A path that does not begin with a "/"
/// gets one. Nothing for an empty path, one that holds "///" anywhere, or "//" outside double
/// quotes and elsewhere than at its start.
[[nodiscard]] std::optional<std::string> fullXmlPath(std::string_view path,
                                                     std::string_view rootPath);

/// Where the last step of a path begins, by its "/" outside quotes and brackets; npos if it has
/// but one step.
[[nodiscard]] std::size_t lastXmlStep(std::string_view path);

/// A step that can be made: the name of an element, and the attributes that its predicates ask
/// for, as in `Coefficient[@N="1"]`.
struct XmlStep {
    std::string name;
    std::vector<std::pair<std::string, std::string>> attributes;
};
/// Nothing for a step that says more than that: a position, a function, another axis.
[[nodiscard]] std::optional<XmlStep> parseXmlStep(std::string_view step);

}  // namespace kavu
