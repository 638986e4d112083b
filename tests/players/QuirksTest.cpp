#include "tests/players/QuirksFixture.h"

namespace tarnwick {

// Whatever happens, no property is ever asked for alone: one player dies of that, another never answers.
TEST_P(Quirks, AreSurvived) {
    start();
    player = makePlayer(GetParam().busName, GetParam().properties);
    ASSERT_TRUE(eventually([&] { return probe->isRunning(); }, 5s));
    GetParam().play(*this);
    for (const QString& call : player->calls())
        EXPECT_FALSE(call == "Get" || call.startsWith("Get ")) << call.toStdString();
}

} // namespace tarnwick
