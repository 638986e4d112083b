#pragma once

#include <QList>
#include <QString>

namespace tarnwick {

/// One disc picture that can be chosen.
struct CDImageOption {
    QString tag;         ///< its name in the catalogue, and what the preferences store
    QString displayName; ///< what the preferences show
};

/// Every disc picture on offer, in the order in which they are offered.
const QList<CDImageOption>& imageOptions();

} // namespace tarnwick
