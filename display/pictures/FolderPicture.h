#pragma once

#include "platform/images/ImageStore.h"

#include <QString>

#include <optional>

namespace tarnwick {

/// A picture for the record that lies in the album's folder.
struct FolderPicture {
    bool isCassette = false;
    std::optional<images::Image> image; ///< none when the file is no picture

    friend bool operator==(const FolderPicture&, const FolderPicture&) = default;
};

/// Looks for "cassette.png", the picture of disc `discNumber` (0 for none), "cd.png" and "vinyl.png", in this
/// order; the first file that exists is the answer, picture or not. None when there is no such file. Waits
/// for the disk, so not for the main thread.
std::optional<FolderPicture> findFolderPicture(const QString& folder, int discNumber,
                                               images::ImageStore& store);

} // namespace tarnwick
