#pragma once

#include <QString>

#include <condition_variable>
#include <mutex>
#include <thread>

namespace stick {

/**
 * Tells somebody at a terminal what takes so long: a line on standard error that appears after two
 * seconds and is gone when the object is. A thread of its own writes it, so that nothing needs to
 * be counted where the time is spent.
 */
class Progress
{
public:
    /// @p what is going on, "reading production.ini" for example.
    explicit Progress(const QString &what);
    ~Progress();
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

private:
    void run(const QByteArray &what);

    std::mutex m_mutex; ///< Guards m_over.
    std::condition_variable m_changed;
    bool m_over = false;
    std::thread m_thread; ///< Not started where nobody would see its line.
};

} // namespace stick
