// The fields of an ID counter by the codes of their vocabulary, as its form edits them.
#pragma once

#include "pcm/model/Subframe.h"
#include "vocabulary/Field.h"
#include "vocabulary/FieldRules.h"

#include <span>
#include <string>
#include <string_view>

namespace kavu {

class PcmFormat;
class UserInterface;

/// The fields that the form shows, with codes that stand without numbers.
[[nodiscard]] std::span<const Field> idCounterFields();
[[nodiscard]] std::string idCounterValue(const IdCounter& counter, std::string_view code);
[[nodiscard]] FieldValues idCounterValues(const IdCounter& counter);
/// Takes a value that a person has entered; what moves the end value computes it anew. False
/// if it was refused: messages 363, 364, 366. The name and the length are checked when the
/// form is left (`saveIdCounter`).
bool editIdCounterField(PcmFormat& format, UserInterface* parent, IdCounter& counter,
                        std::string_view code, std::string_view value);

/// "Edit ID Counter Definition (FWP: 5)", or "Create New ...".
[[nodiscard]] std::string definitionTitle(std::string_view what, bool isNew, int fwp);

}  // namespace kavu
