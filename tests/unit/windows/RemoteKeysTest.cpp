#include "platform/windows/RemoteKeys.h"

#include <QKeyEvent>
#include <QTest>
#include <QWindow>
#include <gmock/gmock.h>

#include <utility>

namespace tarnwick::windows {
namespace {

class Listener : public QWindow {
public:
    QList<int> keys; ///< a release is negative

protected:
    void keyPressEvent(QKeyEvent* event) override { keys.append(event->key()); }
    void keyReleaseEvent(QKeyEvent* event) override { keys.append(-event->key()); }
};

TEST(RemoteKeysTest, MeanWhatTheKeyboardsMean) {
    const RemoteKeys remote;
    Listener window;
    for (const auto& [sent, meant] :
         {std::pair(Qt::Key_Back, Qt::Key_Escape), std::pair(Qt::Key_Select, Qt::Key_Return),
          std::pair(Qt::Key_Enter, Qt::Key_Return), std::pair(Qt::Key_Left, Qt::Key_Left)}) {
        QTest::keyClick(&window, sent);
        EXPECT_THAT(std::exchange(window.keys, {}), testing::ElementsAre(int(meant), -int(meant))) << sent;
    }
}

} // namespace
} // namespace tarnwick::windows
