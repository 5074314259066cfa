#include "productionobject.h"

#include "configurationfiles.h"
#include "groups.h"
#include "helddirectory.h"
#include "productionlog.h"

#include <usbcontrol.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace production;

namespace {

enum PassMessage {
    ProgressMessage = 6,
    NothingEnteredMessage = 8,
};

/// QSettings keeps at most ten closed files in its cache.
constexpr int settingsCacheSize = 10;

/// Whether opening the file could block for ever, or its text never end: a pipe, a device.
bool isSpecialFile(const QString &path)
{
    const QFileInfo info(path);
    return info.exists() && !info.isFile();
}

/**
 * Only the unit that holds the stick can be rewriting its file, so a lock found before the file is
 * opened was left by a unit whose rewrite was cut off. QSettings would wait for half a minute until
 * it takes the lock for stale, and for a directory of that name without end.
 */
void removeLeftoverLock(const QString &configPath)
{
    const QFileInfo lock(lockFilePath(configPath));
    if (lock.isDir() && !lock.isSymLink())
        QDir(lock.filePath()).removeRecursively();
    else if (lock.exists() || lock.isSymLink())
        QFile::remove(lock.filePath());
}

} // namespace

void ProductionObject::start(QString path)
{
    if (state != Ready)
        return;
    setConfiguration(QString(), path);
    if (!path.isEmpty() || (findConfiguration() && !needLeave))
        exeProductionMode();
    else
        emit finished();
}

/// Looks on the mounted devices; stops at once when leaving is requested.
bool ProductionObject::findConfiguration()
{
    const QStringList devices =
        UsbControl::getInstance()->getMountDeviceByType(MediaTypeUsbStorage);
    const QStringList names = configurationFileNames();
    for (const QString &device : devices) {
        for (const QString &name : names) {
            if (needLeave)
                return false;
            const QString candidate = filePath(device, name);
            if (QFile::exists(candidate)) {
                setConfiguration(device, candidate);
                leaveIfGone(device);
                return true;
            }
        }
    }
    return false;
}

/// The going of @p device concerned nobody as long as it was not known that the file is on it.
void ProductionObject::leaveIfGone(const QString &device)
{
    const QStringList devices =
        UsbControl::getInstance()->getMountDeviceByType(MediaTypeUsbStorage);
    if (!devices.contains(device))
        needLeave = true;
}

void ProductionObject::setConfiguration(const QString &device, const QString &file)
{
    const std::lock_guard<std::mutex> lock(sharedMutex);
    mountPath = device;
    configPath = file;
    isSysFile = isSystemFile(file);
}

/**
 * The production pass:
 *  1. raise the platform's production-mode flag and open the file;
 *  2. carry out the groups of the file, in their fixed order;
 *  3. record the serial identities taken in the completion marker, or use up a system file;
 *  4. stay in Done, or leave at once when nothing was entered or the stick was pulled.
 *
 * The point of no return for a serial lies within 2 (see writeSerial()).
 */
void ProductionObject::exeProductionMode()
{
    WORKER_LOG() << __func__;
    if (!isSysFile)
        setProductionMode(true);
    state = Running;
    sendMessage(QStringLiteral("正在读取USB配置文件，请不要断开电源或拔出USB。"), ProgressMessage);

    HeldDirectory directory(QFileInfo(configPath).path());
    removeLeftoverLock(directory.filePath(configName()));
    const std::unique_ptr<QSettings> settings = openConfiguration(directory);
    int itemCount = 0;
    QStringList provisioned;
    if (!exeGroups(*settings, itemCount, provisioned)) {
        leaveProductionModel();
        return;
    }

    state = Done;
    if (itemCount == 0) {
        setProductionMode(false);
        sendMessage(QStringLiteral("未进入任何生产测试项，请核对配置文件。"),
                    NothingEnteredMessage);
    }
    if (isSysFile)
        removeSystemFile(directory);
    else if (!provisioned.isEmpty())
        writeCompletionMarker(directory, provisioned);
    if (needLeave || itemCount == 0)
        leaveProductionModel();
}

QString ProductionObject::configName() const
{
    return QFileInfo(configPath).fileName();
}

/// Opens the file so that the reader really runs, which alone fills the comment table.
std::unique_ptr<QSettings> ProductionObject::openConfiguration(HeldDirectory &directory)
{
    lastRead = LastRead::None;
    if (isSpecialFile(directory.filePath(configName())))
        return std::make_unique<QSettings>(QStringLiteral("/dev/null"), settingsFormat);
    for (int tries = 0;; ++tries) {
        const QString path = directory.filePath(configName());
        auto settings = std::make_unique<QSettings>(path, settingsFormat);
        if (lastRead != LastRead::None || QFileInfo(path).size() == 0 || tries > settingsCacheSize)
            return settings;
        // QSettings took the keys from its process-wide cache, where they stand under the file's
        // path as long as its size and time are the same.
        directory.changePaths();
    }
}

/// Returns false when leaving was requested on the way; the rest of the pass is then skipped.
bool ProductionObject::exeGroups(QSettings &settings, int &itemCount, QStringList &provisioned)
{
    const QStringList groups = settings.childGroups();
    sendMessage(QStringLiteral("成功进入生产模式。"), ProgressMessage);
    if (needLeave)
        return false;

    if (groups.contains(factorysettings::group))
        exeFactorySettingsGroup(settings);
    if (groups.contains(panel::group) && exePanelGroup(settings))
        ++itemCount;
    if (needLeave)
        return false;

    if (groups.contains(serial::snGroup) && exeSnGroup(settings, provisioned))
        ++itemCount;
    if (needLeave)
        return false;

    if (groups.contains(serial::skGroup) && exeSkGroup(settings, provisioned))
        ++itemCount;
    if (needLeave)
        return false;

    if (groups.contains(canbus::group) && exeCanbusGroup(settings))
        ++itemCount;
    if (needLeave)
        return false;

    if (groups.contains(directionkey::group) && exeDirectionKeyGroup(settings))
        ++itemCount;
    if (groups.contains(bt::group) && exeBtGroup(settings))
        ++itemCount;
    return true;
}

void ProductionObject::removeSystemFile(const HeldDirectory &directory)
{
    syncDisks();
    const QString path = directory.filePath(configName());
    if (QFile::exists(path))
        QFile::remove(path);
}

/// @p directory is the one that the file is in; on a device, the device's own.
void ProductionObject::writeCompletionMarker(const HeldDirectory &directory,
                                             const QStringList &provisioned)
{
    const QString name = completionMarkerName();
    // A file that was given by its path belongs to no device, and its marker to the root directory.
    QFile marker(mountPath.isEmpty() ? filePath(mountPath, name) : directory.filePath(name));
    if (isSpecialFile(marker.fileName()) || !marker.open(QIODevice::Append))
        return;
    marker.write(provisioned.join(QLatin1String(", ")).toLatin1() + "\r\n");
    marker.close();
    syncDisks();
}
