#include "core/files/FileAttributes.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <optional>
#include <string_view>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <vector>

namespace kavu {

namespace {

/// Sums over the contents, which the system itself makes again.
constexpr auto kOfContents =
    std::to_array<std::string_view>({"security.ima", "security.evm", "security.capability"});

/// The names of a file's extended attributes; nothing if they cannot be listed.
std::optional<std::vector<std::string>> attributeNames(const std::string& path) {
    std::vector<std::string> names;
    std::string list;
    for (;;) {
        const auto size = ::listxattr(path.c_str(), nullptr, 0);
        if (size < 0) {
            return errno == ENOTSUP ? std::optional(names) : std::nullopt;
        }
        list.resize(static_cast<std::size_t>(size));
        const auto got = ::listxattr(path.c_str(), list.data(), list.size());
        if (got >= 0) {
            list.resize(static_cast<std::size_t>(got));
            break;
        }
        if (errno != ERANGE) {  // it has grown meanwhile
            return std::nullopt;
        }
    }
    for (std::size_t at = 0; at < list.size(); at += names.back().size() + 1) {
        names.emplace_back(list.c_str() + at);
    }
    std::erase_if(names, [](const std::string& name) {
        return std::find(kOfContents.begin(), kOfContents.end(), name) != kOfContents.end();
    });
    return names;
}

std::optional<std::string> attributeOf(const std::string& path, const std::string& name) {
    const auto size = ::getxattr(path.c_str(), name.c_str(), nullptr, 0);
    if (size < 0) {
        return std::nullopt;
    }
    std::string value(static_cast<std::size_t>(size), '\0');
    const auto got = ::getxattr(path.c_str(), name.c_str(), value.data(), value.size());
    if (got < 0) {
        return std::nullopt;
    }
    value.resize(static_cast<std::size_t>(got));
    return value;
}

bool copyExtended(const std::string& from, const std::string& to) {
    const auto names = attributeNames(from);
    const auto made = attributeNames(to);
    if (!names || !made) {
        return false;
    }
    // The folder may give its new files what the old one did not have.
    for (const auto& name : *made) {
        if (std::find(names->begin(), names->end(), name) == names->end() &&
            ::removexattr(to.c_str(), name.c_str()) != 0) {
            return false;
        }
    }
    return std::all_of(names->begin(), names->end(), [&](const std::string& name) {
        const auto value = attributeOf(from, name);
        return value &&
               (attributeOf(to, name) == value ||
                ::setxattr(to.c_str(), name.c_str(), value->data(), value->size(), 0) == 0);
    });
}

}  // namespace

bool copyAttributes(const std::string& from, const struct stat& info, const std::string& to) {
    struct stat made {};
    if (::stat(to.c_str(), &made) != 0) {
        return false;
    }
    const bool sameOwner = made.st_uid == info.st_uid && made.st_gid == info.st_gid;
    // The owner first: a change of it may clear bits of the mode.
    if (!sameOwner && ::chown(to.c_str(), info.st_uid, info.st_gid) != 0) {
        return false;
    }
    return copyExtended(from, to) && ::chmod(to.c_str(), info.st_mode & 07777) == 0;
}

}  // namespace kavu
