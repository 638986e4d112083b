#include "visuals/FormatClassifier.h"

#include <gtest/gtest.h>

namespace tarnwick {

TEST(FormatClassifier, TakesTheFirstRuleThatMatchesAnywhere) {
    const std::pair<const char*, const char*> rows[]{
        {"Apple Lossless audio file", "alac"},
        {"MPEG audio file", "mp3"},
        {"MPEG-4 audio file", "aac"},
        {"AAC audio file", "aac"},
        {"WAV audio file", "wav"},
        {"WavPack audio file", "wavpack"},
        {"AIFF audio file", "aiff"},
        {"FLAC AUDIO FILE", "flac"},
        {"Purchased M4A", "aac"},
        {"Ogg Opus stream", "opus"},
        {"Monkey's Audio (ape)", "ape"},
        {"uLaw", "ulaw"},
        {"Flat file", "la"},       // two letters are enough
        {"modern", "mod"},         // and so is a syllable
        {"USAC / xHE-AAC", "aac"}, // an earlier rule wins
        {"Internet audio stream", "unknown"},
        {"", "unknown"},
    };
    for (const auto& [kind, code] : rows)
        EXPECT_EQ(formatCode(QString::fromLatin1(kind)), QLatin1String(code)) << kind;
}

} // namespace tarnwick
