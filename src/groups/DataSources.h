// The data sources of a document, and the data links that tie streams to them: which
// there are, of what kind, and in which group file.
#pragma once

#include "groups/GroupScan.h"
#include "vocabulary/StreamType.h"

#include <string>
#include <string_view>
#include <vector>

namespace kavu {

/// A row of the list of data sources.
struct DataSource {
    std::string name;  ///< empty for a row without a name
    std::string type;  ///< the stored `DST` value
    int row = 0;       ///< its number in the list
};

/// The commands of the list in the G group: the code of its count, and the part
/// before the number of a row in the codes of names ("G\DSI-") and types.
struct SourceCodes {
    SourceCodes();
    /// The lines of a row; an empty name or type has none.
    [[nodiscard]] std::string rowText(int row, std::string_view source,
                                      std::string_view sourceType) const;
    std::string count;
    std::string name;
    std::string type;
};

/// The class of a type: 'R' for one that begins with "RF", 'O' for one that begins with
/// "OTH" or is missing, 'T' for every other. Class R has a T group, class T an R group.
[[nodiscard]] char dataSourceClass(std::string_view type);

/// The rows of the list, 1 to the count that the G group gives (at most 99). False if the
/// file could not be read, which is reported; a missing file has no rows.
bool readDataSources(DocumentContext& context, UserInterface* parent,
                     std::vector<DataSource>& sources);
/// The number of data sources, 0 to 99, and their names if `names` is given.
int listDataSources(DocumentContext& context, UserInterface* parent,
                    std::vector<std::string>* names = nullptr);
/// Name, type and class of the data source of this index, which counts from 1.
char dataSourceInfo(DocumentContext& context, UserInterface* parent, int index, std::string& name,
                    std::string& type);

/// The index of the group file that carries a name, or 0. For an empty name the first free
/// index, negated (-100 if all 99 are taken).
int findGroupIndex(DocumentContext& context, UserInterface* parent, char letter,
                   std::string_view name);

/// Adds the links of all M groups, 1 to 99, each once, in the order of the groups. False if
/// a file could not be read (reported) or the user has cancelled.
bool gatherDataLinks(DocumentContext& context, UserInterface* parent,
                     std::vector<std::string>& links);

/// The PCM streams, each once: the links of all M groups in the order of the groups, without those
/// of bus, packet, message and PAM streams, then the async embedded formats that no M group names.
/// A link that no group bears is one of them. False if a file could not be read, which is reported.
bool gatherPcmStreams(DocumentContext& context, UserInterface* parent,
                      std::vector<std::string>& streams);

enum class StreamKind { PcmOrNone = 0, Bus = 2, MessageData = 3 };
/// The kind of stream that a link names. Message data exists from edition 2009 on.
StreamKind streamKindOfLink(DocumentContext& context, UserInterface* parent, std::string_view link);

}  // namespace kavu
