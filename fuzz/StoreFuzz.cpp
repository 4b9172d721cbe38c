// Recovers any folder, whatever is in it: files with any names and bytes, folders, links and pipes
// in their places, records that lie. The folder stays as it is but for the mark; nothing that a
// link leads to is read; and every command of a group file that belongs to the document is in the
// output, or in a message.
//
// An input is a list of entries, each followed by a line "%%". The first line of an entry is its
// kind and its path: F file, D folder, L link to a file outside the folder, P pipe; what follows is
// the contents of a file. The first byte of the input chooses the options.
#include "FuzzRun.h"
#include "LostCommands.h"
#include "application/Recovery.h"
#include "application/StoreFacts.h"
#include "core/TmatsDocument.h"
#include "core/TmatsReader.h"
#include "core/WorkingStore.h"
#include "core/command/CommandPath.h"
#include "core/document/DocumentFiles.h"
#include "core/document/FileJournal.h"
#include "core/document/GroupFiles.h"
#include "core/text/Text.h"
#include "core/text/TextEncoding.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

using namespace kavu;

constexpr std::string_view kSecret = "G\\PN:SECRET OF ANOTHER FILE;\r\n";
constexpr std::string_view kEnd = "\n%%\n";

/// A path within the folder: one name, or one in a folder of it.
bool isUsable(std::string_view path) {
    const auto slash = path.find('/');
    const auto plain = [](std::string_view name) {
        return !name.empty() && name != "." && name != ".." && name.size() < 200 &&
               name.find('\0') == std::string_view::npos &&
               name.find('/') == std::string_view::npos;
    };
    return slash == std::string_view::npos
               ? plain(path)
               : plain(path.substr(0, slash)) && plain(path.substr(slash + 1));
}

void makeEntry(const std::string& folder, const std::string& secret, std::string_view entry) {
    const auto line = entry.substr(0, entry.find('\n'));
    const auto contents = entry.substr(std::min(line.size() + 1, entry.size()));
    if (line.size() < 3 || !isUsable(line.substr(2))) {
        return;
    }
    const auto path = folder + "/" + std::string(line.substr(2));
    // A second entry of a name would write through the link of the first.
    struct stat existing {};
    if (::lstat(path.c_str(), &existing) == 0) {
        return;
    }
    (void)makeFolder(folderOf(path));
    switch (line[0]) {
        case 'F':
            (void)writeWholeFile(path, contents);
            break;
        case 'D':
            (void)makeFolder(path);
            break;
        case 'L':
            (void)::symlink(secret.c_str(), path.c_str());
            break;
        case 'P':
            (void)::mkfifo(path.c_str(), 0600);
            break;
        default:
            break;
    }
}

void makeStore(const std::string& folder, const std::string& secret, std::string_view input) {
    KAVU_CHECK(makeFolder(folder).ok());
    while (!input.empty()) {
        const auto end = std::min(input.find(kEnd), input.size());
        makeEntry(folder, secret, input.substr(0, end));
        input.remove_prefix(std::min(end + kEnd.size(), input.size()));
    }
}

/// What is in the folder, by path: kind and contents. The mark is none of it.
std::map<std::string, std::string> picture(const std::string& folder) {
    std::map<std::string, std::string> found;
    std::vector<FolderEntry> entries;
    (void)listFolder(folder, entries);
    for (const auto& entry : entries) {
        const auto path = folder + "/" + entry.name;
        if (entry.isFolder) {
            found[path] = "a folder";
            found.merge(picture(path));
        } else if (entry.name != working::kRecovered) {
            found[path] = isOwnPlainFile(path) ? "F" + fuzz::read(path) : "no file";
        }
    }
    return found;
}

/// A command as it comes out of a save, which cuts what stands in front of it.
std::string written(std::string command) {
    command.erase(0, command.find_first_not_of("\t\n\v\f\r "));
    return fuzz::normalised(command);
}

/// The save takes comments and the name of the file out of the G group, with every command that
/// mentions them, and leaves out groups that the edition does not know.
bool mayBeMissing(const DocumentFile& file, std::string_view command, int edition) {
    const auto lowered = lowerAscii(command);
    return edition < groupKind(file.letter).firstEdition || isComment(command) ||
           (file.letter == 'G' && (lowered.find("comment") != std::string::npos ||
                                   lowered.find("g\\fn") != std::string::npos));
}

std::vector<std::string> commandsOf(const std::string& path) {
    std::vector<std::string> commands;
    ByteSource source;
    if (isOwnPlainFile(path) && source.open(path).ok()) {
        TmatsReader reader;
        std::string command;
        while (reader.nextRawCommand(source, command)) {
            commands.push_back(command);
        }
    }
    return commands;
}

/// Every command of the groups is in the output.
void checkNothingIsLost(const std::string& folder, const std::string& output, int edition) {
    std::multiset<std::string> inOutput;
    for (auto& command : commandsOf(output)) {
        inOutput.insert(written(std::move(command)));
    }
    OpenChanges changes;
    KAVU_CHECK(filesBeforeOpenChanges(folder, changes).ok());
    std::vector<FolderEntry> entries;
    KAVU_CHECK(listFolder(folder, entries).ok());
    std::map<std::string, std::string> files;
    for (const auto& entry : entries) {
        files[entry.name] = folder + "/" + entry.name;
    }
    for (const auto& [name, path] : changes.former) {
        files[name] = path;
    }
    for (const auto& [name, path] : files) {
        const auto file = describeDocumentFile(name);
        // A name that only looks like one of a group is nobody's.
        const bool hasPlace = file.letter == 'G' || file.letter == 'H' ||
                              (file.number >= kLeastGroupIndex && file.number <= kMostGroupIndex);
        const bool isSaved = file.kind == DocumentFile::Group && hasPlace &&
                             name == groupFile(file.letter, file.number);
        for (const auto& command : isSaved ? commandsOf(path) : std::vector<std::string>()) {
            if (!mayBeMissing(file, command, edition)) {
                const auto found = inOutput.find(written(command));
                if (found == inOutput.end()) {
                    std::fprintf(stderr, "lost of %s: %s\n", name.c_str(), command.c_str());
                }
                KAVU_CHECK(found != inOutput.end());
                inOutput.erase(found);
            }
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string scratch = fuzz::makeScratch();
    if (size < 1) {
        return 0;
    }
    const auto folder = scratch + "/store";
    const auto output = scratch + "/out.tma";
    const auto secret = scratch + "/secret";
    KAVU_CHECK(writeWholeFile(secret, kSecret).ok());
    makeStore(folder, secret, {reinterpret_cast<const char*>(data) + 1, size - 1});
    const auto before = picture(folder);
    {
        fuzz::Run run(scratch);
        auto& context = run.application.context();
        const auto facts = describeStore(folder);
        const bool isPartial = data[0] % 2 != 0;
        const bool recovered = recoverStore(run.application, &run.ui, folder, output, isPartial);
        KAVU_CHECK(!recovered || isPartial || !facts.isIncomplete());
        KAVU_CHECK(recovered || !run.ui.boxes.empty());
        KAVU_CHECK(picture(folder) == before);
        if (recovered) {
            KAVU_CHECK(fuzz::read(output).find(kSecret.substr(5, 20)) == std::string::npos);
            checkNothingIsLost(folder, output, context.document.version);
        }
        (void)proposedName(facts);
        context.document.changed = false;
    }
    KAVU_CHECK(fuzz::read(secret) == kSecret);
    (void)deleteFolder(folder);
    (void)deleteFile(output);
    (void)deleteFile(scratch + "/out.bak");
    return 0;
}
