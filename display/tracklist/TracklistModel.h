#pragma once

#include <QAbstractListModel>
#include <QPointer>
#include <QtQmlIntegration/qqmlintegration.h>

#include <vector>

namespace tarnwick {

class TarnwickView;

/// The rows on the back of the cover: room for a small copy of the cover, then the titles of the album, disc
/// after disc, with a header before each disc when there are several. While the list is of another album
/// than the current one there are no titles.
class TracklistModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tarnwick::TarnwickView* view READ view WRITE setView NOTIFY viewChanged)
    /// Music has told of no titles at all.
    Q_PROPERTY(bool isEmpty READ isEmpty NOTIFY isEmptyChanged)
    /// The row of the selected title, counting all rows; -1 for none.
    Q_PROPERTY(int selectedRow READ selectedRow NOTIFY selectedRowChanged)
    /// The row of the title that plays, as of the last change of the rows; -1 for none.
    Q_PROPERTY(int currentRow READ currentRow NOTIFY rowsChanged)

public:
    enum RowKind { CoverRow, HeaderRow, TitleRow };
    Q_ENUM(RowKind)

    enum Role {
        Kind = Qt::UserRole + 1, ///< a `RowKind`
        DiscNumber,
        Title,
        Duration, ///< "62:05", or "N/A"
        TrackRow, ///< the title's place on its disc, from 0
        IsCurrent,
        IsHovered,
        IsSelected,
    };

    using QAbstractListModel::QAbstractListModel;

    void setView(TarnwickView* view);
    TarnwickView* view() const { return m_view; }

    /// Plays the title of a row; nothing for another.
    Q_INVOKABLE void play(int row);

    /// The pointer entered a row, or left it.
    Q_INVOKABLE void hover(int row, bool entered);

    bool isEmpty() const;
    int selectedRow() const;
    int currentRow() const;
    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void viewChanged();
    void isEmptyChanged();
    void selectedRowChanged();
    /// There are other rows, or the same ones anew.
    void rowsChanged();

private:
    struct Row {
        RowKind kind = TitleRow;
        int disc = 0;
        int track = -1; ///< on its disc
        int flat = -1;  ///< among all titles
        QString title;

        friend bool operator==(const Row&, const Row&) = default;
    };

    std::vector<Row> rowsOfAlbum() const;
    void rebuild();
    void followAlbum();
    void rolesChanged(const QList<int>& roles);
    bool isCurrent(const Row& row) const;
    QString duration(const Row& row) const;

    QPointer<TarnwickView> m_view;
    std::vector<Row> m_rows;
};

} // namespace tarnwick
