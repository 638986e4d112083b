#pragma once

#include "assets/SettleTimer.h"
#include "display/panel/PanelItem.h"
#include "display/veil/Veils.h"

#include <QPointer>
#include <QQmlParserStatus>

namespace tarnwick {

/// Keeps the veils of the display up to date with the lines of the panel and with what lies under them.
/// They are made off the main thread, and again only when something changes that they depend on.
class VeilModel : public QObject, public QQmlParserStatus {
    Q_OBJECT
    QML_ELEMENT
    Q_INTERFACES(QQmlParserStatus)
    Q_PROPERTY(tarnwick::TarnwickView* view MEMBER m_view WRITE setView NOTIFY viewChanged)
    Q_PROPERTY(tarnwick::PanelItem* panel MEMBER m_panel WRITE setPanel NOTIFY panelChanged)
    // What lies under the lines, where it rests; places are points in the window.
    Q_PROPERTY(tarnwick::Picture record MEMBER m_record NOTIFY sceneChanged)
    Q_PROPERTY(QRectF recordPlace MEMBER m_recordPlace NOTIFY placesChanged)
    Q_PROPERTY(tarnwick::Picture cassette MEMBER m_cassette NOTIFY sceneChanged)
    Q_PROPERTY(QRectF cassettePlace MEMBER m_cassettePlace NOTIFY placesChanged)
    Q_PROPERTY(tarnwick::Picture cover MEMBER m_cover NOTIFY sceneChanged)
    Q_PROPERTY(QRectF coverPlace MEMBER m_coverPlace NOTIFY placesChanged)
    Q_PROPERTY(double coverRadius MEMBER m_coverRadius NOTIFY placesChanged)
    /// Where rows of a dynamic list stand; empty when there are none.
    Q_PROPERTY(QRectF listPlace MEMBER m_listPlace NOTIFY placesChanged)

    Q_PROPERTY(tarnwick::VeilPicture background READ background NOTIFY veilsChanged)
    Q_PROPERTY(tarnwick::VeilPicture overRecord READ overRecord NOTIFY veilsChanged)
    Q_PROPERTY(tarnwick::VeilPicture overCover READ overCover NOTIFY veilsChanged)
    /// What lies under the rows of the list, with the alpha that they need.
    Q_PROPERTY(QColor rowColor READ rowColor NOTIFY veilsChanged)
    /// Whether the veils are those of what is shown.
    Q_PROPERTY(bool isReady READ isReady NOTIFY veilsChanged)

public:
    explicit VeilModel(QObject* parent = nullptr);

    void setView(TarnwickView* view);
    void setPanel(PanelItem* panel);

    const VeilPicture& background() const { return m_veils.background; }
    const VeilPicture& overRecord() const { return m_veils.record; }
    const VeilPicture& overCover() const { return m_veils.cover; }
    QColor rowColor() const;
    bool isReady() const { return !m_working; }

    /// What the veils depend on, as it is now.
    VeilScene scene() const;

    void classBegin() override {}
    void componentComplete() override;

Q_SIGNALS:
    void viewChanged();
    void panelChanged();
    void sceneChanged();
    void placesChanged();
    void veilsChanged();

private:
    void remake();
    void remakeSoon();
    void take(const Veils& veils);

    QPointer<TarnwickView> m_view;
    QPointer<PanelItem> m_panel;
    Picture m_record;
    QRectF m_recordPlace;
    Picture m_cassette;
    QRectF m_cassettePlace;
    Picture m_cover;
    QRectF m_coverPlace;
    double m_coverRadius = 0;
    QRectF m_listPlace;

    bool m_complete = false;
    bool m_wanted = false;  // again, when what is being made is there
    bool m_working = false; // on another thread
    SettleTimer m_settling{[this] { remake(); }};
    VeilScene m_made;
    Veils m_veils;
    int m_makeCount = 0;
};

} // namespace tarnwick
