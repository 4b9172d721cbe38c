// The relations of a document, read from its group files: data sources, the data links
// that their multiplex groups name, and the group file that bears a name.
#pragma once

#include "core/TmatsDocument.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

inline constexpr int kMostDataSources = 99;
inline constexpr int kMostDataLinks = 99;
/// Characters of a data source or data link name.
inline constexpr int kNameLimit = 32;

/// One data source of the G group.
struct DataSource {
    std::string name;
    std::string type;        ///< the stored `DST` value
    char sourceClass = 'O';  ///< R: has a T group, T: has an R group, O: other or missing
};

/// The class of a stored type.
[[nodiscard]] char dataSourceClass(std::string_view type);
/// All data sources, at most 99, in their order.
[[nodiscard]] std::vector<DataSource> readDataSources(DocumentContext& context,
                                                      UserInterface* parent);
/// The number of data sources; their names go to `names` if it is given.
int listDataSources(DocumentContext& context, UserInterface* parent,
                    std::vector<std::string>* names = nullptr);
/// The class of data source `index` (from 1); its name and stored type.
char dataSourceInfo(DocumentContext& context, UserInterface* parent, int index, std::string& name,
                    std::string& type);

/// The index of the group file whose `ID` (T, R, M, V) or `DLN` (P, D, B, S, A) equals the
/// name, or a value below 1 if there is none. Without a name the first free index,
/// negated; 0 if none is free.
[[nodiscard]] int findGroupIndex(DocumentContext& context, UserInterface* parent, char letter,
                                 std::optional<std::string_view> name);

/// The names that the files of a group bear, read once for many questions.
class GroupNames {
  public:
    GroupNames(DocumentContext& context, UserInterface* parent, char letter);
    /// The lowest index of the name, or 0.
    [[nodiscard]] int indexOf(std::string_view name) const;

  private:
    std::map<std::string, int, std::less<>> indices_;
};

/// The data links that one M file names: `BB\DLN`, then `SI\DLN-k`.
[[nodiscard]] std::vector<std::string> readMultiplexLinks(DocumentContext& context,
                                                          UserInterface* parent, int index);
/// All data links of all M files in file order, each as often as it is named.
[[nodiscard]] std::vector<std::string> gatherDataLinks(DocumentContext& context,
                                                       UserInterface* parent);

enum class StreamKind { PcmOrNone = 0, Bus = 2, MessageData = 3 };
/// The kind of the stream that bears a link name; message data from edition 2009 on.
[[nodiscard]] StreamKind streamKindOfLink(DocumentContext& context, UserInterface* parent,
                                          std::string_view link);

/// The field that holds the name of a group: "ID" or "DLN".
[[nodiscard]] std::string_view nameField(char letter);
/// The name that a group file bears; empty if it has none or can not be read.
[[nodiscard]] std::string readGroupName(DocumentContext& context, UserInterface* parent,
                                        char letter, int index);
/// "P-12\"
[[nodiscard]] std::string groupPrefix(char letter, int index);

/// The indices 1 to 99 of a group whose files exist, rising. A folder that can not be
/// listed is reported, and then `good`, if given, is false.
[[nodiscard]] std::vector<int> existingGroups(DocumentContext& context, UserInterface* parent,
                                              char letter, bool* good = nullptr);

}  // namespace kavu
