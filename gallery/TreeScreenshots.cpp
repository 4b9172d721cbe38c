#include "app/framework/Look.h"
#include "app/shell/CommandPane.h"
#include "app/shell/TreePanel.h"
#include "gallery/Makers.h"
#include "gallery/Screenshots.h"
#include "groups/DocumentTree.h"
#include "groups/MeasurementNames.h"

namespace kavu {

namespace {

/// The measurements of all streams: the picture needs no conversion records.
std::vector<std::string> measurementsOf(DocumentContext& context, const DocumentTree& tree) {
    std::vector<std::string> names;
    const StreamFiles files(context, nullptr);
    for (const auto& source : tree.dataSources) {
        for (const auto& link : source.links) {
            files.readNames(nullptr, link.name,
                            [&](std::string_view name) { names.emplace_back(name); });
        }
    }
    return names;
}

std::unique_ptr<QWidget> makeTree(ScreenshotStage& stage) {
    if (stage.document == nullptr) {
        return nullptr;
    }
    auto panel = std::make_unique<TreePanel>(TreeExpansion{});
    const auto tree = readDocumentTree(*stage.document, nullptr);
    panel->rebuild(tree, measurementsOf(*stage.document, tree),
                   {.general = true, .conversion = true, .hardware = true});
    panel->expandAll();
    panel->resize(look::charactersWide(*panel, 60), look::unit(*panel) * 70);
    return panel;
}

std::unique_ptr<QWidget> makePane(ScreenshotStage& stage) {
    if (stage.document == nullptr) {
        return nullptr;
    }
    auto pane = std::make_unique<CommandPane>(*stage.document, nullptr, nullptr);
    TreeModel model;
    model.build(readDocumentTree(*stage.document, nullptr), {}, {.general = true});
    pane->resize(look::charactersWide(*pane, 100), look::unit(*pane) * 70);
    if (const auto general = model.indexOf(TreeKind::General); general.isValid()) {
        pane->showItem(model.item(general));
    }
    return pane;
}

}  // namespace

void addTreeScreenshots(ScreenshotList& list) {
    list.add("TreePanel", makeTree);
    list.add("CommandPane", makePane);
}

}  // namespace kavu
