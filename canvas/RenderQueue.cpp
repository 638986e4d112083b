#include "canvas/RenderQueue.h"

#include <QCoreApplication>
#include <QTimer>

namespace tarnwick::renderqueue {

namespace {

dispatch::Dispatcher* workplace = nullptr;
int pendingPictures = 0;
int generation = 0; ///< of the workplace: what an earlier one still brings is not counted any more

} // namespace

void setDispatcher(dispatch::Dispatcher* dispatcher) {
    workplace = dispatcher;
    pendingPictures = 0;
    ++generation;
}

void run(std::function<Picture()> make, std::function<void(Picture)> use) {
    if (!workplace) {
        use(make());
        return;
    }
    ++pendingPictures;
    workplace->globalQueue(dispatch::QualityOfService::UserInteractive)
        .async([make = std::move(make), use = std::move(use), &main = workplace->mainQueue(),
                born = generation] {
            main.async([use, picture = make(), born] {
                if (born == generation)
                    --pendingPictures;
                use(picture);
            });
        });
}

void later(std::chrono::milliseconds delay, std::function<void()> task) {
    if (workplace)
        workplace->asyncAfter(workplace->mainQueue(), delay, std::move(task));
    else
        QTimer::singleShot(delay, qApp, std::move(task));
}

int pending() { return pendingPictures; }

} // namespace tarnwick::renderqueue
