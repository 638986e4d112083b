// The choice of the record's picture.

#include "display/state/TarnwickView.h"
#include "visuals/GeneratedRecord.h"

namespace tarnwick {

namespace {

constexpr RecordPrint print{.side = 300, .holeRadius = 30, .inset = 5};

} // namespace

void TarnwickView::refreshRecordImage(bool force) {
    const Settings& settings = m_parts.settings;
    const MusicSource& source = m_parts.musicSource;
    m_recordAlbum = source.albumIdentity();
    // A choice that is still looking at its folder is overtaken, but what it was to draw anew is drawn.
    m_recordIsForced = m_recordIsForced || force;
    const RecordRequest request{m_recordIsForced, settings.randomRotationEnabled(), settings.useGeneratedCD(),
                                settings.defaultCDImageChoice(), source.currentAlbumArtwork()};
    const auto order = ++m_recordOrder;
    const auto folder = source.currentTrackFolderURL();
    m_looksForRecord = folder.has_value();
    if (!folder) {
        chooseRecord(request);
        Q_EMIT this->found();
        return;
    }
    m_parts.dispatcher.globalQueue(dispatch::QualityOfService::Background)
        .async([this, alive = std::weak_ptr(m_alive), &dispatcher = m_parts.dispatcher,
                &store = m_parts.images, folder = *folder, disc = source.currentDiscNumberOfPlayer(), request,
                order] {
            dispatcher.mainQueue().async(
                [this, alive, found = findFolderPicture(folder, disc, store), request, order] {
                    if (alive.expired() || order != m_recordOrder)
                        return;
                    m_looksForRecord = false;
                    if (found)
                        takeFolderPicture(*found);
                    else
                        chooseRecord(request);
                    Q_EMIT this->found();
                });
        });
}

bool TarnwickView::hasFoundEverything() const {
    return !m_looksForRecord && m_parts.backgroundManager.hasPublishedAll();
}

void TarnwickView::takeFolderPicture(const FolderPicture& found) {
    m_recordIsForced = false;
    if (found.isCassette) {
        assign(m_cassetteImage, found.image, &TarnwickView::cassetteImageChanged);
        return;
    }
    assign(m_cassetteImage, std::nullopt, &TarnwickView::cassetteImageChanged);
    m_cdImage = found.image ? DiscImage::of(*found.image) : DiscImage();
    pushRecordImage();
}

void TarnwickView::chooseRecord(const RecordRequest& request) {
    m_recordIsForced = false;
    assign(m_cassetteImage, std::nullopt, &TarnwickView::cassetteImageChanged);
    const auto named = [this](const QString& name) { return DiscImage::named(m_parts.catalogue, name); };
    const bool isPrinted = request.isGenerated && request.cover;
    if (request.isRandom) {
        if (request.force || m_currentRandomImage.isNull()) {
            const DiscImage drawn = m_rotatingCDManager.randomRecordImage();
            m_currentRandomImage = drawn.isNull() ? named(request.defaultChoice) : drawn;
        }
        const QString name = m_currentRandomImage.name();
        m_cdImage = isPrinted ? generatedRecord(request, name.isEmpty() ? QStringLiteral("cddefault") : name)
                              : m_currentRandomImage;
    } else if (isPrinted) {
        m_cdImage = generatedRecord(request, request.defaultChoice);
    } else {
        m_cdImage = named(request.defaultChoice);
    }
    pushRecordImage();
}

DiscImage TarnwickView::generatedRecord(const RecordRequest& request, const QString& tag) const {
    return makeGeneratedRecord(m_parts.catalogue, *request.cover, tag, print, m_parts.log);
}

void TarnwickView::pushRecordImage() {
    m_rotatingCDManager.updateRecord(m_cdImage, m_parts.musicSource.isPlaying(),
                                     m_parts.settings.rotateCDDuringPlayback());
}

} // namespace tarnwick
