#pragma once

#include "platform/defaults/Defaults.h"
#include "settings/Options.h"

#include <vector>

/// The preferences: ROW(type, name, setter, default, side effect of an assignment). The name is the
/// defaults key too. Everything about a preference follows from its row: the field of `Settings`, what
/// is stored, the property in QML, and what the `defaults` command knows.
#define TARNWICK_PREFERENCES(ROW)                                                                            \
    ROW(tarnwick::options::PlaylistBackgroundOption, playlistBackgroundOption, setPlaylistBackgroundOption,  \
        PlaylistBackgroundOption::Standard, nothing)                                                         \
    ROW(bool, rotateCDDuringPlayback, setRotateCDDuringPlayback, false, nothing)                             \
    ROW(bool, enableCDAnimation, setEnableCDAnimation, true, nothing)                                        \
    ROW(bool, preventSleep, setPreventSleep, false, applyPreventSleep)                                       \
    ROW(bool, showTrackComments, setShowTrackComments, false, nothing)                                       \
    ROW(bool, showTrackFlags, setShowTrackFlags, false, nothing)                                             \
    ROW(tarnwick::options::BackgroundOption, backgroundOption, setBackgroundOption, BackgroundOption::Black, \
        nothing)                                                                                             \
    ROW(bool, launchAtLogin, setLaunchAtLogin, false, applyLaunchAtLogin)                                    \
    ROW(bool, showBitRate, setShowBitRate, false, nothing)                                                   \
    ROW(bool, showFileSize, setShowFileSize, false, nothing)                                                 \
    ROW(bool, showSampleRate, setShowSampleRate, false, nothing)                                             \
    ROW(bool, showGenre, setShowGenre, false, nothing)                                                       \
    ROW(tarnwick::options::TracklistStyle, tracklistStyle, setTracklistStyle, TracklistStyle::Standard,      \
        nothing)                                                                                             \
    ROW(bool, randomBackgroundEnabled, setRandomBackgroundEnabled, false, applyRandomBackground)             \
    ROW(bool, showDateAndTime, setShowDateAndTime, false, nothing)                                           \
    ROW(bool, showCurrentPlaylist, setShowCurrentPlaylist, false, nothing)                                   \
    ROW(QString, selectedClockFont, setSelectedClockFont, QStringLiteral("System Font"), nothing)            \
    ROW(bool, randomClockFontEnabled, setRandomClockFontEnabled, false, nothing)                             \
    ROW(bool, enableTrackInfoFont, setEnableTrackInfoFont, false, nothing)                                   \
    ROW(QString, selectedTrackInfoFont, setSelectedTrackInfoFont, QStringLiteral("System Font"), nothing)    \
    ROW(bool, randomTrackInfoFontEnabled, setRandomTrackInfoFontEnabled, false, nothing)                     \
    ROW(bool, autoUpdateAppIcon, setAutoUpdateAppIcon, false, applyAppIcon)                                  \
    ROW(bool, showFileFormatLogo, setShowFileFormatLogo, true, nothing)                                      \
    ROW(bool, enableFlip, setEnableFlip, true, nothing)                                                      \
    ROW(bool, useGeneratedCD, setUseGeneratedCD, false, nothing)                                             \
    ROW(bool, isAlwaysOnTop, setIsAlwaysOnTop, false, applyWindowLevel)                                      \
    ROW(bool, launchInFullscreen, setLaunchInFullscreen, false, nothing)                                     \
    ROW(QString, defaultCDImageChoice, setDefaultCDImageChoice, QStringLiteral("cddefault"), nothing)        \
    ROW(bool, randomRotationEnabled, setRandomRotationEnabled, false, nothing)                               \
    ROW(bool, showTrackYear, setShowTrackYear, true, nothing)

namespace tarnwick {

/// One preference, as far as somebody must know who only has its name.
struct Preference {
    QString key;
    defaults::Value defaultValue;
    QStringList choices; ///< raw texts of its options; empty when it is a boolean or any text

    /// The stored value, or the default when none is stored that fits.
    defaults::Value value(const defaults::Defaults& defaults) const;

    /// What `text` means for this preference; none when it is not possible.
    std::optional<defaults::Value> parse(const QString& text) const;

    /// What is possible, in words: `"true" or "false"`.
    QString possibleValues() const;
};

/// Every preference, in the order of the table.
const std::vector<Preference>& preferences();

/// The preference with this key; null when there is none.
const Preference* findPreference(const QString& key);

/// The other preference that is stored with this one when it is set to `value`, and its value; none for most.
std::optional<std::pair<QString, defaults::Value>> storedWith(const Preference& preference,
                                                              const defaults::Value& value);

/// A field's value as it is stored.
inline defaults::Value toStored(bool value) { return value; }
inline defaults::Value toStored(const QString& text) { return text; }
template <typename Option>
requires std::is_enum_v<Option> defaults::Value toStored(Option option) { return rawText(option); }

/// A stored value as a field's; none when it is of another kind or no option's raw text.
template <typename Type>
std::optional<Type> fromStored(const std::optional<defaults::Value>& value) {
    if constexpr (std::is_enum_v<Type>) {
        const auto* text = value ? std::get_if<QString>(&*value) : nullptr;
        return text ? optionFromRawText<Type>(*text) : std::nullopt;
    } else {
        const auto* held = value ? std::get_if<Type>(&*value) : nullptr;
        return held ? std::optional(*held) : std::nullopt;
    }
}

} // namespace tarnwick
