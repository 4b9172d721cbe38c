// Runs a fuzz target once over every file of a corpus folder, where there is no libFuzzer.
// A corpus that is missing, empty or cannot be read is a failure: a test that ran nothing
// has shown nothing.
#include "core/files/FileIo.h"

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

int fail(const kavu::IoStatus& status) {
    std::fprintf(stderr, "%s: %s\n", status.path().c_str(), status.reason().c_str());
    return 1;
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::fprintf(stderr, "usage: %s CORPUS_FOLDER\n", arguments[0]);
        return 2;
    }
    const std::string folder = arguments[1];
    std::vector<kavu::FolderEntry> entries;
    if (const auto status = kavu::listFolder(folder, entries); !status.ok()) {
        return fail(status);
    }
    int files = 0;
    for (const auto& entry : entries) {
        if (entry.isFolder) {
            continue;
        }
        std::string bytes;
        if (const auto status = kavu::readWholeFile(folder + "/" + entry.name, bytes);
            !status.ok()) {
            return fail(status);
        }
        // Printed first, so that the last line names the input of a crash.
        std::printf("%s\n", entry.name.c_str());
        std::fflush(stdout);
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
        ++files;
    }
    if (files == 0) {
        std::fprintf(stderr, "%s: there is no input\n", folder.c_str());
        return 1;
    }
    std::printf("%d inputs\n", files);
    return 0;
}
