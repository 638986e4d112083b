#include "display/panel/PanelItem.h"

#include "assets/Catalogue.h"
#include "display/state/TrackTexts.h"
#include "visuals/FlagsManager.h"
#include "visuals/FormatLogo.h"

#include <QGuiApplication>

#include <algorithm>
#include <cmath>

namespace tarnwick {

namespace {

constexpr double marginOfBar = 12;

/// `text` with every figure a nought: what a layout in equal cells depends on.
QString shapeOf(QString text) {
    for (QChar& character : text) {
        if (character.isDigit())
            character = u'0';
    }
    return text;
}

/// Width by height of a picture of the catalogue.
double aspectOf(const QString& name) {
    const QSize size = Catalogue::shared().naturalSize(name);
    return size.isEmpty() ? 1 : double(size.width()) / size.height();
}

} // namespace

PanelItem::PanelItem(QQuickItem* parent) : QQuickItem(parent) {
    // A name that stood for a font may stand for another, or for none, from then on.
    connect(qGuiApp, &QGuiApplication::fontDatabaseChanged, this, [this] {
        m_factsAreNew = true;
        polish();
    });
}

void PanelItem::setView(TarnwickView* view) {
    if (m_view == view)
        return;
    if (m_view) {
        for (QObject* sender : std::initializer_list<QObject*>{
                 m_view, &m_view->musicSource(), m_view->settings(), &m_view->backgroundManager()})
            sender->disconnect(this);
    }
    m_view = view;
    if (view)
        follow(*view);
    Q_EMIT viewChanged();
    considerClock();
    considerPosition();
    considerFacts();
}

void PanelItem::follow(TarnwickView& view) {
    using Source = MusicSource;
    for (const auto changed :
         {&Source::currentTrackTitleChanged, &Source::currentArtistNameChanged,
          &Source::currentAlbumNameChanged, &Source::isPlayerActiveChanged, &Source::currentTrackYearChanged,
          &Source::currentTrackGroupChanged, &Source::currentTrackNumberChanged,
          &Source::currentTrackFormatChanged, &Source::currentTrackCommentChanged,
          &Source::currentDiscNumberChanged, &Source::totalDiscsChanged, &Source::currentBitRateChanged,
          &Source::currentFileSizeChanged, &Source::currentSampleRateChanged, &Source::currentGenreChanged,
          &Source::currentPlaylistNameChanged})
        connect(&view.musicSource(), changed, this, &PanelItem::considerFacts);
    connect(&view.musicSource(), &Source::elapsedTimeChanged, this, &PanelItem::considerPosition);
    connect(&view.musicSource(), &Source::trackDurationChanged, this, &PanelItem::considerPosition);
    for (const auto changed : {&Settings::showFileFormatLogoChanged, &Settings::showCurrentPlaylistChanged,
                               &Settings::showGenreChanged, &Settings::showBitRateChanged,
                               &Settings::showFileSizeChanged, &Settings::showSampleRateChanged,
                               &Settings::showDateAndTimeChanged, &Settings::showTrackFlagsChanged,
                               &Settings::showTrackCommentsChanged, &Settings::showTrackYearChanged,
                               &Settings::selectedTrackInfoFontChanged, &Settings::selectedClockFontChanged})
        connect(view.settings(), changed, this, &PanelItem::considerFacts);
    connect(&view.backgroundManager(), &BackgroundManager::dynamicTextColorChanged, this,
            &PanelItem::considerFacts);
    connect(&view, &TarnwickView::currentTimeChanged, this, &PanelItem::considerClock);
    connect(&view, &TarnwickView::isFullscreenChanged, this, [this] { polish(); });
    connect(&view, &TarnwickView::cassetteImageChanged, this, [this] { polish(); });
}

PanelFacts PanelItem::gatherFacts() const {
    const MusicSource& source = m_view->musicSource();
    const Settings& settings = *m_view->settings();
    PanelFacts facts;
    facts.labels = titleLabels(source.currentTrackNumber(), source.currentDiscNumber(), source.totalDiscs());
    facts.title = source.currentTrackTitle();
    facts.artist = source.currentArtistName().toUpper();
    facts.album = source.currentAlbumName().value_or(QString());
    if (facts.album.isEmpty())
        facts.album = QStringLiteral("Album sconosciuto");
    if (settings.showCurrentPlaylist() && !source.currentPlaylistName().isEmpty())
        facts.details.append(QStringLiteral("Playlist: ") + source.currentPlaylistName());
    if (source.isPlayerActive()) {
        facts.elapsed = shapeOf(m_elapsedText);
        facts.duration = durationText(source.trackDuration());
        facts.group = source.currentTrackGroup();
        if (settings.showTrackYear())
            facts.year = yearText(source.currentTrackYear());
        if (settings.showGenre())
            facts.details.append(QStringLiteral("Genre: ") + source.currentGenre());
        if (settings.showBitRate())
            facts.details.append(bitRateText(source.currentBitRate()));
        if (settings.showFileSize())
            facts.details.append(fileSizeText(source.currentFileSize()));
        if (settings.showSampleRate())
            facts.details.append(sampleRateText(source.currentSampleRate()));
    }
    if (settings.showFileFormatLogo()) {
        facts.logo =
            formatLogoName(source.currentTrackFormat(), m_view->backgroundManager().dynamicTextColor())
                .value_or(QString());
        facts.logoAspect = aspectOf(facts.logo);
    }
    if (settings.showDateAndTime()) {
        facts.clock = shapeOf(m_clockText);
        facts.date = m_view->formattedNow(QStringLiteral("dd MMM yyyy"));
    }
    if (settings.showTrackFlags())
        facts.flags = FlagsManager::flagImageNames(source.currentTrackComment());
    if (settings.showTrackComments())
        facts.comment = source.currentTrackComment();
    facts.trackFont = settings.selectedTrackInfoFont();
    facts.clockFont = settings.selectedClockFont();
    return facts;
}

PanelFrame PanelItem::frame(bool hasCassette) const {
    return {.window = size(),
            .fullScreen = m_view && m_view->isFullscreen(),
            .cassette = hasCassette,
            .list = m_isBesideList,
            .pixelRatio = m_pixelRatio};
}

void PanelItem::considerFacts() {
    if (!m_view)
        return;
    PanelFacts facts = gatherFacts();
    if (facts == m_facts && m_layoutCount > 0)
        return;
    m_facts = std::move(facts);
    m_factsAreNew = true;
    polish();
    Q_EMIT sentenceChanged();
}

void PanelItem::considerPosition() {
    if (!m_view)
        return;
    const MusicSource& source = m_view->musicSource();
    m_elapsedText = durationText(source.elapsedTime());
    showTexts();
    const double total =
        std::isfinite(source.trackDuration()) && source.trackDuration() > 1 ? source.trackDuration() : 1;
    const double elapsed = std::isfinite(source.elapsedTime()) ? source.elapsedTime() : 0;
    const double progress =
        std::clamp(elapsed, 0.0, std::max(0.0, std::min(total, source.trackDuration()))) / total;
    if (progress != m_progress) {
        m_progress = progress;
        Q_EMIT progressChanged();
    }
    if (!m_facts.elapsed || *m_facts.elapsed != shapeOf(m_elapsedText) ||
        m_facts.duration != durationText(source.trackDuration()))
        considerFacts();
}

void PanelItem::considerClock() {
    if (!m_view)
        return;
    const QString text = m_view->formattedNow(QStringLiteral("HH:mm"));
    if (text == m_clockText)
        return;
    m_clockText = text;
    showTexts();
    considerFacts(); // the date may be another
}

void PanelItem::setPixelRatio(double ratio) {
    if (m_pixelRatio == ratio)
        return;
    m_pixelRatio = ratio;
    polish();
    Q_EMIT pixelRatioChanged();
}

void PanelItem::setBar(const QRectF& bar) {
    if (m_bar == bar)
        return;
    m_bar = bar;
    giveWay();
    Q_EMIT barChanged();
}

void PanelItem::setBesideList(bool beside) {
    if (m_isBesideList == beside)
        return;
    m_isBesideList = beside;
    polish();
    Q_EMIT isBesideListChanged();
}

void PanelItem::geometryChange(const QRectF& now, const QRectF& before) {
    QQuickItem::geometryChange(now, before);
    if (now.size() != before.size())
        polish();
}

void PanelItem::updatePolish() { layOut(); }

PanelLayout PanelItem::laidOut(const PanelFacts& facts, const PanelFrame& frame) {
    ++m_layoutCount;
    return layoutPanel(facts, frame, RegisteredPanelFonts(m_view->fonts()));
}

void PanelItem::layOut() {
    if (!m_view)
        return;
    const PanelFrame next = frame(m_view->cassetteImage().isPresent());
    if (!m_factsAreNew && next == m_coming.frame)
        return;
    m_factsAreNew = false;
    m_coming = {m_facts, next, laidOut(m_facts, next)};
    Q_EMIT comingChanged();
    if (const PanelFrame now = frame(m_shown.frame.cassette);
        now != m_shown.frame || m_facts == m_shown.facts)
        show(m_facts == m_shown.facts && now == next ? m_coming : m_shown);
}

void PanelItem::show(const PanelSheet& sheet) {
    const bool hasOtherDuration = sheet.facts.duration != m_shown.facts.duration;
    const PanelFrame now = frame(sheet.frame.cassette);
    PanelSheet shown = sheet;
    if (shown.frame != now) // the window has changed since then
        shown = {sheet.facts, now, laidOut(sheet.facts, now)};
    const bool isOther = shown.layout != m_shown.layout;
    m_shown = std::move(shown);
    showTexts();
    if (hasOtherDuration) // which may well leave the layout as it is
        Q_EMIT durationTextChanged();
    if (!isOther)
        return;
    m_lines.setLines(m_shown.layout.lines);
    Q_EMIT layoutChanged();
    giveWay();
}

/// A time is shown where it stands in the cells that were laid out for it, another shape of it with the next
/// layout.
void PanelItem::showTexts() {
    if (m_shown.facts.elapsed == shapeOf(m_elapsedText) && m_shownElapsed != m_elapsedText) {
        m_shownElapsed = m_elapsedText;
        Q_EMIT elapsedTextChanged();
    }
    if (m_shown.facts.clock == shapeOf(m_clockText) && m_shownClock != m_clockText) {
        m_shownClock = m_clockText;
        Q_EMIT clockTextChanged();
    }
}

void PanelItem::giveWay() {
    int hidden = 0;
    for (const PanelBlock block :
         {PanelBlock::Details, PanelBlock::Clock, PanelBlock::Flags, PanelBlock::Comment}) {
        if (!m_bar.isEmpty() && m_shown.layout.givesWay(block, m_bar, marginOfBar))
            hidden |= 1 << static_cast<int>(block);
    }
    if (hidden != m_hiddenBlocks) {
        m_hiddenBlocks = hidden;
        Q_EMIT hiddenBlocksChanged();
    }
}

QVariantList PanelItem::flags() const {
    QVariantList flags;
    for (const PanelPicture& flag : m_shown.layout.flags)
        flags.append(QVariant::fromValue(flag));
    return flags;
}

QString PanelItem::sentence() const {
    if (!m_view)
        return {};
    const MusicSource& source = m_view->musicSource();
    QStringList parts{source.currentTrackTitle(), source.currentArtistName(), m_facts.album, m_facts.group,
                      m_facts.year};
    parts.removeAll(QString());
    return parts.join(QStringLiteral(", "));
}

} // namespace tarnwick
