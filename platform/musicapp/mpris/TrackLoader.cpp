#include "platform/musicapp/mpris/TrackLoader.h"

#include "platform/images/ImageStore.h"
#include "platform/musicapp/mpris/LocalFile.h"

namespace tarnwick::musicapp {

using images::ImageStore;

TrackLoader::TrackLoader(BusThread& thread, dispatch::Dispatcher& dispatcher, ImageStore& images)
    : m_thread(thread), m_images(images),
      m_work(dispatcher.globalQueue(dispatch::QualityOfService::Background)) {}

void TrackLoader::load(const Metadata& metadata, Loaded loaded) {
    const int number = ++*m_current;
    m_work.run([this, number, metadata, loaded = std::move(loaded)] {
        TrackDetails details = read(metadata);
        m_thread.post([current = std::weak_ptr(m_current), number, details = std::move(details), loaded] {
            if (const auto wanted = current.lock(); wanted && *wanted == number)
                loaded(details);
        });
    });
}

TrackDetails TrackLoader::read(const Metadata& metadata) {
    TrackDetails details;
    details.path = localPathOf(metadata.url);
    std::optional<QByteArray> bytes = bytesOfDataUrl(metadata.artUrl, ImageStore::maximumBytes);
    if (!bytes)
        bytes = readRegularFile(localPathOf(metadata.artUrl), ImageStore::maximumBytes);
    if (bytes) {
        if (auto image = m_images.decode(*bytes))
            details.artwork = Artwork{*bytes, image};
    }
    return details;
}

} // namespace tarnwick::musicapp
