#include "conversion/ChunkScan.h"

#include "conversion/ConversionFields.h"
#include "core/command/CommandPath.h"

#include <algorithm>

namespace kavu {

void ChunkScan::run(std::string& bytes, bool severalLines, int edition, RecordUse& use) {
    notable.clear();
    indices.clear();
    findings.clear();
    use.clear();
    commands = 0;
    holdsKeysOfTheProgram = false;
    forEachRawCommand(bytes, severalLines, [&](const RawCommand& command) {
        ++commands;
        if (command.value.empty()) {
            if (!isNaming(command)) {
                use.add(command, nullptr);
            }
            return;
        }
        if (isNaming(command)) {
            notable.push_back({command, commands, 0});
        } else {
            noteField(command, edition, use);
        }
    });
    std::sort(indices.begin(), indices.end());
    indices.erase(std::unique(indices.begin(), indices.end()), indices.end());
    use.find(findings);
}

void ChunkScan::noteField(const RawCommand& command, int edition, RecordUse& use) {
    // Most commands belong to the index of the command before them.
    if (indices.empty() || indices.back() != command.index) {
        indices.push_back(command.index);
    }
    const auto* const row = findConversionCode(codeHead(trim(command.code)));
    use.add(command, row);
    holdsKeysOfTheProgram = holdsKeysOfTheProgram || (row != nullptr && row->isOfTheProgram);
    const auto limit = static_cast<std::size_t>(conversionLimit(command.code, row, edition));
    if (limit > 0 && command.value.size() > limit) {
        notable.push_back({command, commands, limit});
    }
}

}  // namespace kavu
