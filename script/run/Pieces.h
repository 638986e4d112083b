#pragma once

#include "script/syntax/SyntaxTree.h"
#include "script/values/Value.h"

#include <QStringList>

namespace tarnwick::script {

// Parts of lists and texts. `delimiters` are what text items lie between; without any they are characters.

/// How many pieces `whole` has; throws -1728 when it has none of that kind.
qsizetype countPieces(const Value& whole, PieceClass piece, const QStringList& delimiters);

/// The piece at `position`, counted from 0; nothing when it lies outside.
Value pieceAt(const Value& whole, PieceClass piece, qsizetype position, const QStringList& delimiters);

/// The pieces from `first` to `last`, counted from 0, both inside: a list, of `text 1 thru 2` a text.
Value piecesBetween(const Value& whole, PieceClass piece, qsizetype first, qsizetype last,
                    const QStringList& delimiters);

} // namespace tarnwick::script
