#pragma once

#include <usbcontrol.h>

#include <mutex>

namespace bench {

/**
 * The bench's USB mount service. Lives in the main thread and belongs to the head unit.
 *
 * Adds what UsbControl's declaration leaves to the implementation; every UsbControl of the bench
 * is one of these.
 */
class UsbService : public UsbControl
{
public:
    explicit UsbService(bool deviceEventsRequested);

    void requestDeviceEvents();
    void mount(const QString &directory);
    void unmount(const QString &directory);

    bool deviceEventsRequested() const { return m_requested; }

    /// In the order of mounting. Any thread.
    QStringList mountedDirectories() const;

private:
    bool m_requested;
    mutable std::mutex m_mutex; ///< protects m_directories
    QStringList m_directories;
};

} // namespace bench
