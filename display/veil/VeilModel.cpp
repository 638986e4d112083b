#include "display/veil/VeilModel.h"

#include "assets/RenderQueue.h"
#include "assets/type/TextInk.h"
#include "display/panel/Legibility.h"

namespace tarnwick {

namespace {

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

VeilModel::VeilModel(QObject* parent) : QObject(parent) {
    connect(this, &VeilModel::sceneChanged, this, &VeilModel::remake);
    connect(this, &VeilModel::placesChanged, this, &VeilModel::remakeSoon);
}

void VeilModel::setView(TarnwickView* view) {
    if (m_view == view)
        return;
    m_view = view;
    if (view) {
        connect(&view->backgroundManager(), &BackgroundManager::dynamicTextColorChanged, this,
                &VeilModel::remake);
        connect(view, &TarnwickView::paintedColorsChanged, this, &VeilModel::remake);
        connect(&view->musicSource(), &MusicSource::isPlayerActiveChanged, this, &VeilModel::remake);
    }
    Q_EMIT viewChanged();
    remake();
}

void VeilModel::setPanel(PanelItem* panel) {
    if (m_panel == panel)
        return;
    m_panel = panel;
    if (panel) {
        connect(panel, &PanelItem::layoutChanged, this, &VeilModel::remake);
        connect(panel, &PanelItem::pixelRatioChanged, this, &VeilModel::remakeSoon);
        connect(panel, &QQuickItem::widthChanged, this, &VeilModel::remakeSoon);
        connect(panel, &QQuickItem::heightChanged, this, &VeilModel::remakeSoon);
    }
    Q_EMIT panelChanged();
    remake();
}

void VeilModel::componentComplete() {
    m_complete = true;
    remake();
}

QColor VeilModel::rowColor() const {
    QColor colour = m_veils.colour.toQColor();
    colour.setAlphaF(static_cast<float>(m_veils.rowAlpha));
    return colour;
}

VeilScene VeilModel::scene() const {
    VeilScene scene;
    scene.window = m_panel->size();
    scene.pixelRatio = m_panel->pixelRatio();
    scene.text = m_view->backgroundManager().dynamicTextColor();
    for (const QColor& colour : m_view->paintedColors())
        scene.background.push_back(Colour::fromQColor(colour));
    if (m_view->musicSource().isPlayerActive()) {
        scene.record = m_record.disc;
        scene.recordCentre = m_recordPlace.center();
        scene.recordDiameter = m_recordPlace.width();
        scene.cassette = m_cassette.image;
        scene.cassettePlace = m_cassettePlace;
    } else {
        scene.logo = m_view->namedPicture(QStringLiteral("applogo800")).image;
    }
    scene.cover = m_cover.image;
    scene.coverPlace = m_coverPlace;
    scene.coverRadius = m_coverRadius;
    scene.lines = linesOf(m_panel->layout());
    scene.list = m_listPlace;
    return scene;
}

void VeilModel::remake() {
    if (!m_complete || !m_view || !m_panel || m_panel->layoutCount() == 0)
        return;
    m_wanted = true;
    if (m_working)
        return;
    m_wanted = false;
    const VeilScene wanted = scene();
    if (m_makeCount > 0 && wanted == m_made)
        return;
    m_made = wanted;
    m_working = true;
    ++m_makeCount;
    const auto veils = std::make_shared<Veils>();
    renderqueue::run(
        [wanted, veils] {
            *veils = makeVeils(wanted);
            return renderqueue::Picture();
        },
        [self = QPointer(this), veils](const renderqueue::Picture&) {
            if (self)
                self->take(*veils);
        });
}

void VeilModel::take(const Veils& veils) {
    m_working = false;
    m_veils = veils;
    Q_EMIT veilsChanged();
    if (m_wanted)
        remake();
}

void VeilModel::remakeSoon() {
    if (m_complete)
        m_settling.start();
}

} // namespace tarnwick
