#pragma once

#include <QObject>
#include <QStringList>
#include <QtQmlIntegration/qqmlintegration.h>

#include <array>
#include <optional>

namespace tarnwick {

/// The choices among which some preferences pick. Each case has a raw text, which is what the
/// defaults hold, and a name, which is what the preferences window shows.
namespace options {
Q_NAMESPACE
QML_NAMED_ELEMENT(Options)

/// Background style of the display.
enum class BackgroundOption {
    Black,
    Gradient,
    White,
    OneColor,
    DarkColor,
    Shapes,
    ThreeTone,
    Random, ///< another of the styles at each track; chosen by a switch, so it has no name
};
Q_ENUM_NS(BackgroundOption)

/// Look of the track list.
enum class TracklistStyle { Standard, Dynamic, IPod };
Q_ENUM_NS(TracklistStyle)

/// Look of the playlist picker.
enum class PlaylistBackgroundOption { Standard, Dynamic, IPod };
Q_ENUM_NS(PlaylistBackgroundOption)

} // namespace options

using options::BackgroundOption;
using options::PlaylistBackgroundOption;
using options::TracklistStyle;

/// One case of an enumeration.
template <typename Option>
struct OptionEntry {
    Option option;
    const char* rawText;
    const char* displayName; ///< empty when it is not offered by name
};

/// The cases of `Option` in the order in which they are offered.
template <typename Option>
inline constexpr std::array<OptionEntry<Option>, 0> optionTable{};

template <>
inline constexpr std::array optionTable<BackgroundOption> = {
    OptionEntry<BackgroundOption>{BackgroundOption::Black, "black", "Black"},
    OptionEntry<BackgroundOption>{BackgroundOption::Gradient, "gradient", "Gradient"},
    OptionEntry<BackgroundOption>{BackgroundOption::White, "white", "White"},
    OptionEntry<BackgroundOption>{BackgroundOption::OneColor, "oneColor", "Single"},
    OptionEntry<BackgroundOption>{BackgroundOption::DarkColor, "darkColor", "Dark"},
    OptionEntry<BackgroundOption>{BackgroundOption::Shapes, "shapes", "Shapes"},
    OptionEntry<BackgroundOption>{BackgroundOption::ThreeTone, "threeTone", "ThreeTone"},
    OptionEntry<BackgroundOption>{BackgroundOption::Random, "random", ""},
};

template <>
inline constexpr std::array optionTable<TracklistStyle> = {
    OptionEntry<TracklistStyle>{TracklistStyle::Standard, "standard", "Standard"},
    OptionEntry<TracklistStyle>{TracklistStyle::Dynamic, "dynamic", "Dynamic"},
    OptionEntry<TracklistStyle>{TracklistStyle::IPod, "iPod", "iPod"},
};

template <>
inline constexpr std::array optionTable<PlaylistBackgroundOption> = {
    OptionEntry<PlaylistBackgroundOption>{PlaylistBackgroundOption::Standard, "standard", "Standard"},
    OptionEntry<PlaylistBackgroundOption>{PlaylistBackgroundOption::Dynamic, "dynamic", "Dynamic"},
    OptionEntry<PlaylistBackgroundOption>{PlaylistBackgroundOption::IPod, "iPod", "iPod"},
};

/// The raw text of `option`.
template <typename Option>
QString rawText(Option option) {
    return QLatin1String(optionTable<Option>[static_cast<std::size_t>(option)].rawText);
}

/// The names of the options that are offered by name, in the order of the options.
template <typename Option>
QStringList displayNames() {
    QStringList names;
    for (const auto& entry : optionTable<Option>) {
        if (*entry.displayName)
            names.append(QLatin1String(entry.displayName));
    }
    return names;
}

/// The option whose raw text is `text`, letter case included; none when no option's is.
template <typename Option>
std::optional<Option> optionFromRawText(const QString& text) {
    for (const auto& entry : optionTable<Option>) {
        if (text == QLatin1String(entry.rawText))
            return entry.option;
    }
    return std::nullopt;
}

} // namespace tarnwick
