// The head of a list whose columns have long titles and short values.
#pragma once

#include <QHeaderView>

namespace kavu {

/// Shows the titles on one line, or long ones on two so that all columns have room.
class ListHead : public QHeaderView {
    Q_OBJECT
  public:
    explicit ListHead(QWidget* parent);

    [[nodiscard]] bool breaksTitles() const { return breaksTitles_; }
    /// The caller fits the columns again.
    void setBreaksTitles(bool breaks);

  protected:
    void initStyleOptionForIndex(QStyleOptionHeader* option, int section) const override;
    [[nodiscard]] QSize sectionSizeFromContents(int section) const override;

  private:
    bool breaksTitles_ = false;
};

/// The title on two lines of about the same length; as it is if it is short or one word.
[[nodiscard]] QString brokenTitle(const QString& title);

}  // namespace kavu
