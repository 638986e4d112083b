#include "display/panel/PanelLines.h"

#include <algorithm>

namespace tarnwick {

void PanelLines::setLines(const std::vector<PanelLine>& lines) {
    const int before = static_cast<int>(m_lines.size());
    const int now = static_cast<int>(lines.size());
    for (int row = 0; row < std::min(before, now); ++row) {
        const auto at = static_cast<size_t>(row);
        if (m_lines[at] == lines[at])
            continue;
        m_lines[at] = lines[at];
        Q_EMIT dataChanged(index(row), index(row));
    }
    if (now > before) {
        beginInsertRows({}, before, now - 1);
        m_lines = lines;
        endInsertRows();
    } else if (now < before) {
        beginRemoveRows({}, now, before - 1);
        m_lines = lines;
        endRemoveRows();
    }
}

int PanelLines::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_lines.size());
}

QVariant PanelLines::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const PanelLine& line = m_lines[static_cast<size_t>(index.row())];
    switch (role) {
    case Text:
        return line.text;
    case Font:
        return line.font;
    case X:
        return line.x;
    case Baseline:
        return line.baseline;
    case Box:
        return line.box;
    case Clipped:
        return line.clipped;
    case Spoken:
        return line.spoken;
    case Block:
        return static_cast<int>(line.block);
    default:
        return {};
    }
}

QHash<int, QByteArray> PanelLines::roleNames() const {
    return {{Text, "lineText"}, {Font, "lineFont"},       {X, "lineX"},           {Baseline, "lineBaseline"},
            {Box, "lineBox"},   {Clipped, "lineClipped"}, {Spoken, "lineSpoken"}, {Block, "lineBlock"}};
}

} // namespace tarnwick
