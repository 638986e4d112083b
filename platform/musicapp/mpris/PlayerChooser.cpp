#include "platform/musicapp/mpris/PlayerChooser.h"

#include <algorithm>

namespace tarnwick::musicapp {

QString choosePlayer(const std::vector<Candidate>& candidates, const QString& current) {
    if (candidates.empty())
        return {};
    const auto followed = std::find_if(candidates.begin(), candidates.end(), [&](const Candidate& candidate) {
        return candidate.owner == current;
    });
    if (followed != candidates.end() && followed->isPlaying)
        return current;
    for (const Candidate& candidate : candidates) {
        const bool isEcho = followed != candidates.end() && !candidate.song.isEmpty() &&
                            candidate.song == followed->song && candidate.since <= followed->since;
        if (candidate.isPlaying && !isEcho)
            return candidate.owner;
    }
    if (followed != candidates.end() && followed->lastPlayed)
        return current;
    const auto last =
        std::max_element(candidates.begin(), candidates.end(), [](const Candidate& a, const Candidate& b) {
            return a.lastPlayed < b.lastPlayed; // never is before all times
        });
    if (last->lastPlayed)
        return last->owner;
    return followed != candidates.end() ? current : candidates.front().owner;
}

} // namespace tarnwick::musicapp
