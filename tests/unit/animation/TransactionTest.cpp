#include "platform/animation/Transaction.h"

#include <gmock/gmock.h>

using namespace std::chrono_literals;

namespace tarnwick::animation {
namespace {

TEST(Transaction, HoldsWhileItIsOpenAndTheInnermostWins) {
    Transaction transaction;
    QList<int> seen;
    const auto look = [&] { seen.append(transaction.isActive() ? transaction.duration() : 0); };
    look();
    transaction.animate(700ms, [&] {
        look();
        transaction.animate(1000ms, look);
        transaction.withoutAnimation(look);
        look();
    });
    transaction.animate(look);
    look();
    EXPECT_THAT(seen, testing::ElementsAre(0, 700, 1000, 0, 700, 350, 0));
}

TEST(Transaction, EasesInAndOut) {
    const QEasingCurve curve = Transaction::easeInOut();
    EXPECT_NEAR(curve.valueForProgress(0.5), 0.5, 0.01);
    EXPECT_LT(curve.valueForProgress(0.1), 0.05);
    EXPECT_GT(curve.valueForProgress(0.9), 0.95);
}

} // namespace
} // namespace tarnwick::animation
