#include "groups/DataSources.h"

#include "core/FieldIndex.h"
#include "core/FileIo.h"
#include "core/GroupFiles.h"
#include "core/Text.h"
#include "core/TmatsReader.h"
#include "core/UserInterface.h"
#include "core/WorkingStore.h"

#include <algorithm>
#include <set>

namespace kavu {

namespace {

constexpr int kTypeLimit = 3;

FieldIndex generalFields(DocumentContext& context) {
    return {context.reader, context.store.pathOf(working::kGeneral), {"DSI", "DST"}};
}

DataSource readSource(UserInterface* parent, FieldIndex& general, int index) {
    DataSource source;
    source.name = general.findField(parent, "G\\", "DSI-%d", kNameLimit, index).value_or("");
    source.type = general.findField(parent, "G\\", "DST-%d", kTypeLimit, index).value_or("");
    source.sourceClass = dataSourceClass(source.type);
    return source;
}

}  // namespace

char dataSourceClass(std::string_view type) {
    if (type.starts_with("RF")) {
        return 'R';
    }
    return type.empty() || type.starts_with("OTH") ? 'O' : 'T';
}

std::vector<DataSource> readDataSources(DocumentContext& context, UserInterface* parent) {
    auto general = generalFields(context);
    int count = 0;
    general.findIntField(parent, "G\\", "DSI\\N", count);
    std::vector<DataSource> sources;
    for (int index = 1; index <= std::min(count, kMostDataSources); ++index) {
        sources.push_back(readSource(parent, general, index));
    }
    return sources;
}

int listDataSources(DocumentContext& context, UserInterface* parent,
                    std::vector<std::string>* names) {
    const auto sources = readDataSources(context, parent);
    if (names != nullptr) {
        names->clear();
        for (const auto& source : sources) {
            names->push_back(source.name);
        }
    }
    return static_cast<int>(sources.size());
}

char dataSourceInfo(DocumentContext& context, UserInterface* parent, int index, std::string& name,
                    std::string& type) {
    auto general = generalFields(context);
    auto source = readSource(parent, general, index);
    name = std::move(source.name);
    type = std::move(source.type);
    return source.sourceClass;
}

std::string_view nameField(char letter) {
    return std::string_view("TRMV").find(letter) == std::string_view::npos ? "DLN" : "ID";
}

std::string groupPrefix(char letter, int index) {
    std::string prefix(1, letter);
    prefix.push_back('-');
    appendNumber(prefix, index);
    prefix.push_back('\\');
    return prefix;
}

std::string readGroupName(DocumentContext& context, UserInterface* parent, char letter, int index) {
    ByteSource source;
    if (!source.open(context.store.pathOf(groupFile(letter, index))).ok()) {
        return {};
    }
    return std::string(
        context.reader
            .findField(parent, source, groupPrefix(letter, index), nameField(letter), kNameLimit)
            .value_or(""));
}

std::vector<int> existingGroups(DocumentContext& context, UserInterface* parent, char letter,
                                bool* good) {
    std::vector<FolderEntry> entries;
    const auto status = listFolder(context.store.pathOf({}), entries);
    if (!status.ok()) {
        showBox(parent,
                formatPrintf("Unable to read '%s'\n\nReason: %s", status.path(), status.reason()),
                "Error Reading TMATS File");
    }
    if (good != nullptr) {
        *good = status.ok();
    }
    std::set<std::string> names;
    for (auto& entry : entries) {
        names.insert(std::move(entry.name));
    }
    std::vector<int> indices;
    for (int index = kLeastGroupIndex; index <= kMostGroupIndex; ++index) {
        if (names.contains(groupFile(letter, index))) {
            indices.push_back(index);
        }
    }
    return indices;
}

int findGroupIndex(DocumentContext& context, UserInterface* parent, char letter,
                   std::optional<std::string_view> name) {
    const auto existing = existingGroups(context, parent, letter);
    if (!name) {
        int free = kLeastGroupIndex;
        for (const int index : existing) {
            free += index == free ? 1 : 0;
        }
        return free > kMostGroupIndex ? 0 : -free;
    }
    for (const int index : existing) {
        if (readGroupName(context, parent, letter, index) == *name) {
            return index;
        }
    }
    return 0;
}

GroupNames::GroupNames(DocumentContext& context, UserInterface* parent, char letter) {
    for (const int index : existingGroups(context, parent, letter)) {
        auto name = readGroupName(context, parent, letter, index);
        if (!name.empty()) {
            indices_.try_emplace(std::move(name), index);
        }
    }
}

int GroupNames::indexOf(std::string_view name) const {
    const auto it = indices_.find(name);
    return it == indices_.end() ? 0 : it->second;
}

std::vector<std::string> readMultiplexLinks(DocumentContext& context, UserInterface* parent,
                                            int index) {
    FieldIndex fields(context.reader, context.store.pathOf(groupFile('M', index)),
                      {"BB\\DLN", "SI\\"});
    const auto prefix = groupPrefix('M', index);
    std::vector<std::string> links;
    if (const auto link = fields.findField(parent, prefix, "BB\\DLN", kNameLimit)) {
        links.emplace_back(*link);
    }
    int count = 0;
    fields.findIntField(parent, prefix, "SI\\N", count);
    for (int k = 1; k <= std::min(count, kMostDataLinks); ++k) {
        if (const auto link = fields.findField(parent, prefix, "SI\\DLN-%d", kNameLimit, k)) {
            links.emplace_back(*link);
        }
    }
    return links;
}

std::vector<std::string> gatherDataLinks(DocumentContext& context, UserInterface* parent) {
    std::vector<std::string> links;
    for (const int index : existingGroups(context, parent, 'M')) {
        for (auto& link : readMultiplexLinks(context, parent, index)) {
            links.push_back(std::move(link));
        }
    }
    return links;
}

StreamKind streamKindOfLink(DocumentContext& context, UserInterface* parent,
                            std::string_view link) {
    if (findGroupIndex(context, parent, 'P', link) < 1) {
        if (findGroupIndex(context, parent, 'B', link) >= 1) {
            return StreamKind::Bus;
        }
        const bool messages =
            context.document.version >= 2009 && findGroupIndex(context, parent, 'S', link) >= 1;
        return messages ? StreamKind::MessageData : StreamKind::PcmOrNone;
    }
    const int index = findGroupIndex(context, parent, 'P', link);
    FieldIndex format(context.reader, context.store.pathOf(groupFile('P', index)), {"TF"});
    const auto type = format.findField(parent, groupPrefix('P', index), "TF", 0).value_or("");
    return type == "1553" ? StreamKind::Bus : StreamKind::PcmOrNone;
}

}  // namespace kavu
