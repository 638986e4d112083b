#include "visuals/RandomIndex.h"

#include <QRandomGenerator>

#include <memory>

namespace tarnwick {

RandomIndex systemRandomIndex() {
    return [](int count) { return QRandomGenerator::global()->bounded(count); };
}

RandomIndex seededRandomIndex(unsigned seed) {
    return [generator = std::make_shared<QRandomGenerator>(seed)](int count) {
        return generator->bounded(count);
    };
}

} // namespace tarnwick
