#pragma once

#include <QStringView>

namespace tarnwick::players {

/// The year in a date however it is written, "2021-03-05", "20210305", "05/03/2021": the first group of four
/// digits, or the first four of eight; 0 without one.
int yearIn(QStringView date);

} // namespace tarnwick::players
