#pragma once

#include <QList>
#include <QString>
#include <QVariant>

/**
 * The head unit's persistent data.
 *
 * Every function is called in the module's worker thread, saveFactoryData() and readUserData() in
 * the UI thread as well, so the service must be thread-safe. Calls may block while data reaches
 * the disk. The module tests no result: a store that fails is the platform's to report.
 */
class DataSaveControl
{
public:
    /// Stores one key of the factory data; the module always passes true as @p flag.
    static bool saveFactoryData(const QString &key, const QVariant &value, bool flag);

    /// Stores one key of the runtime data; the module always passes true as @p flag.
    static bool backupRuntimeData(const QString &key, const QVariant &value, bool flag);

    /// Stores one key of the production data, where the unit's serial identities are kept.
    static bool saveProductionData(const QString &key, const QVariant &value);

    /**
     * Stores the factory settings list @p data under @p name.
     *
     * The list holds three elements for each setting: its key (text), its value as it stands in
     * the production file (text, or a list of texts) and an empty text. For a key
     * with doubled or leading slashes the value is that of the key without them, invalid when there
     * is none. The module always passes true as @p flag.
     */
    static bool saveData(const QList<QVariant> &data, const QString &name, bool flag);

    /// A key of the production data, or @p defaultValue when the unit has none.
    static QVariant readProductionData(const QString &key, const QVariant &defaultValue);

    /// A key of the user data, or @p defaultValue when the unit has none.
    static QVariant readUserData(const QString &key, const QVariant &defaultValue);

    /// The panel's size in inches as text ("10.1"); may be empty.
    static QString getPannelDisplaySize();

    /**
     * Production mode is on, for the rest of the head unit to see. Written by the module only, in
     * its worker thread during a pass and in the UI thread when the stick is pulled afterwards.
     */
    static bool productionMode;
};
