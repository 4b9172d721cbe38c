// What the columns of a report take from the conversion records of a document.
#pragma once

#include "reports/layout/ReportColumns.h"

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kavu {

class ConversionStore;
class UserInterface;

class RecordValues {
  public:
    /// Goes through the records once, and keeps the values of those whose measurement `wanted`
    /// accepts by its name in lower case. Without a column that needs them none is read. Stops when
    /// `parent`, who may be null, has cancelled.
    RecordValues(ConversionStore& store, const std::vector<ReportColumn>& columns, int precision,
                 const std::function<bool(const std::string& lowerName)>& wanted,
                 UserInterface* parent);

    /// The values of the record of a measurement, one for each column that comes from a record, in
    /// their order; null without a record. It is found by its exact name, else by one that differs
    /// in case.
    [[nodiscard]] const std::vector<std::string>* find(std::string_view name) const;

  private:
    std::unordered_map<std::string, std::vector<std::string>> exact_{};
    std::unordered_map<std::string, std::string> folded_{};  ///< to the first name of that spelling
};

/// True for a column whose value comes from the conversion record.
[[nodiscard]] bool isOfRecord(const ReportColumn& column);

}  // namespace kavu
