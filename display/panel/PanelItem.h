#pragma once

#include "display/panel/PanelLayout.h"
#include "display/panel/PanelLines.h"
#include "display/state/TarnwickView.h"

#include <QPointer>
#include <QQuickItem>

namespace tarnwick {

/// What the panel says, and how it is laid out.
struct PanelSheet {
    PanelFacts facts;
    PanelFrame frame;
    PanelLayout layout;

    friend bool operator==(const PanelSheet&, const PanelSheet&) = default;
};

/// Keeps the layout of the panel up to date with what is played, the preferences and the window; the looks
/// draw what it says. The layout is made anew before the next frame, and only when something in it changes;
/// a second that passes changes a text and the bar.
///
/// What there is to say of another track is laid out at once and shown when `show` is called; in another
/// frame what is shown is laid out anew.
class PanelItem : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tarnwick::TarnwickView* view READ view WRITE setView NOTIFY viewChanged)
    /// Device pixels of a point.
    Q_PROPERTY(double pixelRatio READ pixelRatio WRITE setPixelRatio NOTIFY pixelRatioChanged)
    /// What the bar covers while it is shown; empty when it is not.
    Q_PROPERTY(QRectF bar READ bar WRITE setBar NOTIFY barChanged)

    /// The track list is shown, over which no line runs.
    Q_PROPERTY(bool isBesideList READ isBesideList WRITE setBesideList NOTIFY isBesideListChanged)

    Q_PROPERTY(QAbstractListModel* lines READ linesModel CONSTANT)
    Q_PROPERTY(bool hasProgress READ hasProgress NOTIFY layoutChanged)
    Q_PROPERTY(tarnwick::PanelFigures elapsedFigures READ elapsedFigures NOTIFY layoutChanged)
    Q_PROPERTY(tarnwick::PanelFigures durationFigures READ durationFigures NOTIFY layoutChanged)
    Q_PROPERTY(QRectF progressBar READ progressBar NOTIFY layoutChanged)
    Q_PROPERTY(bool hasClock READ hasClock NOTIFY layoutChanged)
    Q_PROPERTY(tarnwick::PanelFigures clockFigures READ clockFigures NOTIFY layoutChanged)
    Q_PROPERTY(tarnwick::PanelPicture logo READ logo NOTIFY layoutChanged)
    /// A `panelPicture` each.
    Q_PROPERTY(QVariantList flags READ flags NOTIFY layoutChanged)

    Q_PROPERTY(QString elapsedText READ elapsedText NOTIFY elapsedTextChanged)
    Q_PROPERTY(QString durationText READ shownDuration NOTIFY durationTextChanged)
    /// 0…1.
    Q_PROPERTY(double progress READ progress NOTIFY progressChanged)
    Q_PROPERTY(QString clockText READ clockText NOTIFY clockTextChanged)
    /// What is played, as one sentence.
    Q_PROPERTY(QString sentence READ sentence NOTIFY sentenceChanged)
    /// A bit for each block, numbered as the `block` of a line, that gives way to the bar.
    Q_PROPERTY(int hiddenBlocks READ hiddenBlocks NOTIFY hiddenBlocksChanged)

public:
    /// As in `hiddenBlocks`.
    enum Block {
        Details = int(PanelBlock::Details),
        Clock = int(PanelBlock::Clock),
        Flags = int(PanelBlock::Flags)
    };
    Q_ENUM(Block)

    explicit PanelItem(QQuickItem* parent = nullptr);

    void setView(TarnwickView* view);
    void setPixelRatio(double ratio);
    void setBar(const QRectF& bar);
    void setBesideList(bool beside);

    TarnwickView* view() const { return m_view; }
    double pixelRatio() const { return m_pixelRatio; }
    const QRectF& bar() const { return m_bar; }
    bool isBesideList() const { return m_isBesideList; }

    /// What is laid out, to be shown next.
    const PanelSheet& coming() const { return m_coming; }
    /// Brings `coming` up to date.
    void layOut();
    /// Shows what was to come.
    void show(const PanelSheet& sheet);

    /// What is shown.
    const PanelLayout& layout() const { return m_shown.layout; }
    QAbstractListModel* linesModel() { return &m_lines; }
    bool hasProgress() const { return m_shown.layout.progress.has_value(); }
    PanelFigures elapsedFigures() const {
        return m_shown.layout.progress ? m_shown.layout.progress->elapsed : PanelFigures();
    }
    PanelFigures durationFigures() const {
        return m_shown.layout.progress ? m_shown.layout.progress->duration : PanelFigures();
    }
    QRectF progressBar() const { return m_shown.layout.progress ? m_shown.layout.progress->bar : QRectF(); }
    bool hasClock() const { return m_shown.layout.clock.has_value(); }
    PanelFigures clockFigures() const { return m_shown.layout.clock.value_or(PanelFigures()); }
    PanelPicture logo() const { return m_shown.layout.logo.value_or(PanelPicture()); }
    QVariantList flags() const;
    const QString& elapsedText() const { return m_shownElapsed; }
    const QString& shownDuration() const { return m_shown.facts.duration; }
    double progress() const { return m_progress; }
    const QString& clockText() const { return m_shownClock; }
    QString sentence() const;
    int hiddenBlocks() const { return m_hiddenBlocks; }

    /// How many layouts were made so far.
    int layoutCount() const { return m_layoutCount; }

Q_SIGNALS:
    void viewChanged();
    void pixelRatioChanged();
    void barChanged();
    void isBesideListChanged();
    void layoutChanged();
    /// There is something else to show.
    void comingChanged();
    void elapsedTextChanged();
    void durationTextChanged();
    void progressChanged();
    void clockTextChanged();
    void sentenceChanged();
    void hiddenBlocksChanged();

protected:
    void updatePolish() override;
    void geometryChange(const QRectF& now, const QRectF& before) override;

private:
    void follow(TarnwickView& view);
    PanelFacts gatherFacts() const;
    PanelFrame frame(bool hasCassette) const;
    PanelLayout laidOut(const PanelFacts& facts, const PanelFrame& frame);
    void showTexts();
    void considerFacts();
    void considerPosition();
    void considerClock();
    void giveWay();

    QPointer<TarnwickView> m_view;
    double m_pixelRatio = 1;
    QRectF m_bar;
    bool m_isBesideList = false;
    PanelFacts m_facts;
    bool m_factsAreNew = true;
    PanelSheet m_coming;
    PanelSheet m_shown;
    PanelLines m_lines;
    QString m_elapsedText; // as it is, and as it stands in the layout that is shown
    QString m_shownElapsed;
    QString m_clockText;
    QString m_shownClock;
    double m_progress = 0;
    int m_hiddenBlocks = 0;
    int m_layoutCount = 0;
};

} // namespace tarnwick
