// A TMATS file as a TMATS XML document. The file is read through a translator session, in which it
// has been split and parsed; the document is written as text, element by element.
#pragma once

#include "core/text/Clock.h"
#include "xml/bridge/write/TagWriter.h"
#include "xml/bridge/write/XmlLosses.h"
#include "xml/bridge/write/XmlValues.h"

#include <functional>
#include <string>
#include <vector>

namespace kavu {

class TranslatorSdk;
class UserInterface;

struct XmlExportOptions {
    XmlDialect dialect = XmlDialect::Classic;
    std::vector<std::string> links{};  ///< the data links to convert; empty for all
    CivilTime now{};                   ///< for the comment with the date
};

/// What an export says of itself.
struct XmlExportReport {
    std::vector<std::string> status;    ///< the status texts, but for those of progress
    std::vector<std::string> errors;    ///< with their line breaks
    std::vector<std::string> warnings;  ///< the closing block of bad values line by line
    std::vector<XmlBadValue> badValues;
    XmlLosses losses;
};

/// Converts the file of a session. `parent` may be null; it sees the status texts, may cancel, and
/// is told of nothing else: texts go to `report` and to the errors of the session. False if the
/// file has no G group, or the user has cancelled; what `sink` got is then to be thrown away.
///
/// REQUIRES: the session is active. Its substitutions are empty afterwards.
bool tmatsToXml(TranslatorSdk& session, UserInterface* parent, const XmlExportOptions& options,
                const TagWriter::Sink& sink, XmlExportReport& report);

/// The same into a file, which takes the place of an older one once it is complete. False also if
/// it could not be written, which is an error of the report; there is no new file then.
bool tmatsToXmlFile(TranslatorSdk& session, UserInterface* parent, const XmlExportOptions& options,
                    const std::string& path, XmlExportReport& report);

/// What the document will lack of the file of a session: a conversion that writes nothing. Says
/// nothing to the errors of the session.
[[nodiscard]] XmlLosses countXmlLosses(TranslatorSdk& session, UserInterface* parent,
                                       const XmlExportOptions& options);

}  // namespace kavu
