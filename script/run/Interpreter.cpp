#include "script/run/Interpreter.h"

#include "script/run/Evaluator.h"
#include "script/run/ProgramCache.h"
#include "script/syntax/Parser.h"

#include <QStringDecoder>

#include <new>

namespace tarnwick::script {

namespace {

constexpr qsizetype MaximumSource = 16'000'000;

/// A message quotes what the script says, and that may be of any length.
constexpr qsizetype MaximumMessage = 1000;

Error presentable(Error error) {
    if (error.range.line == 0)
        error.range = {.line = 1, .column = 1};
    if (error.message.size() > MaximumMessage) {
        error.message.truncate(MaximumMessage - 1);
        if (error.message.back().isHighSurrogate())
            error.message.chop(1);
        error.message += QChar(0x2026);
    }
    return error;
}

Outcome failure(const Error& error) { return {.reply = {}, .error = presentable(error)}; }

} // namespace

Interpreter::Interpreter(ApplicationProvider& applications)
    : m_applications(applications), m_cache(std::make_unique<ProgramCache>()) {}

Interpreter::~Interpreter() = default;

std::variant<ProgramPointer, Error> Interpreter::compile(const QString& source) {
    if (source.size() > MaximumSource)
        return presentable({errors::OutOfMemory, QStringLiteral("The script is too long.")});
    if (ProgramPointer known = m_cache->find(source))
        return known;
    try {
        ProgramPointer program = Parser(source, m_applications).parse();
        m_cache->insert(source, program);
        return program;
    } catch (const Error& error) {
        return presentable(error);
    }
}

Outcome Interpreter::run(const ProgramPointer& program, Host& host, const Limits& limits) {
    Heap heap(limits.memoryBytes, limits.listLength, limits.listLength * 16);
    try {
        // The values of the run go before the heap that counts them.
        Evaluator evaluator(*program, m_applications, host, limits);
        return {.reply = evaluator.run(), .error = {}};
    } catch (const Error& error) {
        return failure(error);
    } catch (const std::bad_alloc&) {
        return failure({errors::OutOfMemory, QStringLiteral("Out of memory.")});
    }
}

Outcome Interpreter::run(const QString& source, Host& host, const Limits& limits) {
    const std::variant<ProgramPointer, Error> compiled = compile(source);
    if (const auto* error = std::get_if<Error>(&compiled))
        return failure(*error);
    return run(std::get<ProgramPointer>(compiled), host, limits);
}

std::variant<QString, Error> decodeSource(const QByteArray& bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8);
    QString text = decoder(bytes);
    if (!decoder.hasError())
        return text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    // Where the good part ends tells the place.
    const qsizetype bad = std::max<qsizetype>(text.indexOf(QChar::ReplacementCharacter), 0);
    const auto offset = static_cast<int>(bad);
    const QStringView good = QStringView(text).left(bad);
    const auto lineBegin = static_cast<int>(good.lastIndexOf(QLatin1Char('\n')) + 1);
    return Error{errors::Syntax,
                 QStringLiteral("The text is not UTF-8."),
                 {static_cast<int>(good.count(QLatin1Char('\n'))) + 1, offset - lineBegin + 1, offset, 1}};
}

} // namespace tarnwick::script
