// Import and export of TMATS XML for the editor: what the chosen form will lose is known before
// anything is written, an export takes the document as it is now, and what was imported is opened.
#pragma once

#include "application/DocumentSnapshot.h"
#include "xml/bridge/BridgeValues.h"

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kavu {

class Application;
class TranslatorSdk;
class UserInterface;
struct TmatsDocument;

inline constexpr const char* kXmlImportTitle = "Import TMATS XML";
inline constexpr const char* kXmlExportTitle = "Export TMATS XML";

/// What a form of TMATS XML leaves out, counted from the document.
struct XmlLossTable {
    struct Row {
        std::string what;   ///< the element, or the code of the first command
        std::string count;  ///< how many of its kind
    };
    std::string summary;
    std::vector<Row> rows;
};

/// The import of one file.
class XmlImport {
  public:
    XmlImport(Application& application, std::string input);

    [[nodiscard]] const std::string& input() const { return input_; }
    /// The path of the TMATS file if the user chooses none.
    [[nodiscard]] std::string proposedOutput() const;
    /// Reads the file in the form of its root. False after a cancel.
    bool read(UserInterface* parent);
    /// The schema's form if the root is in its namespace. REQUIRES: read.
    [[nodiscard]] XmlDialect proposedDialect() const { return proposed_; }
    /// Why the file could not be read; empty if it could. REQUIRES: read.
    [[nodiscard]] const std::string& fault() const { return fault_; }
    /// What will be left out. Reads the file again for a form that was not asked for yet; nothing
    /// after a cancel.
    [[nodiscard]] std::optional<XmlLossTable> losses(UserInterface* parent, XmlDialect dialect);

    /// Writes the TMATS file. False if it was not written, which is reported, or was cancelled: a
    /// file that could not be read replaces none.
    bool run(UserInterface* parent, XmlDialect dialect, const std::string& output);
    /// The status texts and messages of the run.
    [[nodiscard]] const std::vector<std::string>& said() const { return said_; }
    /// Opens what was written in place of the open document, after its question. False if that did
    /// not go, or nothing was written that could be opened.
    bool open(UserInterface* parent);

  private:
    Application& application_;
    std::string input_;
    std::string output_;  ///< empty unless there is something in it
    std::vector<std::string> said_;
    XmlDialect proposed_ = XmlDialect::Classic;
    std::string fault_;
    std::array<std::optional<XmlLossTable>, 2> losses_;
};

/// The export of the open document.
class XmlExport {
  public:
    /// REQUIRES: a document is open.
    XmlExport(Application& application, UserInterface* parent);
    XmlExport(const XmlExport&) = delete;
    XmlExport& operator=(const XmlExport&) = delete;
    ~XmlExport();

    /// Reads the document as it is now. False after a cancel or a failure, which was reported.
    bool open();
    /// The names of its data links. REQUIRES: open.
    [[nodiscard]] std::vector<std::string> links() const;
    [[nodiscard]] std::string proposedOutput() const;
    /// What will be left out; nothing after a cancel. `links` are those to convert, empty for all.
    [[nodiscard]] std::optional<XmlLossTable> losses(UserInterface* parent, XmlDialect dialect,
                                                     const std::vector<std::string>& links);
    /// Writes the XML file. False if it was not written, which is reported, or was cancelled.
    bool run(UserInterface* parent, XmlDialect dialect, const std::vector<std::string>& links,
             const std::string& output);
    /// The status texts, errors and warnings of the run.
    [[nodiscard]] const std::vector<std::string>& said() const { return said_; }

  private:
    Application& application_;
    UserInterface* parent_;
    std::vector<std::string> said_;
    DocumentSnapshot snapshot_;
    std::unique_ptr<TranslatorSdk> session_;
    std::array<std::optional<XmlLossTable>, 2> losses_;  ///< of all links
};

/// Why a file cannot be the output of an import or export; empty if it can: it is the input, or the
/// file of the open document.
[[nodiscard]] std::string whyNotOutput(const TmatsDocument& document, const std::string& input,
                                       const std::string& output);

}  // namespace kavu
