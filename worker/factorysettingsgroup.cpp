#include "productionobject.h"

#include "groups.h"
#include "productionlog.h"

#include <datasavecontrol.h>

using namespace production;

namespace {

/// Keys without a name are left by lines that hold only a comment, in lower sections too.
bool isSetting(const QString &key)
{
    return key != modeKey && !key.isEmpty() && !key.endsWith(QLatin1Char('/'));
}

/**
 * Three elements for each setting of the entered group: its key ("sub/key" for one of a lower
 * section), its value as it stands and an empty text.
 */
QVariantList readFactorySettings(const QSettings &settings)
{
    QVariantList triples;
    const QStringList keys = settings.allKeys();
    triples.reserve(3 * keys.size());
    for (const QString &key : keys) {
        if (isSetting(key))
            triples << key << settings.value(key) << QString(QLatin1String(""));
    }
    return triples;
}

} // namespace

void ProductionObject::exeFactorySettingsGroup(QSettings &settings)
{
    QVariantList triples;
    settings.beginGroup(factorysettings::group);
    if (settings.value(modeKey).toInt() > 0)
        triples = readFactorySettings(settings);
    settings.endGroup();

    if (triples.isEmpty())
        return;
    DataSaveControl::saveData(triples, factorysettings::group, true);
    WORKER_LOG() << "write:" << triples;
}
