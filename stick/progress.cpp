#include "progress.h"

#include <chrono>
#include <cstdio>
#include <unistd.h>

namespace stick {

Progress::Progress(const QString &what)
{
    if (::isatty(STDERR_FILENO))
        m_thread = std::thread(&Progress::run, this, what.toUtf8());
}

Progress::~Progress()
{
    if (!m_thread.joinable())
        return;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_over = true;
    }
    m_changed.notify_one();
    m_thread.join();
}

void Progress::run(const QByteArray &what)
{
    using namespace std::chrono;
    constexpr seconds patience(2);
    const auto begin = steady_clock::now();
    const auto isOver = [this] { return m_over; };

    std::unique_lock<std::mutex> lock(m_mutex);
    if (m_changed.wait_for(lock, patience, isOver))
        return;
    do {
        const auto elapsed = duration_cast<seconds>(steady_clock::now() - begin).count();
        // Without the line wrap meanwhile the terminal cuts what is too long for it.
        std::fprintf(stderr, "\r\033[?7l%d s … %s\033[?7h", int(elapsed), what.constData());
    } while (!m_changed.wait_for(lock, seconds(1), isOver));
    std::fputs("\r\033[K", stderr);
}

} // namespace stick
