#pragma once

#include <QString>
#include <QStringList>

namespace tarnwick {

/// Finds the countries that a comment names.
class FlagsManager {
public:
    /// The catalogue's names of the flags of every country named in the first line of `comment` that is
    /// not empty, in the order in which the names stand there; of names that begin at one place the longer
    /// stands first. Any part of a word counts, whatever its letter case. A flag that has two names stands
    /// twice when both are there.
    static QStringList flagImageNames(const QString& comment);

    /// Every flag's name in the catalogue, sorted.
    static QStringList allImageNames();
};

} // namespace tarnwick
