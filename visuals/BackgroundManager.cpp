#include "visuals/BackgroundManager.h"

namespace tarnwick {

namespace {

// A megapixel is summed in about a third of a millisecond.
constexpr qint64 costOfAMillisecond = 500'000;

// Results are small, but a display that runs for weeks sees many covers.
constexpr std::size_t maximumResults = 64;

QList<QColor> listOf(const std::vector<Colour>& colours) {
    QList<QColor> result;
    for (const Colour& colour : colours)
        result.append(colour.toQColor());
    return result;
}

} // namespace

BackgroundManager::BackgroundManager(dispatch::Dispatcher& dispatcher, RandomIndex randomIndex,
                                     QObject* parent)
    : QObject(parent), m_dispatcher(dispatcher), m_randomIndex(std::move(randomIndex)) {}

BackgroundManager::~BackgroundManager() = default;

void BackgroundManager::applyBackground(BackgroundOption option, const std::optional<images::Image>& cover) {
    const BackgroundOption style = resolved(option);
    const Found found = coloursOf(style, cover);
    if (m_requests.empty() && !m_textMayBeDue && found->has_value())
        publish(style, **found);
    else
        m_requests.push_back({style, found});
}

std::vector<Colour> BackgroundManager::paintedColors(BackgroundOption option) const {
    switch (option) {
    case BackgroundOption::Black:
        return {colours::black, colours::black};
    case BackgroundOption::White:
        return {colours::white, colours::white};
    case BackgroundOption::DarkColor:
        return m_darkGradientColors;
    default:
        return m_gradientColors;
    }
}

QList<QColor> BackgroundManager::gradientColorList() const { return listOf(m_gradientColors); }

QList<QColor> BackgroundManager::darkGradientColorList() const { return listOf(m_darkGradientColors); }

BackgroundOption BackgroundManager::resolved(BackgroundOption option) {
    if (option != BackgroundOption::Random)
        return option;
    if (!lastRandomChoice) {
        const int index = m_randomIndex(static_cast<int>(randomChoices.size()));
        lastRandomChoice = randomChoices.at(static_cast<std::size_t>(index));
    }
    return *lastRandomChoice;
}

BackgroundManager::Found BackgroundManager::coloursOf(BackgroundOption style,
                                                      const std::optional<images::Image>& cover) {
    if (!cover || style == BackgroundOption::Black || style == BackgroundOption::White)
        return std::make_shared<std::optional<BackgroundColours>>(analyse(style, {}));

    const Key key{cover->id(), style};
    if (const auto known = m_found.find(key); known != m_found.end())
        return known->second;
    if (m_found.size() >= maximumResults)
        m_found.clear();

    ++m_analysisCount;
    auto found = std::make_shared<std::optional<BackgroundColours>>();
    m_found.emplace(key, found);
    if (cover->isReady() && analysisCost(style, cover->size()) <= costOfAMillisecond) {
        *found = analyse(style, cover->pixels());
        return found;
    }
    m_dispatcher.globalQueue(dispatch::QualityOfService::UserInteractive)
        .async([this, style, found, image = *cover, alive = std::weak_ptr(m_alive),
                &main = m_dispatcher.mainQueue()] {
            // Only on the main thread, where the manager lives, can one tell whether it still does.
            main.async([this, found, colours = analyse(style, image.pixels()), alive] {
                if (alive.expired())
                    return;
                *found = colours;
                publishNext();
            });
        });
    return found;
}

/// One a task: the text colour of the one before has come then, with which its own is compared.
void BackgroundManager::publishNext() {
    if (m_textMayBeDue || m_requests.empty() || !m_requests.front().found->has_value())
        return;
    const Request request = m_requests.front();
    m_requests.pop_front();
    m_textMayBeDue = true;
    publish(request.style, **request.found);
    m_dispatcher.mainQueue().async([this, alive = std::weak_ptr(m_alive)] {
        if (alive.expired())
            return;
        m_textMayBeDue = false;
        publishNext();
    });
}

void BackgroundManager::publish(BackgroundOption style, const BackgroundColours& found) {
    assignColours(style, found);
    Q_EMIT published();
    if (hasPublishedAll())
        Q_EMIT settled();
}

void BackgroundManager::assignColours(BackgroundOption style, const BackgroundColours& found) {
    const bool plain = style == BackgroundOption::Black || style == BackgroundOption::White;
    if (plain || found == fallbackColours()) {
        setGradient(found.gradient, found.text);
        if (!found.darkPair.empty())
            assignDarkPair(found.darkPair);
        return;
    }
    if (!found.darkPair.empty())
        assignDarkPair(found.darkPair);
    assignGradient(found.gradient, style == BackgroundOption::Gradient);
    publishTextColor(found.text);
}

void BackgroundManager::setGradient(const std::vector<Colour>& colours, const Colour& textColor) {
    if (m_gradientColors == colours && m_lastDynamicTextColor == textColor)
        return;
    assignGradient(colours, true);
    publishTextColor(textColor);
}

void BackgroundManager::assignGradient(const std::vector<Colour>& colours, bool always) {
    if (!always && m_gradientColors == colours)
        return;
    m_gradientColors = colours;
    Q_EMIT gradientColorsChanged();
}

void BackgroundManager::assignDarkPair(const std::vector<Colour>& colours) {
    if (m_darkGradientColors == colours)
        return;
    m_darkGradientColors = colours;
    Q_EMIT darkGradientColorsChanged();
}

void BackgroundManager::publishTextColor(const Colour& color) {
    if (color == m_lastDynamicTextColor)
        return;
    ++m_textsDue;
    m_dispatcher.mainQueue().async([this, color, alive = std::weak_ptr(m_alive)] {
        if (alive.expired())
            return;
        --m_textsDue;
        m_dynamicTextColor = color;
        m_lastDynamicTextColor = color;
        Q_EMIT dynamicTextColorChanged();
        if (hasPublishedAll())
            Q_EMIT settled();
    });
}

} // namespace tarnwick
