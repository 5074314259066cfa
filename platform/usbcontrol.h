#pragma once

#include <QMetaType>
#include <QObject>
#include <QStringList>

/// Kinds of media that the USB service reports; the production module only asks for storage.
enum _MediaType {
    MediaTypeUnknown = 0,
    MediaTypeUsbStorage = 1,
};
using MediaType = _MediaType;
Q_DECLARE_METATYPE(MediaType)

/**
 * The head unit's USB mount service.
 *
 * Lives in the UI thread and outlives the production module. Its signals may be emitted in any
 * thread.
 */
class UsbControl : public QObject
{
    Q_OBJECT

public:
    /// The one service object; never null. UI thread and the module's worker thread.
    static UsbControl *getInstance();

    /**
     * Whether the service has already requested its device events; until then its list of mounted
     * devices is not to be relied on. UI thread.
     */
    bool isDeviceEventRequested() const;

    /**
     * Mount directories (absolute, without a trailing slash) of the devices of @p type that are
     * mounted now, in the order in which they are to be searched.
     *
     * Called in the UI thread and in the module's worker thread, so it must be thread-safe.
     */
    QStringList getMountDeviceByType(_MediaType type) const;

signals:
    /// The device events have been requested: isDeviceEventRequested() is true from now on.
    void hadRequestedDeviceEvent();

    /// A device of type @p mt was mounted at the directory @p dev.
    void deviceMounted(MediaType mt, QString dev);

    /**
     * The device of type @p mt that was mounted at @p dev is gone; @p dev as it was reported. It is
     * no longer among those of getMountDeviceByType() when this is emitted.
     */
    void deviceUnmounted(MediaType mt, QString dev);
};
