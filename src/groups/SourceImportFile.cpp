#include "groups/SourceImportFile.h"

#include "core/TmatsReader.h"
#include "core/command/CommandPath.h"
#include "core/document/GroupFiles.h"
#include "core/talk/Messages.h"
#include "core/talk/OpenFileChecked.h"
#include "core/talk/UserInterface.h"
#include "core/text/Clock.h"
#include "core/text/Text.h"
#include "core/text/TextEncoding.h"
#include "groups/DataSources.h"
#include "groups/DocumentTree.h"
#include "vocabulary/CGroupFields.h"
#include "vocabulary/GGroupFields.h"
#include "vocabulary/MGroupFields.h"
#include "vocabulary/PGroupFields.h"
#include "vocabulary/References.h"
#include "vocabulary/StreamType.h"

#include <algorithm>
#include <set>

namespace kavu {

namespace {

constexpr std::string_view kNoted = "TRMPDBS";

/// The group of a command: its letter and index, or a letter of 0.
struct GroupOf {
    char letter = 0;
    std::int64_t index = 0;
};
GroupOf groupOf(std::string_view command) {
    const auto view = viewCommand(command);
    if (command.size() < 4 || command[1] != '-' || (view.hasColon && view.head.empty())) {
        return {};
    }
    return {command[0], leadingInteger(command.substr(2))};
}

/// The index of a code of this pattern ("DSI-n"), or 0 if it is another code or out of range.
int rowOf(std::string_view code, std::string_view pattern) {
    if (!isOfPattern(code, pattern)) {
        return 0;
    }
    const int row = leadingInt(code.substr(stemOf(pattern).size() + 1));
    return row >= 1 && row <= kMostListRows ? row : 0;
}

}  // namespace

bool SourceImportFile::open(UserInterface* parent) {
    if (!openFileChecked(parent, path_, source_)) {
        return false;
    }
    return read(
        parent,
        [&](std::string& command) {
            if (command.starts_with("G\\")) {
                noteGeneral(parent, command);
            } else if (const auto group = groupOf(command); group.letter != 0) {
                note(parent, group.letter, group.index, command);
            }
            return true;
        },
        [&](double percent) { setProgressBar(parent, percent); });
}

bool SourceImportFile::read(UserInterface* parent, const std::function<bool(std::string&)>& visit,
                            const std::function<void(double)>& progress) {
    source_.seek(0);
    if (source_.window().substr(0, kByteOrderMark.size()) == kByteOrderMark) {
        source_.take(kByteOrderMark.size());
    }
    (void)cutFiller(source_);
    std::string command;
    long line = 1;
    std::size_t partial = 0;
    unsigned count = 0;
    while (context_.reader.nextCommand(source_, command, &line, &partial)) {
        dropLeadingZeros(command);
        if (!visit(command)) {
            return false;
        }
        if (++count % kPollEvery == 0) {
            if (context_.ticker.secondElapsed() && source_.size() > 0) {
                progress(100.0 * static_cast<double>(source_.position()) /
                         static_cast<double>(source_.size()));
            }
            yieldToInterface(parent);
            if (cancelRequested(parent)) {
                return false;
            }
        }
    }
    IoStatus failure = source_.status();
    if (failure.ok() && partial > 0) {
        context_.messages.show(parent, 157, title::kErrorReading, kWarningBox, line);
        return false;
    }
    if (failure.ok() && source_.changedSinceOpened(&failure) && failure.ok()) {
        showBox(parent,
                formatPrintf("The file '%s' was changed by another program while it was being "
                             "read.\n\nPlease import it again.",
                             path_),
                "Import Data Source");
        return false;
    }
    if (!failure.ok()) {
        reportUnableToRead(parent, failure);
    }
    return failure.ok();
}

void SourceImportFile::noteGeneral(UserInterface* parent, std::string_view command) {
    const auto view = viewCommand(command);
    if (const int row = rowOf(view.field, kSourceName); row > 0) {
        const auto name = context_.reader.applyLimit(parent, view.code, view.value, kNameLimit);
        listNames_.try_emplace(row, name);
    } else if (const int typeRow = rowOf(view.field, kSourceType); typeRow > 0) {
        listTypes_.try_emplace(typeRow, view.value.substr(0, kSourceTypeWidth));
    }
}

void SourceImportFile::note(UserInterface* parent, char letter, std::int64_t index,
                            std::string_view command) {
    const auto view = viewCommand(command);
    if (view.value.empty()) {
        return;
    }
    if (letter == 'C') {
        if (startsWithIgnoreCase(view.field, c::kDcn.code)) {
            conversions_.try_emplace(std::string(view.value), index);
        }
        return;
    }
    if (kNoted.find(letter) != std::string_view::npos && index >= kLeastGroupIndex &&
        index <= kMostGroupIndex) {
        noteField(parent, letter, groups_[letter][static_cast<int>(index)], command);
    }
}

void SourceImportFile::noteField(UserInterface* parent, char letter, Group& group,
                                 std::string_view command) {
    const auto view = viewCommand(command);
    const auto first = [&](std::string& text) {
        if (text.empty()) {
            text = context_.reader.applyLimit(parent, view.code, view.value, kNameLimit);
        }
    };
    if (equalsIgnoreCase(view.field, ownNameOf(letter))) {
        first(group.name);
    } else if (letter == 'P' && equalsIgnoreCase(view.field, p::kTf.code)) {
        group.format = group.format.empty() ? std::string(view.value) : group.format;
    } else if (letter == 'M' && equalsIgnoreCase(view.field, kBasebandLink)) {
        first(group.baseband);
    } else if (letter == 'M' && equalsIgnoreCase(view.field, kSubcarrierCount)) {
        group.count = std::clamp(leadingInt(view.value), 0, kMostListRows);
    } else if (const int row = letter == 'M' ? rowOf(view.field, kSubcarrierLink) : 0; row > 0) {
        first(group.subcarriers[row]);
    }
}

const SourceImportFile::Groups& SourceImportFile::groups(char letter) const {
    static const Groups kNone;
    const auto found = groups_.find(letter);
    return found == groups_.end() ? kNone : found->second;
}

std::vector<ImportOffer> SourceImportFile::offers(UserInterface* parent, char kind) const {
    setProgressText(parent, "Searching for Data Sources");
    setStatusText(parent, "Searching for Data Sources");
    std::vector<ImportOffer> table;
    for (const char letter : {'R', 'T'}) {
        int expected = kLeastGroupIndex;
        for (const auto& [index, group] : groups(letter)) {
            if (index != expected++ || group.name.empty()) {
                break;
            }
            ImportOffer offer;
            offer.name = group.name;
            offer.letter = letter;
            offer.index = index;
            for (const auto& [row, name] : listNames_) {
                const auto type = listTypes_.find(row);
                if (name == group.name && type != listTypes_.end()) {
                    offer.type = type->second;
                    break;
                }
            }
            table.push_back(std::move(offer));
        }
    }
    setProgressText(parent, "Searching for Data Links");
    setStatusText(parent, "Searching for Data Links");
    findStreams(parent, table);
    const char wanted = kind == 'R' ? 'T' : 'R';
    std::erase_if(table, [wanted](const ImportOffer& offer) { return offer.letter != wanted; });
    return table;
}

void SourceImportFile::findStreams(UserInterface* parent, std::vector<ImportOffer>& table) const {
    std::set<std::string> behind;  // names of the groups that the search does not reach
    bool walking = true;
    int expected = kLeastGroupIndex;
    for (const auto& entry : groups('M')) {
        const int index = entry.first;
        const auto& group = entry.second;
        yieldToInterface(parent);
        walking = walking && index == expected++ && !group.name.empty();
        const auto offer = std::find_if(table.begin(), table.end(), [&](const ImportOffer& row) {
            return row.name == group.name;
        });
        if (offer == table.end()) {
            continue;
        }
        std::vector<std::string> links;
        if (!group.baseband.empty()) {
            links.push_back(group.baseband);
        }
        for (const auto& [row, link] : group.subcarriers) {
            if (row <= group.count) {
                links.push_back(link);
            }
        }
        walking = walking && links.size() == 1;
        if (!walking) {
            behind.insert(group.name);
        } else if (offer->multiplex == 0) {
            offer->multiplex = index;
            offer->link = links.front();
            findStream(*offer);
        }
    }
    std::erase_if(table, [&](const ImportOffer& row) {
        return row.multiplex == 0 && behind.contains(row.name);
    });
}

void SourceImportFile::findStream(ImportOffer& offer) const {
    const auto find = [&](char letter) {
        for (const auto& [index, group] : groups(letter)) {
            if (group.name == offer.link) {
                return index;
            }
        }
        return 0;
    };
    std::string letters = "DBS";
    offer.format = find('P');
    if (offer.format > 0) {
        const auto& format = groups('P').at(offer.format).format;
        offer.streamType = streamKindText(format);
        letters = dataLetterOf(format);
    }
    for (const char letter : letters) {
        // Documents of older editions know no S groups.
        if (letter == 'S' && context_.document.version < groupKind('S').firstEdition) {
            continue;
        }
        if (const int index = find(letter); index > 0) {
            offer.dataLetter = letter;
            offer.data = index;
            break;
        }
    }
    if (offer.format == 0 && offer.dataLetter != 0) {
        offer.streamType = offer.dataLetter == 'B'   ? stream_type::kBus1553.text
                           : offer.dataLetter == 'S' ? std::string_view("Message Data")
                                                     : std::string_view("PCM");
    }
}

bool SourceImportFile::forEach(
    UserInterface* parent,
    const std::function<bool(char letter, std::int64_t index, const std::string& command)>& take,
    const std::function<void(double percent)>& progress) {
    return read(
        parent,
        [&](std::string& command) {
            const auto group = groupOf(command);
            if (group.letter == 0) {
                return true;
            }
            if (holdsLineBreak(command)) {
                toStoredForm(command);
            }
            return take(group.letter, group.index, command);
        },
        progress);
}

std::int64_t SourceImportFile::conversionOf(const std::string& measurement) const {
    const auto found = conversions_.find(measurement);
    return found == conversions_.end() ? 0 : found->second;
}

}  // namespace kavu
