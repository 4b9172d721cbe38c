// What the passes over all group files share: the files of a group by the name in them,
// lists of link names, and commands read one by one without copies of their parts.
#pragma once

#include "core/TmatsReader.h"
#include "core/command/CommandPath.h"
#include "core/files/FileIo.h"
#include "core/talk/FileReports.h"
#include "vocabulary/References.h"

#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace kavu {

struct DocumentContext;
class UserInterface;

/// Rows of a list in the G and M groups.
inline constexpr int kMostListRows = 99;

/// True if the file does not exist, which is no failure for a pass over files.
[[nodiscard]] bool isMissing(const IoStatus& status);

/// Calls `visit(command)` for every command of a file until it returns false. A visit that takes a
/// view gets the command where it is, which is the faster way.
template <typename Visit>
[[nodiscard]] IoStatus forEachCommand(TmatsReader& reader, const std::string& path,
                                      const Visit& visit) {
    ByteSource source;
    if (auto status = source.open(path); !status.ok()) {
        return status;
    }
    std::string room;
    if constexpr (std::is_invocable_v<const Visit&, std::string_view>) {
        for (auto command = reader.viewNext(source, room); command && visit(*command);
             command = reader.viewNext(source, room)) {
        }
    } else {
        while (reader.nextCommand(source, room) && visit(std::as_const(room))) {
        }
    }
    return source.status();
}

/// A list of link names, each once, in the order in which they were added. Names are exact, but
/// for trailing blanks, which no command keeps.
class LinkNames {
  public:
    bool add(std::string_view name);
    [[nodiscard]] bool has(std::string_view name) const;
    [[nodiscard]] std::size_t size() const { return names_.size(); }
    [[nodiscard]] const std::vector<std::string>& names() const { return names_; }

  private:
    std::vector<std::string> names_;
    std::unordered_set<std::string> known_;
};

/// The files of one group by the name in their `ID` (T, R, M, V) or `DLN` (all others),
/// found by reading each file once. S groups exist from edition 2005 on.
class GroupNames {
  public:
    GroupNames(DocumentContext& context, UserInterface* parent, char letter);

    /// The index of the first file of exactly that name, or 0.
    [[nodiscard]] int find(std::string_view name) const;
    /// False if a file could not be read, which has been reported.
    [[nodiscard]] bool complete() const { return complete_; }

    struct Entry {
        int index = 0;
        std::string name;
    };
    /// The files that have a name, by ascending index.
    [[nodiscard]] const std::vector<Entry>& entries() const { return entries_; }
    /// The indices of the others.
    [[nodiscard]] const std::vector<int>& nameless() const { return nameless_; }

  private:
    bool complete_ = true;
    std::vector<int> nameless_;
    std::vector<Entry> entries_;
    std::unordered_map<std::string, int> indexOf_;
};

/// The first index from 1 for which a group has no file; 100 if all are taken.
[[nodiscard]] int firstFreeIndex(const DocumentContext& context, char letter);

/// The links and the format of one P group.
struct PcmLinks {
    int index = 0;
    std::string link;
    std::string format;                 ///< the value of `TF`
    std::vector<std::string> embedded;  ///< async embedded formats, then data merges
    std::vector<std::string> async;     ///< of these the async embedded formats
};
/// Reads the P files, 1 to 99. False if one could not be read (reported) or the user has
/// cancelled.
[[nodiscard]] bool readPcmLinks(DocumentContext& context, UserInterface* parent,
                                std::vector<PcmLinks>& formats);

/// The names of one M group.
struct Multiplex {
    int index = 0;
    std::string source;
    std::vector<std::string> links;  ///< baseband first, then the subcarriers
};
/// Reads the M files, 1 to 99; false as above.
[[nodiscard]] bool readMultiplexes(DocumentContext& context, UserInterface* parent,
                                   std::vector<Multiplex>& multiplexes);

}  // namespace kavu
