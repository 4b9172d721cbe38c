// Writes a group by its plan: one element for each value, within the elements of its path, and one
// for each row of a list.
#pragma once

#include "xml/bridge/write/GroupRows.h"
#include "xml/bridge/write/TagWriter.h"
#include "xml/bridge/write/XmlPlan.h"
#include "xml/bridge/write/XmlValues.h"

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class PlanWriter {
  public:
    /// Writes what a plan leaves to be written by hand, at the row where it is. False ends the row.
    using Special =
        std::function<bool(PlanWriter& plan, const ElementStep& step, const RowNumbers& at)>;

    /// All must outlive the writer. The paths of the plan begin at the element that is open.
    PlanWriter(TagWriter& tags, XmlValues& values, GroupRows& rows, const XmlPlan& plan,
               Special special = {});
    PlanWriter(const PlanWriter&) = delete;
    PlanWriter& operator=(const PlanWriter&) = delete;

    /// Writes the group, and closes what it has opened.
    void run();

    // For what is written by hand.
    /// Opens and closes elements, so that those of this path are open.
    void moveTo(std::span<const std::string_view> path);
    /// The same for the elements around that of a step.
    void moveAround(const ElementStep& step) {
        moveTo(std::span(step.path).first(step.path.empty() ? 0 : step.path.size() - 1));
    }
    /// Closes all but the first `depth` elements of the path that is open.
    void closeTo(std::size_t depth);
    /// Takes the command of a code at a row, and writes its value as the element of this name.
    void write(std::string_view element, const Field& field, std::string_view code,
               const RowNumbers& at);
    [[nodiscard]] GroupRows& rows() { return rows_; }

  private:
    void writeSteps(std::size_t from, std::size_t to, const RowNumbers& at);
    void writeValue(std::size_t place, const RowNumbers& at);
    [[nodiscard]] int takeCountOf(std::size_t place, const RowNumbers& at);
    void writeList(std::size_t place, const RowNumbers& at);

    TagWriter& tags_;
    XmlValues& values_;
    GroupRows& rows_;
    const XmlPlan& plan_;
    Special special_;
    std::vector<int> stems_;                ///< of the step at the same place
    std::vector<std::vector<int>> inside_;  ///< the stems in a list
    std::vector<std::string_view> path_;
};

}  // namespace kavu
