#pragma once

#include "platform/dispatch/Dispatcher.h"

#include <QImage>

#include <memory>

namespace tarnwick {

/// Makes pictures for views off the main thread. Everything here is for the main thread.
namespace renderqueue {

using Picture = std::shared_ptr<const QImage>;

/// Where to work. Without a dispatcher, or with null, pictures are made at once; it must outlive its use.
void setDispatcher(dispatch::Dispatcher* dispatcher);

/// Runs `make` on another thread and then `use` on the main thread.
void run(std::function<Picture()> make, std::function<void(Picture)> use);

/// Runs `task` on the main thread after `delay`, by the time of the workplace.
void later(std::chrono::milliseconds delay, std::function<void()> task);

/// How many pictures are being made. With none, every view shows what it is going to show.
int pending();

} // namespace renderqueue

} // namespace tarnwick
