#pragma once

#include <QString>
#include <taglib/fileref.h>

#include <memory>

namespace tarnwick::players {

/// A music file, opened by its suffix or else by its content. A DSF file, which TagLib does not know, comes
/// as the ID3 tag that it ends with.
struct TagFile {
    std::unique_ptr<TagLib::IOStream> stream; ///< what `reference` reads from, where it is no file
    TagLib::FileRef reference;                ///< null when the file is none of those that are known
    int dsfSampleRate = 0;                    ///< hertz; 0 unless it is a DSF file
    int dsfChannels = 0;
    qint64 dsfSamples = 0; ///< of each channel
};

/// `withProperties`: the sound's length and rates as well. Reads the disk.
TagFile openTagFile(const QString& path, bool withProperties);

} // namespace tarnwick::players
