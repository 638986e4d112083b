#include "app/commandline/CommandLine.h"

#include <algorithm>
#include <array>

namespace tarnwick {

namespace {

struct Option {
    const char* name;
    bool takesValue;
    const char* commands; ///< between blanks; "*" for all
};

constexpr std::array options{
    Option{"source", true, "*"},
    Option{"player", true, "*"},
    Option{"help", false, "*"},
    Option{"version", false, "*"},
    Option{"fullscreen", false, " display snapshot "},
    Option{"show", false, " display "},
    Option{"launched-at-login", false, " display "},
    Option{"json", false, " status do script defaults palette "},
    Option{"follow", false, " status "},
    Option{"limit", true, " script "},
    Option{"view", true, " snapshot "},
    Option{"scene", true, " snapshot "},
    Option{"size", true, " snapshot "},
    Option{"set", true, " snapshot "},
    Option{"flipped", false, " snapshot "},
    Option{"dark", false, " snapshot "},
    Option{"after", true, " snapshot "},
};

struct Command {
    const char* name;
    int leastArguments;
    int mostArguments;
    const char* usage;
};

constexpr std::array commands{
    Command{"display", 0, 0, "tarnwick [--source auto|mpris|demo] [--player NAME] [--fullscreen] | --show"},
    Command{"status", 0, 0, "tarnwick status [--json] [--follow]"},
    Command{"do", 1, 2, "tarnwick do COMMAND [ARGUMENT]"},
    Command{"script", 1, 1, "tarnwick script FILE|- [--json] [--limit SECONDS]"},
    Command{"defaults", 0, 2, "tarnwick defaults [KEY [VALUE]] [--json]"},
    Command{"palette", 1, 1, "tarnwick palette PICTURE [--json]"},
    Command{"record", 3, 3, "tarnwick record PICTURE TAG OUT.png"},
    Command{"snapshot", 1, 1, "tarnwick snapshot OUT.png [--view VIEW] [--scene SCENE] [--size WxH] …"},
};

const Option* findOption(const QString& name) {
    const auto found = std::find_if(options.begin(), options.end(),
                                    [&](const Option& option) { return name == QLatin1String(option.name); });
    return found == options.end() ? nullptr : &*found;
}

const Command* findCommand(const QString& name) {
    const auto found = std::find_if(commands.begin(), commands.end(), [&](const Command& command) {
        return name == QLatin1String(command.name);
    });
    return found == commands.end() ? nullptr : &*found;
}

/// Whether the next argument is a title or a playlist, which may look like an option.
bool isTakenAsItStands(const Invocation& invocation) {
    return invocation.command == QLatin1String("do") && invocation.arguments.size() == 1 &&
           (invocation.arguments.front() == QLatin1String("title") ||
            invocation.arguments.front() == QLatin1String("playlist"));
}

/// The option that `argument` abbreviates; empty when it is none.
QString shortOption(const QString& argument) {
    if (argument == QLatin1String("-h"))
        return QStringLiteral("help");
    return argument == QLatin1String("-V") ? QStringLiteral("version") : QString();
}

std::optional<UsageError> check(const Invocation& invocation, const Command& command) {
    for (auto option = invocation.options.keyBegin(); option != invocation.options.keyEnd(); ++option) {
        const QLatin1String allowed(findOption(*option)->commands);
        if (allowed != QLatin1String("*") &&
            !allowed.contains(QLatin1Char(' ') + invocation.command + QLatin1Char(' ')))
            return UsageError{QStringLiteral("--%1 does not go with %2; usage: %3")
                                  .arg(*option, invocation.command, QString::fromUtf8(command.usage))};
    }
    if (const auto source = invocation.option(QStringLiteral("source"));
        source &&
        !QStringList{QStringLiteral("auto"), QStringLiteral("mpris"), QStringLiteral("demo")}.contains(
            *source))
        return UsageError{QStringLiteral("--source is auto, mpris or demo, not '%1'").arg(*source)};
    if (invocation.option(QStringLiteral("source")) == QLatin1String("demo") &&
        invocation.has(QStringLiteral("player")))
        return UsageError{QStringLiteral("--player does not go with --source demo")};
    if (invocation.arguments.size() < command.leastArguments ||
        invocation.arguments.size() > command.mostArguments)
        return UsageError{QStringLiteral("usage: %1").arg(QString::fromUtf8(command.usage))};
    return std::nullopt;
}

} // namespace

std::optional<QString> Invocation::option(const QString& name) const {
    const auto found = options.constFind(name); // the one inserted last comes first
    return found == options.constEnd() ? std::nullopt : std::optional(*found);
}

std::variant<Invocation, UsageError> parseCommandLine(const QStringList& arguments) {
    Invocation invocation;
    for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
        if (const QString name = shortOption(*argument); !name.isEmpty() && !isTakenAsItStands(invocation)) {
            invocation.options.insert(name, {});
            continue;
        }
        if (!argument->startsWith(QLatin1String("--")) || isTakenAsItStands(invocation)) {
            if (invocation.command.isEmpty())
                invocation.command = *argument;
            else
                invocation.arguments.append(*argument);
            continue;
        }
        const auto equals = argument->indexOf(QLatin1Char('='));
        const QString name = argument->mid(2, equals < 0 ? -1 : equals - 2);
        const Option* option = findOption(name);
        if (!option)
            return UsageError{QStringLiteral("unknown option --%1; tarnwick --help lists them").arg(name)};
        QString value;
        if (option->takesValue) {
            if (equals >= 0)
                value = argument->mid(equals + 1);
            else if (++argument != arguments.end())
                value = *argument;
            else
                return UsageError{QStringLiteral("--%1 needs a value").arg(name)};
        } else if (equals >= 0) {
            return UsageError{QStringLiteral("--%1 takes no value").arg(name)};
        }
        invocation.options.insert(name, value);
    }
    if (invocation.command.isEmpty())
        invocation.command = QStringLiteral("display");
    if (invocation.has(QStringLiteral("help")) || invocation.has(QStringLiteral("version")))
        return invocation;
    const Command* command = findCommand(invocation.command);
    if (!command)
        return UsageError{
            QStringLiteral("unknown command '%1'; tarnwick --help lists them").arg(invocation.command)};
    if (const auto error = check(invocation, *command))
        return *error;
    return invocation;
}

QString helpText() {
    return QStringLiteral(R"(Tarnwick shows what an MPRIS music player plays, and drives it.

  tarnwick [--source auto|mpris|demo] [--player NAME] [--fullscreen]
      open the display
  tarnwick --show
      bring the running display to the front, or open it
  tarnwick status [--json] [--follow]
      print what plays, once; with --follow again at each change, until the reader goes or Ctrl+C
  tarnwick do COMMAND [ARGUMENT]
      play-pause, play, pause, stop, next, previous, seek SECONDS|+SECONDS|-SECONDS, shuffle [on|off],
      volume 0..1|+0.1|-0.1, title TEXT, playlist NAME, playlists [--json]
  tarnwick script FILE|- [--json] [--limit SECONDS]
      run one script and print its reply
  tarnwick defaults [KEY [VALUE]] [--json]
      print all preferences, print one, or set one
  tarnwick palette PICTURE [--json]
      the colours of every background style for a picture
  tarnwick record PICTURE TAG OUT.png
      the generated record, 300 x 300
  tarnwick snapshot OUT.png [--view VIEW] [--scene SCENE] [--size WxH] [--fullscreen]
                            [--set KEY=VALUE]… [--flipped] [--dark] [--after SECONDS]
      a view as a picture, no screen needed
  tarnwick --help | --version

--source auto (the default) follows the players on the session bus, or shows the demo library where
there is no bus. --player chooses a player by its bus name or by the name it gives itself; without it,
commands are about the player that the running display shows. -h and -V are --help and --version.
)");
}

} // namespace tarnwick
