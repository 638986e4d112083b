// The colours behind everything.

#include "display/state/TarnwickView.h"

namespace tarnwick {

using namespace std::chrono_literals;

namespace {

constexpr auto coverPatience = 3s; // in which a cover comes, from the web too

} // namespace

void TarnwickView::applyBackground() {
    if (awaitsCover())
        return;
    const auto& cover = m_parts.musicSource.currentAlbumArtwork();
    m_hasCoversColours = cover.has_value() && !m_parts.musicSource.isWithoutCover();
    m_parts.backgroundManager.applyBackground(m_parts.settings.backgroundOption(), cover);
}

/// Whether the cover may still come, so that the colours of the one before stay.
bool TarnwickView::awaitsCover() {
    if (!m_parts.musicSource.isWithoutCover()) {
        m_withoutCoverSince.reset();
        return false;
    }
    const dispatch::Instant now = m_parts.dispatcher.now();
    if (!m_withoutCoverSince) {
        m_withoutCoverSince = now;
        later(coverPatience, [this] { applyBackground(); });
    }
    return m_hasCoversColours && now - *m_withoutCoverSince < coverPatience;
}

/// Colours that are still being looked for leave those before them, and so does the end of the music, until
/// the logo has come.
void TarnwickView::takeColours() {
    const bool isHeld = !m_parts.musicSource.isPlayerActive() && !m_paintedColors.isEmpty();
    if (isHeld || !m_parts.backgroundManager.isSettled())
        return;
    QList<QColor> colors;
    for (const Colour& colour : m_parts.backgroundManager.paintedColors(m_parts.settings.backgroundOption()))
        colors.append(colour.toQColor());
    assign(m_paintedColors, colors, &TarnwickView::paintedColorsChanged);
}

} // namespace tarnwick
