#pragma once

#include "script/values/Term.h"
#include "script/values/Value.h"

#include <QString>

namespace tarnwick::script {

/// The classes of the language's own values.
namespace classes {
inline constexpr Term Text = term("ctxt");
inline constexpr Term Integer = term("long");
inline constexpr Term Real = term("doub");
inline constexpr Term Number = term("nmbr"); ///< integer or real
inline constexpr Term Boolean = term("bool");
inline constexpr Term List = term("list");
inline constexpr Term Record = term("reco");
inline constexpr Term Data = term("tdta");
inline constexpr Term Alias = term("alis");
inline constexpr Term Constant = term("enum");
inline constexpr Term Class = term("pcls");
inline constexpr Term Script = term("scpt");
} // namespace classes

/// How a script writes one of `classes`; empty for any other code.
QString classNameOf(Term code);

/// The class of a value that is no application's object.
Term classOf(const Value& value);

} // namespace tarnwick::script
