// A thin class over the XML parser: an XML file in memory, with a selection by XPath, changes of
// texts and attributes, and a file that is written when the document is closed.
//
// What the parser lets pass and XML forbids makes a file unreadable, as does a document type, so
// nothing is ever read from outside the file. The encoding that a file states is ignored: bytes
// that are valid UTF-8 are UTF-8, others Windows-1252. Files are written in UTF-8.
#pragma once

#include "core/files/IoStatus.h"
#include "xml/XmlSyntax.h"
#include "xml/XmlWriter.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

namespace kavu {

class UserInterface;

using XmlNode = pugi::xml_node;

/// How the texts of a document are held in memory.
enum class XmlTexts {
    Nodes,      ///< as XPath knows them
    InElements  ///< in half the memory; `text()` finds nothing then
};

class XmlDocument {
  public:
    /// A larger file is not read, and none is written.
    static constexpr std::uint64_t kMostBytes = std::uint64_t{1} << 29;

    XmlDocument();
    XmlDocument(const XmlDocument&) = delete;
    XmlDocument& operator=(const XmlDocument&) = delete;
    /// Changes that were not saved are lost.
    ~XmlDocument();

    /// Closes what is open and opens a file. A file that is missing or cannot be read gives a
    /// document of the root element alone, without any message: why is in `fault`, and the file
    /// is kept beside itself before it is overwritten. False, with a box under `caption`, if
    /// `root` cannot be the name of an element. Also false, without a box, if what was open could
    /// not be saved; it stays open then.
    bool load(UserInterface* parent, const std::string& path, std::string_view root,
              const std::string& caption = {}, XmlTexts texts = XmlTexts::Nodes);
    /// Saves the document if it was changed, and releases it. After a failure it stays open.
    IoStatus close(UserInterface* parent);
    /// Writes the document to its file, whole or not at all. A file that could not be read is
    /// copied to its name with ".unreadable" first, which the parent is told. Fails with ESTALE
    /// if another program has changed the file since it was read, with EFBIG if it grew too large.
    IoStatus save(UserInterface* parent);
    /// Releases the document without saving it.
    void discard();

    [[nodiscard]] bool isOpen() const { return !path_.empty(); }
    /// Empty while no document is open.
    [[nodiscard]] const std::string& path() const { return path_; }
    /// "//" and the name of the root element.
    [[nodiscard]] const std::string& rootPath() const { return rootPath_; }
    /// The root element of the file, whatever its name; null while no document is open.
    [[nodiscard]] XmlNode root() const;
    /// Why the file counts as empty; nothing for one that was read, or that is missing or empty.
    [[nodiscard]] const std::optional<XmlFault>& fault() const { return fault_; }
    /// Where an unreadable file was kept by the last save; empty if none was.
    [[nodiscard]] const std::string& keptCopy() const { return keptCopy_; }
    [[nodiscard]] bool isModified() const { return isModified_; }
    /// For who changes nodes. Ends the selection, whose nodes may be gone.
    void markModified();

    /// Selects the nodes of a path below the root (see `fullXmlPath`), and gives their number: 0
    /// for a path that is refused or is no XPath. The nodes are the selection until the next
    /// change. A value that comes from elsewhere goes through `xpathLiteral`.
    std::size_t select(std::string_view path);
    [[nodiscard]] std::size_t selectedCount() const { return selection_.size(); }
    [[nodiscard]] const std::string& lastPath() const { return lastPath_; }
    /// The text of an element of the selection; empty beyond its end, and for other nodes.
    [[nodiscard]] std::string text(std::size_t index) const;
    /// The texts of all, as `text` gives each.
    [[nodiscard]] std::vector<std::string> texts() const;
    /// The node at this place of the selection; null beyond its end, and for an attribute.
    [[nodiscard]] XmlNode selected(std::size_t index) const;
    /// The first node of a path from `node`, or null.
    [[nodiscard]] static XmlNode selectFrom(XmlNode node, std::string_view path);

    /// Sets the text of the first node of the path, in place of all that is in it; or makes the
    /// missing steps of the path. Characters that XML cannot hold are left out. False if a missing
    /// step is more than a name with attributes, or would be too deep.
    bool setText(std::string_view path, std::string_view value);
    /// Sets the text of an element, in place of all that is in it.
    void setTextOf(XmlNode element, std::string_view value);
    /// Sets or adds an attribute of the first element of the path. False if there is none, or the
    /// name is none.
    bool setAttribute(std::string_view path, std::string_view name, std::string_view value);
    /// The value of an attribute; without a name all as name="value" with a blank between.
    [[nodiscard]] static std::string attributes(XmlNode node, std::string_view name = {});

    /// Removes every node of a path; true if any went. Of the root element its contents go.
    bool removeNodes(std::string_view path);
    /// Removes the first element in which the last step of the path has this text: of
    /// "/Measurement/Name" the measurement of that name. True if there was one.
    bool removeByValue(std::string_view path, std::string_view value);
    /// Adds what is in the root element of an XML text after all that is in this one's; false if
    /// the text is no XML, or would be too deep.
    bool appendFragment(std::string_view xml);

    /// The bytes that a save writes.
    [[nodiscard]] std::string serialise() const;

  private:
    IoStatus read(std::string& bytes);
    bool parse(std::string bytes, XmlTexts texts);
    void startEmpty(std::string_view root);
    [[nodiscard]] pugi::xpath_node_set find(const std::string& fullPath) const;
    bool makePath(const std::string& fullPath, std::string_view value);
    bool remove(const pugi::xpath_node& found);
    void tidyRoot();
    IoStatus keepUnreadable(UserInterface* parent);

    std::string source_;  ///< what the nodes of a file point into
    std::unique_ptr<pugi::xml_document> document_;
    std::string path_;
    std::string rootName_;
    std::string rootPath_;
    std::string lastPath_;
    std::string stamp_;
    std::string keptCopy_;
    std::vector<pugi::xpath_node> selection_;
    std::optional<XmlFault> fault_;
    XmlLineEnd lineEnd_ = XmlLineEnd::Lf;
    bool isModified_ = false;
    bool losesBytes_ = false;  ///< to write the file would not give all that was in it
};

}  // namespace kavu
