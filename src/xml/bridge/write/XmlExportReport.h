// What an export of TMATS XML is asked for, and what it says of itself.
#pragma once

#include "core/text/Clock.h"
#include "xml/bridge/write/XmlLosses.h"
#include "xml/bridge/write/XmlValues.h"

#include <functional>
#include <string>
#include <vector>

namespace kavu {

struct XmlExportReport;

struct XmlExportOptions {
    XmlDialect dialect = XmlDialect::Classic;
    std::vector<std::string> links{};  ///< the data links to convert; empty for all
    CivilTime now{};                   ///< for the comment with the date
    /// Called with all that a document lacks, before its file takes its place; may be empty.
    std::function<void(const XmlExportReport&)> announce{};
};

/// What an export says of itself.
struct XmlExportReport {
    std::vector<std::string> status;    ///< the status texts, but for those of progress
    std::vector<std::string> errors;    ///< with their line breaks
    std::vector<std::string> warnings;  ///< the closing block of bad values line by line
    std::vector<XmlBadValue> badValues;
    XmlLosses losses;
};

}  // namespace kavu
