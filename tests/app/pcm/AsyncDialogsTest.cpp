#include "app/framework/EditableList.h"
#include "app/pcm/AsyncDialogs.h"
#include "app/pcm/SheetStage.h"

namespace kavu {
namespace {

using test::Commands;
using test::counterAt;
using test::enabled;
using test::find;
using test::pick;
using test::press;
using test::SheetStage;
using test::operator+;

class AsyncStage : public SheetStage {
  public:
    explicit AsyncStage(int edition = 2009) : SheetStage(edition) {
        format.implicitSubframes = edition >= 2011;
    }
    bool edit(const test::TestDoor::Driver& driver, int fwp = 7, int fn = 1) {
        door.next(driver);
        return editAsyncAt(form, format, nullptr, fwp, fn);
    }
    bool make(const char* name, int fwp = 7) {
        AsyncFormat contents;
        contents.dataLinkName = name;
        contents.supercom = "NO";
        contents.locationMode = "NA";
        const bool made = saveAsyncFormat(format, nullptr, 0, contents, {{fwp, {}, {}}});
        format.changed = false;
        return made;
    }
    AsyncFormat& record(std::size_t n = 1) { return format.asyncFormats[n - 1]; }
    void discard(QDialog& dialog) {
        ui.otherwise = Button::Yes;
        press(dialog, "cancel");
    }
};

TEST(AsyncDialogs, ANewFormatNeedsItsNameAndStandsAtThePlace) {
    AsyncStage s;
    EXPECT_TRUE(s.edit([&](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), QStringLiteral("EDIT_ASYNC_FORMAT1"));
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        EXPECT_FALSE(enabled(dialog, "delete"));
        EXPECT_FALSE(enabled(dialog, "dataMerge"));
        press(dialog, "ok");
        EXPECT_EQ(s.lastBox(), 367);
        test::type(dialog, "dataLinkName", QStringLiteral("Other"));
        press(dialog, "ok");
    }));
    ASSERT_EQ(s.format.asyncCount(), 1);
    EXPECT_EQ(s.record().dataLinkName, "Other");
    EXPECT_EQ(s.record().supercom, "NO");
    EXPECT_TRUE(isAsyncAt(s.format, 7, 1, 1));
    EXPECT_TRUE(s.format.changed);
}

TEST(AsyncDialogs, CancelLeavesTheStreamAndAsksAfterAnEdit) {
    AsyncStage s;
    EXPECT_FALSE(s.edit([](QDialog& dialog) { press(dialog, "cancel"); }));
    EXPECT_TRUE(s.ui.boxes.empty());
    s.ui.queued = {Button::No, Button::Yes};
    EXPECT_FALSE(s.edit([](QDialog& dialog) {
        test::type(dialog, "dataLinkName", QStringLiteral("Other"));
        press(dialog, "cancel");
        EXPECT_TRUE(dialog.isVisible());
        press(dialog, "cancel");
    }));
    EXPECT_EQ(s.format.asyncCount(), 0);
    EXPECT_FALSE(s.format.changed);
}

// Every location but the first lost its mask, its length and its frames to those of the first.
TEST(AsyncDialogs, ANewNameLeavesEveryLocationOfTheFileAsItIs) {
    const Commands stepped = {
        "AEF\\N:1",   "AEF\\DLN-1:INNER", "AEF1-1:2",     "AEF2-1:FI",
        "AEF3-1-1:4", "AEF4-1:5",         "AEF5-1-1:16",  "AEF6-1-1:1111000011110000",
        "AEF7-1-1:1", "AEF8-1-1-1:2",     "AEF9-1-1-1:2", "AEF10-1-1-1:8",
        "AEF5-1-2:4", "AEF6-1-2:1111",    "AEF7-1-2:NO"};
    SheetStage s(2011, stepped + counterAt(1, 8));
    s.door.next([](QDialog& dialog) {
        test::type(dialog, "dataLinkName", QStringLiteral("RENAMED"));
        press(dialog, "ok");
    });
    EXPECT_TRUE(editAsyncAt(s.form, s.format, nullptr, 9, 1));
    ASSERT_TRUE(savePcmFormat(s.format, s.parent));
    for (const auto& line : stepped) {
        EXPECT_TRUE(s.saved(replaceAll(line, "INNER", "RENAMED"))) << line;
    }
}

TEST(AsyncDialogs, NamesOfOtherStreamsAndFormatsAreRefused) {
    AsyncStage s;
    ASSERT_TRUE(s.make("Taken", 9));
    s.edit([&](QDialog& dialog) {
        test::type(dialog, "dataLinkName", QStringLiteral("PCM 1"));
        press(dialog, "ok");
        EXPECT_EQ(s.lastBox(), 374);
        test::type(dialog, "dataLinkName", QStringLiteral("Taken"));
        press(dialog, "ok");
        EXPECT_EQ(s.lastBox(), 375);
        s.discard(dialog);
    });
    EXPECT_EQ(s.format.asyncCount(), 1);
}

TEST(AsyncDialogs, WithoutALocationTypeOrAnIntervalItStaysOpen) {
    AsyncStage s;
    s.edit([&](QDialog& dialog) {
        test::type(dialog, "dataLinkName", QStringLiteral("Other"));
        QTest::keyClick(find<QComboBox>(dialog, "locationType"), Qt::Key_Delete);
        EXPECT_FALSE(enabled(dialog, "locations"));
        press(dialog, "ok");
        EXPECT_EQ(s.lastBox(), 368);
        pick(dialog, "locationType", QStringLiteral("FI"));
        press(dialog, "ok");
        EXPECT_EQ(s.lastBox(), 369);
        s.discard(dialog);
    });
}

TEST(AsyncDialogs, AnIntervalWithoutANumberOfLocationsIsRefused) {
    AsyncStage s;
    s.edit([&](QDialog& dialog) {
        test::type(dialog, "dataLinkName", QStringLiteral("Other"));
        pick(dialog, "locationType", QStringLiteral("FI"));
        s.door.next([](QDialog& interval) {
            test::type(interval, "interval", QStringLiteral("5"));
            press(interval, "ok");
        });
        press(dialog, "locations");
        press(dialog, "ok");
        EXPECT_EQ(s.lastBox(), 369);
        EXPECT_TRUE(dialog.isVisible());
        s.discard(dialog);
    });
    EXPECT_EQ(s.format.asyncCount(), 0);
}

TEST(AsyncDialogs, FirstWordAndIntervalMakeTheLocations) {
    AsyncStage s;
    EXPECT_TRUE(s.edit([&](QDialog& dialog) {
        test::type(dialog, "dataLinkName", QStringLiteral("Other"));
        pick(dialog, "locationType", QStringLiteral("FI"));
        s.door.next([&](QDialog& interval) {
            EXPECT_EQ(interval.objectName(), QStringLiteral("EDIT_ASYNC_FORMAT2"));
            EXPECT_EQ(test::checkWindow(interval), std::vector<std::string>{});
            test::type(interval, "numberOfLocations", QStringLiteral("3"));
            test::type(interval, "interval", QStringLiteral("5"));
            s.door.next([](QDialog& place) {
                EXPECT_EQ(place.objectName(), QStringLiteral("EDIT_ASYNC_FORMAT4"));
                EXPECT_EQ(place.findChild<EditableList*>(), nullptr) << "frames came later";
                test::type(place, "frameWordPosition", QStringLiteral("8"));
                test::type(place, "mask", QStringLiteral("1100"));
                press(place, "ok");
            });
            press(interval, "maskAndFrames");
            EXPECT_EQ(find<QLineEdit>(interval, "firstFrameWordPosition")->text(),
                      QStringLiteral("8"));
            press(interval, "ok");
        });
        press(dialog, "locations");
        press(dialog, "ok");
    }));
    EXPECT_EQ(s.record().supercom, "3");
    EXPECT_EQ(s.record().interval, 5);
    for (const int word : {8, 13, 18}) {
        EXPECT_TRUE(isAsyncAt(s.format, word, 1, 1)) << word;
    }
    EXPECT_EQ(asyncPlaces(s.format)[0][0].mask, "1100");
}

TEST(AsyncDialogs, EveryLocationIsAListOfPlaces) {
    AsyncStage s;
    ASSERT_TRUE(s.make("A"));
    EXPECT_TRUE(s.edit([&](QDialog& dialog) {
        pick(dialog, "locationType", QStringLiteral("EL"));
        s.door.next([&](QDialog& locations) {
            EXPECT_EQ(locations.objectName(), QStringLiteral("EDIT_ASYNC_FORMAT3"));
            EXPECT_EQ(test::checkWindow(locations), std::vector<std::string>{});
            auto* const list = find<EditableList>(locations, "locations");
            for (const auto* const word : {"9", "7"}) {
                s.door.next([word](QDialog& place) {
                    test::type(place, "frameWordPosition", QLatin1String(word));
                    press(place, "ok");
                });
                list->addRow();
            }
            ASSERT_EQ(list->rowCount(), 3);
            press(locations, "ok");
        });
        press(dialog, "locations");
        press(dialog, "ok");
        EXPECT_EQ(s.lastBox(), 373) << "a word twice";
        s.door.next([&](QDialog& locations) {
            auto* const list = find<EditableList>(locations, "locations");
            s.ui.byId[83] = Button::Yes;
            list->selectRow(2);
            list->deleteRow();
            press(locations, "ok");
        });
        press(dialog, "locations");
        press(dialog, "ok");
    }));
    EXPECT_EQ(s.record().supercom, "2");
    EXPECT_EQ(s.record().locationMode, "EL");
    EXPECT_TRUE(isAsyncAt(s.format, 9, 1, 1));
}

TEST(AsyncDialogs, WordsAndMasksThatCanNotBeAreRefused) {
    struct Row {
        const char* word;
        const char* mask;
        int message;
    };
    for (const auto& row : {Row{"32", "1", 195}, Row{"30", "1", 196}, Row{"7", "12", 371},
                            Row{"7", "11111111111111111", 372}}) {
        AsyncStage s;
        createIdCounter(s.format, nullptr, 30);
        s.format.changed = false;
        s.edit([&](QDialog& dialog) {
            test::type(dialog, "dataLinkName", QStringLiteral("Other"));
            s.door.next([&](QDialog& place) {
                test::type(place, "frameWordPosition", QLatin1String(row.word));
                test::type(place, "mask", QLatin1String(row.mask));
                press(place, "ok");
            });
            press(dialog, "locations");
            press(dialog, "ok");
            EXPECT_EQ(s.lastBox(), row.message);
            if (row.message == 195 || row.message == 196) {
                EXPECT_TRUE(s.ui.hasText("#1 ('Other')")) << s.boxText(row.message);
            }
            EXPECT_TRUE(dialog.isVisible());
            s.discard(dialog);
        });
        EXPECT_FALSE(s.format.changed) << row.message;
    }
}

TEST(AsyncDialogs, RangesOfFramesAreCheckedAndKeptInTheNewestEdition) {
    AsyncStage s(2011);
    EXPECT_TRUE(s.edit([&](QDialog& dialog) {
        test::type(dialog, "dataLinkName", QStringLiteral("Other"));
        s.door.next([&](QDialog& place) {
            EXPECT_EQ(test::checkWindow(place), std::vector<std::string>{});
            s.door.next([&](QDialog& frames) {
                EXPECT_EQ(frames.objectName(), QStringLiteral("EDIT_ASYNC_FORMAT5"));
                test::type(frames, "startFrame", QStringLiteral("9"));
                press(frames, "ok");
                EXPECT_EQ(s.lastBox(), 160);
                test::type(frames, "startFrame", QStringLiteral("2"));
                test::type(frames, "frameInterval", QStringLiteral("2"));
                test::type(frames, "endFrame", QStringLiteral("1"));
                press(frames, "ok");
                EXPECT_EQ(s.ui.countBoxes(160), 2);
                test::type(frames, "endFrame", QStringLiteral("6"));
                press(frames, "ok");
            });
            find<EditableList>(place, "frames")->addRow();
            press(place, "ok");
        });
        press(dialog, "locations");
        press(dialog, "ok");
    }));
    EXPECT_EQ(s.record().locations[0].frames, (std::vector<FrameRange>{{2, 2, 6}}));
}

TEST(AsyncDialogs, ADataMergeHasItsOwnFieldsAndNoMask) {
    AsyncStage s;
    EXPECT_TRUE(s.edit([&](QDialog& dialog) {
        test::type(dialog, "dataLinkName", QStringLiteral("Other"));
        pick(dialog, "kind", QStringLiteral("Async Data Merge"));
        s.door.next([](QDialog& merge) {
            EXPECT_EQ(merge.objectName(), QStringLiteral("EDIT_ASYNC_FORMAT6"));
            EXPECT_EQ(test::checkWindow(merge), std::vector<std::string>{});
            test::type(merge, "ADM\\MP", QStringLiteral("EV"));
            test::type(merge, "ADM\\UDP", QStringLiteral("4"));
            test::type(merge, "ADM5", QStringLiteral("9"));
            press(merge, "ok");
        });
        press(dialog, "dataMerge");
        s.door.next([](QDialog& place) {
            EXPECT_EQ(place.findChild<QWidget*>(QStringLiteral("mask")), nullptr);
            press(place, "cancel");
        });
        press(dialog, "locations");
        press(dialog, "ok");
    }));
    EXPECT_TRUE(s.record().isDataMerge);
    EXPECT_EQ(s.record().mergeParity, "EV");
    EXPECT_EQ(s.record().userDataPosition, "4");
    EXPECT_EQ(s.record().adm5, 9);
    EXPECT_EQ(s.record().adm6, 1);
    EXPECT_EQ(s.record().adm7, "NO");
}

TEST(AsyncDialogs, DeleteAsksWithItsOwnTitle) {
    AsyncStage s;
    ASSERT_TRUE(s.make("A"));
    s.ui.byId[137] = Button::No;
    EXPECT_FALSE(s.edit([](QDialog& dialog) {
        press(dialog, "delete");
        EXPECT_TRUE(dialog.isVisible());
        press(dialog, "cancel");
    }));
    EXPECT_EQ(s.ui.boxes.back().title, "Delete Async Format?");
    s.ui.byId[137] = Button::Yes;
    EXPECT_TRUE(s.edit([](QDialog& dialog) { press(dialog, "delete"); }));
    EXPECT_EQ(s.format.asyncCount(), 0);
}

TEST(AsyncDialogs, OneTooManyIsRefusedAndWithAMergeOneSooner) {
    for (const bool merges : {false, true}) {
        AsyncStage s;
        const int most = merges ? kMostAsyncFormats - 1 : kMostAsyncFormats;
        for (int n = 1; n <= most; ++n) {
            ASSERT_TRUE(s.make(("A" + std::to_string(n)).c_str(), n));
        }
        s.record().isDataMerge = merges;
        s.edit(
            [&](QDialog& dialog) {
                test::type(dialog, "dataLinkName", QStringLiteral("Other"));
                press(dialog, "ok");
                EXPECT_EQ(s.lastBox(), 215);
                EXPECT_EQ(s.ui.boxes.back().titleId, 136);
                EXPECT_NE(s.boxText(215).find("maximum of 18 async"), std::string::npos);
                EXPECT_TRUE(dialog.isVisible());
                s.discard(dialog);
            },
            25);
        EXPECT_EQ(s.format.asyncCount(), most);
        EXPECT_FALSE(s.format.changed);
    }
}

TEST(AsyncDialogs, AMergesTextThatIsLongerThanItsFieldStaysWhole) {
    AsyncStage s;
    ASSERT_TRUE(s.make("A"));
    const std::string mask(100, '1');
    s.record().isDataMerge = true;
    s.record().overheadMask = mask;
    EXPECT_TRUE(s.edit([&](QDialog& dialog) {
        s.door.next([](QDialog& merge) {
            test::type(merge, "ADM5", QStringLiteral("9"));
            press(merge, "ok");
        });
        press(dialog, "dataMerge");
        press(dialog, "ok");
    }));
    EXPECT_EQ(s.record().overheadMask, mask);
    EXPECT_EQ(s.record().adm5, 9);
}

TEST(AsyncDialogs, ARecordThatHasGoneIsToldWhenItIsStored) {
    AsyncStage s;
    ASSERT_TRUE(s.make("A"));
    s.edit([&](QDialog& dialog) {
        removeAsyncFormat(s.format, nullptr, 1, -1, -1);
        test::type(dialog, "dataLinkName", QStringLiteral("B"));
        press(dialog, "ok");
        EXPECT_EQ(s.lastBox(), 370);
        s.discard(dialog);
    });
}

}  // namespace
}  // namespace kavu
