#pragma once

#include "platform/dispatch/Dispatcher.h"
#include "platform/images/Image.h"
#include "visuals/CoverAnalysis.h"
#include "visuals/RandomIndex.h"

#include <QColor>
#include <QList>
#include <QObject>

#include <deque>
#include <map>
#include <memory>

namespace tarnwick {

/// The colours behind everything and of the text over it, taken from the cover. Main thread only.
class BackgroundManager : public QObject {
    Q_OBJECT
    /// Top to bottom, two or three colours.
    Q_PROPERTY(QList<QColor> gradientColors READ gradientColorList NOTIFY gradientColorsChanged)
    /// Pure black or pure white.
    Q_PROPERTY(QColor dynamicTextColor READ dynamicTextColorValue NOTIFY dynamicTextColorChanged)
    /// Two equal dark colours, written by the `darkColor` style and the fallback alone.
    Q_PROPERTY(QList<QColor> darkGradientColors READ darkGradientColorList NOTIFY darkGradientColorsChanged)

public:
    /// What `random` draws from.
    static constexpr std::array randomChoices{
        BackgroundOption::Black,     BackgroundOption::White,     BackgroundOption::Gradient,
        BackgroundOption::OneColor,  BackgroundOption::DarkColor, BackgroundOption::Shapes,
        BackgroundOption::ThreeTone,
    };

    /// `dispatcher` must outlive the manager.
    explicit BackgroundManager(dispatch::Dispatcher& dispatcher,
                               RandomIndex randomIndex = systemRandomIndex(), QObject* parent = nullptr);
    ~BackgroundManager() override;

    /// Publishes the colours of a style for a cover. At once when they are known or quickly found;
    /// otherwise they are found on another thread and published in the order of the calls. The text
    /// colour always follows in a task of the main queue.
    void applyBackground(BackgroundOption option, const std::optional<images::Image>& cover);

    const std::vector<Colour>& gradientColors() const { return m_gradientColors; }
    const std::vector<Colour>& darkGradientColors() const { return m_darkGradientColors; }
    const Colour& dynamicTextColor() const { return m_dynamicTextColor; }

    /// The colours to paint behind everything, top to bottom, while `option` is the preference.
    std::vector<Colour> paintedColors(BackgroundOption option) const;

    /// Whether everything that was asked for is published, the text colour apart.
    bool isSettled() const { return m_requests.empty(); }

    /// Whether everything that was asked for is published, the text colour too.
    bool hasPublishedAll() const { return m_requests.empty() && m_textsDue == 0; }

    /// The style that `random` stands for; none until one is drawn. Setting it to none makes the next
    /// call draw anew.
    std::optional<BackgroundOption> lastRandomChoice;

    /// How many analyses were started so far.
    int analysisCount() const { return m_analysisCount; }

    QList<QColor> gradientColorList() const;
    QList<QColor> darkGradientColorList() const;
    QColor dynamicTextColorValue() const { return m_dynamicTextColor.toQColor(); }

Q_SIGNALS:
    void gradientColorsChanged();
    void dynamicTextColorChanged();
    void darkGradientColorsChanged();
    /// What was asked for is published, whether or not it is another than before.
    void published();
    /// Nothing is left to publish.
    void settled();

private:
    /// A cover and a style.
    using Key = std::pair<quint64, BackgroundOption>;
    using Found = std::shared_ptr<std::optional<BackgroundColours>>;

    struct Request {
        BackgroundOption style;
        Found found;
    };

    BackgroundOption resolved(BackgroundOption option);
    Found coloursOf(BackgroundOption style, const std::optional<images::Image>& cover);
    void publishNext();
    void publish(BackgroundOption style, const BackgroundColours& colours);
    void assignColours(BackgroundOption style, const BackgroundColours& colours);
    void setGradient(const std::vector<Colour>& colours, const Colour& textColor);
    void assignGradient(const std::vector<Colour>& colours, bool always);
    void assignDarkPair(const std::vector<Colour>& colours);
    void publishTextColor(const Colour& color);

    dispatch::Dispatcher& m_dispatcher;
    RandomIndex m_randomIndex;
    std::vector<Colour> m_gradientColors{colours::black, colours::black};
    std::vector<Colour> m_darkGradientColors{colours::black, colours::black};
    Colour m_dynamicTextColor = colours::white;
    Colour m_lastDynamicTextColor = colours::white;
    std::deque<Request> m_requests; ///< that wait for an analysis or for those before them
    int m_textsDue = 0;             ///< tasks that will publish a text colour
    bool m_textMayBeDue = false;    ///< of the request that was published last from there
    std::map<Key, Found> m_found;
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);
    int m_analysisCount = 0;
};

} // namespace tarnwick
