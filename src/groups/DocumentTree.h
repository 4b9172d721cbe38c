// What the tree of a document shows, as data: its sources, their links and streams.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kavu {

struct DocumentContext;
class UserInterface;

struct TreeLink {
    std::string name;
    std::string kind;              ///< display text; empty if no stream has the name
    int group = 0;                 ///< index of its P file, else of its B, S or A file, or 0
    std::size_t measurements = 0;  ///< names in its D, B or S file
    std::vector<std::string> embedded{};
    char letter = 0;  ///< of the file that `group` belongs to: P, B, S or A, or 0
};

/// A V group.
struct TreeVendor {
    std::string name;  ///< its `ID`; may be empty
    int group = 0;
};

struct TreeSource {
    std::string name;
    std::string type;               ///< the stored `DST` value
    char sourceClass = 'O';         ///< 'R', 'T' or 'O'
    int group = 0;                  ///< index of its T or R file, or 0
    int multiplex = 0;              ///< index of its first M file, or 0
    std::vector<TreeLink> links{};  ///< of all its M files
    /// Of the tracks of its recorder: the streams that they name, and those of the multiplex
    /// definitions that they name; without those among `links`.
    std::vector<TreeLink> tracks{};
    char groupLetter = 0;  ///< T or R, of the file that `group` belongs to, or 0
};

struct DocumentTree {
    std::vector<TreeSource> dataSources;
    /// Streams that no data source leads to, of the P, D, B, S and A groups in this order; a stream
    /// with several groups comes once. One that has a D group alone has the index of that; one
    /// without a name is its group.
    std::vector<TreeLink> unlinked{};
    std::vector<TreeVendor> vendors{};
};

/// Reads the tree from the group files. Files that cannot be read are reported and left
/// out; after a cancel the rest is missing.
[[nodiscard]] DocumentTree readDocumentTree(DocumentContext& context, UserInterface* parent);

/// The display text of a stored `TF`: "PCM (Class 1)", "PCM (Class 2)", "Packet", "1553", or the
/// value itself.
[[nodiscard]] std::string streamKindText(std::string_view format);

}  // namespace kavu
