// What the methods of conversions share: the record that a name means, and one change of it.
#pragma once

#include "application/automation/AutomationTalk.h"
#include "core/files/ProfileFile.h"
#include "vocabulary/Field.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace kavu {

class AutomationSession;
class DefinitionEdit;

/// A record as it is in the store.
class FoundRecord {
  public:
    FoundRecord(std::shared_ptr<ProfileFile> file, std::string name)
        : file_(std::move(file)), name_(std::move(name)) {}

    [[nodiscard]] const ProfileFile& file() const { return *file_; }
    [[nodiscard]] const std::string& name() const { return name_; }
    /// The value of a field in its stored bytes; empty if it has none.
    [[nodiscard]] std::string value(std::string_view code) const {
        return file_->value(name_, code, "");
    }

  private:
    std::shared_ptr<ProfileFile> file_;
    std::string name_;
};

/// Throws `NoDocument`, and `NotFound` if there is no record of the name.
[[nodiscard]] FoundRecord requireRecord(AutomationSession& session, const std::string& name);
/// The name of the record, else that of a measurement of the loaded format or of the document, of
/// which a record can be made. Throws `NoDocument` and `NotFound`.
[[nodiscard]] std::string requireConvertible(AutomationSession& session, const std::string& name);
/// The value of a field in its stored bytes; empty without a record.
[[nodiscard]] std::string valueOrNone(AutomationSession& session, const std::string& record,
                                      std::string_view code);
/// Throws `NotInEdition` for a field that the document's edition does not have.
void requireField(AutomationSession& session, const Field& field, std::string_view what);

/// Changes the working copy; false if every value is what it was.
using RecordChange = std::function<bool(DefinitionEdit& edit, AutomationTalk& talk)>;
/// One operation of the document: the record is made if there is none, is no template any more and
/// counts as edited. A change to what is there already leaves the document unchanged otherwise.
/// Throws what `change` throws, and `FileError`; then everything is as before. REQUIRES: the name
/// is one of `requireConvertible`.
void changeRecord(AutomationSession& session, const std::string& record,
                  const RecordChange& change);

}  // namespace kavu
