// What the sheet of a conversion record and its detail window show, as values, and how the
// user's changes are stored in the working copy: only what was changed, so that a record keeps
// the bytes of its file.
#pragma once

#include "conversion/EuVocabulary.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class DefinitionEdit;
class UserInterface;

struct DefinitionValues {
    using Fields = std::map<std::string, std::string, std::less<>>;
    using Rows = std::vector<std::vector<std::string>>;

    Fields fields;                                   ///< by code; one without a value is left out
    std::map<std::string, Rows, std::less<>> lists;  ///< by the code of their count

    [[nodiscard]] std::string field(std::string_view code) const;
    [[nodiscard]] bool operator==(const DefinitionValues&) const = default;
};

/// Reads the pages: their fields with the comment and the type that the record shows, their
/// lists, the weights of the bits. Before 106-99 the one ambient value is the row of its
/// list.
[[nodiscard]] DefinitionValues readPages(const DefinitionEdit& edit);
/// Stores what differs from the working copy. In 106-96 a type keeps only its own voice or video
/// fields, because they define the type of the record. False if a file failed, which is reported.
bool storePages(DefinitionEdit& edit, UserInterface* parent, const DefinitionValues& now);

/// Why a limit that was edited cannot be stored.
struct RefusedLimit {
    std::string_view code;  ///< of its field
    std::string text;
};
/// Limits are numbers, and each low one is below its high one. Those that the user has not touched
/// stay as the file has them.
[[nodiscard]] std::optional<RefusedLimit> refusedLimit(const DefinitionEdit& edit,
                                                       const DefinitionValues::Fields& now);

/// The same for the window of a type, except pair sets, which their own page stores.
[[nodiscard]] DefinitionValues readDetail(const DefinitionEdit& edit, const DetailWindow& window);
bool storeDetail(DefinitionEdit& edit, UserInterface* parent, const DetailWindow& window,
                 const DefinitionValues& now);

/// Stores only the values of the pages that a curve is fitted with and drawn from, so that a fit
/// follows them while the sheet is open. `changed` is set if any differed.
bool storeFitFields(DefinitionEdit& edit, UserInterface* parent, const DefinitionValues& now,
                    bool& changed);

}  // namespace kavu
