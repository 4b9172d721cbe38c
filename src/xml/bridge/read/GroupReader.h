// Reads the element of one group and writes its commands.
#pragma once

#include "xml/bridge/read/ImportOutput.h"
#include "xml/bridge/read/ReadPlan.h"

#include <array>
#include <string>
#include <vector>

namespace kavu {

/// The elements of a path, by local names, in the order of the document; and the first of them, or
/// null.
[[nodiscard]] std::vector<XmlNode> findElements(XmlNode from, const ReadPath& path);
[[nodiscard]] XmlNode findElement(XmlNode from, const ReadPath& path);
/// The children of an element with this local name.
[[nodiscard]] std::vector<XmlNode> childrenOf(XmlNode element, std::string_view name);

/// The type of a data source as TMATS stores it: that of a source without one is "OTH", and a text
/// that is no type stands as it is.
[[nodiscard]] std::string sourceTypeOf(XmlNode source, XmlDialect dialect);

class GroupReader {
  public:
    /// `output` must outlive the object. `prefix` is that of the commands: "P-1".
    GroupReader(ImportOutput& output, char letter, std::string prefix)
        : output_(output), letter_(letter), prefix_(std::move(prefix)) {}

    /// Writes the commands of an element.
    void read(XmlNode element);

  private:
    /// An element of a level and its number among those like it.
    struct Row {
        XmlNode element;
        int number = 0;
    };
    static constexpr std::size_t kMostLevels = 6;
    struct Rows {
        std::array<Row, kMostLevels> at{};
        std::size_t count = 0;
    };

    void readLevel(const ReadLevel& level, const Rows& rows);
    void readItem(const ReadItem& item, const Rows& rows);
    void readRows(const ReadItem& item, const Rows& rows);
    void readOne(const ReadItem& item, XmlNode element, std::string_view attribute,
                 const Rows& rows);
    void readList(const ReadItem& item, const std::vector<XmlNode>& elements, const Rows& rows);
    void readSubcommutation(const ReadItem& item, const std::vector<XmlNode>& ranges,
                            const Rows& rows);
    void readCoefficients(const ReadItem& item, const std::vector<XmlNode>& terms);
    void readCalibrations(const ReadItem& item, const std::vector<XmlNode>& lists);
    void readSubcarriers(const ReadItem& item, const std::vector<XmlNode>& others);
    void readContacts(const ReadItem& item, const std::vector<XmlNode>& contacts);
    void readSources(const ReadItem& item, const std::vector<XmlNode>& sources);
    void writeRows(std::string_view pattern, const Rows& rows, std::string_view value,
                   std::initializer_list<int> more = {});
    [[nodiscard]] std::string codeOf(std::string_view pattern, const Rows& rows,
                                     std::initializer_list<int> more = {}) const;

    ImportOutput& output_;
    char letter_;
    std::string prefix_;
};

}  // namespace kavu
