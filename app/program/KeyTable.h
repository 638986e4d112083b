#pragma once

#include "platform/menus/MenuModel.h"

#include <QVariantList>

namespace tarnwick {

/// What the keys do, for people: a list of maps with `keys` and `does`. First the keys of the display, then
/// those of `menu`, with the titles that they have there.
QVariantList keyTable(const menus::MenuModel& menu);

} // namespace tarnwick
