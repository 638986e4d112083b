#include "app/desktop/RunningCopies.h"

#include <QDir>
#include <QFile>
#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <thread>

namespace tarnwick {

namespace {

using namespace std::chrono_literals;

/// Entering takes microseconds; a copy that was stopped in the middle must not stop this one too.
constexpr auto longestWait = 1s;
constexpr auto pauseBetweenTries = 1ms;

/// The byte that is held while a copy looks for its place. Places begin behind it.
constexpr off_t door = 0;

/// Locks of the open file and not of the process: they are not lost when somebody else in it closes the file.
struct flock lockOf(off_t begin, off_t length, short type = F_WRLCK) {
    struct flock lock = {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    lock.l_start = begin;
    lock.l_len = length;
    return lock;
}

bool take(int descriptor, off_t byte) {
    auto lock = lockOf(byte, 1);
    return fcntl(descriptor, F_OFD_SETLK, &lock) == 0;
}

void giveBack(int descriptor, off_t byte) {
    auto lock = lockOf(byte, 1, F_UNLCK);
    fcntl(descriptor, F_OFD_SETLK, &lock);
}

/// The end of a lock that another copy holds among `length` bytes from `begin` on (0: all that follow); 0 for
/// none.
off_t endOfALock(int descriptor, off_t begin, off_t length) {
    auto lock = lockOf(begin, length);
    if (fcntl(descriptor, F_OFD_GETLK, &lock) != 0 || lock.l_type == F_UNLCK)
        return 0;
    return lock.l_start + lock.l_len;
}

} // namespace

QString RunningCopies::standardFolder() {
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return runtime.isEmpty() ? QString() : runtime + QStringLiteral("/tarnwick");
}

RunningCopies::RunningCopies(const QString& folder) {
    if (folder.isEmpty() || !QDir().mkpath(folder))
        return;
    const QByteArray path = QFile::encodeName(QDir(folder).filePath(QStringLiteral("copies")));
    m_descriptor = open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (m_descriptor >= 0)
        enter();
}

RunningCopies::~RunningCopies() {
    if (m_descriptor >= 0)
        close(m_descriptor);
}

bool RunningCopies::isFirst() const {
    const off_t before = m_place - door - 1; // places
    return before <= 0 || endOfALock(m_descriptor, door + 1, before) == 0;
}

/// One at a time, so that each sees those before it.
void RunningCopies::enter() {
    const auto deadline = std::chrono::steady_clock::now() + longestWait;
    while (!take(m_descriptor, door)) {
        if (std::chrono::steady_clock::now() > deadline)
            return;
        std::this_thread::sleep_for(pauseBetweenTries);
    }
    off_t place = door + 1;
    while (const off_t end = endOfALock(m_descriptor, place, 0))
        place = end;
    if (take(m_descriptor, place))
        m_place = place;
    giveBack(m_descriptor, door);
}

} // namespace tarnwick
