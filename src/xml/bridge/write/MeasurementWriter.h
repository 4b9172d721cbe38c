// The measurement group of a PCM stream as XML. Locations as ranges of words and frames, and tagged
// data, are written as they stand; those of older types as the ranges that the session makes of
// them.
#pragma once

#include "xml/bridge/write/ExportRun.h"

#include <optional>
#include <string>
#include <string_view>

namespace kavu {

class MeasurementWriter {
  public:
    /// Both must outlive the writer.
    MeasurementWriter(ExportRun& run, const SdkLink& link) : run_(run), link_(link) {}

    /// False after a cancel.
    bool write(SdkGroup group);

  private:
    struct Stems;
    void writeFilters(GroupRows& rows, const Stems& stems);
    bool writeList(GroupRows& rows, const Stems& stems, const RowNumbers& list);
    void writeMeasurement(GroupRows& rows, const Stems& stems, const RowNumbers& at);
    void writeDefinition(GroupRows& rows, const Stems& stems, const RowNumbers& at,
                         const std::string& original);
    [[nodiscard]] std::string listName(std::optional<std::string_view> name, int number) const;
    void writeLength(GroupRows& rows, const Stems& stems, const RowNumbers& at);
    void writeRanges(GroupRows& rows, const Stems& stems, const RowNumbers& at);
    void writeFragments(GroupRows& rows, const Stems& stems, const RowNumbers& location);
    void writeFragment(GroupRows& rows, const Stems& stems, const RowNumbers& at);
    void writeTags(GroupRows& rows, const Stems& stems, const RowNumbers& at);
    [[nodiscard]] const SdkMeasurement* convertedOf(const std::string& name) const;
    void writeConvertedLength(const SdkMeasurement& measurement);
    void writeConverted(const SdkMeasurement& measurement);
    void writeConvertedFragment(const SdkFragment& fragment);
    static void takeOlder(GroupRows& rows, const RowNumbers& at);
    /// The value of a field as an element; nothing without one.
    void writeField(GroupRows& rows, int stem, const Field& field, std::string_view element,
                    const RowNumbers& at);

    ExportRun& run_;
    const SdkLink& link_;
};

}  // namespace kavu
