// The fields of an ID counter by the codes of their vocabulary, as its dialog edits them.
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

/// The fields that the dialog shows, with codes without indices.
[[nodiscard]] std::span<const Field> idCounterFields();
[[nodiscard]] std::string idCounterValue(const IdCounter& counter, std::string_view code);
[[nodiscard]] FieldValues idCounterValues(const IdCounter& counter);
/// Takes a value that the user has entered, and computes the end value again if it depends
/// on it. False if it was refused: messages 363, 364, 366. The name and the length are
/// checked when the dialog is accepted (`saveIdCounter`).
bool editIdCounterField(PcmFormat& format, UserInterface* parent, IdCounter& counter,
                        std::string_view code, std::string_view value);

/// "Edit ID Counter Definition (FWP: 5)", or "Create New ...".
[[nodiscard]] std::string definitionTitle(std::string_view what, bool isNew, int fwp);

}  // namespace kavu
