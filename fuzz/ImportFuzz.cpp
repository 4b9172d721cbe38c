// Files that are imported: the first byte chooses kind and delimiter. Every file ends, and no
// value holds what a record cannot.
#include "Check.h"
#include "FuzzScratch.h"
#include "core/WorkingStore.h"
#include "core/talk/Messages.h"
#include "core/text/Text.h"
#include "mdb/import/ImportSource.h"

#include <cstdint>
#include <string_view>

namespace {

using namespace kavu;

ImportLayout layoutOf(unsigned char choice) {
    const auto& delimiters = importDelimiters();
    ImportLayout layout;
    layout.kind = static_cast<ImportKind>(choice % 3);
    layout.delimiter = delimiters[choice / 6 % delimiters.size()].character;
    layout.hasHeader = choice / 3 % 2 != 0;
    layout.references = {{0, layout.kind == ImportKind::Dbase ? "NAME" : "1", "8"},
                         {26, layout.kind == ImportKind::Dbase ? "NOTE" : "2", "9"},
                         {27, layout.kind == ImportKind::Dbase ? "NOTE" : "4", "2"}};
    return layout;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string path = fuzz::makeScratch() + "/in.csv";
    static const WorkingStore store{Environment{}};
    static const Messages messages(store);
    if (size == 0) {
        return 0;
    }
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    KAVU_CHECK(writeWholeFile(path, text.substr(1)).ok());
    const auto layout = layoutOf(data[0]);
    const auto source = openImportQuietly(messages, {path, layout, MdbVersion::Xml});
    ImportRow row;
    std::int64_t number = 0;
    while (source && source->next(row)) {
        KAVU_CHECK(row.number > number);
        number = row.number;
        KAVU_CHECK(static_cast<std::size_t>(number) <= size);
        for (std::size_t field = 0; field < mdbfield::kCount; ++field) {
            const auto& value = row.record[field];
            KAVU_CHECK(!holdsLineBreak(value) && trimBlanks(value) == value);
        }
    }
    return 0;
}
