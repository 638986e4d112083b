#include "players/mpris/BusThread.h"

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QObject>

#include <future>
#include <mutex>
#include <vector>

namespace tarnwick::players {

/// Tasks are kept behind a lock of ours; the event loop is only woken.
class BusThread::Queue : public QObject {
public:
    void add(Task task) {
        const std::lock_guard lock(m_mutex);
        m_tasks.push_back(std::move(task));
        if (m_tasks.size() == 1)
            QCoreApplication::postEvent(this, new QEvent(QEvent::User));
    }

    bool event(QEvent* event) override {
        if (event->type() != QEvent::User)
            return QObject::event(event);
        std::vector<Task> tasks;
        {
            const std::lock_guard lock(m_mutex);
            tasks.swap(m_tasks);
        }
        for (const Task& task : tasks)
            task();
        return true;
    }

private:
    std::mutex m_mutex;
    std::vector<Task> m_tasks;
};

BusThread::BusThread() {
    std::promise<Queue*> made;
    std::future<Queue*> queue = made.get_future();
    m_thread = std::thread([&made] {
        auto* own = new Queue; // lives on this thread; deleted after the thread has ended
        made.set_value(own);
        QEventLoop loop;
        QObject::connect(own, &QObject::objectNameChanged, &loop, &QEventLoop::quit);
        loop.exec();
    });
    m_queue.reset(queue.get());
}

BusThread::~BusThread() {
    post([this] { m_queue->setObjectName(QStringLiteral("ended")); });
    m_thread.join();
}

void BusThread::post(Task task) { m_queue->add(std::move(task)); }

} // namespace tarnwick::players
