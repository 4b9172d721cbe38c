// Moves groups to a new data source, for a copy or an import. Their commands get the new index
// and the new names, and go to staged files, which become group files all at once.
#pragma once

#include "core/files/FileIo.h"
#include "groups/SourceEdit.h"
#include "groups/SourceNames.h"

#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace kavu {

/// The old and the new name of a measurement.
using MeasurementPair = std::pair<std::string, std::string>;

class SourceTransfer {
  public:
    SourceTransfer(DocumentContext& context, std::string source, NameAffixes affixes)
        : context_(context), source_(std::move(source)), affixes_(std::move(affixes)) {}
    SourceTransfer(const SourceTransfer&) = delete;
    SourceTransfer& operator=(const SourceTransfer&) = delete;
    /// Deletes what was staged and not moved in.
    ~SourceTransfer();

    void renameLink(std::string_view oldName, std::string newName);

    /// Expects the commands of a group and gives it the next free index. False if there is
    /// none (303 "Unable to create new"), or if its file cannot be made, which is
    /// reported. Does nothing for a group that is expected already.
    bool expect(UserInterface* parent, char letter, int oldIndex);
    [[nodiscard]] bool expects(char letter, int oldIndex) const {
        return groups_.contains({letter, oldIndex});
    }
    /// Takes a command, in stored form, of an expected group; others are left out.
    void take(char letter, int oldIndex, std::string_view command);
    /// Takes all commands of a group file of the document.
    bool takeFile(UserInterface* parent, char letter, int oldIndex);

    /// The names of all measurements that were met, each once, in their order.
    [[nodiscard]] const std::vector<MeasurementPair>& measurements() const { return measurements_; }
    /// Reports the first measurement whose new name is too long; false if there is none.
    bool tellTooLong(UserInterface* parent) const;

    /// Makes group files of the staged ones. A failure is reported, and leaves what was moved
    /// until then.
    bool moveIn(UserInterface* parent);

  private:
    struct Group {
        int newIndex = 0;
        std::string prefix;  ///< the head of its new codes
        std::string staged;  ///< path
        FileWriter writer;
    };
    /// The next free index, or 0.
    [[nodiscard]] IoStatus findIndex(char letter, int& index) const;
    [[nodiscard]] std::string newValue(char letter, std::string_view code, std::string_view value);

    DocumentContext& context_;
    std::string source_;
    NameAffixes affixes_;
    std::unordered_map<std::string, std::string> links_;  ///< by old name
    std::map<std::pair<char, int>, Group> groups_;
    std::vector<MeasurementPair> measurements_;
    std::unordered_set<std::string> met_;
};

}  // namespace kavu
