#include "core/talk/SilentInterface.h"
#include "support/RecordingInterface.h"

#include <gtest/gtest.h>

namespace kavu {
namespace {

class Silent : public SilentInterface {
  public:
    using SilentInterface::SilentInterface;
    Button message(const MessageBox&) override { return Button::Ok; }
};

TEST(SilentInterfaceTest, AnswersNoPromptAndOpensNoProgress) {
    Silent silent;
    EXPECT_FALSE(silent.enterText({}));
    EXPECT_FALSE(silent.enterInteger({}));
    EXPECT_FALSE(silent.enterDouble({}));
    EXPECT_FALSE(silent.chooseFile({}));
    EXPECT_EQ(silent.chooseFromList({}, {"a"}), -1);
    EXPECT_EQ(silent.selectFromTable({}), -1);
    EXPECT_TRUE(silent.selectRowsFromTable({}).empty());
    EXPECT_FALSE(silent.openProgress(ProgressMode::WithCancel, true));
    EXPECT_FALSE(silent.cancelRequested());
}

TEST(SilentInterfaceTest, RemembersTheCancelOfItsWatcherUntilItHasAnother) {
    test::RecordingInterface watcher;
    Silent silent(&watcher);
    EXPECT_FALSE(silent.cancelRequested());
    watcher.cancelAtPoll = watcher.polls + 1;
    EXPECT_TRUE(silent.cancelRequested());
    watcher.cancelAtPoll = 0;
    EXPECT_TRUE(silent.cancelRequested()) << "asked once";
    EXPECT_TRUE(silent.isCancelled());
    silent.setWatcher(&watcher);
    EXPECT_FALSE(silent.cancelRequested());
}

}  // namespace
}  // namespace kavu
