// The page of a recorder's tracks: their list, and the details of the selected one.
#pragma once

#include "app/groups/GroupRows.h"
#include "app/groups/RItemEditor.h"
#include "groups/RGroup.h"

#include <string>
#include <vector>

class QGroupBox;

namespace kavu {

class RecorderTrackPage : public PropertyPage {
    Q_OBJECT
  public:
    /// `sources` are the data sources to choose from. The tracks of the group follow every
    /// edit at once; the group is the sheet's own.
    RecorderTrackPage(const TrackPrompts& prompts, const RecorderPage& page, RecorderGroup& group,
                      const std::vector<std::string>& sources, QWidget* parent = nullptr);

    void load() override;
    [[nodiscard]] bool store() override;

  signals:
    /// Tracks were added or deleted.
    void trackCountChanged();

  private:
    [[nodiscard]] ListSetup trackSetup(const std::vector<std::string>& sources) const;
    [[nodiscard]] ListRow cellsOfTrack(const Track& track) const;
    void makeDetails();
    void makeItems(const ChannelType& type);
    void takeTracks();
    void dropDeleted();
    void showDetails();
    [[nodiscard]] std::vector<ListRow> attributeRows(const ChannelType& type,
                                                     const Track& track) const;
    void showItems(const ChannelType& type, const Track& track);
    void takeAttributes();
    void takeItems();
    [[nodiscard]] Track* currentTrack();
    [[nodiscard]] std::size_t placeOf(int id) const;

    TrackPrompts prompts_;
    RecorderGroup& group_;
    std::vector<Field> columns_;
    /// The ids of the rows of the group's tracks, in their order.
    std::vector<int> ids_;
    IdentifiedList* list_ = nullptr;
    QGroupBox* details_ = nullptr;
    EditableList* attributes_ = nullptr;
    IdentifiedList* items_ = nullptr;
    std::vector<std::size_t> shownItemRows_;  ///< the numbers in the file, by the id of the row
    const ChannelType* shownType_ = nullptr;
    std::vector<const Field*> shownFields_;
};

}  // namespace kavu
