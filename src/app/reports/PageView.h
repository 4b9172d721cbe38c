// Pages under one another, as they are printed: in any size, with texts that can be found, selected
// and copied.
#pragma once

#include "drawing/RecordedPage.h"

#include <compare>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include <QAbstractScrollArea>
#include <QString>

namespace kavu {

class PageView : public QAbstractScrollArea {
    Q_OBJECT
  public:
    explicit PageView(QWidget* parent = nullptr);

    /// Shows other pages, from the first one on. The document may be null.
    void setDocument(std::shared_ptr<const PrintedDocument> document);
    [[nodiscard]] int pageCount() const;

    static constexpr int kLeastZoom = 25;
    static constexpr int kMostZoom = 400;
    /// Percent of the size on paper; within the limits.
    void setZoom(int percent);
    [[nodiscard]] int zoom() const { return zoom_; }
    /// As wide as the window has room for.
    void fitWidth();

    /// The page that is in the middle of the view, from 1; 0 without pages.
    [[nodiscard]] int currentPage() const;
    void goToPage(int page);

    /// Selects the next place of a text, whatever the case, and shows it; after the last one the
    /// first. False if there is none.
    bool find(const QString& text, bool forward);
    void selectAll();
    /// The texts that are selected, with a line for each line of a page.
    [[nodiscard]] QString selectedText() const;
    void copy() const;

  signals:
    void zoomChanged(int percent);
    void pageChanged(int page);
    void selectionChanged();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

  private:
    /// A place between two characters, in the order in which one reads.
    struct Place {
        std::size_t page = 0;
        std::size_t text = 0;  ///< in the order of the page's lines
        qsizetype character = 0;
        auto operator<=>(const Place&) const = default;
    };
    /// A text of a page as it is shown.
    struct Line {
        const PageText* text = nullptr;
        QString shown{};
    };

    [[nodiscard]] double scale() const;  ///< pixels of a point
    [[nodiscard]] QSizeF pagePixels() const;
    [[nodiscard]] double pageTop(std::size_t page) const;
    [[nodiscard]] double pageLeft() const;
    void updateBars();
    /// The lines of a page, read from the top; made when they are asked for first.
    [[nodiscard]] const std::vector<Line>& lines(std::size_t page) const;
    [[nodiscard]] std::optional<Place> placeAt(QPointF pixel) const;
    [[nodiscard]] static double offsetOf(const Line& line, qsizetype character);
    void paintPage(QPainter& painter, std::size_t page) const;
    void paintSelection(QPainter& painter, std::size_t page) const;
    /// Calls it for each line of a page with what of it is selected.
    void forSelected(
        std::size_t page,
        const std::function<void(const Line& line, qsizetype first, qsizetype last)>& visit) const;
    void select(const Place& from, const Place& to);
    void show(const Place& place);

    std::shared_ptr<const PrintedDocument> document_{};
    mutable std::vector<std::optional<std::vector<Line>>> lines_{};
    int zoom_ = 100;
    int shownPage_ = 0;
    Place anchor_{};
    Place cursor_{};
};

}  // namespace kavu
