#include "platform/musicapp/demo/DemoTransport.h"

#include "platform/images/ImageStore.h"
#include "platform/musicapp/demo/CoverCanvas.h"
#include "platform/musicapp/demo/DemoCassette.h"

#include <QFile>

#include <algorithm>
#include <utility>

namespace tarnwick::musicapp {

using dispatch::QualityOfService;

namespace {

/// Of one sleeve, on the slowest machine.
constexpr std::chrono::seconds longestPainting(60);

std::unique_ptr<QTemporaryDir> cassetteFolder(DemoScene scene) {
    return scene == DemoScene::Cassette ? std::make_unique<QTemporaryDir>() : nullptr;
}

PlayerState startOf(const DemoMusic::Options& options) {
    if (options.startsStopped || options.scene == DemoScene::Stopped)
        return PlayerState::Stopped;
    return options.scene == DemoScene::Paused ? PlayerState::Paused : PlayerState::Playing;
}

} // namespace

DemoTransport::DemoTransport(const DemoMusic::Options& options, dispatch::Dispatcher& dispatcher,
                             images::ImageStore& images)
    : m_dispatcher(dispatcher), m_images(images), m_cassetteFolder(cassetteFolder(options.scene)),
      m_library(makeDemoLibrary(options.scene, options.additionalTracks,
                                m_cassetteFolder ? m_cassetteFolder->path() : QString())),
      m_state(startOf(options)), m_queue{m_library.sceneTrack}, m_playlist(m_library.scenePlaylist),
      m_since(dispatcher.now()) {
    fillQueue();
    // Until the first sleeve is painted.
    const PlayerState begun = std::exchange(m_state, PlayerState::Stopped);
    m_snapshot = std::make_shared<const Snapshot>(makeSnapshot());
    m_state = begun;
    if (m_state != PlayerState::Stopped)
        m_seconds = m_library.scenePosition;
}

void DemoTransport::start() {
    if (m_cassetteFolder) {
        // The picture has to be there before anybody looks into the folder.
        work(QualityOfService::UserInteractive, [](DemoTransport& self, Lock& lock) {
            const QString path = self.m_cassetteFolder->filePath(QStringLiteral("cassette.png"));
            lock.unlock();
            QFile file(path);
            if (file.open(QIODevice::WriteOnly))
                file.write(paintCassette());
            file.close();
            lock.lock();
            self.publish(lock);
        });
        return;
    }
    Lock lock(m_mutex);
    publish(lock);
}

void DemoTransport::shutDown() {
    m_announcer.setHandler({});
    Lock lock(m_mutex);
    m_isShutDown = true;
    m_end.cancel();
    m_changed.wait(lock, [this] { return m_working == 0; });
}

std::shared_ptr<const Snapshot> DemoTransport::snapshot() const {
    const std::lock_guard lock(m_mutex);
    return m_snapshot;
}

void DemoTransport::command(Command command) {
    Lock lock(m_mutex);
    settle();
    const int size = static_cast<int>(m_queue.size());
    switch (command) {
    case Command::Play:
        m_state = PlayerState::Playing;
        break;
    case Command::Pause:
        if (m_state == PlayerState::Playing)
            m_state = PlayerState::Paused;
        break;
    case Command::PlayPause:
        m_state = m_state == PlayerState::Playing ? PlayerState::Paused : PlayerState::Playing;
        break;
    case Command::Stop:
        m_state = PlayerState::Stopped;
        m_seconds = 0;
        break;
    case Command::NextTrack:
        begin((m_place + 1) % size);
        break;
    case Command::PreviousTrack:
        begin((m_place + size - 1) % size);
        break;
    }
    publish(lock);
}

void DemoTransport::setVolume(double volume) {
    Lock lock(m_mutex);
    m_volume = volume;
    publish(lock);
}

void DemoTransport::setShuffle(bool shuffle) {
    Lock lock(m_mutex);
    m_shuffle = shuffle;
    fillQueue();
    publish(lock);
}

void DemoTransport::setPosition(double seconds) {
    Lock lock(m_mutex);
    m_seconds = std::min(seconds, track().duration);
    m_since = now();
    publish(lock);
}

void DemoTransport::play(const Track& track) {
    Lock lock(m_mutex);
    const auto& tracks = m_library.library->tracks();
    const int number = track.id.toInt();
    if (number < 0 || number >= static_cast<int>(tracks.size()))
        return;
    const auto queued = std::find(m_queue.begin(), m_queue.end(), number);
    if (queued != m_queue.end()) {
        begin(static_cast<int>(queued - m_queue.begin()));
    } else {
        m_playlist = -1;
        m_queue = {number};
        m_place = 0;
        fillQueue();
        begin(m_place);
    }
    m_state = PlayerState::Playing;
    publish(lock);
}

void DemoTransport::play(const Playlist& playlist) {
    Lock lock(m_mutex);
    for (std::size_t i = 0; i < m_library.playlists.size(); ++i) {
        const DemoPlaylist& known = m_library.playlists[i];
        if (known.playlist.id != playlist.id || known.tracks.empty())
            continue;
        m_playlist = static_cast<int>(i);
        m_queue = {known.tracks.front()};
        m_place = 0;
        fillQueue();
        begin(0);
        m_state = PlayerState::Playing;
        publish(lock);
        return;
    }
}

bool DemoTransport::waitUntilPublished() {
    Lock lock(m_mutex);
    return m_changed.wait_for(lock, longestPainting, [this] { return m_isPublished; });
}

/// From the first second of another track.
void DemoTransport::begin(int place) {
    m_place = place;
    m_seconds = 0;
    m_since = now();
}

void DemoTransport::settle() {
    m_seconds = position();
    m_since = now();
}

/// Lets the snapshot show the state, at once or, when the sleeve is still to be made and this is the
/// main thread, as soon as it is.
void DemoTransport::publish(Lock& lock) {
    m_isPublished = false;
    scheduleEnd();
    if (!isSleeveReady() && m_dispatcher.isMainThread()) {
        auto same = std::make_shared<Snapshot>(*m_snapshot);
        same->volume = m_volume;
        same->shuffle = m_shuffle;
        m_snapshot = std::move(same);
        work(QualityOfService::UserInteractive,
             [](DemoTransport& self, Lock& taskLock) { self.publish(taskLock); });
        return;
    }
    if (!isSleeveReady()) {
        settle();
        while (!isSleeveReady()) // of whatever plays by then
            prepare(cover(m_place), lock);
        m_since = now(); // nothing was heard meanwhile
        scheduleEnd();
    }
    show();
}

void DemoTransport::show() {
    auto next = std::make_shared<const Snapshot>(makeSnapshot());
    const Changes changes = difference(*m_snapshot, *next, now());
    m_snapshot = std::move(next);
    m_isPublished = true;
    m_changed.notify_all();
    if (changes)
        work(QualityOfService::Default, [changes](DemoTransport& self, Lock& lock) {
            lock.unlock();
            self.m_announcer.announce(changes);
            lock.lock();
        });
    const int following = (m_place + 1) % static_cast<int>(m_queue.size());
    if (m_state == PlayerState::Playing && !m_painted.contains(static_cast<int>(cover(following)))) {
        work(QualityOfService::Background, [next = cover(following)](DemoTransport& self, Lock& lock) {
            if (!self.m_painted.contains(static_cast<int>(next)))
                self.paint(next, lock);
        });
    }
}

void DemoTransport::scheduleEnd() {
    m_end.cancel();
    if (m_state != PlayerState::Playing)
        return;
    const std::chrono::duration<double> left(std::max(0.0, track().duration - position()));
    m_end = m_dispatcher.asyncAfter(m_dispatcher.globalQueue(QualityOfService::Default),
                                    std::chrono::ceil<std::chrono::milliseconds>(left),
                                    [weak = weak_from_this()] {
                                        if (const auto self = weak.lock())
                                            self->work(QualityOfService::Default, &DemoTransport::endOfTrack);
                                    });
}

void DemoTransport::endOfTrack(Lock& lock) {
    if (m_state != PlayerState::Playing || position() < track().duration)
        return; // somebody was faster
    begin((m_place + 1) % static_cast<int>(m_queue.size()));
    publish(lock);
}

/// The queue of the playlist, or of the album, around the track that is current in the one before.
void DemoTransport::fillQueue() {
    const int current = m_queue[static_cast<std::size_t>(m_place)];
    if (m_playlist >= 0) {
        m_queue = m_library.playlists[static_cast<std::size_t>(m_playlist)].tracks;
    } else {
        const auto& tracks = m_library.library->tracks();
        const auto album = m_library.library->ofAlbum(tracks[static_cast<std::size_t>(current)].album);
        m_queue.assign(album.begin(), album.end());
    }
    if (m_shuffle) {
        Dice dice(m_queue.size());
        for (std::size_t i = m_queue.size() - 1; i > 0; --i)
            std::swap(m_queue[i],
                      m_queue[static_cast<std::size_t>(dice.roll() * static_cast<double>(i + 1))]);
    }
    m_place = static_cast<int>(std::find(m_queue.begin(), m_queue.end(), current) - m_queue.begin());
}

bool DemoTransport::isPainted(DemoCover cover) const {
    return cover == DemoCover::None || !m_painted.value(static_cast<int>(cover)).isEmpty();
}

bool DemoTransport::isSleeveReady() const {
    return m_state == PlayerState::Stopped || cover(m_place) == m_sleeve;
}

/// Makes `cover` the sleeve that the snapshot can show, painting and decoding with the lock open.
void DemoTransport::prepare(DemoCover cover, Lock& lock) {
    std::optional<Artwork> artwork;
    if (cover != DemoCover::None) {
        paint(cover, lock);
        const QByteArray bytes = m_painted.value(static_cast<int>(cover));
        lock.unlock();
        artwork = Artwork{bytes, m_images.decode(bytes)};
        lock.lock();
    }
    m_sleeve = cover;
    m_artwork = std::move(artwork);
}

/// Paints with the lock open, or waits for the thread that does.
void DemoTransport::paint(DemoCover cover, Lock& lock) {
    const int key = static_cast<int>(cover);
    if (m_painted.contains(key)) {
        m_changed.wait(lock, [&] { return isPainted(cover); });
        return;
    }
    m_painted.insert(key, QByteArray());
    lock.unlock();
    const QByteArray bytes = paintCover(cover);
    lock.lock();
    m_painted.insert(key, bytes);
    m_changed.notify_all();
}

/// Runs `task` with the lock on another thread, unless this is shut down by then.
void DemoTransport::work(QualityOfService quality, std::function<void(DemoTransport&, Lock&)> task) {
    m_dispatcher.globalQueue(quality).async([weak = weak_from_this(), task = std::move(task)] {
        const auto self = weak.lock();
        if (!self)
            return;
        Lock lock(self->m_mutex);
        if (self->m_isShutDown)
            return;
        ++self->m_working;
        task(*self, lock);
        --self->m_working;
        self->m_changed.notify_all();
    });
}

double DemoTransport::position() const {
    if (m_state != PlayerState::Playing)
        return m_seconds;
    const std::chrono::duration<double> passed = now() - m_since;
    return std::min(m_seconds + passed.count(), track().duration);
}

const Track& DemoTransport::track() const {
    return m_library.library->tracks()[static_cast<std::size_t>(m_queue[static_cast<std::size_t>(m_place)])];
}

DemoCover DemoTransport::cover(int place) const {
    const auto number = static_cast<std::size_t>(m_queue[static_cast<std::size_t>(place)]);
    return m_library.covers.value(m_library.library->tracks()[number].album, DemoCover::None);
}

Snapshot DemoTransport::makeSnapshot() const {
    Snapshot snapshot;
    snapshot.running = true;
    snapshot.playerName = QStringLiteral("Demo");
    snapshot.state = m_state;
    snapshot.volume = m_volume;
    snapshot.shuffle = m_shuffle;
    snapshot.library = m_library.library;
    for (const DemoPlaylist& playlist : m_library.playlists)
        snapshot.playlists.push_back(playlist.playlist);
    snapshot.capabilities = {true, true, true, true, true, true, !m_library.playlists.empty()};
    if (m_state == PlayerState::Stopped)
        return snapshot;
    snapshot.current = track();
    if (m_playlist >= 0)
        snapshot.currentPlaylist = snapshot.playlists[static_cast<std::size_t>(m_playlist)].name;
    snapshot.position = {m_seconds, m_since, m_state == PlayerState::Playing ? 1.0 : 0.0, track().duration};
    snapshot.artwork = m_artwork;
    return snapshot;
}

} // namespace tarnwick::musicapp
