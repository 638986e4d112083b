#include "players/mpris/PlayerChooser.h"

#include <algorithm>
#include <tuple>

namespace tarnwick::players {

namespace {

/// The greatest of `candidates` by `rank`, of equal ones the first by name; null when there are none.
template <typename Rank>
const Candidate* best(const std::vector<const Candidate*>& candidates, Rank rank) {
    const auto found =
        std::min_element(candidates.begin(), candidates.end(), [&](const auto* a, const auto* b) {
            const auto first = rank(*a);
            const auto second = rank(*b);
            return first != second ? first > second
                                   : std::tie(a->name, a->owner) < std::tie(b->name, b->owner);
        });
    return found == candidates.end() ? nullptr : *found;
}

} // namespace

QString choosePlayer(const std::vector<Candidate>& candidates, const QString& current) {
    const auto found = std::find_if(candidates.begin(), candidates.end(),
                                    [&](const Candidate& candidate) { return candidate.owner == current; });
    const Candidate* followed = found == candidates.end() ? nullptr : &*found;
    const auto isEcho = [&](const Candidate& candidate) {
        return followed != nullptr && !candidate.song.isEmpty() && candidate.song == followed->song &&
               candidate.since <= followed->since;
    };
    if (followed != nullptr && followed->state == PlayerState::Playing)
        return current;

    std::vector<const Candidate*> playing;
    std::vector<const Candidate*> paused;
    std::vector<const Candidate*> all;
    for (const Candidate& candidate : candidates) {
        all.push_back(&candidate);
        if (candidate.state == PlayerState::Playing && !isEcho(candidate))
            playing.push_back(&candidate);
        else if (candidate.state == PlayerState::Paused)
            paused.push_back(&candidate);
    }
    const auto began = [](const Candidate& candidate) {
        return candidate.wasFound ? dispatch::Instant{0} : candidate.since;
    };
    const auto rest = [&](const Candidate& candidate) {
        return std::tuple(&candidate == followed, candidate.isRemembered);
    };
    // Never is before all times.
    const auto played = [&](const Candidate& candidate) {
        return std::pair(candidate.lastPlayed, rest(candidate));
    };
    const Candidate* chosen = best(playing, began);
    if (chosen == nullptr)
        chosen = best(paused, played);
    if (chosen == nullptr)
        chosen = best(all, rest);
    return chosen == nullptr ? QString() : chosen->owner;
}

} // namespace tarnwick::players
