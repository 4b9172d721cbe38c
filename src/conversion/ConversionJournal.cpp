#include "conversion/ConversionJournal.h"

#include "core/files/FileIo.h"

#include <utility>

namespace kavu {

namespace {

IoStatus readIfThere(const std::string& path, std::optional<std::string>& contents) {
    contents.reset();
    PathKind kind = PathKind::Missing;
    auto status = probePath(path, kind);
    if (status.ok() && kind != PathKind::Missing) {
        status = readWholeFile(path, contents.emplace());
    }
    return status;
}

void keepFirst(IoStatus& first, const IoStatus& status) {
    if (first.ok()) {
        first = status;
    }
}

}  // namespace

ConversionJournal::ConversionJournal(ConversionStore& store)
    : store_(store), outer_(std::move(store.beforeChange)) {
    // A record that is in memory only would look like one that was not there.
    failure_ = store_.writeOut();
    store_.beforeChange = [this](const std::string& path, std::optional<std::int64_t> chunk) {
        note(path, chunk);
    };
}

ConversionJournal::~ConversionJournal() {
    store_.beforeChange = std::move(outer_);
}

void ConversionJournal::note(const std::string& path, std::optional<std::int64_t> chunk) {
    if (outer_) {
        outer_(path, chunk);
    }
    if (before_.contains(path)) {
        return;
    }
    ConversionFileState state{chunk, {}};
    if (const auto status = readIfThere(path, state.contents); !status.ok()) {
        keepFirst(failure_, status);
        return;
    }
    before_.emplace(path, std::move(state));
}

ConversionFileStates ConversionJournal::take(IoStatus& status) {
    auto files = std::exchange(before_, {});
    for (auto it = files.begin(); it != files.end();) {
        std::optional<std::string> now;
        keepFirst(failure_, readIfThere(it->first, now));
        it = now == it->second.contents ? files.erase(it) : std::next(it);
    }
    status = std::exchange(failure_, {});
    return files;
}

ConversionFileStates ConversionJournal::exchange(const ConversionFileStates& files,
                                                 IoStatus& status) {
    ConversionFileStates held;
    status = {};
    for (const auto& [path, state] : files) {
        ConversionFileState now{state.chunk, {}};
        before_.erase(path);
        if (outer_) {
            outer_(path, state.chunk);
        }
        auto done = readIfThere(path, now.contents);
        if (done.ok()) {
            done = store_.putBack(path, state.chunk, state.contents);
        }
        if (done.ok()) {
            held.emplace(path, std::move(now));
        }
        keepFirst(status, done);
    }
    return held;
}

std::size_t bytesOf(const ConversionFileStates& files) {
    std::size_t bytes = 0;
    for (const auto& [path, state] : files) {
        bytes += path.size() + sizeof(state) + (state.contents ? state.contents->size() : 0);
    }
    return bytes;
}

}  // namespace kavu
