#include "display/stage/Stage.h"

#include "canvas/RenderQueue.h"
#include "canvas/type/TextInk.h"
#include "display/panel/Legibility.h"
#include "display/pictures/PictureCut.h"

#include <cmath>

namespace tarnwick {

using namespace std::chrono_literals;

namespace {

constexpr auto patience = 1s;
constexpr float darknessOfList = 0.7F;
constexpr double centreOfCassette = 0.45; // of the width, where the panel is not moved out of its way

std::vector<VeilLine> linesOf(const PanelLayout& layout) {
    constexpr double graphic = 3; // what is no text needs this much
    std::vector<VeilLine> lines;
    for (const PanelLine& line : layout.lines)
        lines.push_back({line.box, neededContrast(typeSize(line.font))});
    if (layout.progress) {
        for (const PanelFigures* figures : {&layout.progress->elapsed, &layout.progress->duration})
            lines.push_back({figures->box, neededContrast(typeSize(figures->font))});
        lines.push_back({layout.progress->bar, graphic});
    }
    if (layout.clock)
        lines.push_back({layout.clock->box, neededContrast(typeSize(layout.clock->font))});
    if (layout.logo)
        lines.push_back({layout.logo->box, neededContrast(1)});
    return lines;
}

} // namespace

bool StageSet::hasGroundOf(const StageSet& other) const {
    return isActive == other.isActive && scene.text == other.scene.text &&
           scene.background == other.scene.background && artwork == other.artwork && record == other.record &&
           cassette == other.cassette;
}

bool StageSet::hasContentOf(const StageSet& other) const {
    return hasGroundOf(other) && ground == other.ground && colors == other.colors &&
           scene.cover == other.scene.cover && scene.list.isEmpty() == other.scene.list.isEmpty() &&
           lines.facts == other.lines.facts;
}

/// A set that is being made ready.
struct Stage::Preparation {
    StageSet set;
    Veils veils;
    Drawings drawings;
    int unfinished = 0;
};

Stage::Stage(QQuickItem* parent) : QQuickItem(parent) {
    for (const auto signal : {&Stage::picturesChanged, &Stage::coloursChanged, &Stage::placesChanged})
        connect(this, signal, this, &Stage::backdropChanged);
}

void Stage::setShowsList(bool shows) {
    if (m_showsList == shows)
        return;
    m_showsList = shows;
    Q_EMIT backdropChanged();
}

void Stage::setView(TarnwickView* view) {
    if (m_view == view)
        return;
    m_view = view;
    if (view) {
        for (const auto signal :
             {&TarnwickView::artworkChanged, &TarnwickView::recordChanged,
              &TarnwickView::cassetteImageChanged, &TarnwickView::paintedColorsChanged,
              &TarnwickView::isFlippedChanged, &TarnwickView::isFullscreenChanged, &TarnwickView::found})
            connect(view, signal, this, &Stage::consider);
        connect(&view->backgroundManager(), &BackgroundManager::dynamicTextColorChanged, this,
                &Stage::consider);
        connect(&view->backgroundManager(), &BackgroundManager::gradientColorsChanged, this,
                &Stage::consider);
        connect(&view->backgroundManager(), &BackgroundManager::settled, this, &Stage::consider);
        connect(&view->musicSource(), &MusicSource::isPlayerActiveChanged, this, &Stage::consider);
        connect(view->settings(), &Settings::tracklistStyleChanged, this, &Stage::backdropChanged);
    }
    Q_EMIT partsChanged();
    consider();
}

void Stage::setPanel(PanelItem* panel) {
    if (m_panel == panel)
        return;
    m_panel = panel;
    if (panel) {
        connect(panel, &PanelItem::comingChanged, this, &Stage::consider);
        connect(panel, &PanelItem::layoutChanged, this, &Stage::consider);
        connect(panel, &PanelItem::pixelRatioChanged, this, [this] {
            m_settling.start();
            Q_EMIT placesChanged();
        });
    }
    Q_EMIT partsChanged();
    consider();
}

void Stage::componentComplete() {
    QQuickItem::componentComplete();
    consider();
}

void Stage::geometryChange(const QRectF& now, const QRectF& before) {
    QQuickItem::geometryChange(now, before);
    m_settling.start();
    Q_EMIT placesChanged();
}

Backdrop Stage::backdrop() const {
    // In the proportions in which it is shown: the logo puts itself together anew for those of the window.
    const auto maker = [](const Picture& picture, QSizeF shown) -> Backdrop::Picture {
        if (!picture.isPresent() || shown.isEmpty())
            return {};
        return [picture, shown](int side) {
            const QSize size = shown.scaled(side, side, Qt::KeepAspectRatio).toSize().expandedTo({1, 1});
            return std::make_shared<const QImage>(fitted(Catalogue::shared(), picture, size));
        };
    };
    Backdrop result;
    result.window = size();
    result.gradientColors = m_shown.colors;
    result.base = m_shown.scene.text == colours::white ? Qt::black : Qt::white;
    if (m_showsList) {
        const bool isWhite = m_view && m_view->settings()->tracklistStyle() == TracklistStyle::IPod;
        result.listRect = {0, 0, width() / 2, height()};
        result.listColor = isWhite ? QColor(Qt::white) : QColor::fromRgbF(0, 0, 0, darknessOfList);
    } else {
        result.cover = maker(m_shown.artwork, coverPlace().size());
        result.coverRect = coverPlace();
        result.coverRadius = m_coverItem ? m_coverItem->cornerRadius() : 0;
    }
    if (!m_shown.isActive) {
        result.logo = maker(m_shown.logo, size());
    } else if (m_shown.cassette.isPresent()) {
        result.cassette = maker(m_shown.cassette, cassettePlace().size());
        result.cassetteRect = cassettePlace();
    } else {
        result.record = maker(m_shown.record, discPlace().size());
        result.recordCentre = discPlace().center();
        result.recordDiameter = discPlace().width();
    }
    result.serial = 2 * m_pictures + (m_showsList ? 1 : 0);
    return result;
}

double Stage::pixelRatio() const { return m_panel ? m_panel->pixelRatio() : 1; }

QColor Stage::progressColor() const {
    const std::vector<Colour>& background = m_shown.scene.background;
    return progressGreen(m_shown.scene.text, background.empty() ? colours::black : background.front())
        .toQColor();
}

QColor Stage::rowColor() const {
    QColor colour = m_veils.colour.toQColor();
    colour.setAlphaF(static_cast<float>(m_veils.rowAlpha));
    return colour;
}

QRectF Stage::placeOfCover(const Picture& picture) const {
    return picture.placeIn({width() / 2, height()}, pixelRatio());
}

QRectF Stage::discPlace() const {
    const double diameter = std::min(width() / 2, height());
    return {(width() - diameter) / 2, (height() - diameter) / 2, diameter, diameter};
}

QRectF Stage::placeOfCassette(const Picture& picture) const {
    const bool isMoved = picture.isPresent() && m_view && !m_view->isFullscreen();
    const QSizeF size(width() / 2, width() / 2 / picture.aspectRatio());
    const QPointF centre((isMoved ? centreOfCassette : 0.5) * width(), height() / 2);
    return {centre - QPointF(size.width(), size.height()) / 2, size};
}

StageSet Stage::wanted() const {
    StageSet set;
    const BackgroundManager& background = m_view->backgroundManager();
    set.isActive = m_view->musicSource().isPlayerActive();
    set.artwork = m_view->artwork();
    set.record = m_view->record();
    set.cassette = m_view->cassetteImage();
    set.colors = m_view->paintedColors();
    if (!background.gradientColors().empty())
        set.ground = background.gradientColors().front();
    set.lines = m_panel->coming();

    VeilScene& scene = set.scene;
    scene.window = size();
    scene.pixelRatio = pixelRatio();
    for (const QColor& colour : set.colors)
        scene.background.push_back(Colour::fromQColor(colour));
    if (set.isActive) {
        scene.text = background.dynamicTextColor();
        scene.record = set.record.disc;
        scene.recordCentre = discPlace().center();
        scene.recordDiameter = discPlace().width();
        scene.cassette = set.cassette.image;
        scene.cassettePlace = placeOfCassette(set.cassette);
    } else {
        set.logo = m_view->namedPicture(QStringLiteral("applogo800"));
        scene.logo = set.logo.image;
        scene.text = colours::white; // the logo has a dark ground of its own
    }
    if (!m_view->isFlipped()) {
        scene.cover = set.artwork.image;
        scene.coverPlace = placeOfCover(set.artwork);
        scene.coverRadius = m_coverItem ? m_coverItem->cornerRadius() : 0;
    } else {
        scene.list = {0, 0, width() / 2, height()};
    }
    scene.lines = linesOf(set.lines.layout);
    return set;
}

/// Looks before the next frame whether there is something else to show; a poll that brings nothing asks for
/// no frame.
void Stage::consider() {
    if (m_view && m_view->hasFoundEverything())
        m_isWaiting = m_hasWaitedEnough = false;
    if (!isReady())
        polish();
}

/// Whether all that belongs to the next set is known, or has been waited for long enough.
bool Stage::canPrepare() {
    if (m_view->hasFoundEverything())
        return true;
    if (!m_isWaiting) {
        m_isWaiting = true;
        renderqueue::later(patience, [self = QPointer(this), wait = ++m_waits] {
            if (!self || !self->m_isWaiting || self->m_waits != wait)
                return;
            self->m_hasWaitedEnough = true;
            self->consider();
        });
    }
    return m_hasWaitedEnough;
}

void Stage::updatePolish() {
    if (!isComponentComplete() || !m_view || !m_panel || size().isEmpty())
        return;
    m_panel->layOut();
    if (m_isPreparing || !canPrepare())
        return;
    const StageSet next = wanted();
    const bool isSettled = std::exchange(m_hasSettled, false);
    if (!m_hasShown || !next.hasContentOf(m_shown) || (isSettled && next.scene != m_shown.scene))
        prepare(next);
    else if (next.scene != m_shown.scene)
        m_settling.start();
}

bool Stage::isReady() const {
    if (m_isPreparing || !m_hasShown || !m_view || !m_panel)
        return false;
    const StageSet next = wanted();
    return next.hasContentOf(m_shown) && next.scene == m_shown.scene;
}

void Stage::run(const std::shared_ptr<Preparation>& preparation, std::function<void(Preparation&)> make) {
    ++preparation->unfinished;
    renderqueue::run(
        [preparation, make = std::move(make)] {
            make(*preparation);
            return renderqueue::Picture();
        },
        [self = QPointer(this), preparation](const renderqueue::Picture&) {
            if (--preparation->unfinished == 0 && self)
                self->show(*preparation);
        });
}

void Stage::prepare(const StageSet& wanted) {
    m_isPreparing = true;
    const auto preparation = std::make_shared<Preparation>();
    preparation->set = wanted;
    ++preparation->unfinished; // not shown before everything has been set off, were it made at once
    if (m_hasShown && wanted.scene == m_shown.scene)
        preparation->veils = m_veils;
    else
        run(preparation, [scene = wanted.scene](Preparation& made) { made.veils = makeVeils(scene); });
    prepareCut(preparation, &StageSet::artwork, &Drawings::artwork, m_coverItem,
               placeOfCover(wanted.artwork).size());
    prepareCut(preparation, &StageSet::cassette, &Drawings::cassette, m_cassetteItem,
               placeOfCassette(wanted.cassette).size());
    prepareCut(preparation, &StageSet::logo, &Drawings::logo, m_logoItem, size());
    prepareRecord(preparation);
    if (--preparation->unfinished == 0)
        show(*preparation);
}

void Stage::prepareCut(const std::shared_ptr<Preparation>& preparation, Picture StageSet::*which,
                       std::shared_ptr<const PreparedPicture> Drawings::*kept, const CutPictureItem* item,
                       QSizeF place) {
    const Picture picture = preparation->set.*which;
    if (!item || !picture.isPresent() || picture == m_shown.*which)
        return;
    const PictureCut cut = item->cutFor(place);
    if (cut.size.isEmpty())
        return;
    run(preparation, [picture, cut, which, kept](Preparation& made) {
        auto image =
            std::make_shared<const QImage>(cutOut(fitted(Catalogue::shared(), picture, cut.size), cut));
        made.drawings.*kept = std::make_shared<const PreparedPicture>(PreparedPicture{cut, std::move(image)});
        (made.set.*which).prepared = made.drawings.*kept;
    });
}

void Stage::prepareRecord(const std::shared_ptr<Preparation>& preparation) {
    const Picture& record = preparation->set.record;
    const int side = qRound(discPlace().width() * pixelRatio());
    if (record.disc.isNull() || record == m_shown.record || !preparation->set.isActive)
        return;
    run(preparation, [disc = record.disc, side](Preparation& made) {
        made.drawings.record = disc.render(side);
        made.set.record.disc = disc.with(made.drawings.record);
    });
}

void Stage::show(const Preparation& preparation) {
    m_isPreparing = false;
    const StageSet before = std::exchange(m_shown, preparation.set);
    const Veils veilsBefore = std::exchange(m_veils, preparation.veils);
    m_comesGently = m_hasShown && m_shown.hasGroundOf(before);
    const bool isFirst = !std::exchange(m_hasShown, true);
    m_drawings = preparation.drawings;
    if (m_panel)
        m_panel->show(m_shown.lines);
    // The script engine keeps each value that it has read for a while, so it is told only of those that
    // differ.
    const bool hasOtherPictures = isFirst || m_shown.isActive != before.isActive ||
                                  m_shown.artwork != before.artwork || m_shown.record != before.record ||
                                  m_shown.cassette != before.cassette || m_shown.logo != before.logo;
    if (hasOtherPictures) {
        ++m_pictures;
        Q_EMIT placesChanged();
        Q_EMIT picturesChanged();
    }
    if (isFirst || m_shown.scene.text != before.scene.text || m_shown.colors != before.colors ||
        m_shown.ground != before.ground || !(m_veils.colour == veilsBefore.colour) ||
        m_veils.rowAlpha != veilsBefore.rowAlpha)
        Q_EMIT coloursChanged();
    if (isFirst || m_veils.background != veilsBefore.background || m_veils.record != veilsBefore.record ||
        m_veils.cover != veilsBefore.cover)
        Q_EMIT veilsChanged();
    consider(); // what changed meanwhile is next
}

} // namespace tarnwick
