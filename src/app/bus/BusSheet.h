// "Edit Bus": the definition of a bus with its user defined words, its messages, its terminals and
// its track sequences.
#pragma once

#include "app/bus/BusPages.h"

namespace kavu {

/// Number, name and type of a bus, and its user defined words from 106-07 on.
class BusDefinitionPage : public BusFieldPage {
    Q_OBJECT
  public:
    BusDefinitionPage(const BusFormSetup& setup, BusFormState& state, QWidget* parent = nullptr);

    void load() override;

  private:
    void makeWordList();
    [[nodiscard]] std::vector<ListRow> wordRows() const;
    [[nodiscard]] std::optional<ListRow> editWord(int word);

    std::vector<Field> wordFields_{};  ///< those of the first word, which give the columns
    EditableList* words_ = nullptr;
};

/// The track sequences, each asked for by a prompt.
class BusTracksPage : public PropertyPage {
    Q_OBJECT
  public:
    BusTracksPage(const BusFormSetup& setup, BusPlace bus, QWidget* parent = nullptr);

    void load() override;
    [[nodiscard]] bool store() override { return true; }

  private:
    [[nodiscard]] std::vector<ListRow> trackRows() const;
    [[nodiscard]] std::optional<ListRow> editTrack(int row, const std::string& before);

    const BusFormSetup& setup_;
    BusPlace bus_;
    EditableList* tracks_ = nullptr;
};

class BusSheet : public PropertySheet {
    Q_OBJECT
  public:
    /// `setup` must outlive the sheet; a new bus is in the definition already.
    BusSheet(const BusFormSetup& setup, const BusPlace& bus, bool isNew, QWidget* parent);

  private:
    BusFormState state_;
};

}  // namespace kavu
