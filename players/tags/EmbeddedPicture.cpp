#include "players/tags/FileFacts.h"
#include "players/tags/TagFile.h"

#include <taglib/aifffile.h>
#include <taglib/apefile.h>
#include <taglib/apetag.h>
#include <taglib/asffile.h>
#include <taglib/asfpicture.h>
#include <taglib/attachedpictureframe.h>
#include <taglib/flacfile.h>
#include <taglib/flacpicture.h>
#include <taglib/id3v2tag.h>
#include <taglib/mp4file.h>
#include <taglib/mpcfile.h>
#include <taglib/mpegfile.h>
#include <taglib/oggfile.h>
#include <taglib/trueaudiofile.h>
#include <taglib/wavfile.h>
#include <taglib/wavpackfile.h>
#include <taglib/xiphcomment.h>

// TagLib 1.13 keeps pictures in a different place for every kind of tag.

namespace tarnwick::players {

namespace {

/// The best of the pictures offered so far: the first, unless one says that it is the front cover.
class Choice {
public:
    explicit Choice(qsizetype limit) : m_limit(limit) {}

    void offer(const TagLib::ByteVector& bytes, bool isFront) {
        const auto size = static_cast<qsizetype>(bytes.size());
        if (size == 0 || size > m_limit || (!m_bytes.isEmpty() && (m_isFront || !isFront)))
            return;
        m_bytes = QByteArray(bytes.data(), size);
        m_isFront = isFront;
    }

    QByteArray take() { return std::move(m_bytes); }

private:
    qsizetype m_limit;
    QByteArray m_bytes;
    bool m_isFront = false;
};

void lookInto(TagLib::ID3v2::Tag* tag, Choice& choice) {
    if (tag == nullptr)
        return;
    using Frame = TagLib::ID3v2::AttachedPictureFrame;
    for (const TagLib::ID3v2::Frame* frame : tag->frameList("APIC")) {
        if (const auto* picture = dynamic_cast<const Frame*>(frame))
            choice.offer(picture->picture(), picture->type() == Frame::FrontCover);
    }
}

void lookInto(const TagLib::List<TagLib::FLAC::Picture*>& pictures, Choice& choice) {
    for (const TagLib::FLAC::Picture* picture : pictures)
        choice.offer(picture->data(), picture->type() == TagLib::FLAC::Picture::FrontCover);
}

/// An APE item holds a file name, a zero and the picture.
void lookInto(TagLib::APE::Tag* tag, Choice& choice) {
    if (tag == nullptr)
        return;
    for (const char* key : {"COVER ART (FRONT)", "COVER ART"}) {
        const auto entry = tag->itemListMap().find(key);
        if (entry == tag->itemListMap().end())
            continue;
        const TagLib::ByteVector item = entry->second.binaryData();
        const int zero = item.find('\0');
        if (zero >= 0)
            choice.offer(item.mid(static_cast<unsigned>(zero) + 1), true);
    }
}

void lookInto(TagLib::MP4::Tag* tag, Choice& choice) {
    if (tag == nullptr || !tag->contains("covr"))
        return;
    for (const TagLib::MP4::CoverArt& cover : tag->item("covr").toCoverArtList())
        choice.offer(cover.data(), false);
}

void lookInto(TagLib::ASF::Tag* tag, Choice& choice) {
    if (tag == nullptr || !tag->contains("WM/Picture"))
        return;
    for (const TagLib::ASF::Attribute& attribute : tag->attribute("WM/Picture")) {
        const TagLib::ASF::Picture picture = attribute.toPicture();
        if (picture.isValid())
            choice.offer(picture.picture(), picture.type() == TagLib::ASF::Picture::FrontCover);
    }
}

} // namespace

QByteArray readEmbeddedPicture(const QString& path, qsizetype limit) {
    const TagFile opened = openTagFile(path, false);
    TagLib::File* file = opened.reference.file();
    Choice choice(limit);
    if (auto* mpeg = dynamic_cast<TagLib::MPEG::File*>(file)) {
        lookInto(mpeg->ID3v2Tag(), choice);
        lookInto(mpeg->APETag(), choice);
    } else if (auto* flac = dynamic_cast<TagLib::FLAC::File*>(file)) {
        lookInto(flac->pictureList(), choice);
        lookInto(flac->ID3v2Tag(), choice);
    } else if (auto* ogg = dynamic_cast<TagLib::Ogg::File*>(file)) {
        if (auto* comment = dynamic_cast<TagLib::Ogg::XiphComment*>(ogg->tag()))
            lookInto(comment->pictureList(), choice);
    } else if (auto* mp4 = dynamic_cast<TagLib::MP4::File*>(file)) {
        lookInto(mp4->tag(), choice);
    } else if (auto* wav = dynamic_cast<TagLib::RIFF::WAV::File*>(file)) {
        lookInto(wav->ID3v2Tag(), choice);
    } else if (auto* aiff = dynamic_cast<TagLib::RIFF::AIFF::File*>(file)) {
        lookInto(dynamic_cast<TagLib::ID3v2::Tag*>(aiff->tag()), choice);
    } else if (auto* wavPack = dynamic_cast<TagLib::WavPack::File*>(file)) {
        lookInto(wavPack->APETag(), choice);
    } else if (auto* ape = dynamic_cast<TagLib::APE::File*>(file)) {
        lookInto(ape->APETag(), choice);
    } else if (auto* musepack = dynamic_cast<TagLib::MPC::File*>(file)) {
        lookInto(musepack->APETag(), choice);
    } else if (auto* trueAudio = dynamic_cast<TagLib::TrueAudio::File*>(file)) {
        lookInto(trueAudio->ID3v2Tag(), choice);
    } else if (auto* asf = dynamic_cast<TagLib::ASF::File*>(file)) {
        lookInto(asf->tag(), choice);
    }
    return choice.take();
}

} // namespace tarnwick::players
