#include "players/mpris/PlayerChooser.h"

#include <gmock/gmock.h>

namespace tarnwick::players {
namespace {

using namespace std::chrono_literals;

constexpr auto Playing = PlayerState::Playing;
constexpr auto Paused = PlayerState::Paused;
constexpr auto Stopped = PlayerState::Stopped;

/// A player of that name in that state since then, which was heard until `heard`.
Candidate player(const char* name, PlayerState state, std::chrono::seconds since = 0s,
                 std::optional<dispatch::Instant> heard = {}) {
    Candidate candidate;
    candidate.owner = candidate.name = name;
    candidate.state = state;
    candidate.since = since;
    candidate.lastPlayed = heard;
    return candidate;
}

Candidate found(Candidate candidate) {
    candidate.wasFound = true;
    return candidate;
}

Candidate remembered(Candidate candidate) {
    candidate.isRemembered = true;
    return candidate;
}

Candidate with(const char* song, Candidate candidate) {
    candidate.song = song;
    return candidate;
}

TEST(PlayerChooser, ChoosesByWhatPeopleHear) {
    const struct {
        const char* what;
        std::vector<Candidate> candidates;
        const char* current;
        const char* chosen;
    } rows[] = {
        {"nobody is there", {}, "", ""},
        {"nobody is there any more", {}, "a", ""},
        {"the one that plays", {player("a", Stopped), player("b", Playing)}, "", "b"},
        {"the current one while it plays", {player("a", Playing, 1s), player("b", Playing, 9s)}, "a", "a"},
        {"of several that play the one that began last",
         {player("a", Playing, 1s), player("b", Playing, 3s), player("c", Playing, 2s)},
         "",
         "b"},
        {"of several that were found playing the first by name",
         {found(player("b", Playing, 8s)), found(player("a", Playing, 7s))},
         "",
         "a"},
        {"one that began since before one that was found playing",
         {found(player("a", Playing, 8s)), player("b", Playing, 7s)},
         "",
         "b"},
        {"a paused one before a stopped one, whatever the order of the bus",
         {player("a", Stopped), player("b", Paused)},
         "",
         "b"},
        {"a paused one before the current one that has stopped",
         {player("a", Stopped, 9s, 9s), player("b", Paused, 1s, 1s)},
         "a",
         "b"},
        {"of the paused ones the one that was heard last",
         {player("a", Paused, 2s, 1s), player("b", Paused, 6s, 5s), player("c", Paused)},
         "",
         "b"},
        {"of paused ones that were never heard the current one",
         {player("a", Paused), player("b", Paused)},
         "b",
         "b"},
        {"else the one that was followed before",
         {player("a", Stopped), remembered(player("b", Stopped))},
         "",
         "b"},
        {"the current one before the one that was followed before",
         {player("a", Stopped), remembered(player("b", Stopped))},
         "a",
         "a"},
        {"else the first by name", {player("z", Stopped), player("m", Stopped)}, "", "m"},
        {"no echo of the song that has been paused",
         {with("song", player("a", Paused, 6s, 5s)), with("song", player("b", Playing, 5s, 9s))},
         "a",
         "a"},
        {"one that starts the same song later",
         {with("song", player("a", Paused, 6s, 5s)), with("song", player("b", Playing, 7s, 9s))},
         "a",
         "b"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(choosePlayer(row.candidates, row.current), row.chosen) << row.what;
}

} // namespace
} // namespace tarnwick::players
