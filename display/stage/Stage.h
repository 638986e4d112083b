#pragma once

#include "canvas/SettleTimer.h"
#include "controls/bar/Backdrop.h"
#include "display/panel/PanelItem.h"
#include "display/pictures/CutPictureItem.h"
#include "display/veil/Veils.h"

#include <QPointer>
#include <QQuickItem>

namespace tarnwick {

/// Everything that changes from one album to the next, as it stands at one moment.
struct StageSet {
    VeilScene scene; ///< what the veils are made for; the cover is missing while the list hides it
    bool isActive = false;
    Picture artwork;
    Picture record;
    Picture cassette;
    Picture logo; ///< in place of the background when nothing is active
    QList<QColor> colors;
    Colour ground = colours::black; ///< of the dynamic list
    PanelSheet lines;

    /// Whether only places and sizes differ.
    bool hasContentOf(const StageSet& other) const;
    /// Whether nothing lies otherwise behind the lines, whatever these are.
    bool hasGroundOf(const StageSet& other) const;
};

/// What is painted: the colours, cover, disc, lines and veils of one album. What comes next is prepared off
/// the main thread, and takes its place whole, in one frame. It waits for all that is still being found out,
/// but for no longer than a second. The item covers the display; a point is a unit of it.
class Stage : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tarnwick::TarnwickView* view MEMBER m_view WRITE setView NOTIFY partsChanged)
    Q_PROPERTY(tarnwick::PanelItem* panel MEMBER m_panel WRITE setPanel NOTIFY partsChanged)
    // Who shows the pictures; they are prepared as these cut them.
    Q_PROPERTY(tarnwick::CutPictureItem* coverItem MEMBER m_coverItem NOTIFY partsChanged)
    Q_PROPERTY(tarnwick::CutPictureItem* cassetteItem MEMBER m_cassetteItem NOTIFY partsChanged)
    Q_PROPERTY(tarnwick::CutPictureItem* logoItem MEMBER m_logoItem NOTIFY partsChanged)

    Q_PROPERTY(bool isActive READ isActive NOTIFY picturesChanged)
    Q_PROPERTY(QColor textColor READ textColor NOTIFY coloursChanged)
    /// The green of what has been played.
    Q_PROPERTY(QColor progressColor READ progressColor NOTIFY coloursChanged)
    /// Behind everything, top to bottom.
    Q_PROPERTY(QList<QColor> colors READ colors NOTIFY coloursChanged)
    /// Under the rows of the dynamic list.
    Q_PROPERTY(QColor ground READ ground NOTIFY coloursChanged)
    Q_PROPERTY(tarnwick::Picture artwork READ artwork NOTIFY picturesChanged)
    Q_PROPERTY(tarnwick::Picture record READ record NOTIFY picturesChanged)
    Q_PROPERTY(tarnwick::Picture cassette READ cassette NOTIFY picturesChanged)
    Q_PROPERTY(tarnwick::Picture logo READ logo NOTIFY picturesChanged)
    Q_PROPERTY(tarnwick::VeilPicture overBackground READ overBackground NOTIFY veilsChanged)
    Q_PROPERTY(tarnwick::VeilPicture overRecord READ overRecord NOTIFY veilsChanged)
    Q_PROPERTY(tarnwick::VeilPicture overCover READ overCover NOTIFY veilsChanged)
    /// What lies under the rows of the list, with the alpha that they need.
    Q_PROPERTY(QColor rowColor READ rowColor NOTIFY coloursChanged)
    /// Whether the veils that came last lie on what was there before, so that they may come gradually.
    Q_PROPERTY(bool comesGently READ comesGently NOTIFY veilsChanged)

    /// The list has taken the cover's place; half way through a turn it does.
    Q_PROPERTY(bool showsList READ showsList WRITE setShowsList NOTIFY backdropChanged)
    /// What lies behind the bar.
    Q_PROPERTY(tarnwick::Backdrop backdrop READ backdrop NOTIFY backdropChanged)

    // Where what is shown rests, in points.
    Q_PROPERTY(QRectF coverPlace READ coverPlace NOTIFY placesChanged)
    Q_PROPERTY(QRectF discPlace READ discPlace NOTIFY placesChanged)
    Q_PROPERTY(QRectF cassettePlace READ cassettePlace NOTIFY placesChanged)

public:
    explicit Stage(QQuickItem* parent = nullptr);

    void setView(TarnwickView* view);
    void setPanel(PanelItem* panel);
    void setShowsList(bool shows);

    bool isActive() const { return m_shown.isActive; }
    QColor textColor() const { return m_shown.scene.text.toQColor(); }
    QColor progressColor() const;
    const QList<QColor>& colors() const { return m_shown.colors; }
    QColor ground() const { return m_shown.ground.toQColor(); }
    const Picture& artwork() const { return m_shown.artwork; }
    const Picture& record() const { return m_shown.record; }
    const Picture& cassette() const { return m_shown.cassette; }
    const Picture& logo() const { return m_shown.logo; }
    const VeilPicture& overBackground() const { return m_veils.background; }
    const VeilPicture& overRecord() const { return m_veils.record; }
    const VeilPicture& overCover() const { return m_veils.cover; }
    QColor rowColor() const;
    bool comesGently() const { return m_comesGently; }

    bool showsList() const { return m_showsList; }
    Backdrop backdrop() const;

    QRectF coverPlace() const { return placeOfCover(m_shown.artwork); }
    QRectF discPlace() const;
    QRectF cassettePlace() const { return placeOfCassette(m_shown.cassette); }

    /// Whether what is shown is all that there is to show.
    bool isReady() const;

    /// What is to be shown, as it is now.
    StageSet wanted() const;
    const StageSet& shown() const { return m_shown; }

Q_SIGNALS:
    void partsChanged();
    void picturesChanged();
    void coloursChanged();
    void veilsChanged();
    void placesChanged();
    void backdropChanged();

protected:
    void componentComplete() override;
    void updatePolish() override;
    void geometryChange(const QRectF& now, const QRectF& before) override;

private:
    struct Preparation;
    /// What has been drawn of a set.
    struct Drawings {
        std::shared_ptr<const PreparedPicture> artwork;
        std::shared_ptr<const PreparedPicture> cassette;
        std::shared_ptr<const PreparedPicture> logo;
        std::shared_ptr<const QImage> record;
    };

    bool canPrepare();
    void prepare(const StageSet& wanted);
    void prepareCut(const std::shared_ptr<Preparation>& preparation, Picture StageSet::*which,
                    std::shared_ptr<const PreparedPicture> Drawings::*kept, const CutPictureItem* item,
                    QSizeF place);
    void prepareRecord(const std::shared_ptr<Preparation>& preparation);
    void run(const std::shared_ptr<Preparation>& preparation, std::function<void(Preparation&)> make);
    void show(const Preparation& preparation);
    QRectF placeOfCover(const Picture& picture) const;
    QRectF placeOfCassette(const Picture& picture) const;
    double pixelRatio() const;
    void consider();

    QPointer<TarnwickView> m_view;
    QPointer<PanelItem> m_panel;
    QPointer<CutPictureItem> m_coverItem;
    QPointer<CutPictureItem> m_cassetteItem;
    QPointer<CutPictureItem> m_logoItem;
    StageSet m_shown;
    Veils m_veils;
    Drawings m_drawings; ///< of what is shown, for those who show it to take
    bool m_hasShown = false;
    bool m_comesGently = false;
    bool m_showsList = false;
    quint64 m_pictures = 0; ///< counts up with each other set of pictures
    bool m_isPreparing = false;
    bool m_isWaiting = false; ///< for what is still being found out
    bool m_hasWaitedEnough = false;
    int m_waits = 0;
    bool m_hasSettled = false; ///< the size has, so veils for it are due
    SettleTimer m_settling{[this] {
        m_hasSettled = true;
        consider();
    }};
};

} // namespace tarnwick
