// A TMATS XML document as a TMATS file. What the document holds is written, what it lacks is not;
// nothing is validated, and no working store is needed.
#pragma once

#include "xml/bridge/XmlStatus.h"
#include "xml/bridge/read/ImportOutput.h"

#include <string>
#include <vector>

namespace kavu {

struct DocumentContext;
class UserInterface;

class XmlToTmats {
  public:
    /// `statusCallback`, which may be empty, gets every status text and warning.
    XmlToTmats(XmlStatusCallback statusCallback, std::string inputFile, std::string outputFile,
               XmlDialect dialect = XmlDialect::Classic);

    /// Reads the input and writes the output, with the backup and the care of a save. False if the
    /// output was not created: it cannot be written, which the parent is told, the user has
    /// cancelled, or the input could not be read and there is a file in the place of the output.
    /// Without such a file an input that cannot be read gives an empty output.
    bool run(DocumentContext& context, UserInterface* parent);

    /// The first half: reads the input. False after a cancel. What is asked below is then known,
    /// and nothing is written yet.
    bool convert(UserInterface* parent);
    /// The second half. REQUIRES: converted.
    bool write(DocumentContext& context, UserInterface* parent);

    /// The edition of the document as a year; 0 if it states none, or 0.
    [[nodiscard]] int version() const { return version_; }
    /// True if the root element is in the namespace of the public schema.
    [[nodiscard]] bool isInSchemaNamespace() const { return isInSchemaNamespace_; }
    /// Why the input could not be read, with its place; a text with a ";"; in the schema's dialect
    /// also what has no command.
    [[nodiscard]] const std::vector<std::string>& messages() const { return messages_; }
    /// The texts of the document that the commands do not hold.
    [[nodiscard]] const std::vector<XmlLeftOut>& leftOut() const { return leftOut_; }
    /// The commands, as they are written.
    [[nodiscard]] const std::string& commands() const { return commands_; }

  private:
    bool loadInput(UserInterface* parent, XmlDocument& document);
    void addMessages(const ImportOutput& output);

    XmlStatusCallback status_;
    std::string inputFile_;
    std::string outputFile_;
    XmlDialect dialect_;
    bool isReadable_ = false;
    bool isInSchemaNamespace_ = false;
    int version_ = 0;
    std::string commands_;
    std::vector<std::string> messages_;
    std::vector<XmlLeftOut> leftOut_;
};

/// What an import leaves out, in one sentence; empty if that is nothing.
[[nodiscard]] std::string leftOutText(const std::vector<XmlLeftOut>& leftOut);

}  // namespace kavu
