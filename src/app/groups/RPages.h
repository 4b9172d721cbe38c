// The pages of the recorder's sheet, but for its tracks.
#pragma once

#include "app/framework/FieldForm.h"
#include "app/groups/GroupRows.h"
#include "groups/RGroup.h"

#include <string>
#include <string_view>
#include <vector>

class QBoxLayout;
class QPushButton;
class QVBoxLayout;

namespace kavu {

/// A page of fields. One whose edition knows none of them says so.
class RecorderFieldPage : public FieldPage {
    Q_OBJECT
  public:
    RecorderFieldPage(FormContext& form, const RecorderPage& page, RecorderGroup& group,
                      QWidget* parent = nullptr);
};

/// The characteristics: the number of tracks is a button, which knows how many there are.
class RecorderCharacteristicsPage : public RecorderFieldPage {
    Q_OBJECT
  public:
    RecorderCharacteristicsPage(FormContext& form, const RecorderPage& page, RecorderGroup& group,
                                QWidget* parent = nullptr);

    void load() override;
    /// Shows the number of the group.
    void showTrackCount();

  private:
    void askTrackCount();

    RecorderGroup& group_;
    QPushButton* count_ = nullptr;
};

/// A page on which any change fills an empty date with the present date and time.
class RecorderDatePage : public RecorderFieldPage {
    Q_OBJECT
  public:
    RecorderDatePage(FormContext& form, const RecorderPage& page, RecorderGroup& group,
                     std::string_view dateCode, QWidget* parent = nullptr);
};

/// Fields with plain lists below them: the recorder's modules and media, the reference tracks.
class RecorderListsPage : public RecorderFieldPage {
    Q_OBJECT
  public:
    struct List {
        std::string_view count{};  ///< the code of its count
        const char* name = "";
        std::string box{};  ///< title of its box, or empty
        std::string rowDialogTitle{};
        std::string deleteTitle{};
        /// In place of the limits of the fields.
        std::vector<std::size_t> limits{};
    };
    RecorderListsPage(FormContext& form, const RecorderPage& page, RecorderGroup& group,
                      const std::vector<List>& lists, QWidget* parent = nullptr);

    void load() override;
    [[nodiscard]] bool store() override;

  private:
    struct Shown {
        const Field* count;
        std::vector<Field> fields;
        IdentifiedList* list;
        /// By the id of the row.
        std::vector<GroupRow> before;
    };
    void storeList(const Shown& shown);
    void addList(const List& list, QBoxLayout& layout);

    RecorderGroup& group_;
    std::vector<Shown> lists_;
};

/// The recording events with the measurements to process of the selected one.
class RecorderEventsPage : public RecorderFieldPage {
    Q_OBJECT
  public:
    RecorderEventsPage(FormContext& form, const RecorderPage& page, RecorderGroup& group,
                       QWidget* parent = nullptr);

    void load() override;
    [[nodiscard]] bool store() override;

  private:
    void addMeasurements(QVBoxLayout& layout);
    void showMeasurements();
    void takeMeasurements();
    void takeEvents();

    RecorderGroup& group_;
    std::vector<Field> eventFields_;
    std::vector<Field> measurementFields_;
    /// By the id of the row.
    std::vector<GroupRow> events_;
    IdentifiedList* list_ = nullptr;
    IdentifiedList* measurements_ = nullptr;
    /// By the id of the row.
    std::vector<GroupRow> shownMeasurements_;
};

}  // namespace kavu
