#include "app/bus/StreamDataForms.h"
#include "app/bus/StreamDataStage.h"
#include "app/groups/RSheet.h"
#include "app/pcm/PcmForms.h"
#include "conversion/ConversionStore.h"

namespace kavu {
namespace {

using test::press;
using test::type;

class StreamDataFormsTest : public test::StreamDataStage {
  protected:
    StreamDataFormsTest() : StreamDataStage(2011) {}
    bool editDeck() {
        auto& application = t.application;
        return editRecorder(form,
                            SourceParts{application.context(), application.conversions(),
                                        application.measurementNames()},
                            "Deck", [&application](FormContext& same, const std::string& source) {
                                return editMessagesOf(same, application, source);
                            });
    }
};

TEST_F(StreamDataFormsTest, TheSheetOfARecorderAsksAmongTheLinksOfItsSource) {
    putGroup("TA:X1;NS\\N:0;");
    put("[kavu]MULT.M02", "M-2\\ID:Radio;\r\nM-2\\BB\\DLN:Far;\r\nM-2\\SI\\N:0;\r\n");
    put("[kavu]PCMS.S02", "S-2\\DLN:Far;\r\n");
    t.ui.rows = {0};
    door.next([this](QDialog& recorder) {
        door.next([](QDialog& messages) {
            EXPECT_EQ(messages.windowTitle(), u"Edit Message Attributes - Data Link: Link");
            dynamic_cast<PropertySheet&>(messages).openPage(1);
            type(messages, "TA", QStringLiteral("Y2"));
            press(messages, "ok");
        });
        press(recorder, "editMessages");
        press(recorder, "cancel");
    });
    EXPECT_TRUE(editDeck());
    EXPECT_TRUE(has("TA:Y2"));
    ASSERT_EQ(t.ui.tablePrompts.size(), 1U);
    EXPECT_EQ(t.ui.tablePrompts[0].title, "Select Data Link");
    ASSERT_EQ(t.ui.tablePrompts[0].rows.size(), 1U);
    EXPECT_EQ(t.ui.tablePrompts[0].rows[0].front(), "Link");
}

TEST_F(StreamDataFormsTest, ARecorderWithoutMessageDataSaysSo) {
    door.next([](QDialog& recorder) {
        press(recorder, "editMessages");
        press(recorder, "cancel");
    });
    EXPECT_FALSE(editDeck());
    EXPECT_TRUE(t.ui.hasText("This data source has no message data streams."));
}

TEST_F(StreamDataFormsTest, ARecorderBefore2009HasNoButtonForMessages) {
    t.application.context().document.version = 2007;
    form.edition = 2007;
    door.next([](QDialog& recorder) {
        EXPECT_EQ(recorder.findChild<QWidget*>(QStringLiteral("editMessages")), nullptr);
        press(recorder, "cancel");
    });
    EXPECT_FALSE(editDeck());
}

TEST_F(StreamDataFormsTest, OtherStreamsAreToldAboutTheNewNamesAndNotAboutThoseThatAreGone) {
    putGroup(
        "NS\\N:1;SNA-1:S;NMS\\N-1:1;MID-1-1:1;NFLDS\\N-1-1:0;MN\\N-1-1:1;MN-1-1-1:Old;"
        "NML\\N-1-1-1:0;");
    auto& names = t.application.measurementNames();
    ASSERT_TRUE(names.checkForDuplicates(nullptr));
    ASSERT_TRUE(names.measurementInOtherStream("Old", 2));
    door.next([this](QDialog& messages) {
        door.next(fill({{"name", "New"}}));
        key(messages, {0, 0, 1, 0}, Qt::Key_F2);
        press(messages, "ok");
    });
    EXPECT_TRUE(editStream(form, t.application, "Link"));
    EXPECT_TRUE(names.measurementInOtherStream("New", 2));
    EXPECT_FALSE(names.measurementInOtherStream("Old", 2));
}

}  // namespace
}  // namespace kavu
