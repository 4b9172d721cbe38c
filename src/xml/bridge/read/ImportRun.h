// The order of an import: from the document down to the groups of its sources and links.
#pragma once

#include "xml/bridge/XmlStatus.h"
#include "xml/bridge/read/GroupReader.h"

#include <string>
#include <vector>

namespace kavu {

class UserInterface;

class ImportRun {
  public:
    /// All must outlive the object; `parent` may be null.
    ImportRun(ImportOutput& output, const XmlStatusCallback& status, UserInterface* parent)
        : output_(output), status_(status), parent_(parent) {}

    /// Writes the groups of a document. `root` is its `Tmats`, or null. False after a cancel.
    bool run(XmlNode root);
    [[nodiscard]] int version() const { return version_; }

  private:
    struct Source {
        XmlNode element;
        std::string name;
        std::string type;
    };

    void readGeneral(XmlNode root);
    void readSourceGroups();
    void readSourceGroup(const Source& source, char letter, std::string_view element, int& number);
    bool readLinkGroups();
    bool readLinkGroup(char letter, int& number, const Source& source);
    bool readConversions();
    bool readRecords(XmlNode attributes, int& number);
    void warnOfMakers(XmlNode root);
    void say(const std::string& text, XmlStatusLevel level = XmlStatusLevel::Status) const;
    [[nodiscard]] bool isSchema() const { return output_.dialect() == XmlDialect::Schema; }

    ImportOutput& output_;
    const XmlStatusCallback& status_;
    UserInterface* parent_;
    std::vector<Source> sources_;
    int version_ = 0;
};

}  // namespace kavu
