// An open document with its conversion records and measurement names, for operations that
// change the set of its groups.
#pragma once

#include "conversion/ConversionLoader.h"
#include "conversion/ConversionStore.h"
#include "core/document/DocumentChange.h"
#include "core/document/DocumentHistory.h"
#include "core/document/KeyValueStore.h"
#include "core/document/OpenDocument.h"
#include "groups/MeasurementNames.h"
#include "groups/SourceEdit.h"
#include "support/TestContext.h"

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace kavu::test {

class SourceStage : public TestContext, private DocumentListener {
  public:
    explicit SourceStage(int edition = 2009) : TestContext(edition) {
        steps.noteConversions = [this](ConversionRuns&& runs) { noted = std::move(runs); };
        steps.loadConversions = [this](UserInterface* parent, int version) {
            return loadConversionGroup(context, keys, conversions, parent, version,
                                       std::exchange(noted, {}));
        };
        steps.gatherMeasurementNames = [this](UserInterface* parent) {
            return measurements.checkForDuplicates(parent);
        };
        history.addListener(*this);
        TestContext::files.demandScopes(true);
    }
    ~SourceStage() { history.removeListener(*this); }

    /// Opens a document; everything that was told meanwhile is forgotten.
    void open(const std::string& text) {
        const auto path = folder / "document.tma";
        writeFile(path, text);
        document.path = path;
        conversions.forget();
        keys.closeStore(nullptr);
        store.clearDocumentFiles(nullptr);
        const int edition = document.version;
        {
            const LoadScope load(TestContext::files);
            EXPECT_TRUE(readTmatsFile(context, &ui, path, false));
        }
        document.version = edition;
        document.open = true;
        document.changed = false;
        ui.boxes.clear();
        ui.logs.clear();
        ui.shown.clear();
        ui.statusTexts.clear();
    }
    std::string otherFile(const std::string& text) {
        auto path = folder / "other.tma";
        writeFile(path, text);
        return path;
    }
    void offerFile(const std::string& path) { ui.files.push_back(FileChoice{path, 1}); }

    /// All files of the working store but the log, by name.
    std::map<std::string, std::string> files() {
        EXPECT_TRUE(conversions.writeOut().ok());
        std::vector<FolderEntry> entries;
        EXPECT_TRUE(listFolder(store.folder(), entries).ok());
        std::map<std::string, std::string> found;
        for (const auto& entry : entries) {
            if (!entry.isFolder && entry.name != working::kMessageLog) {
                found[entry.name] = read(entry.name);
            }
        }
        return found;
    }
    [[nodiscard]] bool saw(const std::string& statusText) const {
        return std::find(ui.statusTexts.begin(), ui.statusTexts.end(), statusText) !=
               ui.statusTexts.end();
    }

    KeyValueStore keys{store};
    ConversionRuns noted;
    ConversionStore conversions{context};
    MeasurementNames measurements{context};
    SourceParts parts{context, conversions, measurements};
    /// The operations of which a window would have been told.
    std::vector<std::string> told;

  private:
    void documentChanged(const DocumentChange& change) override {
        if (change.kind == DocumentChange::Edited) {
            told.push_back(change.name);
        }
    }
};

/// Three data sources: two transmitted with a PCM stream each, a recorder with a bus.
inline std::string threeSources() {
    return "G\\106:09;\r\nG\\DSI\\N:3;\r\nG\\DSI-1:First;\r\nG\\DST-1:RF;\r\n"
           "G\\DSI-2:Second;\r\nG\\DST-2:RF;\r\nG\\DSI-3:Recorder;\r\nG\\DST-3:STO;\r\n"
           "G\\COM:kept;\r\n"
           "T-1\\ID:First;\r\nT-1\\RF1:2200.5;\r\nT-2\\ID:Second;\r\nT-2\\RF1:1450.5;\r\n"
           "R-1\\ID:Recorder;\r\nR-1\\N:2;\r\nR-1\\CDLN-1:Link A;\r\nR-1\\CDLN-2:Bus;\r\n"
           "R-1\\EV\\N:1;\r\nR-1\\EV\\MS-1:Link A;\r\nR-1\\BDLN-1:Bus;\r\nR-1\\PDLN-2:Link A;\r\n"
           "R-1\\UCNM-1-1:Link A;\r\nR-1\\MCNM-1-2:Link A;\r\nR-1\\ENAM-2-1:Link A;\r\n"
           "M-1\\ID:First;\r\nM-1\\BSG1:PCM;\r\nM-1\\BB\\DLN:Link A;\r\nM-1\\SI\\N:0;\r\n"
           "M-2\\ID:Second;\r\nM-2\\BSG1:PCM;\r\nM-2\\BB\\DLN:Link B;\r\nM-2\\SI\\N:0;\r\n"
           "M-3\\ID:Recorder;\r\nM-3\\BB\\DLN:Bus;\r\nM-3\\SI\\N:0;\r\n"
           "P-1\\DLN:Link A;\r\nP-1\\TF:ONE;\r\nP-1\\AEF\\N:0;\r\n"
           "P-2\\DLN:Link B;\r\nP-2\\TF:ONE;\r\nP-2\\AEF\\N:1;\r\nP-2\\AEF\\DLN-1:Link A;\r\n"
           "D-1\\DLN:Link A;\r\nD-1\\ML\\N:1;\r\nD-1\\MN\\N-1:2;\r\n"
           "D-1\\MN-1-1:ALPHA;\r\nD-1\\MN-1-2:BETA;\r\n"
           "D-2\\DLN:Link B;\r\nD-2\\ML\\N:1;\r\nD-2\\MN\\N-1:1;\r\nD-2\\MN-1-1:GAMMA;\r\n"
           "B-1\\DLN:Bus;\r\nB-1\\MN-1-1-1:HEADING;\r\n"
           "V-1\\ID:First;\r\nV-1\\VN:XYZ;\r\n"
           "C-1\\DCN:ALPHA;\r\nC-1\\DCT:COE;\r\nC-1\\CO\\N:1;\r\nC-1\\CO:0.5;\r\nC-1\\CO-1:2.0;\r\n"
           "C-2\\DCN:GAMMA;\r\nC-2\\DCT:NON;\r\n"
           "C-3\\DCN:HEADING;\r\nC-3\\DCT:NON;\r\nC-3\\COM:true\r\nheading;\r\n";
}

}  // namespace kavu::test
