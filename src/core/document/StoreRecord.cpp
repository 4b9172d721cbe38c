#include "core/document/StoreRecord.h"

#include "core/files/FileIo.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <sys/stat.h>

namespace kavu {

namespace {

constexpr std::string_view kFirstLine = "KAVU store 1";
constexpr std::uint64_t kLongestRecord = 1024 * 1024;
constexpr std::size_t kMaxFiles = 2000;

/// Nothing that would end a line or a field.
std::string escaped(std::string_view text) {
    std::string safe;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte <= ' ' || c == '%') {
            safe += formatPrintf("%%%2.2X", byte);
        } else {
            safe.push_back(c);
        }
    }
    return safe;
}

int hexDigit(char c) {
    return isDigit(c) ? c - '0' : c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

std::string unescaped(std::string_view text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool whole = text[i] == '%' && i + 2 < text.size();
        const int high = whole ? hexDigit(text[i + 1]) : -1;
        const int low = whole ? hexDigit(text[i + 2]) : -1;
        if (high >= 0 && low >= 0) {
            plain.push_back(static_cast<char>(high * 16 + low));
            i += 2;
        } else {
            plain.push_back(text[i]);
        }
    }
    return plain;
}

/// The part up to the next `end`, which is taken away with it.
std::string_view take(std::string_view& text, char end) {
    const auto at = std::min(text.find(end), text.size());
    const auto part = text.substr(0, at);
    text.remove_prefix(std::min(at + 1, text.size()));
    return part;
}

template <typename Number>
Number numberOf(std::string_view text) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? number : Number{};
}

void readLine(std::string_view line, StoreRecord& record) {
    const auto key = take(line, '=');
    if (key == "source") {
        // A damaged record may hold a byte that ends a name early and makes it another file's.
        const auto path = unescaped(line);
        record.source.path = path.find('\0') == std::string::npos ? path : std::string();
    } else if (key == "size") {
        record.source.size = numberOf<std::uint64_t>(line);
    } else if (key == "modified") {
        record.source.modified = numberOf<std::int64_t>(line);
    } else if (key == "edition") {
        record.edition = numberOf<int>(line);
    } else if (key == "split") {
        record.isSplit = line == "1";
    } else if (key == "loaded") {
        record.isLoaded = line == "1";
    } else if (key == "file" && record.files.size() < kMaxFiles) {
        RecordedFile file;
        file.name = unescaped(take(line, ' '));
        file.size = numberOf<std::uint64_t>(take(line, ' '));
        file.inode = numberOf<std::uint64_t>(line);
        record.files.push_back(std::move(file));
    } else if (key == "chunks" && record.chunks.size() < kMaxFiles) {
        const auto first = numberOf<std::int64_t>(take(line, ' '));
        record.chunks.emplace_back(first, numberOf<std::int64_t>(line));
    }
}

std::int64_t nanoseconds(const timespec& time) {
    return static_cast<std::int64_t>(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
}

/// Whether the last command of a group file is whole.
IoStatus endsInCommand(const std::string& path, std::uint64_t size, bool& whole) {
    ByteSource source;
    if (auto status = source.open(path); !status.ok()) {
        return status;
    }
    source.seek(size - 1);
    const int last = source.get();
    whole = last == '\n' || last == ';';
    return source.status();
}

}  // namespace

std::string storeRecordText(const StoreRecord& record) {
    auto text =
        formatPrintf("%s\nsource=%s\nsize=%s\nmodified=%s\nsplit=%d\nloaded=%d\nedition=%d\n",
                     kFirstLine, escaped(record.source.path), std::to_string(record.source.size),
                     std::to_string(record.source.modified), record.isSplit ? 1 : 0,
                     record.isLoaded ? 1 : 0, record.edition);
    for (const auto& file : record.files) {
        text += formatPrintf("file=%s %s %s\n", escaped(file.name), std::to_string(file.size),
                             std::to_string(file.inode));
    }
    for (const auto& [first, last] : record.chunks) {
        text += formatPrintf("chunks=%s %s\n", std::to_string(first), std::to_string(last));
    }
    return text;
}

std::optional<StoreRecord> parseStoreRecord(std::string_view text) {
    // Without its last line end it is a part of one.
    if (take(text, '\n') != kFirstLine || !text.ends_with('\n')) {
        return std::nullopt;
    }
    StoreRecord record;
    while (!text.empty()) {
        readLine(take(text, '\n'), record);
    }
    return record;
}

IoStatus readStoreRecord(const std::string& path, std::optional<StoreRecord>& record) {
    record.reset();
    struct stat info {};
    if (::lstat(path.c_str(), &info) != 0) {
        return errno == ENOENT ? IoStatus() : IoStatus(path, errno);
    }
    if (!S_ISREG(info.st_mode) || static_cast<std::uint64_t>(info.st_size) > kLongestRecord) {
        return {};
    }
    std::string text;
    auto status = readWholeFile(path, text);
    if (status.ok()) {
        record = parseStoreRecord(text);
    }
    return status;
}

DocumentSource describeSource(const std::string& path) {
    DocumentSource source{.path = absolutePath(path)};
    struct stat info {};
    if (!path.empty() && ::stat(path.c_str(), &info) == 0) {
        source.size = static_cast<std::uint64_t>(info.st_size);
        source.modified = nanoseconds(info.st_mtim);
    }
    return source;
}

bool isSourceUnchanged(const DocumentSource& source) {
    return !source.path.empty() && isPlainFile(source.path) &&
           describeSource(source.path) == source;
}

IoStatus probeStoreFile(const std::string& path, const RecordedFile* recorded, FileState& state) {
    state = FileState::Whole;
    struct stat info {};
    if (::lstat(path.c_str(), &info) != 0) {
        state = FileState::Missing;
        return errno == ENOENT ? IoStatus() : IoStatus(path, errno);
    }
    if (!S_ISREG(info.st_mode)) {
        state = FileState::NoFile;
        return {};
    }
    const auto size = static_cast<std::uint64_t>(info.st_size);
    bool whole = recorded == nullptr || size >= recorded->size ||
                 (size > 0 && static_cast<std::uint64_t>(info.st_ino) != recorded->inode);
    IoStatus status;
    if (whole && size > 0) {
        status = endsInCommand(path, size, whole);
    }
    state = whole ? FileState::Whole : FileState::Cut;
    return status;
}

}  // namespace kavu
