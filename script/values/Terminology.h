#pragma once

#include "script/values/Term.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>
#include <utility>
#include <vector>

namespace tarnwick::script {

/// The words that an application adds to the language, each one or several English words in lower case
/// ("current track"). The same words may name a class, a property, an enumerator and a command at once;
/// the parser takes the longest match and what the grammar asks for at that place. The `terms` that every
/// application knows need not be added.
class Terminology {
public:
    /// What some words mean, by role; absent roles are none.
    struct Entry {
        std::optional<Term> elementClass;
        bool isPlural = false; ///< of the class: `tracks` is `every track`
        std::optional<Term> property;
        std::optional<Term> enumerator;
        std::optional<Term> command;
    };
    /// A labelled parameter of a command: `play … once true` has "once".
    using Parameters = std::vector<std::pair<QString, Term>>;

    Terminology();

    Terminology& addClass(const QString& name, const QString& plural, Term code);
    Terminology& addProperty(const QString& name, Term code);
    Terminology& addEnumerator(const QString& name, Term code);
    Terminology& addCommand(const QString& name, Term code, const Parameters& parameters = {});

    /// What `words` mean, letter case aside; null when nothing.
    const Entry* find(const QString& words) const;
    /// How many words the longest phrase that begins with `firstWord` has; 0 when none does.
    int longestPhrase(const QString& firstWord) const;
    /// The labelled parameters of a command; empty when it has none.
    const Parameters& parameters(Term command) const;
    /// How a script writes the class, property, enumerator or command `code`; «property xxxx» or the like
    /// when it is unknown.
    QString className(Term code) const;
    QString propertyName(Term code) const;
    QString enumeratorName(Term code) const;
    QString commandName(Term code) const;

private:
    Entry& entry(const QString& words);

    QHash<QString, Entry> m_entries;
    QHash<QString, int> m_longest;
    QHash<Term, Parameters> m_parameters;
    QHash<Term, QString> m_classNames, m_propertyNames, m_enumeratorNames, m_commandNames;
};

} // namespace tarnwick::script
