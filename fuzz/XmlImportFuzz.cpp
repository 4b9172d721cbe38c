// TMATS XML to a TMATS file, in both dialects: whatever the input, each line of the result is a
// command with a value, and each text of the document is in a command or is named as left out.
#include "Check.h"
#include "FuzzScratch.h"
#include "core/command/CommandPath.h"
#include "core/text/Text.h"
#include "vocabulary/Vocabularies.h"
#include "xml/XmlDocument.h"
#include "xml/XmlWriter.h"
#include "xml/bridge/read/XmlToTmats.h"

#include <algorithm>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>

namespace {

using namespace kavu;

const std::string& scratchFile() {
    static const std::string path = fuzz::makeScratch() + "/in.xml";
    return path;
}

/// A text with a line break goes on over several lines, and a ";" in one may hide what follows it.
void checkCommands(const std::string& commands) {
    if (commands.empty()) {
        return;
    }
    KAVU_CHECK(commands.ends_with(";\n"));
    const auto first = viewCommand(std::string_view(commands).substr(0, commands.find('\n')));
    KAVU_CHECK(parsePath(first.code).has_value());
}

/// All texts that stand for a value in XML, in small letters.
const std::set<std::string>& valueTexts() {
    static const auto kTexts = [] {
        std::set<std::string> texts{lowerAscii(kXmlFullWord)};
        for (const auto& group : vocabularies()) {
            for (const auto& field : group.fields) {
                for (const auto& choice : field.choices) {
                    texts.insert(lowerAscii(choice.xml));
                    texts.insert(lowerAscii(schemaText(choice)));
                }
            }
        }
        return texts;
    }();
    return kTexts;
}

std::string pathOf(XmlNode element) {
    std::string path;
    for (; element.type() == pugi::node_element; element = element.parent()) {
        path = "/" + std::string(localName(element.name())) + path;
    }
    return path;
}

/// The text of each element without elements in it is in a command, as it stands or as a value or
/// date, or a place that was left out is that of the element or around it.
void checkTexts(XmlNode element, const XmlToTmats& import, XmlDialect dialect) {
    bool isLeaf = true;
    for (const auto child : element.children()) {
        if (child.type() == pugi::node_element) {
            isLeaf = false;
            checkTexts(child, import, dialect);
        }
    }
    auto text = xmlTextOf(element);
    if (!isLeaf || trim(text).empty() || valueTexts().contains(lowerAscii(trim(text))) ||
        !tmatsDate(text).empty() || !tmatsDateTime(text).empty()) {
        return;
    }
    if (dialect == XmlDialect::Schema) {
        text = replaceAll(text, ";", ",");
    }
    const auto path = pathOf(element);
    const auto& leftOut = import.leftOut();
    KAVU_CHECK(import.commands().find(text) != std::string::npos ||
               std::any_of(leftOut.begin(), leftOut.end(), [&path](const XmlLeftOut& each) {
                   return path.starts_with(each.path);
               }));
}

void checkImport(std::string_view bytes, XmlDialect dialect) {
    KAVU_CHECK(writeWholeFile(scratchFile(), bytes).ok());
    XmlToTmats import({}, scratchFile(), scratchFile() + ".tma", dialect);
    KAVU_CHECK(import.convert(nullptr));
    checkCommands(import.commands());

    XmlDocument document;
    KAVU_CHECK(document.load(nullptr, scratchFile(), "Tmats"));
    const bool isRead = !document.fault() && localName(document.root().name()) == "Tmats";
    if (!isRead) {
        KAVU_CHECK(import.commands().empty());
        KAVU_CHECK(import.leftOut().empty());
    }
    if (isRead) {
        checkTexts(document.root(), import, dialect);
    }
    // The same input always gives the same output.
    XmlToTmats again({}, scratchFile(), scratchFile() + ".tma", dialect);
    KAVU_CHECK(again.convert(nullptr));
    KAVU_CHECK(again.commands() == import.commands());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    checkImport(text, XmlDialect::Classic);
    checkImport(text, XmlDialect::Schema);
    return 0;
}
