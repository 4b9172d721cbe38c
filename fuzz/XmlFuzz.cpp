// XML files: what the check accepts the parser accepts as well, what is written is read again and
// gives the same bytes, and a change of any document leaves one that can be read.
#include "Check.h"
#include "FuzzScratch.h"
#include "xml/XmlDocument.h"
#include "xml/XmlText.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace {

using namespace kavu;

const std::string& scratchFile() {
    static const std::string path = fuzz::makeScratch() + "/f.xml";
    return path;
}

void load(XmlDocument& document, std::string_view bytes) {
    KAVU_CHECK(writeWholeFile(scratchFile(), bytes).ok());
    KAVU_CHECK(document.load(nullptr, scratchFile(), "R"));
}

void checkStable(std::string_view bytes) {
    XmlDocument document;
    load(document, bytes);
    const auto written = document.serialise();
    XmlDocument again;
    load(again, written);
    KAVU_CHECK(!again.fault());
    KAVU_CHECK(again.serialise() == written);
}

void checkChanges(std::string_view bytes, std::string_view value) {
    XmlDocument document;
    load(document, bytes);
    for (const auto path : {"/A", "/A/B", "/*", "/A/@b", "/"}) {
        const auto count = document.select(path);
        KAVU_CHECK(document.texts().size() == count);
        KAVU_CHECK(document.text(count).empty());
    }
    (void)document.select(value);
    if (document.setText("/A/New[@a=\"1\"]", value)) {
        KAVU_CHECK(document.select("/A/New[@a=\"1\"]") > 0);
        KAVU_CHECK(document.text(0) == xmlCharacters(value));
    }
    (void)document.setAttribute("/A", "n", value);
    (void)document.removeByValue("/A/B", value);
    (void)document.appendFragment(value);
    (void)document.removeNodes("/descendant::B");
    const auto written = document.serialise();
    document.discard();
    checkStable(written);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    checkStable(text);
    checkChanges(text, text.substr(size / 2));
    return 0;
}
