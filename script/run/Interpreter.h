#pragma once

#include "script/values/Descriptor.h"
#include "script/values/Error.h"

#include <QByteArray>
#include <QString>

#include <atomic>
#include <chrono>
#include <memory>
#include <optional>
#include <variant>

namespace tarnwick::script {

class ApplicationProvider;
class Host;
class Program;
class ProgramCache;

/// A text that compiled; immutable, may be run by several threads at once.
using ProgramPointer = std::shared_ptr<const Program>;

/// What ends a script with an error before it has harmed the program.
struct Limits {
    int callDepth = 1000;                ///< handlers inside each other; error -2706
    qsizetype stackBytes = 4 << 20;      ///< of the calling thread's stack; error -2706
    qsizetype memoryBytes = 256LL << 20; ///< all of the script's values together; error -108
    qsizetype listLength = 2'000'000;    ///< items of one list, units of one text × 16; error -108
    /// Wall clock, `delay` included; error -1712. Absent: for ever.
    std::optional<std::chrono::nanoseconds> runTime;
    /// Ends the script with error -128 once it is true. May be null; outlives the run.
    const std::atomic<bool>* cancelled = nullptr;
};

/// How a run ended: with a reply or with an error, never both.
struct Outcome {
    std::optional<Descriptor> reply; ///< present when the script ended well, maybe holding nothing
    std::optional<Error> error;      ///< with its place; 1,000 units at most in its message
};

/// Compiles and runs script texts. Compiled texts are cached by content, up to a bound. Any thread may call
/// any operation; runs share nothing.
class Interpreter {
public:
    /// `applications` must outlive the interpreter.
    explicit Interpreter(ApplicationProvider& applications);
    Interpreter(const Interpreter&) = delete;
    Interpreter& operator=(const Interpreter&) = delete;
    ~Interpreter();

    /// The compiled text, or error -2741 with the place where it stops being the language.
    std::variant<ProgramPointer, Error> compile(const QString& source);
    /// Runs a compiled text on the calling thread.
    Outcome run(const ProgramPointer& program, Host& host, const Limits& limits = {});
    /// Compiles and runs.
    Outcome run(const QString& source, Host& host, const Limits& limits = {});

private:
    ApplicationProvider& m_applications;
    std::unique_ptr<ProgramCache> m_cache;
};

/// A script's text from the bytes of a file: UTF-8, with or without byte order mark; error -2741 at the
/// first byte that is none.
std::variant<QString, Error> decodeSource(const QByteArray& bytes);

} // namespace tarnwick::script
