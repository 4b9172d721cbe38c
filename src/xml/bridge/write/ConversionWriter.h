// The conversion records of a TMATS XML document: those of the measurements of a data link in the
// link, and those that no link has in a multiplex group.
#pragma once

#include "xml/bridge/write/ExportRun.h"
#include "xml/bridge/write/PlanWriter.h"

#include <cstddef>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace kavu {

class ConversionWriter {
  public:
    /// Finds the records of all links. The run must outlive the writer.
    explicit ConversionWriter(ExportRun& run);

    /// The records whose measurement is in no link, in the order of the file.
    [[nodiscard]] std::vector<std::size_t> withoutLink() const;
    /// True if the multiplex group of a source names this measurement.
    [[nodiscard]] bool isNamedBy(const std::string& source, const std::string& measurement);

    /// The records of the measurements of a link. False after a cancel.
    bool writeLink(const SdkLink& link);
    bool writeRecords(const std::vector<std::size_t>& records);
    /// Notes the records that were not written.
    void loseRest();

  private:
    void findRecords(const SdkLink& link);
    void findRecordsIn(const SdkGroup& group, std::vector<std::size_t>& records,
                       std::vector<bool>& isFound);
    [[nodiscard]] const Field& fieldOf(std::string_view code) const;
    void writeRecord(std::size_t record);
    void writeConversion(GroupRows& rows, const ElementStep& step);
    bool writeSpecial(PlanWriter& plan, const ElementStep& step);
    void writeCalibration(PlanWriter& plan, const ElementStep& count);
    void writeTerms(PlanWriter& plan, const ElementStep& term);
    void writeWithAttribute(PlanWriter& plan, const ElementStep& step, std::string_view attribute,
                            std::string_view code);

    ExportRun& run_;
    std::map<std::string, std::vector<std::size_t>, std::less<>> ofLink_;
    std::vector<bool> hasLink_;
    std::vector<bool> isWritten_;
    std::map<std::string, std::unordered_set<std::string>> ofSource_;
};

}  // namespace kavu
