// What can be done with the data sources of a document and the links that tie streams to
// them. All of it works on the group files. An operation is done as a whole or not at all:
// if a step fails, which is reported, every file is as it was before.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class ConversionStore;
class MeasurementNames;
class UserInterface;
struct DocumentContext;

/// What the operations work on; all of it belongs to the open document.
struct SourceParts {
    DocumentContext& context;
    ConversionStore& conversions;
    MeasurementNames& measurements;
};

/// A data source that has a T or an R group, as a list offers it.
struct SourceRow {
    std::string name;
    std::string type;  ///< the stored `DST` value
    int index = 0;     ///< of its group file, 0 if there is none
};
/// The data sources that have a T or an R group, in the order of the list; for any other
/// letter (M, V) all of them.
[[nodiscard]] std::vector<SourceRow> sourcesOfGroup(DocumentContext& context, UserInterface* parent,
                                                    char letter);

// The operations set `changed` and update the tree once they have changed the document.

/// Asks for a new stream, and makes the multiplex definition of the data source, with the
/// stream's files if one is wanted. Without a parent no stream is made. False if a file
/// could not be written or no index is free (303 "Unable to create new").
bool createStream(DocumentContext& context, UserInterface* parent, const std::string& source);
/// Asks for the name (141 "Another Data Source exists") and the kind of a new data source, and
/// then for its stream. Does nothing without a parent.
bool createDataSource(SourceParts& parts, UserInterface* parent);
/// Asks whether to make a new data source from a template or to import one; `letter` is
/// that of the group the user works on, T or R.
bool createOrImportDataSource(SourceParts& parts, UserInterface* parent, char letter);

/// Renames a data link wherever it is named: in M, P, D, B, S, A and R groups. A name that
/// exists is refused with 374 ("already exists"), an impossible one with a text. Commands that name
/// it in another way are shown first, and follow if the user agrees (question `kAllReferences`);
/// Cancel renames nothing. Without a parent they stay.
bool renameDataLink(SourceParts& parts, UserInterface* parent, const std::string& oldName,
                    const std::string& newName);
/// Asks for the new name.
bool askRenameDataLink(SourceParts& parts, UserInterface* parent, const std::string& oldName);
/// The same for a data source: in the G group and in its T or R, M and V groups, and in others if
/// the user agrees, such as the tracks of a recorder. A name that
/// exists is refused with 141 ("Another Data Source exists").
bool renameDataSource(SourceParts& parts, UserInterface* parent, const std::string& oldName,
                      const std::string& newName);
bool askRenameDataSource(SourceParts& parts, UserInterface* parent, const std::string& oldName);

/// Asks with message 140 ("permanently delete"; without a parent the answer is Yes) and
/// deletes a data source with all streams that no other group names; the groups are
/// renumbered. Groups that belonged to no data source before go as well, unless the user leaves
/// them (question `kUnreferenced`, which names them; yes without a parent); Cancel deletes nothing.
bool deleteDataSource(SourceParts& parts, UserInterface* parent, const std::string& name);

/// Makes a copy of a data source and its streams, with names that the user is asked for.
bool copyDataSource(SourceParts& parts, UserInterface* parent, const std::string& name);

/// Asks for a TMATS file and imports one of its data sources: `kind` is R for one that is
/// transmitted, T for a recorder.
bool importDataSource(SourceParts& parts, UserInterface* parent, char kind);

/// What is added before and after the names of copied measurements.
struct NameAffixes {
    bool wanted = false;
    std::string prefix;
    std::string suffix;

    [[nodiscard]] std::string applied(std::string_view name) const {
        return wanted ? prefix + std::string(name) + suffix : std::string(name);
    }
};
/// Asks for prefix and suffix, which the settings remember. False for Cancel. Without a parent
/// names stay as they are.
bool askPrefixSuffix(DocumentContext& context, UserInterface* parent, NameAffixes& affixes);

}  // namespace kavu
