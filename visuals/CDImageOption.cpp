#include "visuals/CDImageOption.h"

namespace tarnwick {

const QList<CDImageOption>& imageOptions() {
    static const QList<CDImageOption> options{
        {QStringLiteral("cddefault"), QStringLiteral("Compact Disc")},
        {QStringLiteral("33Vinyl"), QStringLiteral("33 RPM 12\" Vinyl")},
        {QStringLiteral("45Vinyl"), QStringLiteral("45 RPM 7\" Vinyl")},
        {QStringLiteral("45YellowJukebox"), QStringLiteral("45 Yellow Jukebox")},
        {QStringLiteral("45RedFlexy"), QStringLiteral("45 Red Flexy")},
        {QStringLiteral("33GreenBuzzard"), QStringLiteral("33 Green Buzzard")},
        {QStringLiteral("33GoldBlured"), QStringLiteral("33 Gold Blured")},
        {QStringLiteral("33BlueBlured"), QStringLiteral("33 Blue Blured")},
        {QStringLiteral("33BrownBlured"), QStringLiteral("33 Brown Blured")},
        {QStringLiteral("33BrownMancunian"), QStringLiteral("33 Brown Mancunian")},
        {QStringLiteral("33PinBlured"), QStringLiteral("33 Pin Blured")},
        {QStringLiteral("33GreenBlured"), QStringLiteral("33 Green Blured")},
        {QStringLiteral("33PurpleBlured"), QStringLiteral("33 Purple Blured")},
        {QStringLiteral("33SplatterBlured"), QStringLiteral("33 Splatter Blured")},
        {QStringLiteral("33RedSunMix"), QStringLiteral("33 Red Sun Mix")},
        {QStringLiteral("33SplatterRedBlured"), QStringLiteral("33 Splatter Red Blured")},
        {QStringLiteral("33VinylClean"), QStringLiteral("33 Vinyl Clean")},
        {QStringLiteral("33WhiteBlured"), QStringLiteral("33 White Blured")},
        {QStringLiteral("33SilverBrown"), QStringLiteral("33 Silver Brown")},
        {QStringLiteral("33OrangeDeck"), QStringLiteral("33 Orange Deck")},
        {QStringLiteral("33DynamicColours"), QStringLiteral("33 Dynamic Colours")},
        {QStringLiteral("33YellowHome"), QStringLiteral("33 Yellow Home")},
        {QStringLiteral("33WhiteStripes"), QStringLiteral("33 White Stripes")},
        {QStringLiteral("33Transparent"), QStringLiteral("33 Transparent")},
        {QStringLiteral("RTM-LPR90"), QStringLiteral("RTM-LPR90")},
    };
    return options;
}

} // namespace tarnwick
