#include "script/values/Terminology.h"

#include <QLatin1Char>

#include <algorithm>

namespace tarnwick::script {

namespace {

QString codeName(QLatin1String role, Term code) {
    const auto bits = static_cast<quint32>(code);
    QString letters;
    for (int shift = 24; shift >= 0; shift -= 8)
        letters += QLatin1Char(static_cast<char>(bits >> shift & 0xff));
    return QStringLiteral("«%1 %2»").arg(role, letters);
}

QString nameOr(const QHash<Term, QString>& names, Term code, QLatin1String role) {
    const auto found = names.find(code);
    return found == names.end() ? codeName(role, code) : *found;
}

} // namespace

Terminology::Terminology() {
    addProperty(QStringLiteral("name"), terms::Name);
    addProperty(QStringLiteral("id"), terms::Id);
    addProperty(QStringLiteral("running"), terms::Running);
    addProperty(QStringLiteral("version"), terms::Version);
    addClass(QStringLiteral("application"), QStringLiteral("applications"), terms::Application);
    addCommand(QStringLiteral("launch"), terms::Launch);
    addCommand(QStringLiteral("activate"), terms::Activate);
    addCommand(QStringLiteral("quit"), terms::Quit);
}

Terminology& Terminology::addClass(const QString& name, const QString& plural, Term code) {
    entry(name).elementClass = code;
    Entry& many = entry(plural);
    many.elementClass = code;
    many.isPlural = plural != name;
    m_classNames.insert(code, name);
    return *this;
}

Terminology& Terminology::addProperty(const QString& name, Term code) {
    entry(name).property = code;
    m_propertyNames.insert(code, name);
    return *this;
}

Terminology& Terminology::addEnumerator(const QString& name, Term code) {
    entry(name).enumerator = code;
    m_enumeratorNames.insert(code, name);
    return *this;
}

Terminology& Terminology::addCommand(const QString& name, Term code, const Parameters& parameters) {
    entry(name).command = code;
    m_commandNames.insert(code, name);
    if (!parameters.empty())
        m_parameters.insert(code, parameters);
    return *this;
}

const Terminology::Entry* Terminology::find(const QString& words) const {
    const auto found = m_entries.find(words.toLower());
    return found == m_entries.end() ? nullptr : &*found;
}

int Terminology::longestPhrase(const QString& firstWord) const {
    return m_longest.value(firstWord.toLower());
}

const Terminology::Parameters& Terminology::parameters(Term command) const {
    static const Parameters none;
    const auto found = m_parameters.find(command);
    return found == m_parameters.end() ? none : *found;
}

QString Terminology::className(Term code) const { return nameOr(m_classNames, code, QLatin1String("class")); }

QString Terminology::propertyName(Term code) const {
    return nameOr(m_propertyNames, code, QLatin1String("property"));
}

QString Terminology::enumeratorName(Term code) const {
    return nameOr(m_enumeratorNames, code, QLatin1String("constant"));
}

QString Terminology::commandName(Term code) const {
    return nameOr(m_commandNames, code, QLatin1String("event"));
}

Terminology::Entry& Terminology::entry(const QString& words) {
    const QString first = words.section(QLatin1Char(' '), 0, 0);
    int& longest = m_longest[first];
    longest = std::max(longest, static_cast<int>(words.count(QLatin1Char(' '))) + 1);
    return m_entries[words];
}

} // namespace tarnwick::script
