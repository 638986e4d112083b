#include "tests/fuzz/ScriptFuzz.h"

#include "script/run/Interpreter.h"
#include "script/values/Printer.h"
#include "tests/fakes/FakeMusic.h"
#include "tests/fakes/QuietHost.h"

#include <cstdlib>

using namespace tarnwick;
using namespace tarnwick::script;

namespace {

std::shared_ptr<fakes::FakeLibrary> makeLibrary() {
    auto library = std::make_shared<fakes::FakeLibrary>();
    for (int i = 1; i <= 4; ++i)
        library->tracks.push_back({QStringLiteral("Track %1").arg(i), QStringLiteral("Artist"),
                                   QStringLiteral("Album"), 5 - i, i % 2});
    library->playlists = {QStringLiteral("Musica")};
    library->makeIndex();
    return library;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto source =
        decodeSource(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    if (!std::holds_alternative<QString>(source))
        return 0;
    fakes::FakeProvider provider(makeLibrary());
    Interpreter interpreter(provider);
    fakes::QuietHost host;
    Limits limits;
    limits.memoryBytes = 8 << 20;
    limits.listLength = 50'000;
    limits.runTime = std::chrono::milliseconds(50);
    const Outcome outcome = interpreter.run(std::get<QString>(source), host, limits);
    if (outcome.reply.has_value() == outcome.error.has_value())
        std::abort();
    if (outcome.error && (outcome.error->range.line < 1 || outcome.error->message.isEmpty() ||
                          outcome.error->message.size() > 1000))
        std::abort();
    if (outcome.reply) {
        literal(*outcome.reply);
        json(*outcome.reply);
    }
    return 0;
}
