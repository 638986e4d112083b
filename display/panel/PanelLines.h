#pragma once

#include "display/panel/PanelLayout.h"

#include <QAbstractListModel>

namespace tarnwick {

/// The lines of a layout for the looks; tells only the rows that differ.
class PanelLines : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role { Text = Qt::UserRole, Font, X, Baseline, Box, Clipped, Spoken, Block };

    void setLines(const std::vector<PanelLine>& lines);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    std::vector<PanelLine> m_lines;
};

} // namespace tarnwick
