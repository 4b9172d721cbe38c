// The data sources of a TMATS XML document, each with its transmission or recorder group, its
// multiplex group, its data links and its vendor group.
#pragma once

#include "xml/bridge/write/ConversionWriter.h"
#include "xml/bridge/write/ExportRun.h"
#include "xml/bridge/write/LinkWriter.h"

#include <cstddef>
#include <string>
#include <vector>

namespace kavu {

class SourceWriter {
  public:
    explicit SourceWriter(ExportRun& run);

    /// Writes all sources of a G group. False after a cancel.
    bool write(GroupRows& general);
    /// Notes the conversion records that were not written.
    void loseRest();

  private:
    struct Source {
        std::string name;      ///< as the file has it
        std::string nameCode;  ///< of the command of the name; empty for none
        std::string type;
        std::string typeText;  ///< escaped
        std::vector<std::string> links{};
        bool hasMultiplex = false;
        std::vector<std::size_t> records{};  ///< conversion records that no link has
    };
    void list(GroupRows& general);
    void assignLinks();
    void assignRecords();
    [[nodiscard]] std::vector<std::string> linksOf(const std::string& source, bool& isThere);
    bool writeSource(const Source& source);
    void writeRadioOrRecorder(const Source& source);
    void writeMultiplex(const Source& source);
    void writeGroup(SdkGroup group, std::string_view element, std::span<const PlanStep> plan);
    void writeVendor(const std::string& source);
    bool writeLinks(const Source& source);
    [[nodiscard]] bool isWanted(const std::string& link) const;
    void writeMentionedLinks(const Source& source);

    ExportRun& run_;
    ConversionWriter conversions_;
    LinkWriter links_;
    std::vector<Source> sources_;
};

}  // namespace kavu
