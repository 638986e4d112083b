// The script interpreter on the text that works hardest, the album's tracks by disc, beside the same
// algorithm in Lua 5.4: both read the tracks, group them by disc and sort each disc with two nested loops.

#include "music/Scripts.h"
#include "script/run/Host.h"
#include "script/run/Interpreter.h"
#include "tests/fakes/FakeMusic.h"

#include <benchmark/benchmark.h>
#include <lua.hpp>

#include <algorithm>
#include <array>
#include <chrono>
#include <numeric>
#include <random>

namespace tarnwick {
namespace {

constexpr int Tracks = 1000;

class SilentHost final : public script::Host {
public:
    void log(const QString&) override {}
    void displayDialog(const QString&) override {}
    void delay(std::chrono::nanoseconds) override {}
};

/// The track numbers of the album, in the order in which the library lists them.
std::vector<int> numbers() {
    std::vector<int> shuffled(Tracks);
    std::iota(shuffled.begin(), shuffled.end(), 1);
    std::shuffle(shuffled.begin(), shuffled.end(), std::mt19937(1)); // NOLINT: the same each time
    return shuffled;
}

std::shared_ptr<fakes::FakeLibrary> makeLibrary() {
    auto library = std::make_shared<fakes::FakeLibrary>();
    for (const int number : numbers())
        library->tracks.push_back({.name = QStringLiteral("Title %1").arg(number),
                                   .artist = QStringLiteral("Artist"),
                                   .album = QStringLiteral("Album"),
                                   .trackNumber = number,
                                   .discNumber = 1,
                                   .duration = 200.0});
    library->makeIndex();
    return library;
}

class Ours {
public:
    Ours() : m_provider(makeLibrary()), m_interpreter(m_provider) {}

    bool run() {
        const script::Outcome outcome = m_interpreter.run(scripts::tracksByDisc(), m_host);
        return outcome.reply && outcome.reply->item(1)->item(2)->numberOfItems() == Tracks;
    }

private:
    fakes::FakeProvider m_provider;
    script::Interpreter m_interpreter;
    SilentHost m_host;
};

constexpr const char* LuaText = R"(
function sortTracks(tracksList)
    local sortedList = tracksList
    for i = 1, #sortedList - 1 do
        for j = i + 1, #sortedList do
            if sortedList[i][1] > sortedList[j][1] then
                local temp = sortedList[i]
                sortedList[i] = sortedList[j]
                sortedList[j] = temp
            end
        end
    end
    return sortedList
end

function tracksByDisc()
    local byDisc = {}
    for _, track in ipairs(tracks) do
        local name, number, discNumber = track.name, track.number, track.disc
        local found = false
        for _, disc in ipairs(byDisc) do
            if disc[1] == discNumber then
                disc[2][#disc[2] + 1] = {number, name}
                found = true
                break
            end
        end
        if not found then
            byDisc[#byDisc + 1] = {discNumber, {{number, name}}}
        end
    end
    local sorted = {}
    for _, disc in ipairs(byDisc) do
        sorted[#sorted + 1] = {disc[1], sortTracks(disc[2])}
    end
    return #sorted[1][2]
end
)";

class Lua {
public:
    Lua() : m_state(luaL_newstate()) {
        luaL_openlibs(m_state);
        lua_newtable(m_state);
        lua_Integer index = 0;
        for (const int number : numbers()) {
            lua_newtable(m_state);
            lua_pushfstring(m_state, "Title %d", number);
            lua_setfield(m_state, -2, "name");
            lua_pushinteger(m_state, number);
            lua_setfield(m_state, -2, "number");
            lua_pushinteger(m_state, 1);
            lua_setfield(m_state, -2, "disc");
            lua_seti(m_state, -2, ++index);
        }
        lua_setglobal(m_state, "tracks");
        m_isLoaded = luaL_dostring(m_state, LuaText) == LUA_OK;
    }
    Lua(const Lua&) = delete;
    Lua& operator=(const Lua&) = delete;
    ~Lua() { lua_close(m_state); }

    bool run() {
        lua_getglobal(m_state, "tracksByDisc");
        const bool isDone = m_isLoaded && lua_pcall(m_state, 0, 1, 0) == LUA_OK;
        const bool isRight = isDone && lua_tointeger(m_state, -1) == Tracks;
        lua_settop(m_state, 0);
        return isRight;
    }

private:
    lua_State* m_state;
    bool m_isLoaded = false;
};

template <typename Runner>
double milliseconds(Runner& runner, benchmark::State& state) {
    const auto begin = std::chrono::steady_clock::now();
    if (!runner.run())
        state.SkipWithError("wrong answer");
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

template <std::size_t N>
double median(std::array<double, N> values) {
    std::sort(values.begin(), values.end());
    return values[N / 2];
}

/// Medians of five interleaved runs; the time shown is one run of ours.
void tracksByDiscAgainstLua(benchmark::State& state) {
    Ours ours;
    Lua lua;
    double oursTime = 0.0;
    double luaTime = 0.0;
    for (auto _ : state) {
        std::array<double, 5> oursRuns{};
        std::array<double, 5> luaRuns{};
        for (std::size_t i = 0; i < oursRuns.size(); ++i) {
            oursRuns[i] = milliseconds(ours, state);
            luaRuns[i] = milliseconds(lua, state);
        }
        oursTime = median(oursRuns);
        luaTime = median(luaRuns);
        state.SetIterationTime(oursTime / 1000.0);
    }
    state.counters["ours_ms"] = oursTime;
    state.counters["lua_ms"] = luaTime;
    state.counters["ratio"] = oursTime / luaTime;
}
BENCHMARK(tracksByDiscAgainstLua)->UseManualTime()->Unit(benchmark::kMillisecond);

/// A text that was never seen before.
void compileTracksByDisc(benchmark::State& state) {
    fakes::FakeProvider provider(makeLibrary());
    for (auto _ : state) {
        script::Interpreter interpreter(provider);
        benchmark::DoNotOptimize(interpreter.compile(scripts::tracksByDisc()));
    }
}
BENCHMARK(compileTracksByDisc)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace tarnwick

BENCHMARK_MAIN();
