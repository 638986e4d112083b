#pragma once

#include <QtGlobal>

namespace tarnwick::script {

/// A word of an application's terminology as the language keeps it: a four-character code. A class,
/// a property, an enumerator and a command may share one.
enum class Term : quint32 {};

/// The term with the code `code`, four ASCII characters.
consteval Term term(const char (&code)[5]) {
    quint32 value = 0;
    for (int i = 0; i < 4; ++i)
        value = value << 8 | static_cast<unsigned char>(code[i]);
    return Term{value};
}

/// The terms that every application knows without naming them in its terminology.
namespace terms {
inline constexpr Term Name = term("pnam");        ///< property `name`: element by name goes by it
inline constexpr Term Id = term("ID  ");          ///< property `id`: element by id goes by it
inline constexpr Term Running = term("prun");     ///< property `running` of the application, answered by it
inline constexpr Term Version = term("vers");     ///< property `version`
inline constexpr Term Application = term("capp"); ///< class `application`
inline constexpr Term Launch = term("ascr");      ///< command `launch`
inline constexpr Term Activate = term("misc");    ///< command `activate`
inline constexpr Term Quit = term("quit");        ///< command `quit`
} // namespace terms

} // namespace tarnwick::script
