#include "xml/bridge/write/XmlPlan.h"

#include "vocabulary/Vocabularies.h"

#include <algorithm>
#include <cassert>
#include <string>

namespace kavu {

namespace {

std::string_view elementOf(const Field& field, XmlDialect dialect) {
    return dialect == XmlDialect::Schema ? schemaElement(field) : field.element;
}

}  // namespace

const Field* xmlField(char letter, std::string_view code, XmlDialect dialect) {
    const Field* found = nullptr;
    const auto matches = [&](std::string_view written) {
        return stemOf(written) == stemOf(code) && indexCountOf(written) == indexCountOf(code);
    };
    for (const auto& field : findVocabulary(letter)->fields) {
        const bool isOwn = matches(codeForXml(field));
        const bool isOfPage = dialect == XmlDialect::Schema && matches(field.code);
        if ((!isOwn && !isOfPage) || elementOf(field, dialect).empty()) {
            continue;
        }
        if (isOwn && field.bridgeOnly) {
            return &field;
        }
        // What only the bridge has of a code comes before what a page has of it.
        found = found == nullptr || (isOwn && !matches(codeForXml(*found))) ? &field : found;
    }
    return found;
}

std::vector<std::string_view> splitXmlPath(std::string_view path) {
    std::vector<std::string_view> steps;
    while (!path.empty()) {
        const auto slash = path.find('/');
        steps.push_back(path.substr(0, slash));
        path = slash == std::string_view::npos ? std::string_view{} : path.substr(slash + 1);
    }
    return steps;
}

namespace {

bool opensList(PlanStep::Kind kind) {
    return kind == PlanStep::Kind::List || kind == PlanStep::Kind::Rows ||
           kind == PlanStep::Kind::First;
}

/// What the paths of all elements of a list begin with.
std::vector<std::string_view> commonPath(const XmlPlan& plan, std::size_t list) {
    std::vector<std::string_view> common;
    bool isFirst = true;
    for (std::size_t inner = list + 1; inner < plan[list].end; ++inner) {
        auto path = plan[inner].path;
        if (path.empty() || plan[inner].end != 0) {
            continue;
        }
        path.pop_back();
        if (isFirst) {
            common = path;
            isFirst = false;
        } else {
            common.erase(
                std::mismatch(common.begin(), common.end(), path.begin(), path.end()).first,
                common.end());
        }
    }
    return common;
}

/// Sets how many elements around a row of a list stay open from one row to the next: all but the
/// element of the row. A list whose rows have no element of their own shares what its fields have
/// in common.
void setRowDepth(XmlPlan& plan, std::size_t list) {
    auto& step = plan[list];
    const auto common = commonPath(plan, list);
    const bool isAround = !step.path.empty() && step.path.size() <= common.size() + 1 &&
                          std::equal(step.path.begin(), step.path.end() - 1, common.begin());
    // The count of the tracks is an element itself.
    const bool hasNoElement = step.kind == PlanStep::Kind::First ||
                              (step.path.empty() && step.kind == PlanStep::Kind::List);
    step.rowDepth = hasNoElement || common.empty() ? common.size()
                    : isAround                     ? step.path.size() - 1
                                                   : common.size() - 1;
}

}  // namespace

XmlPlan makeXmlPlan(char letter, std::span<const PlanStep> steps, XmlDialect dialect,
                    std::string_view within) {
    XmlPlan plan;
    plan.reserve(steps.size());
    std::vector<std::size_t> lists;
    for (const auto& step : steps) {
        ElementStep made{.kind = step.kind, .code = step.code, .stem = stemOf(step.code)};
        if (step.kind != PlanStep::Kind::End) {
            made.field = xmlField(letter, step.code, dialect);
            if (made.field != nullptr) {
                made.path = splitXmlPath(elementOf(*made.field, dialect));
                if (!within.empty() && !made.path.empty() && made.path.front() == within) {
                    made.path.erase(made.path.begin());
                }
            }
        }
        if (step.kind == PlanStep::Kind::End) {
            assert(!lists.empty());
            plan[lists.back()].end = plan.size();
            setRowDepth(plan, lists.back());
            lists.pop_back();
        } else {
            for (const auto list : lists) {
                plan[list].stems.push_back(made.stem);
            }
        }
        if (opensList(step.kind)) {
            lists.push_back(plan.size());
        }
        plan.push_back(std::move(made));
    }
    assert(lists.empty());
    return plan;
}

}  // namespace kavu
