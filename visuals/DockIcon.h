#pragma once

#include "assets/Catalogue.h"
#include "platform/dispatch/Dispatcher.h"
#include "platform/images/Image.h"

#include <functional>
#include <memory>
#include <optional>

namespace tarnwick {

/// `picture` stretched to 128 × 128 and clipped to a square with round corners.
QImage roundedIcon(const QImage& picture, double cornerRadius);

/// Makes the program's icon from the cover. Main thread only.
class DockIcon {
public:
    static constexpr int side = 128;
    static constexpr double cornerRadius = 16;

    /// `show` gets each icon, on the main thread. `dispatcher` and `catalogue` must outlive the object.
    DockIcon(dispatch::Dispatcher& dispatcher, const Catalogue& catalogue,
             std::function<void(const QImage&)> show);

    /// Shows the cover when `enabled` and there is one, else the program's own icon; when that is missing the
    /// icon stays. The picture is made on another thread; of several in flight the last one counts.
    void applyDockIcon(const std::optional<images::Image>& cover, bool enabled);

private:
    dispatch::Dispatcher& m_dispatcher;
    const Catalogue& m_catalogue;
    std::shared_ptr<std::function<void(const QImage&)>> m_show;
    std::shared_ptr<int> m_request = std::make_shared<int>(0);
};

} // namespace tarnwick
