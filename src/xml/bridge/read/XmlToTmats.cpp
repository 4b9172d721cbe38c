#include "xml/bridge/read/XmlToTmats.h"

#include "core/document/SaveTarget.h"
#include "core/files/FileIo.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "xml/bridge/read/ImportRun.h"

#include <cerrno>
#include <utility>

namespace kavu {

namespace {

constexpr const char* kRoot = "Tmats";

/// The namespace of an element by the declarations of its own, as a root has them.
std::string namespaceOf(XmlNode root) {
    const std::string_view name(root.name());
    const auto colon = name.find(kNamespaceEnd);
    const auto declaration = colon == std::string_view::npos
                                 ? std::string("xmlns")
                                 : "xmlns:" + std::string(name.substr(0, colon));
    return root.attribute(declaration.c_str()).value();
}

}  // namespace

XmlToTmats::XmlToTmats(XmlStatusCallback statusCallback, std::string inputFile,
                       std::string outputFile, XmlDialect dialect)
    : status_(std::move(statusCallback)),
      inputFile_(std::move(inputFile)),
      outputFile_(std::move(outputFile)),
      dialect_(dialect) {}

bool XmlToTmats::run(DocumentContext& context, UserInterface* parent) {
    return convert(parent) && write(context, parent);
}

bool XmlToTmats::convert(UserInterface* parent) {
    XmlDocument document;
    messages_.clear();
    isReadable_ = loadInput(parent, document);
    if (!document.isOpen()) {
        return false;
    }
    const auto root = isReadable_ ? document.root() : XmlNode();
    isInSchemaNamespace_ = namespaceOf(root) == kSchemaNamespace;
    ImportOutput output(dialect_);
    ImportRun import(output, status_, parent);
    if (!import.run(root)) {
        return false;
    }
    version_ = import.version();
    commands_ = output.text();
    leftOut_ = output.leftOut(root);
    addMessages(output);
    document.discard();
    return true;
}

/// Opens the input. False, with the reason in a message, if it is no TMATS XML document; it then
/// counts as one without content.
bool XmlToTmats::loadInput(UserInterface* parent, XmlDocument& document) {
    std::uint64_t size = 0;
    const auto probe = probeSize(inputFile_, size);
    if (!document.load(parent, inputFile_, kRoot)) {
        return false;
    }
    if (const auto& fault = document.fault()) {
        messages_.push_back(fault->line == 0
                                ? formatPrintf("%s: %s", inputFile_, fault->reason)
                                : formatPrintf("%s:%d: %s", inputFile_,
                                               static_cast<int>(fault->line), fault->reason));
        return false;
    }
    if (!probe.ok()) {
        messages_.push_back(formatPrintf("%s: %s", inputFile_, probe.reason()));
        return false;
    }
    if (size == 0) {
        messages_.push_back(formatPrintf("%s: The file is empty.", inputFile_));
        return false;
    }
    if (localName(document.root().name()) != kRoot) {
        messages_.push_back(formatPrintf("%s: The root element is '%s', not '%s'.", inputFile_,
                                         document.root().name(), kRoot));
        return false;
    }
    return true;
}

void XmlToTmats::addMessages(const ImportOutput& output) {
    if (output.semicolons() > 0) {
        auto text = formatPrintf(
            "%s: The text of %s holds a ';', which %s.", inputFile_, output.firstSemicolon(),
            dialect_ == XmlDialect::Schema ? "became a ','" : "ends a command");
        if (output.semicolons() > 1) {
            text += formatPrintf(" So do %d more.", static_cast<int>(output.semicolons() - 1));
        }
        messages_.push_back(std::move(text));
    }
    if (dialect_ == XmlDialect::Schema && !leftOut_.empty()) {
        messages_.push_back(formatPrintf("%s: %s", inputFile_, leftOutText(leftOut_)));
    }
}

bool XmlToTmats::write(DocumentContext& context, UserInterface* parent) {
    if (!isReadable_ && fileExists(outputFile_)) {
        return false;
    }
    SaveTarget target(context, parent, outputFile_);
    if (!target.claim() || !target.begin()) {
        return false;
    }
    target.writer().write(commands_);
    return target.end(!cancelRequested(parent));
}

std::string leftOutText(const std::vector<XmlLeftOut>& leftOut) {
    if (leftOut.empty()) {
        return {};
    }
    constexpr std::size_t kMostNamed = 8;
    std::size_t total = 0;
    for (const auto& each : leftOut) {
        total += each.count;
    }
    std::string text = std::to_string(total);
    text += total == 1 ? " text of the document is in no command: "
                       : " texts of the document are in no command: ";
    for (std::size_t i = 0; i < leftOut.size(); ++i) {
        if (i == kMostNamed) {
            return text + ", and others";
        }
        text += i == 0 ? "" : ", ";
        text += leftOut[i].path;
        if (leftOut[i].count > 1) {
            text += formatPrintf(" (%d times)", static_cast<int>(leftOut[i].count));
        }
    }
    return text;
}

}  // namespace kavu
