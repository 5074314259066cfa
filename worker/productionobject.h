#pragma once

#include "settingsmap.h"

#include <QObject>
#include <QSettings>
#include <QString>
#include <QStringList>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace production {
class HeldDirectory;
struct SerialGroup;
} // namespace production

enum ProductionState : qint32 {
    Idle = 0, ///< Not in production mode.
    Ready = 1, ///< Waiting for start().
    Running = 2, ///< A production pass is being carried out.
    Done = 3, ///< The pass has finished; waiting for the stick to be unplugged.
};

/**
 * The worker: finds the configuration file, carries out the production pass and leaves production
 * mode. It makes one pass in its life.
 *
 * Created by the control object in the UI thread and moved to a thread of its own, in which start()
 * and so the whole pass run. Functions say so where they may be called from the UI thread too. It
 * has no parent; it is deleted when its thread object is destroyed. One worker lives at a time.
 */
class ProductionObject : public QObject
{
    Q_OBJECT

public:
    /// UI thread. Registers the settings format when it is the first of the process.
    explicit ProductionObject(QObject *parent = nullptr);
    ~ProductionObject() override;

    /// The live worker, null when there is none. Any thread.
    static std::atomic<ProductionObject *> ins;

    /// Makes the worker accept start(). Before the worker is moved to its thread.
    void setReady();

    /// Any thread.
    ProductionState currentState() const { return state; }

    /// Whether the pass is a silent one, over a system file. Any thread.
    bool isSystemPass() const { return isSysFile; }

    /// Whether the configuration file was found on the device mounted at @p dev. Any thread.
    bool isConfigurationDevice(const QString &dev) const;

    /// Whether the pass is to leave, as setLeave() asks; never taken back. Any thread.
    bool isNeedLeave() const { return needLeave; }

    /**
     * Requests to leave production mode; for the UI thread.
     *
     * In Done this leaves at once, with the signals of leaving emitted in the calling thread, right
     * after a call of @p beforeLeaving; the pass has emitted its test-mode signals and its results
     * by then. A pass that is running leaves by itself at its next check, one that is Ready does
     * not begin.
     */
    void setLeave(const std::function<void()> &beforeLeaving = {});

    /**
     * Leaves production mode: switches the test modes off, becomes Idle and emits finished().
     *
     * The UI thread and a pass at its end may both get here at once; the leave is carried out by
     * the first and the other call does nothing.
     */
    void leaveProductionModel();

    /// Emits finished() when the worker is Idle. UI thread or worker thread, as the leave is.
    void checkQuit();

    /// The reader that QSettings calls; its comments go to the live worker.
    static bool readSetting(QIODevice &device, production::SettingsMap &map);

    /**
     * The writer that QSettings calls, with the comments of the live worker.
     *
     * Refuses to write when the file could not be read last: QSettings would replace it by what it
     * knows of it, which is nothing.
     */
    static bool writeSetting(QIODevice &device, const production::SettingsMap &map);

signals:
    /// Interface test of the CAN bus with index @p canId on or off.
    void canbusEntryProductionTestMode(bool entry, int canId);
    /// Direction-key test on or off.
    void directionKeyEntryProductionTestMode(bool entry);
    /// The platform's backlight step list has been replaced and stored.
    void lightStepRangeChanged();
    /// Day backlight level, 0 to 255.
    void userLightLevelChanged(int level);
    /// Night backlight level, 0 to 255.
    void illLightLevelChanged(int level);
    /// A text for the operator, possibly empty, with its message type code.
    void message(QString msg, int type);
    /// There is nothing (more) to do: the thread may end.
    void finished();

public slots:
    /**
     * Runs the pass over the file @p path or, when it is empty, over the first configuration file
     * on the mounted USB storage devices. Emits finished() when there is none. Does nothing unless
     * the worker is Ready.
     */
    void start(QString path);

private slots:
    void sendMessage(QString msg, int type);

private:
    enum class LastRead { None, Failed, Succeeded };

    bool findConfiguration();
    void setConfiguration(const QString &device, const QString &file);
    void leaveIfGone(const QString &device);
    void setProductionMode(bool on);

    void exeProductionMode();
    std::unique_ptr<QSettings> openConfiguration(production::HeldDirectory &directory);
    bool exeGroups(QSettings &settings, int &itemCount, QStringList &provisioned);
    void writeCompletionMarker(const production::HeldDirectory &directory,
                               const QStringList &provisioned);
    void removeSystemFile(const production::HeldDirectory &directory);
    QString configName() const;

    void exeFactorySettingsGroup(QSettings &settings);
    bool exePanelGroup(QSettings &settings);
    bool exeSnGroup(QSettings &settings, QStringList &provisioned);
    bool exeSkGroup(QSettings &settings, QStringList &provisioned);
    bool exeCanbusGroup(QSettings &settings);
    bool exeDirectionKeyGroup(QSettings &settings);
    bool exeBtGroup(QSettings &settings);

    bool applyBacklightSteps(const QVariant &steps);
    bool applyDayLevel(const QVariant &level);
    bool applyNightLevel(const QVariant &level);

    void provision(const production::SerialGroup &group, int mode,
                   const std::optional<QString> &chosen, QSettings &settings,
                   QStringList &provisioned);
    void writeSerial(const production::SerialGroup &group, const QString &value,
                     QSettings &settings, QStringList &provisioned);
    void removeFromPool(const production::SerialGroup &group, const QString &value,
                        QSettings &settings);

    // Shared with the UI thread.
    std::atomic<bool> isSysFile{false};
    std::atomic<ProductionState> state{Idle};
    std::atomic<bool> needLeave{false};
    std::atomic<bool> leaveBegun{false};
    mutable std::mutex sharedMutex; ///< Guards mountPath and the platform's production-mode flag.
    QString mountPath; ///< Empty when the file came from the unit's flash.

    // Worker thread only.
    QString configPath;
    QSettings::Format settingsFormat;
    production::KeyComments keyComments; ///< Of the file that was read last.
    LastRead lastRead = LastRead::None;
};

namespace production {

/// Runs "sync" three times in a row, as around every change to a file on the stick. Worker thread,
/// which waits for them.
void syncDisks();

/// Runs @p command in the shell and waits for it; what comes of it is not looked at. Worker thread.
void runCommand(const char *command);

} // namespace production
