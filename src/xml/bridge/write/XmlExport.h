// A TMATS file as a TMATS XML document. The file is read through a translator session, in which it
// has been split and parsed; the document is written as text, element by element.
#pragma once

#include "xml/bridge/write/TagWriter.h"
#include "xml/bridge/write/XmlExportReport.h"
#include "xml/bridge/write/XmlLosses.h"

#include <string>

namespace kavu {

class TranslatorSdk;
class UserInterface;

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
