#pragma once

#include "canvas/RenderQueue.h"
#include "canvas/SettleTimer.h"
#include "display/DisplayScene.h"
#include "display/SceneRenderer.h"
#include "display/stage/Stage.h"
#include "platform/animation/VirtualAnimationDriver.h"
#include "tests/unit/display/DisplayFixture.h"

#include <QQmlEngine>

namespace tarnwick {

/// The display's scene, drawn without a screen, on a time that the test moves.
class SceneFixture : public DisplayFixture {
protected:
    void SetUp() override { renderqueue::setDispatcher(&dispatcher); }
    void TearDown() override {
        renderer.reset();
        renderqueue::setDispatcher(nullptr);
    }

    /// Opens the display, or gives the one that is open another size.
    void open(QSize size = {1200, 600}) {
        if (renderer) {
            renderer->resize(size);
            return;
        }
        renderer = std::make_unique<SceneRenderer>(DisplayScene::create(engine, *view), size);
        view->appear();
    }

    void advance(std::chrono::milliseconds duration) {
        constexpr std::chrono::milliseconds step{20};
        for (auto end = std::chrono::milliseconds::zero(); end < duration; end += step) {
            dispatcher.advance(step);
            animations.step(step.count());
            renderer->layOut();
        }
    }

    /// Until all that has been set off is over, the pictures have been made and the veils have come.
    void settle() {
        using std::chrono_literals::operator""ms;
        constexpr auto slideAndTurn = 1500ms;
        constexpr auto fade = 250ms;
        renderer->render(); // lays out
        advance(slideAndTurn);
        for (int round = 0; round < 20; ++round) {
            renderer->render();
            advance(SettleTimer::settleTime + fade);
            if (stage().isReady() && renderqueue::pending() == 0 && round > 0)
                return;
        }
        FAIL() << "the veils do not come";
    }

    /// Every item below one, those that views make for their rows included.
    static std::vector<QQuickItem*> itemsBelow(const QQuickItem& item) {
        std::vector<QQuickItem*> items;
        for (QQuickItem* child : item.childItems()) {
            items.push_back(child);
            const auto below = itemsBelow(*child);
            items.insert(items.end(), below.begin(), below.end());
        }
        return items;
    }

    Stage& stage() { return *renderer->root().findChild<Stage*>(); }

    animation::VirtualAnimationDriver animations;
    QQmlEngine engine;
    std::unique_ptr<SceneRenderer> renderer;
};

} // namespace tarnwick
