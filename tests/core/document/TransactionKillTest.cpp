// Kills the program at every call by which an operation on the document changes a folder:
// recovery then reads the document as it was before the operation, or as it is after it, and
// never anything between.
#include "core/document/DocumentHistory.h"
#include "core/document/Transaction.h"
#include "core/text/Text.h"
#include "support/TestContext.h"

#include <cerrno>
#include <fcntl.h>
#include <functional>
#include <map>
#include <random>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// Number of calls until the death; 0 for never. Only a child process sets it.
long callsLeft = 0;
bool linksFail = false;
constexpr int kDied = 99;

void countCall() {
    if (callsLeft > 0 && --callsLeft == 0) {
        _exit(kDied);
    }
}

}  // namespace

// These take the place of the functions of the system's library.
extern "C" {
int rename(const char* from, const char* to) noexcept {
    countCall();
    return static_cast<int>(::syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0));
}
int link(const char* from, const char* to) noexcept {
    countCall();
    if (linksFail) {
        errno = EPERM;
        return -1;
    }
    return static_cast<int>(::syscall(SYS_linkat, AT_FDCWD, from, AT_FDCWD, to, 0));
}
int unlink(const char* path) noexcept {
    countCall();
    return static_cast<int>(::syscall(SYS_unlinkat, AT_FDCWD, path, 0));
}
int mkdir(const char* path, mode_t mode) noexcept {
    countCall();
    return static_cast<int>(::syscall(SYS_mkdirat, AT_FDCWD, path, mode));
}
int rmdir(const char* path) noexcept {
    countCall();
    return static_cast<int>(::syscall(SYS_unlinkat, AT_FDCWD, path, AT_REMOVEDIR));
}
ssize_t write(int descriptor, const void* bytes, size_t count) {
    countCall();
    return ::syscall(SYS_write, descriptor, bytes, count);
}
}

namespace kavu::test {

namespace {

using Tree = std::map<std::string, std::string>;
using Work = std::function<void(TestContext&)>;

const std::vector<std::string> kNames = {
    "[kavu]GTMP.G",       "[kavu]DSRCE.T01",    "[kavu]DSRCE.T02",  "[kavu]PCMFMT.P01",
    "[kavu]00000000.C_O", "[kavu]00000001.C_O", "[kavu]ALPHA.C_COM"};

/// What a recovery takes for the document.
Tree recovered(const TestContext& c) {
    OpenChanges changes;
    EXPECT_TRUE(filesBeforeOpenChanges(c.store.folder(), changes).ok());
    std::vector<FolderEntry> entries;
    EXPECT_TRUE(listFolder(c.store.folder(), entries).ok());
    Tree tree;
    for (const auto& entry : entries) {
        if (!entry.isFolder && !entry.name.ends_with(".new") &&
            !changes.former.contains(entry.name)) {
            tree[entry.name] = readFile(c.store.pathOf(entry.name));
        }
    }
    for (const auto& [name, path] : changes.former) {
        if (!path.empty()) {
            tree[name] = readFile(path);
        }
    }
    return tree;
}

/// Runs `work` in a process that dies at its call of this number; false if it lived on.
bool diesAt(long call, TestContext& c, const Work& work) {
    const auto child = ::fork();
    if (child == 0) {
        callsLeft = call;
        work(c);
        _exit(0);
    }
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status)) << "the child has crashed";
    EXPECT_TRUE(WEXITSTATUS(status) == 0 || WEXITSTATUS(status) == kDied);
    return WEXITSTATUS(status) == kDied;
}

/// Kills `work`, after `setUp`, at each of its calls. Gives how often it died.
int killEverywhere(const Work& setUp, const Work& work, bool mayEndAfter = true) {
    Tree before;
    Tree after;
    {
        TestContext c;
        setUp(c);
        before = recovered(c);
        work(c);
        after = recovered(c);
    }
    int deaths = 0;
    for (long call = 1;; ++call) {
        TestContext c;
        setUp(c);
        const bool died = diesAt(call, c, work);
        const auto now = recovered(c);
        EXPECT_TRUE(now == before || (mayEndAfter && now == after)) << "killed at call " << call;
        if (!died) {
            EXPECT_EQ(now, after);
            return deaths;
        }
        ++deaths;
    }
}

void put(TestContext& c, const std::string& name, std::string_view bytes) {
    EXPECT_TRUE(c.files.put(name, bytes).ok());
}

/// Changes some files, with parts that are taken back and parts that stay.
void changeAnyhow(TestContext& c, std::mt19937& random, int depth) {
    for (auto count = 1 + random() % 4; count > 0; --count) {
        const auto& name = kNames[random() % kNames.size()];
        switch (random() % 6) {
            case 0:
                (void)c.files.removeIfThere(name);
                break;
            case 1:
                if (const auto& to = kNames[random() % kNames.size()]; c.has(name) && to != name) {
                    EXPECT_TRUE(c.files.move(name, to).ok());
                }
                break;
            case 2:
                if (depth < 2) {
                    Transaction part(c.context, "A part");
                    changeAnyhow(c, random, depth + 1);
                    if (random() % 2 == 0) {
                        EXPECT_TRUE(part.commit().ok());
                    }
                }
                break;
            case 3:
                put(c, name, c.has(name) ? c.read(name) : std::string());
                break;
            default:
                put(c, name, "written " + std::to_string(random()));
                break;
        }
    }
}

void setUpSome(TestContext& c, std::mt19937& random) {
    for (const auto& name : kNames) {
        if (random() % 3 != 0) {
            put(c, name, "first " + std::to_string(random()));
        }
    }
}

Work operation(unsigned seed, bool isCommitted) {
    return [=](TestContext& c) {
        std::mt19937 random(seed);
        Transaction transaction(c.context, "Anything");
        changeAnyhow(c, random, 0);
        if (isCommitted) {
            EXPECT_TRUE(transaction.commit().ok());
        }
    };
}

Work firstFiles(unsigned seed) {
    return [=](TestContext& c) {
        std::mt19937 random(seed + 1000);
        setUpSome(c, random);
    };
}

Work both(Work one, Work other) {
    return [one = std::move(one), other = std::move(other)](TestContext& c) {
        one(c);
        other(c);
    };
}

constexpr unsigned kSeeds = 6;

}  // namespace

TEST(TransactionKillTest, LeavesAnOperationWholeOrNotBegun) {
    int deaths = 0;
    for (unsigned seed = 0; seed < kSeeds; ++seed) {
        SCOPED_TRACE(seed);
        deaths += killEverywhere(firstFiles(seed), operation(seed, true));
    }
    EXPECT_GT(deaths, 40) << "an operation without calls proves nothing";
}

TEST(TransactionKillTest, LeavesTheDocumentAsItWasOfAnOperationThatIsTakenBack) {
    int deaths = 0;
    for (unsigned seed = 0; seed < kSeeds; ++seed) {
        SCOPED_TRACE(seed);
        deaths += killEverywhere(firstFiles(seed), operation(seed, false), false);
    }
    EXPECT_GT(deaths, 40);
}

TEST(TransactionKillTest, LeavesAnUndoWholeOrNotBegun) {
    int deaths = 0;
    for (unsigned seed = 0; seed < kSeeds; ++seed) {
        SCOPED_TRACE(seed);
        deaths += killEverywhere(both(firstFiles(seed), operation(seed, true)),
                                 [](TestContext& c) { c.history.undo(nullptr); });
    }
    EXPECT_GT(deaths, 20);
}

TEST(TransactionKillTest, LeavesARedoWholeOrNotBegun) {
    int deaths = 0;
    for (unsigned seed = 0; seed < kSeeds; ++seed) {
        SCOPED_TRACE(seed);
        const auto undo = [](TestContext& c) { c.history.undo(nullptr); };
        deaths += killEverywhere(both(both(firstFiles(seed), operation(seed, true)), undo),
                                 [](TestContext& c) { c.history.redo(nullptr); });
    }
    EXPECT_GT(deaths, 20);
}

TEST(TransactionKillTest, HoldsWhereTheDiskKnowsNoLinks) {
    linksFail = true;
    for (unsigned seed = 0; seed < kSeeds / 2; ++seed) {
        SCOPED_TRACE(seed);
        killEverywhere(firstFiles(seed), operation(seed, true));
        killEverywhere(firstFiles(seed), operation(seed, false), false);
        killEverywhere(both(firstFiles(seed), operation(seed, true)),
                       [](TestContext& c) { c.history.undo(nullptr); });
    }
    linksFail = false;
}

TEST(TransactionKillTest, LeavesAnOperationThatNobodyAskedForWholeOrNotBegun) {
    for (unsigned seed = 0; seed < kSeeds / 2; ++seed) {
        SCOPED_TRACE(seed);
        killEverywhere(both(firstFiles(seed), operation(seed, true)), [seed](TestContext& c) {
            std::mt19937 random(seed + 77);
            Transaction transaction(c.context, "Nobody");
            changeAnyhow(c, random, 1);
            EXPECT_TRUE(transaction.commitUnasked().ok());
        });
    }
}

TEST(TransactionKillTest, KeepsThePartsOfASheetThatWereAccepted) {
    for (unsigned seed = 0; seed < kSeeds / 2; ++seed) {
        SCOPED_TRACE(seed);
        killEverywhere(firstFiles(seed), [seed](TestContext& c) {
            std::mt19937 random(seed);
            Transaction sheet(c.context, "Sheet", OnCrash::Keep);
            Transaction part(c.context, "Part");
            changeAnyhow(c, random, 1);
            EXPECT_TRUE(part.commit().ok());
            EXPECT_TRUE(sheet.commit().ok());
        });
    }
}

}  // namespace kavu::test
