#include "usbservice.h"

#include "../headunit.h"

namespace bench {

UsbService::UsbService(bool deviceEventsRequested)
    : m_requested(deviceEventsRequested)
{
    qRegisterMetaType<MediaType>("MediaType");
}

void UsbService::requestDeviceEvents()
{
    if (m_requested)
        return;
    m_requested = true;
    emit hadRequestedDeviceEvent();
}

void UsbService::mount(const QString &directory)
{
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        m_directories.append(directory);
    }
    emit deviceMounted(MediaTypeUsbStorage, directory);
}

void UsbService::unmount(const QString &directory)
{
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        m_directories.removeOne(directory);
    }
    emit deviceUnmounted(MediaTypeUsbStorage, directory);
}

QStringList UsbService::mountedDirectories() const
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    return m_directories;
}

} // namespace bench

UsbControl *UsbControl::getInstance()
{
    return bench::HeadUnit::current().usbService();
}

bool UsbControl::isDeviceEventRequested() const
{
    return static_cast<const bench::UsbService *>(this)->deviceEventsRequested();
}

QStringList UsbControl::getMountDeviceByType(_MediaType type) const
{
    if (type != MediaTypeUsbStorage)
        return {};
    return static_cast<const bench::UsbService *>(this)->mountedDirectories();
}
