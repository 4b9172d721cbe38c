// What menus and buttons do with the layout file of reports: each asks for a file where it needs
// one, and reports what fails.
#pragma once

#include <string>

namespace kavu {

class ReportDesk;
struct DocumentContext;
struct FormContext;

/// Opens the file that the user chooses; before that the present one is saved if it has changed and
/// the user wants it. False if nothing was opened.
bool openLayoutFile(FormContext& form, ReportDesk& desk);
/// Saves the open file, or without one asks for a name.
bool saveLayoutFile(FormContext& form, DocumentContext& document, ReportDesk& desk);
/// Saves the layout that counts as the file that the user chooses, which is then open.
bool saveLayoutFileAs(FormContext& form, DocumentContext& document, ReportDesk& desk);

/// "Report Layout File: %s" with the name of the open file, or "(None)".
[[nodiscard]] std::string layoutLine(ReportDesk& desk);

}  // namespace kavu
