#include "visuals/FormatLogo.h"

#include <algorithm>
#include <array>

namespace tarnwick {

namespace {

constexpr std::array logoFormats{QLatin1String("alac"), QLatin1String("mp3"), QLatin1String("flac"),
                                 QLatin1String("wav"), QLatin1String("aac")};

} // namespace

std::optional<QString> formatLogoName(const QString& code, const Colour& textColor) {
    if (std::find(logoFormats.begin(), logoFormats.end(), code) == logoFormats.end())
        return std::nullopt;
    return code + (textColor == colours::white ? QLatin1String("-white") : QLatin1String("-black"));
}

} // namespace tarnwick
