// The list of all windows, pages and dialogs, each with a maker that fills it with sample
// content. Their pictures are rendered from it, and a test walks it: a window that is not
// in it has no picture and no check.
#pragma once

#include "app/framework/FormContext.h"
#include "app/framework/PropertySheet.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <QString>
#include <QWidget>

namespace kavu {

class Application;

/// What the makers work with: the sample document and the owner of its streams and
/// conversions, or null if the caller has none; a maker that needs them then returns null.
struct ScreenshotStage {
    FormContext& form;
    DocumentContext* document = nullptr;
    Application* application = nullptr;
};

struct Screenshot {
    std::string name;  ///< resource name, and the name of the picture's file
    std::function<std::unique_ptr<QWidget>(ScreenshotStage&)> make;
};

class ScreenshotList {
  public:
    /// REQUIRES: the name is not in the list.
    void add(std::string name, std::function<std::unique_ptr<QWidget>(ScreenshotStage&)> make);
    /// One picture for each page of a sheet, named by the page; the sheet is made again for
    /// each of them. `names` are the resource names in the order of the pages.
    void addSheet(const std::vector<std::string>& names,
                  const std::function<std::unique_ptr<PropertySheet>(ScreenshotStage&)>& make);

    [[nodiscard]] const std::vector<Screenshot>& entries() const { return entries_; }

  private:
    std::vector<Screenshot> entries_;
};

}  // namespace kavu
