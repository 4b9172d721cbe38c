#include "groups/Irig11Changes.h"

#include "core/TmatsDocument.h"
#include "core/TmatsReader.h"
#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "core/document/GroupFiles.h"
#include "core/document/GroupRewrite.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"
#include "groups/GroupScan.h"
#include "vocabulary/DGroupFields.h"
#include "vocabulary/LocationTypes.h"
#include "vocabulary/PSubframeFields.h"

#include <algorithm>
#include <array>
#include <map>
#include <unordered_map>
#include <utility>
#include <vector>

namespace kavu {

namespace {

constexpr auto kBusFields =
    std::to_array<std::string_view>({"RTRN", "RTRA", "RSTN", "RSTA", "RDWC"});

bool isBusField(std::string_view field) {
    return std::any_of(kBusFields.begin(), kBusFields.end(), [field](std::string_view known) {
        return startsWithIgnoreCase(field, known);
    });
}

void dropThirdIndex(CommandEdit& command) {
    const auto view = viewCommand(command.text());
    if (!isBusField(view.field)) {
        return;
    }
    const auto indices = parseCommandIndices(command.text());
    if (indices.count == 2) {
        return;
    }
    if (indices.count != 3 || indices.fields[2] != 1) {
        command.erase();
        return;
    }
    command.replace(formatPrintf("%c-%d\\%s-%d-%d:%s;", indices.letter, indices.group,
                                 std::string(codeHead(view.field)), indices.fields[0],
                                 indices.fields[1], std::string(view.value)));
}

/// Measurement list and place in it.
using Place = std::pair<int, int>;

bool isOldFilterCode(std::string_view code) {
    return isOfPattern(code, filter_field::kCountInList.code) ||
           isOfPattern(code, filter_field::kNameInList.code) ||
           isOfPattern(code, measurement_field::kFilterOverwrite.code);
}

/// The filter lists of a D file while they are joined.
class FilterLists {
  public:
    /// Takes the names and the tags, in the first pass over the file.
    void collect(const std::string& command) {
        const auto view = viewCommand(command);
        if (!isOldFilterCode(view.field)) {
            return;
        }
        found_ = true;
        if (view.value.empty()) {
            return;
        }
        if (isOfPattern(view.field, filter_field::kNameInList.code)) {
            selected_.emplace(placeOf(command), view.value);
        } else if (isOfPattern(view.field, measurement_field::kFilterOverwrite.code)) {
            tags_.emplace(placeOf(command), view.value);
        }
    }
    /// Takes the names of measurements that have a tag, and removes the old commands.
    void rewrite(CommandEdit& command) {
        const auto view = viewCommand(command.text());
        if (isOldFilterCode(view.field)) {
            command.erase();
        } else if (isOfPattern(view.field, measurement_field::kName.code) && !view.value.empty() &&
                   tags_.contains(placeOf(command.text()))) {
            tagged_.emplace(placeOf(command.text()), view.value);
        }
    }
    /// The commands of the one list.
    [[nodiscard]] std::string newList(const std::string& prefix) {
        for (const auto& [place, name] : selected_) {
            rowOf(name);
        }
        for (const auto& [place, name] : tagged_) {
            rows_[rowOf(name)].tag = tags_[place];
        }
        std::string text;
        const auto add = [&](const Field& field, int row, std::string_view value) {
            text += prefix + fieldCode(field.code, {row});
            text.append(":").append(value).append(";\r\n");
        };
        add(filter_field::kCount, 0, std::to_string(rows_.size()));
        for (int row = 1; const auto& each : rows_) {
            add(filter_field::kName, row, each.name);
            if (!each.tag.empty()) {
                add(filter_field::kType, row, each.tag);
            }
            ++row;
        }
        return text;
    }
    [[nodiscard]] bool found() const { return found_; }

  private:
    struct Row {
        std::string name;
        std::string tag;
    };
    static Place placeOf(const std::string& command) {
        const auto indices = parseCommandIndices(command);
        return {indices.fields[0], indices.fields[1]};
    }
    std::size_t rowOf(const std::string& name) {
        const auto [it, added] = rowByName_.try_emplace(name, rows_.size());
        if (added) {
            rows_.push_back({name, {}});
        }
        return it->second;
    }

    bool found_ = false;
    std::map<Place, std::string> selected_;
    std::map<Place, std::string> tags_;
    std::map<Place, std::string> tagged_;
    std::vector<Row> rows_;
    std::unordered_map<std::string, std::size_t> rowByName_;
};

bool hasSubframes(std::string_view code, std::string_view value) {
    return isOfPattern(code, p::kSfN.code) && leadingInteger(value) > 0;
}

bool hasOlderLocation(std::string_view code, std::string_view value) {
    return isOfPattern(code, measurement_field::kLocationType.code) && !value.empty() &&
           !equalsIgnoreCase(value, location_type::kWordFrame) &&
           !equalsIgnoreCase(value, kTaggedType);
}

}  // namespace

bool dropThirdBusIndex(DocumentContext& context, const std::string& name, IoStatus& status) {
    return rewriteGroup(context.files, context.reader, name, Cut::Commands, dropThirdIndex, {},
                        status);
}

bool joinFilterLists(DocumentContext& context, const std::string& name, int index,
                     IoStatus& status) {
    FilterLists lists;
    status = forEachCommand(context.reader, context.files.path(name),
                            [&lists](const std::string& command) {
                                lists.collect(command);
                                return true;
                            });
    if (!status.ok() || !lists.found()) {
        status = isMissing(status) ? IoStatus() : status;
        return false;
    }
    return rewriteGroup(
        context.files, context.reader, name, Cut::Commands,
        [&lists](CommandEdit& command) { lists.rewrite(command); },
        [&](bool) { return lists.newList(groupHead('D', index)); }, status);
}

bool needsWordFrames(DocumentContext& context, UserInterface* parent, IoStatus& status) {
    struct Test {
        char letter;
        bool (*found)(std::string_view code, std::string_view value);
    };
    bool found = false;
    for (const auto& test : {Test{'P', hasSubframes}, Test{'D', hasOlderLocation}}) {
        for (int index = kLeastGroupIndex; !found && index <= kMostGroupIndex; ++index) {
            status =
                forEachCommand(context.reader, context.store.pathOf(groupFile(test.letter, index)),
                               [&](const std::string& command) {
                                   const auto view = viewCommand(command);
                                   found = test.found(view.field, view.value);
                                   return !found;
                               });
            if (isMissing(status)) {
                status = {};
            }
            if (!status.ok() || cancelRequested(parent)) {
                return false;
            }
        }
    }
    return found;
}

}  // namespace kavu
