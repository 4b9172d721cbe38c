#include "core/document/CarriedCommands.h"

#include "core/TmatsReader.h"
#include "core/document/DocumentFiles.h"
#include "core/document/GroupRewrite.h"
#include "core/text/Text.h"

#include <cerrno>

namespace kavu {

namespace {

/// A command that is carried finds its place again if one of so many after it is still there.
constexpr std::size_t kMostAnchors = 64;

std::string codeKey(std::string_view code) {
    return lowerAscii(trimRight(code));
}

std::string wholeKey(std::string_view code, std::string_view value) {
    return std::string(code).append(":").append(value);
}

/// The same for all indices.
std::string twinKey(std::string_view code, std::string_view value) {
    const auto path = parsePath(code);
    return wholeKey(path ? path->stem : code, value);
}

void noteCommands(TmatsReader& reader, ByteSource& source, CarriedCommands& carried) {
    std::string command;
    while (reader.nextRawCommand(source, command)) {
        carried.noteWritten(viewCommand(command));
    }
}

}  // namespace

void CarriedCommands::add(const CommandView& command) {
    if (isCarried(command)) {
        entries_.push_back({.text = std::string(command.text), .carried = true});
        sinceCarried_ = 0;
    } else if (!entries_.empty() && ++sinceCarried_ <= kMostAnchors) {
        entries_.push_back({.text = codeKey(command.code)});
        if (follow_ == Follow::Values) {
            entries_.back().value = command.value;
        }
    }
}

void CarriedCommands::recode(const std::function<bool(std::string& code)>& change) {
    for (auto& entry : entries_) {
        entry.gone = entry.gone || (!entry.carried && !change(entry.text));
        entry.text = entry.carried ? entry.text : codeKey(entry.text);
    }
}

void CarriedCommands::findAnchors() {
    foundAnchors_ = true;
    for (const auto& entry : entries_) {
        if (entry.carried || entry.gone) {
            continue;
        }
        anchors_.insert(entry.text);
        if (follow_ == Follow::Values) {
            ++twins_[twinKey(entry.text, entry.value)].old;
        }
    }
}

void CarriedCommands::noteWritten(const CommandView& command) {
    if (entries_.empty() || isCarried(command)) {
        return;
    }
    if (!foundAnchors_) {
        findAnchors();
    }
    const auto code = codeKey(command.code);
    if (anchors_.contains(code)) {
        written_.insert(code);
    }
    if (follow_ == Follow::Values) {
        if (const auto twins = twins_.find(twinKey(code, command.value)); twins != twins_.end()) {
            ++twins->second.written;
            twins->second.code = code;
            written_.insert(wholeKey(code, command.value));
        }
    }
}

/// The code of the command that an old one has become; empty if it is gone.
std::string CarriedCommands::placeOf(const Entry& entry) const {
    if (entry.gone) {
        return {};
    }
    if (follow_ == Follow::Values && !written_.contains(wholeKey(entry.text, entry.value))) {
        // A row that has moved: the same field has the same value at another index.
        const auto twins = twins_.find(twinKey(entry.text, entry.value));
        if (twins != twins_.end() && twins->second.old == 1 && twins->second.written == 1) {
            return twins->second.code;
        }
    }
    return written_.contains(entry.text) ? entry.text : std::string();
}

void CarriedCommands::place() {
    placed_ = true;
    std::string next;                  // the code in front of which the carried ones go
    std::vector<std::string> waiting;  // last first
    const auto give = [&] {
        std::string lines;
        for (auto it = waiting.rbegin(); it != waiting.rend(); ++it) {
            lines.append(*it).append("\r\n");
        }
        waiting.clear();
        // What was in front of an earlier command comes first.
        (next.empty() ? last_ : before_[next]).insert(0, lines);
    };
    for (auto it = entries_.rbegin(); it != entries_.rend(); ++it) {
        if (it->carried) {
            waiting.push_back(it->text);
        } else if (auto code = placeOf(*it); !code.empty()) {
            give();
            next = std::move(code);
        }
    }
    give();
}

std::string CarriedCommands::linesBefore(const CommandView& command) {
    if (entries_.empty() || isCarried(command)) {
        return {};
    }
    if (!placed_) {
        place();
    }
    const auto it = before_.find(codeKey(command.code));
    if (it == before_.end()) {
        return {};
    }
    auto lines = std::move(it->second);
    before_.erase(it);
    return lines;
}

std::string CarriedCommands::lastLines() {
    if (!placed_) {
        place();
    }
    return std::move(last_);
}

IoStatus gatherCarried(const DocumentFiles& files, TmatsReader& reader, std::string_view name,
                       CarriedCommands& carried) {
    ByteSource source;
    if (auto status = source.open(files.path(name)); !status.ok()) {
        return status.code() == ENOENT ? IoStatus() : status;
    }
    std::string command;
    while (reader.nextRawCommand(source, command)) {
        carried.add(viewCommand(command));
    }
    return source.status();
}

IoStatus putCarriedBack(DocumentFiles& files, TmatsReader& reader, std::string_view name,
                        CarriedCommands& carried) {
    if (carried.empty()) {
        return {};
    }
    ByteSource source;
    if (auto status = source.open(files.path(name)); !status.ok()) {
        return status;
    }
    noteCommands(reader, source, carried);
    auto status = source.status();
    source.close();
    if (status.ok()) {
        rewriteGroup(
            files, reader, name, Cut::Commands,
            [&carried](CommandEdit& edit) {
                edit.before(carried.linesBefore(viewCommand(edit.text())));
            },
            [&carried](bool) { return carried.lastLines(); }, status);
    }
    return status;
}

IoStatus closeCarrying(DocumentFiles& files, TmatsReader& reader, std::string_view name,
                       DocumentWriter& group) {
    CarriedCommands carried(CarriedCommands::Follow::Values);
    auto status = gatherCarried(files, reader, name, carried);
    status = status.ok() ? group.close() : status;
    return status.ok() ? putCarriedBack(files, reader, name, carried) : status;
}

std::string withCarried(std::string_view text, CarriedCommands& carried) {
    if (carried.empty()) {
        return std::string(text);
    }
    TmatsReader reader;
    auto source = ByteSource::fromMemory(text);
    noteCommands(reader, source, carried);
    source.seek(0);
    std::string command;
    std::string all;
    while (reader.nextRawCommand(source, command)) {
        all += carried.linesBefore(viewCommand(command));
        all.append(command).append("\r\n");
    }
    return all + carried.lastLines();
}

}  // namespace kavu
