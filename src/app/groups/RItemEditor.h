// The prompts for the details of a recorder's track.
#pragma once

#include "app/framework/EditableList.h"
#include "groups/RTracks.h"

#include <optional>
#include <string>
#include <vector>

namespace kavu {

struct DocumentContext;

/// What the prompts are given: the window they are in front of, and the names to choose from.
struct TrackPrompts {
    FormContext& form;
    DocumentContext& document;
    std::vector<std::string> links{};
};

/// Asks for the value of a detail, as it is shown; nothing if that was cancelled.
[[nodiscard]] std::optional<std::string> promptDetail(const TrackPrompts& prompts,
                                                      const Field& field, const std::string& shown,
                                                      QWidget* window);

/// The columns of the list of a type's items: what an item is called, and its fields.
[[nodiscard]] ListSetup itemSetup(const ChannelType& type, int edition);
/// Edits an item of the list: by one prompt after the other, or by a dialog over all fields.
/// Nothing if any was cancelled.
[[nodiscard]] std::optional<ListRow> editItem(const TrackPrompts& prompts, const ChannelType& type,
                                              const EditableList& list, int row,
                                              const ListRow& before, bool isNew, QWidget* window);

}  // namespace kavu
