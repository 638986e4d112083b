#include "display/tracklist/TracklistModel.h"

#include "display/state/TarnwickView.h"
#include "display/state/TrackTexts.h"

#include <algorithm>

namespace tarnwick {

void TracklistModel::setView(TarnwickView* view) {
    if (m_view == view)
        return;
    if (m_view) {
        disconnect(m_view, nullptr, this, nullptr);
        disconnect(&m_view->musicSource(), nullptr, this, nullptr);
    }
    m_view = view;
    if (view) {
        const MusicSource* source = &view->musicSource();
        connect(source, &MusicSource::tracksByDiscChanged, this, &TracklistModel::followAlbum);
        connect(source, &MusicSource::albumIdentityChanged, this, &TracklistModel::followAlbum);
        connect(source, &MusicSource::trackDurationsChanged, this, [this] { rolesChanged({Duration}); });
        const auto currentChanged = [this] { rolesChanged({IsCurrent}); };
        connect(source, &MusicSource::currentTrackTitleChanged, this, currentChanged);
        connect(source, &MusicSource::currentTrackNumberChanged, this, currentChanged);
        connect(source, &MusicSource::currentDiscNumberChanged, this, currentChanged);
        connect(view, &TarnwickView::hoveringTracksChanged, this, [this] { rolesChanged({IsHovered}); });
        connect(view, &TarnwickView::selectedTrackIndexChanged, this, [this] {
            rolesChanged({IsSelected});
            Q_EMIT selectedRowChanged();
        });
        connect(view, &TarnwickView::tracklistUpdateKeyChanged, this, &TracklistModel::rebuild);
    }
    rebuild();
    Q_EMIT viewChanged();
}

std::vector<TracklistModel::Row> TracklistModel::rowsOfAlbum() const {
    std::vector<Row> rows;
    if (!m_view)
        return rows;
    rows.push_back({CoverRow, 0, -1, -1, {}});
    if (!m_view->musicSource().hasTracksOfCurrentAlbum())
        return rows;
    const QList<DiscTrack>& discs = m_view->musicSource().tracksByDisc();
    int flat = 0;
    for (const DiscTrack& disc : discs) {
        const int number = static_cast<int>(disc.discNumber);
        if (discs.size() >= 2)
            rows.push_back({HeaderRow, number, -1, -1, {}});
        for (int track = 0; track < disc.tracks.size(); ++track)
            rows.push_back({TitleRow, number, track, flat++, disc.tracks.at(track)});
    }
    return rows;
}

void TracklistModel::rebuild() {
    if (m_view)
        m_view->leaveTracks(); // the row that comes under the pointer says so itself
    beginResetModel();
    m_rows = rowsOfAlbum();
    endResetModel();
    Q_EMIT isEmptyChanged();
    Q_EMIT selectedRowChanged();
    Q_EMIT rowsChanged();
}

void TracklistModel::followAlbum() {
    if (m_rows != rowsOfAlbum())
        rebuild();
    else
        Q_EMIT isEmptyChanged();
}

void TracklistModel::rolesChanged(const QList<int>& roles) {
    if (!m_rows.empty())
        Q_EMIT dataChanged(index(0), index(rowCount() - 1), roles);
}

void TracklistModel::play(int row) {
    if (!m_view || row < 0 || row >= rowCount())
        return;
    if (const Row& chosen = m_rows[static_cast<size_t>(row)]; chosen.kind == TitleRow)
        m_view->playTrack(chosen.title);
}

void TracklistModel::hover(int row, bool entered) {
    if (!m_view || row < 0 || row >= rowCount())
        return;
    const Row& hovered = m_rows[static_cast<size_t>(row)];
    // A row that is left after the next one was entered takes nothing back.
    if (entered || m_view->hoveredTrack(hovered.disc) == hovered.track)
        m_view->hoverTrack(hovered.disc, entered ? hovered.track : -1);
}

bool TracklistModel::isEmpty() const { return !m_view || m_view->musicSource().tracksByDisc().isEmpty(); }

int TracklistModel::selectedRow() const {
    const auto selected = m_view ? m_view->selectedTrackIndex() : std::nullopt;
    for (int row = 0; selected && row < rowCount(); ++row)
        if (m_rows[static_cast<size_t>(row)].flat == *selected)
            return row;
    return -1;
}

int TracklistModel::currentRow() const {
    const auto current = std::find_if(m_rows.begin(), m_rows.end(), [this](const Row& row) {
        return row.kind == TitleRow && isCurrent(row);
    });
    return m_view && current != m_rows.end() ? static_cast<int>(current - m_rows.begin()) : -1;
}

int TracklistModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant TracklistModel::data(const QModelIndex& index, int role) const {
    if (!m_view || !index.isValid() || index.row() >= rowCount())
        return {};
    const Row& row = m_rows[static_cast<size_t>(index.row())];
    const bool isTitle = row.kind == TitleRow;
    switch (role) {
    case Kind:
        return row.kind;
    case DiscNumber:
        return row.disc;
    case Title:
        return row.title;
    case Duration:
        return isTitle ? duration(row) : QString();
    case TrackRow:
        return row.track;
    case IsCurrent:
        return isTitle && isCurrent(row);
    case IsHovered:
        return isTitle && m_view->hoveredTrack(row.disc) == row.track;
    case IsSelected:
        return isTitle && m_view->selectedTrackIndex() == row.flat;
    default:
        return {};
    }
}

QHash<int, QByteArray> TracklistModel::roleNames() const {
    return {{Kind, "kind"},           {DiscNumber, "discNumber"}, {Title, "title"},
            {Duration, "duration"},   {TrackRow, "trackRow"},     {IsCurrent, "isCurrent"},
            {IsHovered, "isHovered"}, {IsSelected, "isSelected"}};
}

bool TracklistModel::isCurrent(const Row& row) const {
    const MusicSource& source = m_view->musicSource();
    return row.title == source.currentTrackTitle() && source.currentDiscNumber() == row.disc &&
           source.currentTrackNumber() == row.track + 1;
}

QString TracklistModel::duration(const Row& row) const {
    const QList<double>& durations = m_view->musicSource().trackDurations();
    const QString text = row.flat < durations.size() ? durationText(durations.at(row.flat)) : QString();
    return text.isEmpty() ? QStringLiteral("N/A") : text;
}

} // namespace tarnwick
