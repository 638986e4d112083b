#include "assets/RenderQueue.h"

namespace tarnwick::renderqueue {

namespace {

dispatch::Dispatcher* workplace = nullptr;
int pendingPictures = 0;

} // namespace

void setDispatcher(dispatch::Dispatcher* dispatcher) { workplace = dispatcher; }

void run(std::function<Picture()> make, std::function<void(Picture)> use) {
    if (!workplace) {
        use(make());
        return;
    }
    ++pendingPictures;
    workplace->globalQueue(dispatch::QualityOfService::UserInteractive)
        .async([make = std::move(make), use = std::move(use), &main = workplace->mainQueue()] {
            main.async([use, picture = make()] {
                --pendingPictures;
                use(picture);
            });
        });
}

int pending() { return pendingPictures; }

} // namespace tarnwick::renderqueue
