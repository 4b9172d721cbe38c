// TMATS XML from any bytes: a session opens them, both dialects end, what they write is well
// formed, and a count of what is lost says the same as the conversion.
#include "Check.h"
#include "FuzzScratch.h"
#include "core/files/FileIo.h"
#include "core/text/Clock.h"
#include "sdk/TranslatorSdk.h"
#include "xml/XmlSyntax.h"
#include "xml/bridge/write/XmlExport.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace {

using namespace kavu;

void convert(TranslatorSdk& session, XmlDialect dialect) {
    XmlExportOptions options;
    options.dialect = dialect;
    XmlExportReport report;
    std::string document;
    const auto sink = [&](std::string_view text) { document += text; };
    if (!tmatsToXml(session, nullptr, options, sink, report)) {
        return;
    }
    const auto declaration = document.find('\n') + 1;
    KAVU_CHECK(!checkXml(std::string_view(document).substr(declaration)).fault);
    KAVU_CHECK(countXmlLosses(session, nullptr, options).total() == report.losses.total());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string folder = fuzz::makeScratch();
    static const std::string path = folder + "/t.tma";
    static const SystemClock clock;
    static SystemRandomSource random;
    KAVU_CHECK(
        writeWholeFile(path, std::string_view(reinterpret_cast<const char*>(data), size)).ok());
    Environment environment;
    environment.variable = [](const std::string& name) {
        return name == "TEMP" ? std::optional<std::string>(folder) : std::nullopt;
    };
    TranslatorSdk session(environment, clock, random);
    if (!session.open(path, nullptr)) {
        return 0;
    }
    convert(session, XmlDialect::Classic);
    convert(session, XmlDialect::Schema);
    return 0;
}
