#include "core/files/IoStatus.h"
#include "core/talk/FileReports.h"
#include "support/RecordingInterface.h"
#include "support/TestContext.h"

#include <cerrno>

namespace kavu::test {
namespace {

class FileReportsTest : public ::testing::Test {
  protected:
    void expectBox(int id, const std::string& title, const std::string& text, Icon icon) {
        ASSERT_EQ(ui.boxes.size(), 1u);
        EXPECT_EQ(ui.boxes[0].id, id);
        EXPECT_EQ(ui.boxes[0].title, title);
        EXPECT_EQ(ui.boxes[0].text, text);
        EXPECT_EQ(ui.boxes[0].icon, icon);
    }

    TestContext t;
    RecordingInterface ui;
    IoStatus status{"/x/y", EACCES};
};

TEST_F(FileReportsTest, AFileThatCanNotBeReadIsNamedWithTheReason) {
    reportUnableToRead(&ui, status);
    expectBox(0, "KAVU-9 Error", "Unable to read '/x/y'\n\nReason: Permission denied", Icon::Error);
}

TEST_F(FileReportsTest, AFileThatCanNotBeWrittenIsNamedUnderTheTitleOfTheOperation) {
    reportUnableToWrite(&ui, status, title::kErrorSaving);
    expectBox(0, "Error Saving TMATS File", "Unable to write '/x/y'\n\nReason: Permission denied",
              Icon::Error);
}

TEST_F(FileReportsTest, AFailedActionShowsThePathUnlessTheFileHasAName) {
    reportFailedAction(t.messages, &ui, status, title::kErrorReadingConversion, "Create");
    expectBox(313, "Error Reading Data Conversion Information",
              "Unable to Create /x/y\n\nReason: Permission denied", Icon::Error);
    ui.boxes.clear();
    reportFailedAction(t.messages, &ui, status, title::kErrorSaving, "Create", "DATA2.TMP",
                       kWarningBox);
    expectBox(313, "Error Saving TMATS File",
              "Unable to Create DATA2.TMP\n\nReason: Permission denied", Icon::Warning);
}

TEST_F(FileReportsTest, AGroupThatCanNotBeSavedIsNamed) {
    reportUnreadableGroup(t.messages, &ui, status, "PAM Attributes", "/x/y");
    expectBox(407, "Error Saving TMATS File",
              "Unable to read 'PAM Attributes' temporary file (/x/y).\n\nOperation Aborted.\n\n"
              "Reason: Permission denied",
              Icon::Warning);
}

TEST_F(FileReportsTest, AllAreSilentWithoutAParent) {
    reportUnableToRead(nullptr, status);
    reportUnableToWrite(nullptr, status);
    reportFailedAction(t.messages, nullptr, status, title::kError, "Create");
    reportUnreadableGroup(t.messages, nullptr, status, "PAM Attributes", "/x/y");
    EXPECT_TRUE(ui.boxes.empty());
}

}  // namespace
}  // namespace kavu::test
