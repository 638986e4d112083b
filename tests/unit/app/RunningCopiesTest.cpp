#include "app/desktop/RunningCopies.h"

#include <QTemporaryDir>
#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>

namespace tarnwick {
namespace {

/// A copy in a process of its own, which ends only by being killed.
class CopyProcess {
public:
    explicit CopyProcess(const QString& folder) {
        EXPECT_EQ(pipe(m_orders) + pipe(m_answers), 0);
        m_process = fork();
        if (m_process == 0)
            serve(folder);
    }
    CopyProcess(const CopyProcess&) = delete;
    CopyProcess& operator=(const CopyProcess&) = delete;
    ~CopyProcess() {
        kill();
        for (const int end : {m_orders[0], m_orders[1], m_answers[0], m_answers[1]})
            close(end);
    }

    /// Returns before it has happened.
    void enter() { order('e'); }

    bool isFirst() {
        order('f');
        char answer = 0;
        EXPECT_EQ(read(m_answers[0], &answer, 1), 1);
        return answer == 'y';
    }

    void kill() {
        if (m_process <= 0)
            return;
        ::kill(m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
        m_process = 0;
    }

private:
    void order(char what) { EXPECT_EQ(write(m_orders[1], &what, 1), 1); }

    [[noreturn]] void serve(const QString& folder) {
        std::optional<RunningCopies> copy;
        for (char what = 0; read(m_orders[0], &what, 1) == 1;) {
            if (what == 'e') {
                copy.emplace(folder);
                continue;
            }
            const char answer = copy->isFirst() ? 'y' : 'n';
            if (write(m_answers[1], &answer, 1) != 1)
                break;
        }
        _exit(0);
    }

    int m_orders[2] = {-1, -1};
    int m_answers[2] = {-1, -1};
    pid_t m_process = 0;
};

using Copies = std::vector<std::unique_ptr<CopyProcess>>;

Copies makeCopies(int count, const QString& folder) {
    Copies copies;
    for (int i = 0; i < count; ++i)
        copies.push_back(std::make_unique<CopyProcess>(folder));
    return copies;
}

/// Of those that are entered.
auto findFirst(const Copies& copies) {
    return std::find_if(copies.begin(), copies.end(), [](const auto& copy) { return copy->isFirst(); });
}

TEST(RunningCopies, OfThoseStartedTogetherExactlyOneIsTheFirst) {
    QTemporaryDir folder;
    for (int round = 0; round < 40; ++round) {
        const Copies copies = makeCopies(4, folder.filePath("tarnwick")); // made when it is missing
        for (const auto& copy : copies)
            copy->enter();
        const auto firsts =
            std::count_if(copies.begin(), copies.end(), [](const auto& copy) { return copy->isFirst(); });
        ASSERT_EQ(firsts, 1) << round;
    }
}

TEST(RunningCopies, TheFirstIsTheOneThatWasThereBefore) {
    QTemporaryDir folder;
    const RunningCopies own(folder.path());
    const Copies later = makeCopies(2, folder.path());
    for (const auto& copy : later) {
        copy->enter();
        EXPECT_FALSE(copy->isFirst());
    }
    EXPECT_TRUE(own.isFirst());
}

TEST(RunningCopies, OneThatIsKilledLeavesNoCopyAndItsPlaceToTheNextOldest) {
    QTemporaryDir folder;
    Copies copies = makeCopies(4, folder.path());
    for (const auto& copy : copies) {
        copy->enter();
        EXPECT_EQ(copy->isFirst(), copy == copies.front()) << "which also waits until it is there";
    }
    while (copies.size() > 1) {
        copies.erase(copies.begin());
        ASSERT_EQ(findFirst(copies), copies.begin());
        CopyProcess late(folder.path());
        late.enter();
        EXPECT_FALSE(late.isFirst()) << "a gap is nobody's advantage";
    }
    copies.clear();
    EXPECT_TRUE(RunningCopies(folder.path()).isFirst());
}

TEST(RunningCopies, WithoutAFolderItIsTheOnlyOne) {
    EXPECT_TRUE(RunningCopies(QString()).isFirst());
    EXPECT_TRUE(RunningCopies("/proc/nowhere").isFirst());
}

} // namespace
} // namespace tarnwick
