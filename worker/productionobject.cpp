#include "productionobject.h"

#include "productionlog.h"
#include "reader.h"
#include "writer.h"

#include <datasavecontrol.h>

#include <QPointer>

#include <cstdlib>

std::atomic<ProductionObject *> ProductionObject::ins{nullptr};

namespace {

/// Qt takes 16 formats in a process and none of them back, so every worker shares one.
QSettings::Format productionFormat()
{
    static const QSettings::Format format =
        QSettings::registerFormat(QStringLiteral("ini"), &ProductionObject::readSetting,
                                  &ProductionObject::writeSetting, Qt::CaseSensitive);
    return format;
}

} // namespace

ProductionObject::ProductionObject(QObject *parent)
    : QObject(parent)
    , settingsFormat(productionFormat())
{
    ins = this;
}

ProductionObject::~ProductionObject()
{
    WORKER_LOG() << __func__;
    ProductionObject *self = this;
    ins.compare_exchange_strong(self, nullptr);
}

void ProductionObject::setReady()
{
    state = Ready;
}

bool ProductionObject::isConfigurationDevice(const QString &dev) const
{
    const std::lock_guard<std::mutex> lock(sharedMutex);
    return dev == mountPath;
}

void ProductionObject::sendMessage(QString msg, int type)
{
    if (!isSysFile)
        emit message(msg, type);
}

void ProductionObject::setLeave(const std::function<void()> &beforeLeaving)
{
    // The pass stores Done before it looks at the flag a last time, and the flag is raised here
    // before the state is looked at: at least one of the two threads sees the other.
    needLeave = true;
    if (state != Done)
        return;
    const QPointer<ProductionObject> self(this); // the host may end everything meanwhile
    if (beforeLeaving)
        beforeLeaving();
    if (!self.isNull())
        leaveProductionModel();
}

void ProductionObject::leaveProductionModel()
{
    WORKER_LOG() << __func__;
    if (leaveBegun.exchange(true))
        return;
    const QPointer<ProductionObject> self(this); // a module's slot may let the host delete all
    if (state >= Running) {
        const int canIndex =
            DataSaveControl::readUserData(QStringLiteral("CanIndex"), QVariant(0)).toInt();
        emit canbusEntryProductionTestMode(false, canIndex);
        if (!self.isNull())
            emit directionKeyEntryProductionTestMode(false);
    }
    if (self.isNull())
        return;
    state = Idle;
    setProductionMode(false);
    checkQuit();
}

void ProductionObject::checkQuit()
{
    const ProductionState current = state;
    WORKER_LOG() << "state:" << current;
    if (current == Idle)
        emit finished();
}

void ProductionObject::setProductionMode(bool on)
{
    const std::lock_guard<std::mutex> lock(sharedMutex);
    DataSaveControl::productionMode = on;
}

bool ProductionObject::readSetting(QIODevice &device, production::SettingsMap &map)
{
    ProductionObject *const worker = ins;
    if (worker == nullptr) {
        production::KeyComments unused;
        return production::readSettings(device, map, unused);
    }
    const bool readable = production::readSettings(device, map, worker->keyComments);
    worker->lastRead = readable ? LastRead::Succeeded : LastRead::Failed;
    return readable;
}

bool ProductionObject::writeSetting(QIODevice &device, const production::SettingsMap &map)
{
    const ProductionObject *const worker = ins;
    if (worker == nullptr)
        return production::writeSettings(device, map, {});
    return worker->lastRead != LastRead::Failed
        && production::writeSettings(device, map, worker->keyComments);
}

namespace production {

void runCommand(const char *command)
{
    const int ignored = std::system(command);
    Q_UNUSED(ignored)
}

void syncDisks()
{
    for (int i = 0; i < 3; ++i)
        runCommand("sync");
}

} // namespace production
