#pragma once

#include <QMultiMap>
#include <QString>
#include <QStringList>

#include <optional>
#include <variant>

namespace tarnwick {

/// What the command line asks for.
struct Invocation {
    QString command; ///< "display" when none is named
    QStringList arguments;
    QMultiMap<QString, QString> options; ///< without the dashes; a flag has the value ""

    bool has(const QString& option) const { return options.contains(option); }

    /// The value of the option that stands last; none when it is not there.
    std::optional<QString> option(const QString& name) const;
};

/// Why a command line cannot be understood, in one line for standard error.
struct UsageError {
    QString message;
};

/// Reads the arguments behind the program's name. Options stand anywhere, as `--name value` or
/// `--name=value`; the texts of `do title` and `do playlist` are taken as they stand, dashes and all.
std::variant<Invocation, UsageError> parseCommandLine(const QStringList& arguments);

/// What `--help` prints.
QString helpText();

} // namespace tarnwick
