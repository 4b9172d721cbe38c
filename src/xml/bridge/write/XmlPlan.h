// The order in which the elements of a group are written. A plan names the codes; the elements,
// their paths and the texts of their choices come from the vocabulary.
#pragma once

#include "vocabulary/Field.h"
#include "xml/bridge/write/XmlValueText.h"

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

namespace kavu {

struct PlanStep {
    enum class Kind {
        Value,
        List,  ///< `code` is the count; the steps up to its `End` are those of a row
        Rows,  ///< a list without a count; `code` is a name
        /// The same with the first row alone: what the schema has but once. Its rows have no
        /// element of their own.
        First,
        End,
        Special,  ///< written by hand; `code` is the first that it writes, or a name
        /// A value whose command may have one index more, whose number is then 1.
        ValueOrFirst,
    };
    std::string_view code{};
    Kind kind = Kind::Value;
};

[[nodiscard]] constexpr PlanStep listOf(std::string_view count) {
    return {count, PlanStep::Kind::List};
}
[[nodiscard]] constexpr PlanStep rowsOf(std::string_view name) {
    return {name, PlanStep::Kind::Rows};
}
[[nodiscard]] constexpr PlanStep firstOf(std::string_view name) {
    return {name, PlanStep::Kind::First};
}
[[nodiscard]] constexpr PlanStep special(std::string_view name) {
    return {name, PlanStep::Kind::Special};
}
[[nodiscard]] constexpr PlanStep orFirst(std::string_view code) {
    return {code, PlanStep::Kind::ValueOrFirst};
}
inline constexpr PlanStep kEndOfList{{}, PlanStep::Kind::End};

/// A step with its row of the vocabulary, for one dialect.
struct ElementStep {
    PlanStep::Kind kind = PlanStep::Kind::Value;
    std::string_view code{};               ///< the pattern that is read from the file
    std::string_view stem{};               ///< the code without indices
    const Field* field = nullptr;          ///< null if the dialect has no element for it
    std::vector<std::string_view> path{};  ///< of the element; empty if the dialect has none
    std::size_t end = 0;                   ///< of a list: the place of its end
    std::size_t rowDepth = 0;  ///< of a list: the elements that stay open between two rows
    std::vector<std::string_view> stems{};  ///< of a list: those of all fields in it
};
using XmlPlan = std::vector<ElementStep>;

/// The row of the vocabulary of a group by which a dialect writes a code, whatever its indices are
/// called; null if it has no element for it.
[[nodiscard]] const Field* xmlField(char letter, std::string_view code, XmlDialect dialect);
/// The steps of a path.
[[nodiscard]] std::vector<std::string_view> splitXmlPath(std::string_view path);

/// The paths are relative to the element `within` of the group. REQUIRES: each list has an end.
[[nodiscard]] XmlPlan makeXmlPlan(char letter, std::span<const PlanStep> steps, XmlDialect dialect,
                                  std::string_view within = {});

/// The code whose value a field writes to XML.
[[nodiscard]] constexpr std::string_view codeForXml(const Field& field) {
    return field.codeToXml.empty() ? field.code : field.codeToXml;
}

// The plans of the groups, in the order of the schema. That of the recorder has its tracks.
[[nodiscard]] std::span<const PlanStep> generalHeadPlan();
[[nodiscard]] std::span<const PlanStep> generalTailPlan();
[[nodiscard]] std::span<const PlanStep> transmissionPlan();
[[nodiscard]] std::span<const PlanStep> recorderPlan();
[[nodiscard]] std::span<const PlanStep> multiplexPlan();
[[nodiscard]] std::span<const PlanStep> pamPlan();
[[nodiscard]] std::span<const PlanStep> pcmPlan();
[[nodiscard]] std::span<const PlanStep> busPlan();
[[nodiscard]] std::span<const PlanStep> messagePlan();
[[nodiscard]] std::span<const PlanStep> conversionPlan();
[[nodiscard]] std::span<const PlanStep> conversionTypePlan();

}  // namespace kavu
