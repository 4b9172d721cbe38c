// The windows of import and export, and the choice of streams, over the sample document.
#include "app/framework/SelectDialogs.h"
#include "app/xml/XmlForms.h"
#include "application/Application.h"
#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "gallery/Makers.h"
#include "gallery/Screenshots.h"

#include <memory>
#include <utility>

namespace kavu {

namespace {

/// Keeps what a window works on until that is gone.
template <typename Part>
void keepFor(QWidget& window, std::shared_ptr<Part> part) {
    QObject::connect(&window, &QObject::destroyed,
                     [kept = std::move(part)]() mutable { kept.reset(); });
}

std::unique_ptr<QWidget> makeXmlExport(ScreenshotStage& stage) {
    if (stage.application == nullptr) {
        return nullptr;
    }
    auto exported = std::make_shared<XmlExport>(*stage.application, nullptr);
    if (!exported->open()) {
        return nullptr;
    }
    auto setup = exportSetup(stage.form, stage.document->document, *exported);
    setup.input = "flight-test.tma";
    setup.output.path = "flight-test.xml";
    auto dialog = std::make_unique<XmlDialog>(stage.form, std::move(setup), nullptr);
    keepFor(*dialog, std::move(exported));
    return dialog;
}

/// Of what an export of the sample gives.
std::unique_ptr<QWidget> makeXmlImport(ScreenshotStage& stage) {
    if (stage.application == nullptr) {
        return nullptr;
    }
    const auto path = stage.application->context().store.pathOf("flight-test.xml");
    XmlExport exported(*stage.application, nullptr);
    if (!exported.open() || !exported.run(nullptr, XmlDialect::Classic, {}, path)) {
        return nullptr;
    }
    auto import = std::make_shared<XmlImport>(*stage.application, path);
    if (!import->read(nullptr)) {
        return nullptr;
    }
    auto setup = importSetup(stage.form, stage.document->document, *import);
    setup.input = "flight-test.xml";
    setup.output.path = "flight-test.tma";
    auto dialog = std::make_unique<XmlDialog>(stage.form, std::move(setup), nullptr);
    keepFor(*dialog, std::move(import));
    return dialog;
}

std::unique_ptr<QWidget> makeChoiceOfStreams(ScreenshotStage& stage) {
    if (stage.application == nullptr) {
        return nullptr;
    }
    XmlExport document(*stage.application, nullptr);
    if (!document.open()) {
        return nullptr;
    }
    TablePrompt prompt;
    prompt.title = "Select Streams To Convert";
    prompt.columns = {"#", "Data Link", "Type"};
    for (const auto& link : document.links()) {
        prompt.rows.push_back({std::to_string(prompt.rows.size() + 1), link, "ONE"});
    }
    return std::make_unique<SelectDialog>(prompt, true, nullptr);
}

}  // namespace

void addExchangeScreenshots(ScreenshotList& list) {
    list.add("ImportTmatsXml", makeXmlImport);
    list.add("ExportTmatsXml", makeXmlExport);
    list.add("SelectSeveralFromTable", makeChoiceOfStreams);
}

}  // namespace kavu
