// Undo of what an edit has changed besides the stream, and the size of the levels.
#include "conversion/ConversionFiles.h"
#include "conversion/ConversionLoader.h"
#include "core/document/KeyValueStore.h"
#include "groups/MeasurementNames.h"
#include "pcm/StreamFixture.h"
#include "pcm/edit/FrameEditComment.h"
#include "pcm/edit/FrameEditWords.h"
#include "pcm/edit/MeasurementEditSave.h"
#include "pcm/read/TaggedData.h"
#include "pcm/undo/StreamUndo.h"
#include "pcm/write/PcmSave.h"

#include <functional>
#include <map>

namespace kavu {
namespace {

using test::StreamFixture;

/// A stream whose edits reach the conversion records, as those of the display do.
struct UndoRecords : StreamFixture {
    explicit UndoRecords(int edition = 2009) : StreamFixture(edition) {
        edit.deleteConversion = [this](UserInterface* window, std::string_view name) {
            EXPECT_TRUE(conversions.deleteDefinition(window, std::string(name)));
        };
        saving.renameConversion = [this](UserInterface* window, std::string_view from,
                                         std::string_view to) {
            EXPECT_TRUE(conversions.renameDefinition(window, std::string(to), std::string(from)));
        };
        ui.otherwise = Button::Yes;
        for (const auto* const name : {"A", "B", "C"}) {
            place(at_++, 1, name);
            EXPECT_TRUE(conversions.createDefaultDefinition(nullptr, name, false));
            EXPECT_TRUE(
                conversions.writeEuComment(nullptr, name, std::string("Of ") + name, false));
        }
        format.changed = false;
    }
    /// Every file of the conversion records, as it is on the disk.
    [[nodiscard]] std::map<std::string, std::string> disk() {
        std::map<std::string, std::string> found;
        std::vector<FolderEntry> entries;
        EXPECT_TRUE(listFolder(store.folder(), entries).ok());
        for (const auto& entry : entries) {
            if (matchesWildcard(entry.name, "[kavu]*.C_*")) {
                found[entry.name] = TestContext::read(entry.name);
            }
        }
        return found;
    }
    bool rename(const std::string& from, const std::string& to) {
        const auto where = format.cells().places(from).at(0);
        MeasurementDefinition definition;
        definition.attributes.name = to;
        definition.attributes.locationType = "MF";
        definition.attributes.mask = "FW";
        return saveMeasurement(format, parent, edit, saving, {where.word, 1, from}, definition);
    }
    [[nodiscard]] bool hasRecord(const std::string& name) {
        return conversions.locateDefinition(name).found;
    }
    [[nodiscard]] std::string comment(const std::string& name) {
        return conversions.readEuComment(name, false);
    }

    ConversionStore conversions{context};
    EditSteps edit;
    SaveSteps saving;

  private:
    int at_ = 3;
};

TEST(StreamUndoRecords, RecordsOnTheDiskComeBackWithEveryEditAndGoAgain) {
    UndoRecords f;
    StreamUndo undo(f.format, {.conversions = &f.conversions});
    const std::vector<std::function<bool()>> edits{
        [&] { return f.rename("A", "A2"); },
        [&] { return f.conversions.writeEuComment(nullptr, "B", std::string(40000, 'x'), false); },
        [&] { return f.rename("B", "B2"); },
        [&] { return deleteMeasurement(f.format, f.parent, f.edit, "C"); },
        [&] {
            f.place(9, 1, "D");
            return f.conversions.createDefaultDefinition(nullptr, "D", true);
        },
        [&] { return deleteMeasurement(f.format, f.parent, f.edit, "B2"); },
        [&] { return f.rename("A2", "B"); }};
    std::vector<std::map<std::string, std::string>> disks{f.disk()};
    for (const auto& edit : edits) {
        ASSERT_TRUE(edit());
        ASSERT_TRUE(undo.commit());
        disks.push_back(f.disk());
    }
    for (int round = 0; round < 2; ++round) {
        for (std::size_t i = disks.size() - 1; i-- > 0;) {
            ASSERT_TRUE(undo.undo(&f.ui)) << i;
            EXPECT_TRUE(f.disk() == disks[i]) << "undo " << i;
        }
        EXPECT_TRUE(f.hasRecord("A") && f.hasRecord("B") && f.hasRecord("C"));
        EXPECT_FALSE(f.hasRecord("A2") || f.hasRecord("B2") || f.hasRecord("D"));
        EXPECT_EQ(f.comment("B"), "Of B");
        EXPECT_TRUE(f.format.hasMeasurement("C"));
        for (std::size_t i = 1; i < disks.size(); ++i) {
            ASSERT_TRUE(undo.redo(&f.ui)) << i;
            EXPECT_TRUE(f.disk() == disks[i]) << "redo " << i;
        }
        EXPECT_TRUE(f.hasRecord("B") && f.hasRecord("D"));
        EXPECT_FALSE(f.hasRecord("A") || f.hasRecord("A2") || f.hasRecord("C"));
        EXPECT_EQ(f.comment("B"), "Of A") << "the record went along with the name";
    }
}

TEST(StreamUndoRecords, ALongCommentMovesBackAndForthWithItsRecord) {
    UndoRecords f;
    const std::string text(40000, 'c');
    ASSERT_TRUE(f.conversions.writeEuComment(nullptr, "A", text, false));
    StreamUndo undo(f.format, {.conversions = &f.conversions});
    ASSERT_TRUE(f.rename("A", "Z"));
    ASSERT_TRUE(undo.commit());
    ASSERT_TRUE(undo.undo());
    EXPECT_EQ(f.comment("A"), text);
    EXPECT_TRUE(f.has("[kavu]A.C_COM"));
    EXPECT_FALSE(f.has("[kavu]Z.C_COM"));
    ASSERT_TRUE(undo.redo());
    EXPECT_EQ(f.comment("Z"), text);
    EXPECT_FALSE(f.has("[kavu]A.C_COM"));
}

TEST(StreamUndoRecords, ARecordThatIsInMemoryOnlyIsNotTakenForMissing) {
    UndoRecords f;
    f.conversions.forget();
    ASSERT_TRUE(deleteFile(chunkPath(f.store, 0)).ok());
    f.write(working::kData1, "C-1\\DCN:A;\r\nC-1\\DCT:NON;\r\nC-2\\DCN:B;\r\nC-2\\DCT:COE;\r\n");
    KeyValueStore names(f.store);
    ASSERT_TRUE(loadConversionGroup(f.context, names, f.conversions, nullptr, 2011));
    ASSERT_NE(f.conversions.untouched(), nullptr);
    StreamUndo undo(f.format, {.conversions = &f.conversions});
    ASSERT_TRUE(f.rename("A", "Z"));
    ASSERT_TRUE(undo.commit());
    ASSERT_TRUE(undo.undo());
    EXPECT_TRUE(f.hasRecord("A"));
    EXPECT_TRUE(f.hasRecord("B"));
    EXPECT_FALSE(f.hasRecord("Z"));
}

TEST(StreamUndoRecords, WhatALookLeavesInTheRecordsIsNoLevelUnlessTheEditWasAccepted) {
    UndoRecords f;
    StreamUndo undo(f.format, {.conversions = &f.conversions});
    ASSERT_TRUE(f.conversions.createDefaultDefinition(nullptr, "New", true));
    EXPECT_FALSE(undo.commit(false));
    EXPECT_FALSE(undo.canUndo());
    ASSERT_TRUE(f.conversions.writeEuComment(nullptr, "A", "edited", false));
    EXPECT_TRUE(undo.commit(true));
    ASSERT_TRUE(undo.undo());
    EXPECT_EQ(f.comment("A"), "Of A");
    EXPECT_TRUE(f.hasRecord("New"));
}

TEST(StreamUndoRecords, AFileThatCanNotBePutBackIsReportedAndTheStreamComesBackAllTheSame) {
    UndoRecords f;
    StreamUndo undo(f.format, {.conversions = &f.conversions});
    ASSERT_TRUE(f.rename("A", "Z"));
    ASSERT_TRUE(undo.commit());
    const auto path = chunkPath(f.store, 0);
    ASSERT_TRUE(deleteFile(path).ok());
    ASSERT_TRUE(makeFolders(path + "/in the way").ok());
    f.ui.boxes.clear();
    EXPECT_FALSE(undo.undo(&f.ui));
    ASSERT_EQ(f.ui.boxes.size(), 1U);
    EXPECT_NE(f.ui.boxes[0].text.find(path), std::string::npos);
    EXPECT_TRUE(f.format.hasMeasurement("A"));
    EXPECT_TRUE(undo.canRedo());
    ASSERT_TRUE(deleteFolder(path).ok());
}

TEST(StreamUndoRecords, NamesThatADeleteMadeForgottenAreKnownAgain) {
    UndoRecords f;
    f.write("[kavu]MULT.M01", "M-1\\BB\\DLN:One;\r\n");
    f.write("[kavu]MULT.M02", "M-2\\BB\\DLN:Two;\r\n");
    f.write("[kavu]PCMMEAS.D01", "D-1\\DLN:One;\r\nD-1\\MN-1-1:A;\r\n");
    f.write("[kavu]PCMMEAS.D02", "D-2\\DLN:Two;\r\nD-2\\MN-1-1:A;\r\n");
    MeasurementNames names(f.context);
    ASSERT_TRUE(names.checkForDuplicates(nullptr));
    f.edit.names = &names;
    StreamUndo undo(f.format, {.conversions = &f.conversions, .names = &names});
    ASSERT_TRUE(deleteMeasurement(f.format, f.parent, f.edit, "A"));
    ASSERT_TRUE(undo.commit());
    EXPECT_FALSE(names.measurementInOtherStream("A", 1));
    ASSERT_TRUE(undo.undo());
    EXPECT_TRUE(names.measurementInOtherStream("A", 1));
    ASSERT_TRUE(undo.redo());
    EXPECT_FALSE(names.measurementInOtherStream("A", 1));
}

TEST(StreamUndoRecords, TaggedDataComesBack) {
    UndoRecords f(2011);
    f.format.dGroup = 1;
    StreamUndo undo(f.format);
    TaggedMeasurement tagged;
    tagged.values["MN"] = "T1";
    ASSERT_TRUE(storeTaggedData(f.format, f.parent, {tagged}));
    EXPECT_TRUE(undo.commit());
    ASSERT_TRUE(undo.undo());
    EXPECT_EQ(readTaggedData(f.format, f.parent)->size(), 0U);
    ASSERT_TRUE(undo.redo());
    ASSERT_EQ(readTaggedData(f.format, f.parent)->size(), 1U);
    EXPECT_EQ(readTaggedData(f.format, f.parent)->front().name(), "T1");
}

TEST(StreamUndoRecords, TheCommentOfTheSectionComesBackAndGoesAsAFile) {
    UndoRecords f;
    StreamUndo undo(f.format);
    const auto file = [&f] {
        return f.has(kMeasurementComment) ? f.TestContext::read(kMeasurementComment)
                                          : std::string("none");
    };
    for (const auto* const text : {"One", "Two", ""}) {
        ASSERT_TRUE(storeMeasurementComment(f.format, f.parent, text));
        ASSERT_TRUE(undo.commit(false)) << "an edit of its own, accepted or not";
    }
    EXPECT_EQ(file(), "none");
    for (const auto* const text : {"Two", "One", "none"}) {
        ASSERT_TRUE(undo.undo());
        EXPECT_EQ(file(), text);
    }
    EXPECT_FALSE(undo.canUndo());
    for (const auto* const text : {"One", "Two", "none"}) {
        ASSERT_TRUE(undo.redo());
        EXPECT_EQ(file(), text);
    }
}

TEST(StreamUndoRecords, AnEmptyListOfTaggedDataIsNoEdit) {
    UndoRecords f(2011);
    f.format.dGroup = 1;
    StreamUndo undo(f.format);
    ASSERT_TRUE(storeTaggedData(f.format, f.parent, {}));
    EXPECT_FALSE(undo.commit());
}

TEST(StreamUndoRecords, NoUndoBringsBackWhatAnotherStreamHasLeft) {
    UndoRecords f(2011);
    const auto left = formatPrintf(kTagFormat, 1);
    f.write(left, "D-1\\MN-1-1:Foreign;\r\n");
    StreamUndo undo(f.format);
    TaggedMeasurement tagged;
    tagged.values["MN"] = "T1";
    ASSERT_TRUE(storeTaggedData(f.format, f.parent, {tagged}));
    ASSERT_EQ(f.format.dGroup, 1) << "the stream gets its group with the edit";
    EXPECT_TRUE(undo.commit());
    ASSERT_TRUE(undo.undo());
    EXPECT_FALSE(f.has(left));
    ASSERT_TRUE(undo.redo());
    EXPECT_EQ(readTaggedData(f.format, f.parent)->front().name(), "T1");
}

TEST(StreamUndoRecords, AStreamThatWasSavedMeanwhileIsChangedOnceItIsUndone) {
    UndoRecords f;
    f.format.streamName = "S";
    StreamUndo undo(f.format);
    f.place(12, 1, "N");
    f.format.changed = true;
    ASSERT_TRUE(undo.commit());
    ASSERT_TRUE(undo.undo());
    EXPECT_FALSE(f.format.changed) << "it is what its group files hold";
    ASSERT_TRUE(undo.redo());
    EXPECT_TRUE(f.format.changed);
    ASSERT_TRUE(savePcmFormat(f.format, nullptr));
    const int group = f.format.pGroup;
    EXPECT_GT(group, 0);
    ASSERT_TRUE(undo.undo());
    EXPECT_TRUE(f.format.changed) << "the files hold what was undone";
    EXPECT_EQ(f.format.pGroup, group) << "it is still the stream of that group";
}

TEST(StreamUndoRecords, TheOldestLevelsGoWhereAllTakeMoreThanTheLimit) {
    UndoRecords f;
    constexpr std::size_t kLimit = 40000;
    StreamUndo undo(f.format, {}, kLimit);
    for (int i = 0; i < 40; ++i) {
        f.place(4 + i % 20, 1, "N" + std::to_string(i));
        ASSERT_TRUE(undo.commit());
        EXPECT_LE(undo.bytes(), kLimit) << i;
    }
    int levels = 0;
    while (undo.undo()) {
        ++levels;
        EXPECT_LE(undo.bytes(), kLimit);
    }
    EXPECT_GT(levels, 1);
    EXPECT_LT(levels, 40);
    EXPECT_TRUE(f.format.hasMeasurement("N0")) << "the first one can not be undone any more";
    EXPECT_FALSE(f.format.hasMeasurement("N39"));
    while (undo.redo()) {
        --levels;
    }
    EXPECT_EQ(levels, 0);
    EXPECT_TRUE(f.format.hasMeasurement("N39"));
}

TEST(StreamUndoRecords, OneLevelStaysHoweverLargeItIs) {
    UndoRecords f;
    StreamUndo undo(f.format, {}, 1);
    ASSERT_TRUE(insertFwps(f.format, nullptr, 2, 5));
    ASSERT_TRUE(undo.commit());
    EXPECT_TRUE(undo.undo());
    EXPECT_TRUE(undo.redo());
    EXPECT_TRUE(undo.undo());
    EXPECT_EQ(f.format.wordsPerMinorFrame, 32);
    EXPECT_TRUE(f.format.findInCell(3, 1, "A"));
}

TEST(StreamUndoRecords, AnUndoInsideOfAnEditLeavesTheLevelsOfTheWindowRight) {
    UndoRecords f;
    StreamUndo window(f.format);
    f.place(10, 1, "X");
    {
        StreamUndo inner(f.format);
        f.place(11, 1, "Y");
        ASSERT_TRUE(deleteMeasurement(f.format, nullptr, {}, "A"));
        ASSERT_TRUE(inner.commit());
        ASSERT_TRUE(inner.undo());
    }
    EXPECT_TRUE(f.format.hasMeasurement("X"));
    EXPECT_FALSE(f.format.hasMeasurement("Y"));
    ASSERT_TRUE(window.commit());
    ASSERT_TRUE(window.undo());
    EXPECT_FALSE(f.format.hasMeasurement("X"));
    EXPECT_TRUE(f.format.hasMeasurement("A"));
    EXPECT_FALSE(window.undo());
}

TEST(StreamUndoRecords, AWordWithCopiesThatAreChangedInPlaceComesBack) {
    UndoRecords f;
    for (const int fwp : {12, 14, 16}) {
        f.place(fwp, 1, "M", "MFSC");
    }
    StreamUndo undo(f.format);
    f.format.cells().updateAll("M", [](Measurement& copy) { copy.locationCount = 3; });
    ASSERT_TRUE(undo.commit());
    ASSERT_TRUE(undo.undo());
    for (const int fwp : {12, 14, 16}) {
        EXPECT_EQ(f.format.cells().measurement(f.format.findInCell(fwp, 1, "M")).locationCount, 0)
            << fwp;
    }
    f.place(12, 1, "B9");
    f.place(12, 1, "B1");
    ASSERT_TRUE(undo.commit());
    f.format.sortCells();
    EXPECT_TRUE(undo.commit()) << "the order of a list is a part of the stream";
}

}  // namespace
}  // namespace kavu
