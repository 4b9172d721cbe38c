// An item of the document's tree: what it is, and what it is called.
#pragma once

#include <cstddef>
#include <string>

namespace kavu {

enum class TreeKind : int {
    General,
    TransmissionHead,
    RecorderHead,
    OtherHead,  ///< sources of neither type; only there if a document has some
    Source,
    MultiplexDefinition,
    StreamsHead,
    Stream,
    EmbeddedStream,
    ConversionHead,
    Measurement,
    Hardware,
    Pam,
    UnlinkedHead,  ///< streams that no data source leads to; only there if a document has some
    VendorHead,    ///< the same of vendor groups
    Vendor,
};
inline constexpr int kTreeKindCount = 16;

struct TreeItem {
    TreeKind kind = TreeKind::General;
    /// Positive for a plain command, negative for the head of a branch.
    int command = 0;
    /// Of the source, stream or measurement, or of the source that a branch belongs to.
    std::string name{};
    char letter = 0;               ///< of its group file, 0 if it has none
    int group = 0;                 ///< the index of that file
    std::size_t measurements = 0;  ///< of a stream
    bool isUnlinked = false;       ///< a stream that no data source leads to
    [[nodiscard]] bool operator==(const TreeItem&) const = default;
};

/// Entries of the context menus.
enum class TreeAction : int {
    Edit,
    Rename,
    Delete,
    MakeCopy,
    CreateNew,
    Import,
    ViewAllConversions,
    PrintReports,
    EditConversion,
    DeleteConversion,
    RenameMeasurement,
    EditStream,
    RenameStream,
    CreateHome,
    ExpandBranch,
    ExpandChildren,
    CollapseBranch,
    CollapseChildren,
};

}  // namespace kavu
