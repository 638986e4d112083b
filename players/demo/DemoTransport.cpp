#include "players/demo/DemoTransport.h"

#include "platform/images/ImageStore.h"
#include "players/demo/DemoCassette.h"

#include <QFile>

#include <algorithm>
#include <utility>

namespace tarnwick::players {

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
      m_state(startOf(options)), m_queue(m_library), m_since(dispatcher.now()) {
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
        m_queue.goForward();
        rewind();
        break;
    case Command::PreviousTrack:
        m_queue.goBack();
        rewind();
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
    m_queue.setShuffled(shuffle);
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
    m_queue.goTo(number);
    rewind();
    m_state = PlayerState::Playing;
    publish(lock);
}

void DemoTransport::play(const Playlist& playlist) {
    Lock lock(m_mutex);
    if (!m_queue.begin(playlist))
        return;
    rewind();
    m_state = PlayerState::Playing;
    publish(lock);
}

bool DemoTransport::waitUntilPublished() {
    Lock lock(m_mutex);
    return m_changed.wait_for(lock, longestPainting, [this] { return m_isPublished; });
}

/// To the first second.
void DemoTransport::rewind() {
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
        same->shuffle = m_queue.isShuffled();
        m_snapshot = std::move(same);
        work(QualityOfService::UserInteractive,
             [](DemoTransport& self, Lock& taskLock) { self.publish(taskLock); });
        return;
    }
    if (!isSleeveReady()) {
        settle();
        while (!isSleeveReady()) // of whatever plays by then
            prepare(cover(m_queue.current()), lock);
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
    const DemoCover following = cover(m_queue.following());
    if (m_state == PlayerState::Playing && !m_sleeves.isBegun(following)) {
        work(QualityOfService::Background, [following](DemoTransport& self, Lock& lock) {
            if (self.m_sleeves.isBegun(following))
                return;
            lock.unlock();
            self.m_sleeves.sleeve(following);
            lock.lock();
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
    m_queue.goForward();
    rewind();
    publish(lock);
}

bool DemoTransport::isSleeveReady() const {
    return m_state == PlayerState::Stopped || cover(m_queue.current()) == m_sleeve;
}

/// Makes `cover` the sleeve that the snapshot can show, painting and decoding with the lock open.
void DemoTransport::prepare(DemoCover cover, Lock& lock) {
    std::optional<Artwork> artwork;
    if (cover != DemoCover::None) {
        lock.unlock();
        const QByteArray bytes = m_sleeves.sleeve(cover);
        artwork = Artwork{bytes, m_images.decode(bytes)};
        lock.lock();
    }
    m_sleeve = cover;
    m_artwork = std::move(artwork);
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
    return m_library.library->tracks()[static_cast<std::size_t>(m_queue.current())];
}

DemoCover DemoTransport::cover(int number) const {
    const Track& track = m_library.library->tracks()[static_cast<std::size_t>(number)];
    return m_library.covers.value(track.album, DemoCover::None);
}

Snapshot DemoTransport::makeSnapshot() const {
    Snapshot snapshot;
    snapshot.running = true;
    snapshot.playerName = QStringLiteral("Demo");
    snapshot.state = m_state;
    snapshot.volume = m_volume;
    snapshot.shuffle = m_queue.isShuffled();
    snapshot.library = m_library.library;
    for (const DemoPlaylist& playlist : m_library.playlists)
        snapshot.playlists.push_back(playlist.playlist);
    snapshot.capabilities = {.canPlay = true,
                             .canGoNext = true,
                             .canGoPrevious = true,
                             .canShuffle = true,
                             .canSetVolume = true,
                             .canSeek = true,
                             .canOpenTitle = true,
                             .hasPlaylists = !m_library.playlists.empty()};
    if (m_state == PlayerState::Stopped)
        return snapshot;
    snapshot.current = track();
    if (const DemoPlaylist* playlist = m_queue.playlist())
        snapshot.currentPlaylist = playlist->playlist.name;
    snapshot.position = {m_seconds, m_since, m_state == PlayerState::Playing ? 1.0 : 0.0, track().duration};
    snapshot.artwork = m_artwork;
    return snapshot;
}

} // namespace tarnwick::players
