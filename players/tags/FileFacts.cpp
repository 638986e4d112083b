#include "players/tags/FileFacts.h"

#include "players/Year.h"
#include "players/tags/TagFile.h"

#include <QFileInfo>
#include <QSet>
#include <QStringList>
#include <taglib/aifffile.h>
#include <taglib/apefile.h>
#include <taglib/asffile.h>
#include <taglib/flacfile.h>
#include <taglib/itfile.h>
#include <taglib/modfile.h>
#include <taglib/mp4file.h>
#include <taglib/mpcfile.h>
#include <taglib/mpegfile.h>
#include <taglib/oggflacfile.h>
#include <taglib/opusfile.h>
#include <taglib/s3mfile.h>
#include <taglib/speexfile.h>
#include <taglib/tpropertymap.h>
#include <taglib/trueaudiofile.h>
#include <taglib/vorbisfile.h>
#include <taglib/wavfile.h>
#include <taglib/wavpackfile.h>
#include <taglib/xmfile.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>
#include <vector>

namespace tarnwick::players {

namespace {

constexpr qsizetype maximumText = 20000;
constexpr qsizetype maximumValues = 64; // of one entry, as many as anybody reads

template <typename... Types>
bool isOneOf(const TagLib::File* file) {
    return ((dynamic_cast<const Types*>(file) != nullptr) || ...);
}

/// The type of the file in words.
QString kindOf(const TagLib::File* file, const TagFile& opened) {
    if (opened.dsfSampleRate > 0)
        return QStringLiteral("DSD audio file");
    if (const auto* mp4 = dynamic_cast<const TagLib::MP4::File*>(file)) {
        const auto* properties = mp4->audioProperties();
        const bool isLossless = properties != nullptr && properties->codec() == TagLib::MP4::Properties::ALAC;
        return isLossless ? QStringLiteral("Apple Lossless audio file") : QStringLiteral("AAC audio file");
    }
    if (isOneOf<TagLib::MPEG::File>(file))
        return QStringLiteral("MPEG audio file");
    if (isOneOf<TagLib::FLAC::File, TagLib::Ogg::FLAC::File>(file))
        return QStringLiteral("FLAC audio file");
    if (isOneOf<TagLib::Ogg::Opus::File>(file))
        return QStringLiteral("Opus audio file");
    if (isOneOf<TagLib::Ogg::Speex::File>(file))
        return QStringLiteral("Speex (spx) audio file");
    if (isOneOf<TagLib::Ogg::Vorbis::File>(file))
        return QStringLiteral("Ogg Vorbis audio file");
    if (isOneOf<TagLib::RIFF::WAV::File>(file))
        return QStringLiteral("WAV audio file");
    if (isOneOf<TagLib::RIFF::AIFF::File>(file))
        return QStringLiteral("AIFF audio file");
    if (isOneOf<TagLib::WavPack::File>(file))
        return QStringLiteral("WavPack audio file");
    if (isOneOf<TagLib::APE::File>(file))
        return QStringLiteral("Monkey’s Audio (APE) file");
    if (isOneOf<TagLib::MPC::File>(file))
        return QStringLiteral("Musepack audio file");
    if (isOneOf<TagLib::TrueAudio::File>(file))
        return QStringLiteral("TTA audio file");
    if (isOneOf<TagLib::ASF::File>(file))
        return QStringLiteral("Windows Media (WMA) audio file");
    if (isOneOf<TagLib::Mod::File, TagLib::S3M::File, TagLib::IT::File, TagLib::XM::File>(file))
        return QStringLiteral("Module audio file");
    return {};
}

/// Types that TagLib does not read, by suffix.
QString kindOfSuffix(const QString& path) {
    static constexpr std::array suffixes{"ac3", "dts", "caf", "gsm", "amr",
                                         "tak", "shn", "qoa", "mlp", "ofr"};
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (suffix == QLatin1String("mid") || suffix == QLatin1String("midi"))
        return QStringLiteral("MIDI file");
    if (suffix == QLatin1String("dff"))
        return QStringLiteral("DSD audio file");
    const bool isKnown = std::any_of(suffixes.begin(), suffixes.end(),
                                     [&](const char* known) { return suffix == QLatin1String(known); });
    return isKnown ? suffix.toUpper() + QStringLiteral(" audio file") : QString();
}

QString textOf(const TagLib::String& text) {
    return QString::fromWCharArray(text.toCWString(), static_cast<qsizetype>(text.size()))
        .left(maximumText)
        .trimmed();
}

/// Whether a text of TagLib's is `key`.
bool isKey(const TagLib::String& text, std::string_view key) {
    return text.size() == key.size() &&
           std::equal(key.begin(), key.end(), text.begin(),
                      [](char a, wchar_t b) { return static_cast<wchar_t>(a) == b; });
}

/// The tag's entries. Looking one up in TagLib's own map folds letter case anew each time.
class Entries {
public:
    explicit Entries(const TagLib::PropertyMap& properties) {
        m_entries.reserve(properties.size());
        for (const auto& [key, values] : properties)
            m_entries.emplace_back(&key, &values);
    }

    /// The values of the first of `keys` that there is, with ", " between them.
    QString text(std::initializer_list<std::string_view> keys) const {
        for (const std::string_view key : keys) {
            const auto entry = std::find_if(m_entries.begin(), m_entries.end(),
                                            [&](const auto& known) { return isKey(*known.first, key); });
            if (entry == m_entries.end())
                continue;
            QStringList texts;
            for (const TagLib::String& value : *entry->second) {
                if (texts.size() == maximumValues)
                    break;
                const QString text = textOf(value);
                if (!text.isEmpty() && !texts.contains(text))
                    texts.append(text);
            }
            if (!texts.isEmpty())
                return texts.join(QStringLiteral(", ")).left(maximumText);
        }
        return {};
    }

private:
    std::vector<std::pair<const TagLib::String*, const TagLib::StringList*>> m_entries;
};

/// The number that a text begins with; 0 without one.
int leadingNumber(const QString& text) {
    int digits = 0;
    while (digits < text.size() && digits < 9 && text[digits].isDigit())
        ++digits;
    return text.left(digits).toInt();
}

void readTag(const TagLib::PropertyMap& properties, Track& track) {
    const Entries entries(properties);
    track.name = entries.text({"TITLE"});
    track.artist = entries.text({"ARTIST", "ALBUMARTIST"});
    track.album = entries.text({"ALBUM"});
    track.genre = entries.text({"GENRE"});
    track.comment = entries.text({"COMMENT", "DESCRIPTION"});
    track.grouping = entries.text({"GROUPING", "CONTENTGROUP"});
    track.year = yearIn(entries.text({"DATE", "YEAR", "ORIGINALDATE"}));
    track.trackNumber = leadingNumber(entries.text({"TRACKNUMBER"}));
    const QString disc = entries.text({"DISCNUMBER"});
    track.discNumber = leadingNumber(disc);
    track.discCount = leadingNumber(disc.section(u'/', 1));
    if (track.discCount == 0)
        track.discCount = leadingNumber(entries.text({"DISCTOTAL", "TOTALDISCS"}));
    track.compilation = leadingNumber(entries.text({"COMPILATION"})) > 0;
}

void readSound(const TagFile& opened, Track& track) {
    if (opened.dsfSampleRate > 0) {
        track.sampleRate = opened.dsfSampleRate;
        track.bitRate = static_cast<int>(qint64{opened.dsfSampleRate} * opened.dsfChannels / 1000);
        track.duration = static_cast<double>(opened.dsfSamples) / opened.dsfSampleRate;
    } else if (const TagLib::AudioProperties* sound = opened.reference.audioProperties()) {
        track.sampleRate = std::max(0, sound->sampleRate());
        track.bitRate = std::max(0, sound->bitrate());
        track.duration = std::max(0, sound->lengthInMilliseconds()) / 1000.0;
    }
}

} // namespace

Track readFileFacts(const QString& path, qint64 size) {
    Track track;
    const TagFile opened = openTagFile(path, true);
    if (TagLib::File* file = opened.reference.file()) {
        readTag(file->properties(), track);
        readSound(opened, track);
        track.kind = kindOf(file, opened);
    }
    if (track.kind.isEmpty())
        track.kind = kindOfSuffix(path);
    track.path = path;
    track.size = size;
    return track;
}

bool isMusicFileName(const QString& name) {
    static const QSet<QString> suffixes = [] {
        QSet<QString> known{QStringLiteral("dsf")};
        for (const TagLib::String& suffix : TagLib::FileRef::defaultFileExtensions())
            known.insert(QString::fromStdString(suffix.to8Bit(true)));
        return known;
    }();
    return suffixes.contains(name.mid(name.lastIndexOf(u'.') + 1).toLower());
}

} // namespace tarnwick::players
