#include "xml/XmlDocument.h"

#include "core/files/FileIo.h"
#include "core/files/UserFile.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "core/text/TextEncoding.h"
#include "xml/XmlPath.h"
#include "xml/XmlText.h"

#include <algorithm>
#include <cerrno>

namespace kavu {

namespace {

constexpr const char* kCaption = "Error loading XML File";
constexpr unsigned kParseFlags = pugi::parse_cdata | pugi::parse_escapes | pugi::parse_comments |
                                 pugi::parse_pi | pugi::parse_declaration |
                                 pugi::parse_wconv_attribute;
constexpr std::string_view kUtf8 = "UTF-8";
/// Stands for a byte that Windows-1252 has no character for.
constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

/// Elements from the root to this one.
std::size_t depthOf(XmlNode element) {
    std::size_t depth = 0;
    for (; element.type() == pugi::node_element; element = element.parent()) {
        ++depth;
    }
    return depth;
}

std::size_t heightOf(XmlNode element) {
    std::size_t height = 0;
    for (const auto child : element.children()) {
        height = std::max(height, heightOf(child));
    }
    return height + (element.type() == pugi::node_element ? 1 : 0);
}

pugi::xpath_node_set selectNodes(XmlNode from, const std::string& path) {
    try {
        return from.select_nodes(path.c_str());
    } catch (const pugi::xpath_exception&) {
        // No XPath, or one that gives a number or text.
        return {};
    }
}

IoStatus isTooLarge(const std::string& path) {
    return {path, EFBIG};
}

}  // namespace

XmlDocument::XmlDocument() = default;
XmlDocument::~XmlDocument() = default;

// --- files --------------------------------------------------------------------------------

bool XmlDocument::load(UserInterface* parent, const std::string& path, std::string_view root,
                       const std::string& caption, XmlTexts texts) {
    if (!close(parent).ok()) {
        return false;
    }
    if (!isXmlName(root)) {
        showBox(parent,
                formatPrintf("Unable to load xml data from: '%s'\n\nReason: %s", path,
                             formatPrintf("'%s' cannot be the name of an element", root)),
                caption.empty() ? kCaption : caption);
        return false;
    }
    path_ = path;
    rootName_ = root;
    rootPath_ = "//" + rootName_;
    stamp_ = fileStamp(path);
    std::string bytes;
    const auto status = read(bytes);
    if (!status.ok() && status.code() != ENOENT) {
        fault_ = XmlFault{0, status.reason()};
    }
    if (!status.ok() || bytes.empty() || !parse(std::move(bytes), texts)) {
        startEmpty(root);
    }
    return true;
}

IoStatus XmlDocument::read(std::string& bytes) {
    std::uint64_t size = 0;
    if (auto status = probeSize(path_, size); !status.ok()) {
        return status;
    }
    return size > kMostBytes ? isTooLarge(path_) : readWholeFile(path_, bytes);
}

/// Takes over the bytes of a file; false if they are no XML, and why is in `fault_`.
bool XmlDocument::parse(std::string bytes, XmlTexts texts) {
    std::string text = std::move(bytes);
    if (text.starts_with(kByteOrderMark)) {
        text.erase(0, kByteOrderMark.size());
    }
    losesBytes_ = !isValidUtf8(text);
    if (losesBytes_) {
        text = toUtf8(text);
        losesBytes_ = text.find(kReplacement) != std::string::npos;
    }
    // Line ends as XML reads them; the file keeps its own kind.
    const auto breaks = std::count(text.begin(), text.end(), '\n');
    source_ = replaceAll(replaceAll(text, "\r\n", "\n"), "\r", "\n");
    const bool isCrLf =
        breaks > 0 && text.size() - source_.size() == static_cast<std::size_t>(breaks);
    lineEnd_ = isCrLf ? XmlLineEnd::CrLf : XmlLineEnd::Lf;
    auto shape = checkXml(source_);
    if (shape.fault) {
        fault_ = std::move(shape.fault);
        return false;
    }
    unsigned flags = kParseFlags;
    flags |= shape.keepsWhiteSpace ? pugi::parse_ws_pcdata : pugi::parse_ws_pcdata_single;
    flags |= texts == XmlTexts::InElements ? pugi::parse_embed_pcdata : 0U;
    document_ = std::make_unique<pugi::xml_document>();
    const auto result =
        document_->load_buffer_inplace(source_.data(), source_.size(), flags, pugi::encoding_utf8);
    if (!result) {
        const auto lines = std::count(source_.begin(), source_.begin() + result.offset, '\n');
        fault_ = XmlFault{static_cast<std::size_t>(lines) + 1, result.description()};
        return false;
    }
    tidyRoot();
    return true;
}

void XmlDocument::startEmpty(std::string_view root) {
    source_.clear();
    lineEnd_ = XmlLineEnd::Lf;
    document_ = std::make_unique<pugi::xml_document>();
    document_->append_child(std::string(root).c_str());
}

/// Makes a declaration that states another encoding true, and takes the white space out of an
/// empty root.
void XmlDocument::tidyRoot() {
    for (auto node : document_->children()) {
        if (auto encoding = node.attribute("encoding");
            node.type() == pugi::node_declaration && encoding &&
            !equalsIgnoreCase(encoding.value(), kUtf8)) {
            encoding.set_value(kUtf8.data());
        }
    }
    auto element = root();
    if (!holdsXmlText(element)) {
        if (element.value()[0] != '\0') {
            element.text().set("");
        }
        if (isBlankXmlText(element.first_child()) && !element.first_child().next_sibling()) {
            element.remove_child(element.first_child());
        }
    }
}

IoStatus XmlDocument::close(UserInterface* parent) {
    if (isModified_) {
        if (auto status = save(parent); !status.ok()) {
            return status;
        }
    }
    discard();
    return {};
}

void XmlDocument::discard() {
    selection_.clear();
    document_.reset();
    source_.clear();
    path_.clear();
    rootPath_.clear();
    lastPath_.clear();
    stamp_.clear();
    keptCopy_.clear();
    fault_.reset();
    lineEnd_ = XmlLineEnd::Lf;
    isModified_ = false;
    losesBytes_ = false;
}

IoStatus XmlDocument::save(UserInterface* parent) {
    if (!isOpen()) {
        return {};
    }
    const auto bytes = serialise();
    if (bytes.size() > kMostBytes) {
        return isTooLarge(path_);
    }
    if (auto status = keepUnreadable(parent); !status.ok()) {
        return status;
    }
    if (auto status = replaceUnchangedFile(path_, bytes, stamp_); !status.ok()) {
        return status;
    }
    stamp_ = fileStamp(path_);
    fault_.reset();
    losesBytes_ = false;
    isModified_ = false;
    return {};
}

/// Copies a file that the next write would lose to a name that is free.
IoStatus XmlDocument::keepUnreadable(UserInterface* parent) {
    std::uint64_t size = 0;
    if (!(fault_ || losesBytes_) || (probeSize(path_, size).ok() && size == 0)) {
        return {};
    }
    std::string kept;
    if (auto status = keepUnreadableFile(path_, kept); !status.ok()) {
        return status;
    }
    keptCopy_ = kept;
    if (parent != nullptr) {
        const auto reason = fault_ ? fault_->reason : "bytes that are no characters";
        const auto line = fault_ && fault_->line > 0 ? formatPrintf("line %d: ", fault_->line) : "";
        parent->loadRemark(
            formatPrintf("'%s' could not be read as XML (%s%s). It was kept as '%s'.", path_, line,
                         reason, kept));
    }
    return {};
}

std::string XmlDocument::serialise() const {
    return document_ ? writeXml(*document_, lineEnd_) : std::string();
}

// --- selection ----------------------------------------------------------------------------

XmlNode XmlDocument::root() const {
    return document_ ? document_->document_element() : XmlNode();
}

void XmlDocument::markModified() {
    isModified_ = true;
    selection_.clear();
}

pugi::xpath_node_set XmlDocument::find(const std::string& fullPath) const {
    return document_ ? selectNodes(*document_, fullPath) : pugi::xpath_node_set();
}

std::size_t XmlDocument::select(std::string_view path) {
    selection_.clear();
    lastPath_ = path;
    if (const auto full = fullXmlPath(path, rootPath_)) {
        auto found = find(*full);
        found.sort();
        selection_.assign(found.begin(), found.end());
    }
    return selection_.size();
}

XmlNode XmlDocument::selected(std::size_t index) const {
    return index < selection_.size() ? selection_[index].node() : XmlNode();
}

std::string XmlDocument::text(std::size_t index) const {
    const auto node = selected(index);
    return node.type() == pugi::node_element ? xmlTextOf(node) : std::string();
}

std::vector<std::string> XmlDocument::texts() const {
    std::vector<std::string> all;
    all.reserve(selection_.size());
    for (std::size_t i = 0; i < selection_.size(); ++i) {
        all.push_back(text(i));
    }
    return all;
}

XmlNode XmlDocument::selectFrom(XmlNode node, std::string_view path) {
    const auto found = selectNodes(node, std::string(path));
    return found.empty() ? XmlNode() : found.first().node();
}

// --- changes ------------------------------------------------------------------------------

bool XmlDocument::setText(std::string_view path, std::string_view value) {
    const auto full = fullXmlPath(path, rootPath_);
    if (!full) {
        return false;
    }
    const auto found = find(*full);
    if (found.empty()) {
        return makePath(*full, value);
    }
    const auto first = found.first();
    if (auto attribute = first.attribute()) {
        attribute.set_value(xmlCharacters(value).c_str());
        markModified();
        return true;
    }
    auto node = first.node();
    if (isXmlText(node)) {
        node.set_value(xmlCharacters(value).c_str());
        markModified();
        return true;
    }
    if (node.type() != pugi::node_element) {
        return false;
    }
    setTextOf(node, value);
    return true;
}

void XmlDocument::setTextOf(XmlNode element, std::string_view value) {
    const auto text = xmlCharacters(value);
    if (element.value()[0] != '\0') {
        element.text().set("");
    }
    element.remove_children();
    if (!text.empty()) {
        element.append_child(pugi::node_pcdata).set_value(text.c_str());
    }
    markModified();
}

bool XmlDocument::makePath(const std::string& fullPath, std::string_view value) {
    std::vector<XmlStep> missing;
    std::string rest = fullPath;
    pugi::xpath_node_set found;
    while (found.empty()) {
        const auto at = lastXmlStep(rest);
        const auto step = at == std::string::npos
                              ? std::nullopt
                              : parseXmlStep(std::string_view(rest).substr(at + 1));
        if (!step || missing.size() == kMostXmlDepth) {
            return false;
        }
        missing.push_back(*step);
        rest.resize(at);
        found = find(rest);
    }
    auto element = found.first().node();
    if (element.type() != pugi::node_element || depthOf(element) + missing.size() > kMostXmlDepth) {
        return false;
    }
    for (auto step = missing.rbegin(); step != missing.rend(); ++step) {
        element = element.append_child(step->name.c_str());
        for (const auto& [name, text] : step->attributes) {
            element.append_attribute(name.c_str()).set_value(xmlCharacters(text).c_str());
        }
    }
    setTextOf(element, value);
    return true;
}

bool XmlDocument::setAttribute(std::string_view path, std::string_view name,
                               std::string_view value) {
    const auto full = fullXmlPath(path, rootPath_);
    const auto found = full ? find(*full) : pugi::xpath_node_set();
    auto element = found.first().node();
    if (element.type() != pugi::node_element || !isXmlName(name)) {
        return false;
    }
    const std::string key(name);
    auto attribute = element.attribute(key.c_str());
    if (!attribute) {
        attribute = element.append_attribute(key.c_str());
    }
    attribute.set_value(xmlCharacters(value).c_str());
    markModified();
    return true;
}

std::string XmlDocument::attributes(XmlNode node, std::string_view name) {
    if (!name.empty()) {
        return node.attribute(std::string(name).c_str()).value();
    }
    std::string text;
    for (const auto attribute : node.attributes()) {
        text += text.empty() ? "" : " ";
        text += std::string(attribute.name()) + "=\"" + attribute.value() + "\"";
    }
    return text;
}

bool XmlDocument::remove(const pugi::xpath_node& found) {
    auto parent = found.parent();
    if (!parent) {
        return false;  // the document itself
    }
    if (found.attribute()) {
        parent.remove_attribute(found.attribute());
    } else if (found.node() == root()) {
        // A file without a root element would not be read again.
        auto element = found.node();
        element.remove_children();
        element.remove_attributes();
        if (element.value()[0] != '\0') {
            element.text().set("");
        }
    } else {
        parent.remove_child(found.node());
    }
    markModified();
    return true;
}

bool XmlDocument::removeNodes(std::string_view path) {
    const auto full = fullXmlPath(path, rootPath_);
    auto found = full ? find(*full) : pugi::xpath_node_set();
    found.sort();
    // Backwards: what is in a node goes before the node itself.
    bool isAnyGone = false;
    for (auto i = found.size(); i > 0; --i) {
        isAnyGone |= remove(found[i - 1]);
    }
    return isAnyGone;
}

bool XmlDocument::removeByValue(std::string_view path, std::string_view value) {
    const auto full = fullXmlPath(path, rootPath_);
    const auto at = full ? lastXmlStep(*full) : std::string::npos;
    if (at == std::string::npos) {
        return false;
    }
    auto parents = find(full->substr(0, at));
    parents.sort();
    const auto step = full->substr(at + 1);
    const auto wanted = xmlCharacters(value);
    for (const auto& parent : parents) {
        for (const auto& child : selectNodes(parent.node(), step)) {
            const bool isMatch = child.attribute() ? child.attribute().value() == wanted
                                                   : child.node().type() == pugi::node_element &&
                                                         xmlTextOf(child.node()) == wanted;
            if (isMatch) {
                return remove(parent);
            }
        }
    }
    return false;
}

bool XmlDocument::appendFragment(std::string_view xml) {
    XmlDocument fragment;
    if (!isOpen() || !fragment.parse(std::string(xml), XmlTexts::Nodes) ||
        heightOf(fragment.root()) > kMostXmlDepth) {
        return false;
    }
    auto element = root();
    for (const auto child : fragment.root().children()) {
        element.append_copy(child);
    }
    markModified();
    return true;
}

}  // namespace kavu
