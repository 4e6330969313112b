// SPDX-License-Identifier: MIT
#include "Velmora/Coordination/SingleInstanceGuard.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <vector>

#include "Tests/Support/Files.h"
#include "Tests/Support/TemporaryFolder.h"

namespace velmora {
namespace {

using testing::TemporaryFolder;

/// A process of its own that runs `body` and ends with its answer.
template <typename Body>
pid_t inProcess(const Body& body) {
    const pid_t child = ::fork();
    if (child == 0) {
        ::_exit(body());
    }
    return child;
}

int exitStatus(pid_t process) {
    int status = 0;
    ::waitpid(process, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(SingleInstanceGuard, MakesTheFileForItsOwnerOnly) {
    const TemporaryFolder folder;
    SingleInstanceGuard guard(folder / "share");
    ASSERT_TRUE(guard.acquire());
    struct stat status {};
    ASSERT_EQ(::stat((folder / "share/Velmora/velmora.lock").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
}

TEST(SingleInstanceGuard, AcquiringTwiceKeepsTheOneFile) {
    const TemporaryFolder folder;
    SingleInstanceGuard guard(folder.path());
    ASSERT_TRUE(guard.acquire());
    // Were the file opened again, the new one would be locked without trouble.
    std::filesystem::remove(folder / "Velmora/velmora.lock");
    EXPECT_TRUE(guard.acquire());
    EXPECT_FALSE(std::filesystem::exists(folder / "Velmora/velmora.lock"));
}

TEST(SingleInstanceGuard, ASecondProcessIsRefused) {
    const TemporaryFolder folder;
    SingleInstanceGuard guard(folder.path());
    ASSERT_TRUE(guard.acquire());
    const pid_t second =
        inProcess([&] { return SingleInstanceGuard(folder.path()).acquire() ? 1 : 0; });
    EXPECT_EQ(exitStatus(second), 0);
}

TEST(SingleInstanceGuard, GoingAwayFreesTheLockAndLeavesTheFile) {
    const TemporaryFolder folder;
    {
        SingleInstanceGuard first(folder.path());
        ASSERT_TRUE(first.acquire());
    }
    EXPECT_TRUE(std::filesystem::exists(folder / "Velmora/velmora.lock"));
    EXPECT_TRUE(SingleInstanceGuard(folder.path()).acquire());
}

TEST(SingleInstanceGuard, WithoutAPlaceForTheFileNothingIsAcquired) {
    const TemporaryFolder folder;
    EXPECT_FALSE(SingleInstanceGuard(std::nullopt).acquire());
    testing::writeFile(folder / "file", "in the way");
    EXPECT_FALSE(SingleInstanceGuard(folder / "file").acquire());
    EXPECT_EQ(SingleInstanceGuard(folder / "file").lockFilePath(), std::nullopt);
    std::filesystem::create_directories(folder / "share/Velmora/velmora.lock");
    EXPECT_FALSE(SingleInstanceGuard(folder / "share").acquire());
}

TEST(SingleInstanceGuard, AKilledProcessFreesTheLockThoughItsChildrenLive) {
    const TemporaryFolder folder;
    // Its writing end closes when the child becomes another program, which is when the child has
    // let go of whatever is not meant for it.
    std::array<int, 2> ready{};
    ASSERT_EQ(::pipe2(ready.data(), O_CLOEXEC), 0);
    const pid_t holder = inProcess([&] {
        SingleInstanceGuard guard(folder.path());
        if (!guard.acquire()) {
            return 1;
        }
        const pid_t child = ::fork();
        if (child == 0) {
            ::execlp("sleep", "sleep", "60", nullptr);
            ::_exit(1);
        }
        [[maybe_unused]] const auto written = ::write(ready[1], &child, sizeof child);
        ::close(ready[1]);
        while (true) {
            ::pause();
        }
    });
    ::close(ready[1]);
    pid_t child = 0;
    ASSERT_EQ(::read(ready[0], &child, sizeof child), static_cast<ssize_t>(sizeof child));
    char byte = 0;
    ASSERT_EQ(::read(ready[0], &byte, 1), 0);
    ASSERT_EQ(::kill(holder, SIGKILL), 0);
    ::waitpid(holder, nullptr, 0);
    EXPECT_EQ(::kill(child, 0), 0);
    EXPECT_TRUE(SingleInstanceGuard(folder.path()).acquire());
    ::kill(child, SIGKILL);
    ::close(ready[0]);
}

TEST(SingleInstanceGuard, OfAHundredProcessesAtOnceExactlyOneRemains) {
    const TemporaryFolder folder;
    std::array<int, 2> gate{};
    std::array<int, 2> hold{};
    ASSERT_EQ(::pipe(gate.data()), 0);
    ASSERT_EQ(::pipe(hold.data()), 0);
    std::array<int, 2> answers{};
    ASSERT_EQ(::pipe(answers.data()), 0);
    std::vector<pid_t> processes;
    for (int i = 0; i < 100; ++i) {
        processes.push_back(inProcess([&] {
            ::close(gate[1]);
            ::close(hold[1]);
            char byte = 0;
            // Both pipes end when the parent closes them.
            [[maybe_unused]] auto count = ::read(gate[0], &byte, 1);
            SingleInstanceGuard guard(folder / "new" / "folder");
            const char won = guard.acquire() ? 1 : 0;
            count = ::write(answers[1], &won, 1);
            count = ::read(hold[0], &byte, 1);
            return 0;
        }));
    }
    ::close(gate[1]);
    int winners = 0;
    for (std::size_t i = 0; i < processes.size(); ++i) {
        char won = 0;
        ASSERT_EQ(::read(answers[0], &won, 1), 1);
        winners += won;
    }
    EXPECT_EQ(winners, 1);
    ::close(hold[1]);
    for (const pid_t process : processes) {
        EXPECT_EQ(exitStatus(process), 0);
    }
    for (const int end : {gate[0], hold[0], answers[0], answers[1]}) {
        ::close(end);
    }
}

}  // namespace
}  // namespace velmora
