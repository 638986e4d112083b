#pragma once

#include <QString>

namespace tarnwick::script {

/// The language's own error numbers, as far as the interpreter raises them.
namespace errors {
inline constexpr int UserCancelled = -128;
inline constexpr int OutOfMemory = -108;
inline constexpr int NotRunning = -600;
inline constexpr int TimedOut = -1712;
inline constexpr int CoercionFailed = -1700;
inline constexpr int NotUnderstood = -1708;
inline constexpr int BadIndex = -1719;
inline constexpr int NoSuchObject = -1728;
inline constexpr int General = -2700;
inline constexpr int DivisionByZero = -2701;
inline constexpr int StackOverflow = -2706;
inline constexpr int Syntax = -2741;
inline constexpr int NotDefined = -2753;
inline constexpr int NotSettable = -10006;
} // namespace errors

/// A stretch of a script's text. Lines and columns count from 1, columns in UTF-16 units.
struct SourceRange {
    int line = 0; ///< 0 as long as nobody has said where in the text
    int column = 0;
    int offset = 0; ///< where the stretch begins, in UTF-16 units from the start of the text
    int length = 0;
};

/// A script's failure, thrown by the evaluator and by applications, returned by `Interpreter`. An
/// application leaves `range` empty (the interpreter fills in what it was evaluating), and may leave
/// the message empty for the numbers below: the interpreter then words it after the script's text
/// ("Can’t get name of current track.").
struct Error {
    int number = errors::General;
    QString message;
    SourceRange range = {};

    /// The object does not exist, or does not have this property.
    static Error noSuchObject(const QString& message = {}) { return {errors::NoSuchObject, message}; }
    /// The property is known but cannot be set.
    static Error notSettable(const QString& message = {}) { return {errors::NotSettable, message}; }
    /// The application does not know the command.
    static Error notUnderstood(const QString& message = {}) { return {errors::NotUnderstood, message}; }
    /// The application does not run.
    static Error notRunning() { return {errors::NotRunning, QStringLiteral("Application isn’t running.")}; }

    /// `MESSAGE (NUMBER)`.
    QString toString() const;
    /// `LINE:COLUMN: MESSAGE (NUMBER)`; without the place when there is none.
    QString toStringWithPlace() const;
};

} // namespace tarnwick::script
