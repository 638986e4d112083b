#include "visuals/FormatClassifier.h"

#include <algorithm>
#include <array>

namespace tarnwick {

namespace {

struct Rule {
    QLatin1String pattern;
    QLatin1String code;
};

// The first pattern that occurs anywhere in the text decides, so the order matters: "mpeg-4" stands
// before "mpeg", "wavpack" before "wav".
constexpr std::array rules{
    Rule{QLatin1String("apple lossless"), QLatin1String("alac")},
    Rule{QLatin1String("alac"), QLatin1String("alac")},
    Rule{QLatin1String("flac"), QLatin1String("flac")},
    Rule{QLatin1String("mp3"), QLatin1String("mp3")},
    Rule{QLatin1String("mpeg-4"), QLatin1String("aac")},
    Rule{QLatin1String("mpeg"), QLatin1String("mp3")},
    Rule{QLatin1String("aac"), QLatin1String("aac")},
    Rule{QLatin1String("m4a"), QLatin1String("aac")},
    Rule{QLatin1String("wavpack"), QLatin1String("wavpack")},
    Rule{QLatin1String("wav"), QLatin1String("wav")},
    Rule{QLatin1String("aif"), QLatin1String("aiff")},
    Rule{QLatin1String("dts"), QLatin1String("dts")},
    Rule{QLatin1String("ac3"), QLatin1String("ac3")},
    Rule{QLatin1String("dsd"), QLatin1String("dsd")},
    Rule{QLatin1String("dxd"), QLatin1String("dxd")},
    Rule{QLatin1String("ape"), QLatin1String("ape")},
    Rule{QLatin1String("caf"), QLatin1String("caf")},
    Rule{QLatin1String("gsm"), QLatin1String("gsm")},
    Rule{QLatin1String("amr"), QLatin1String("amr")},
    Rule{QLatin1String("musepack"), QLatin1String("musepack")},
    Rule{QLatin1String("opus"), QLatin1String("opus")},
    Rule{QLatin1String("ogg"), QLatin1String("ogg")},
    Rule{QLatin1String("wma"), QLatin1String("wma")},
    Rule{QLatin1String("mod"), QLatin1String("mod")},
    Rule{QLatin1String("mid"), QLatin1String("mid")},
    Rule{QLatin1String("spx"), QLatin1String("spx")},
    Rule{QLatin1String("tta"), QLatin1String("tta")},
    Rule{QLatin1String("tak"), QLatin1String("tak")},
    Rule{QLatin1String("shn"), QLatin1String("shn")},
    Rule{QLatin1String("ulaw"), QLatin1String("ulaw")},
    Rule{QLatin1String("alaw"), QLatin1String("alaw")},
    Rule{QLatin1String("la"), QLatin1String("la")},
    Rule{QLatin1String("qoa"), QLatin1String("qoa")},
    Rule{QLatin1String("msadpcm"), QLatin1String("msadpcm")},
    Rule{QLatin1String("imaadpcm"), QLatin1String("imaadpcm")},
    Rule{QLatin1String("mlp"), QLatin1String("mlp")},
    Rule{QLatin1String("ofr"), QLatin1String("ofr")},
    Rule{QLatin1String("usac"), QLatin1String("usac")},
};

} // namespace

QString formatCode(const QString& kind) {
    const QString text = kind.toLower();
    const auto rule =
        std::find_if(rules.begin(), rules.end(), [&](const Rule& r) { return text.contains(r.pattern); });
    return rule == rules.end() ? QStringLiteral("unknown") : QString(rule->code);
}

} // namespace tarnwick
