#include <datasavecontrol.h>

#include "../headunit.h"

using bench::Area;
using bench::HeadUnit;

bool DataSaveControl::productionMode = false;

namespace {

/// The module tests no result, so that a failed store is told here.
bool store(Area area, const QString &key, const QVariant &value)
{
    QString error;
    const bool stored = HeadUnit::current().data().store({{area, key, value}}, &error);
    if (!stored)
        qWarning("%s/%s is not stored. %s", qUtf8Printable(bench::areaName(area)),
                 qUtf8Printable(key), qUtf8Printable(error));
    return stored;
}

} // namespace

bool DataSaveControl::saveFactoryData(const QString &key, const QVariant &value, bool flag)
{
    HeadUnit::current().report({bench::calls::saveFactoryData, {key, value, flag}});
    return store(Area::Factory, key, value);
}

bool DataSaveControl::backupRuntimeData(const QString &key, const QVariant &value, bool flag)
{
    HeadUnit::current().report({bench::calls::backupRuntimeData, {key, value, flag}});
    return store(Area::Runtime, key, value);
}

bool DataSaveControl::saveProductionData(const QString &key, const QVariant &value)
{
    HeadUnit::current().report({bench::calls::saveProductionData, {key, value}});
    return store(Area::Production, key, value);
}

bool DataSaveControl::saveData(const QList<QVariant> &data, const QString &name, bool flag)
{
    const QVariant value(data);
    HeadUnit::current().report({bench::calls::saveData, {value, name, flag}});
    return store(Area::Factory, name, value);
}

QVariant DataSaveControl::readProductionData(const QString &key, const QVariant &defaultValue)
{
    return HeadUnit::current().data().value(Area::Production, key, defaultValue);
}

QVariant DataSaveControl::readUserData(const QString &key, const QVariant &defaultValue)
{
    return HeadUnit::current().data().value(Area::User, key, defaultValue);
}

QString DataSaveControl::getPannelDisplaySize()
{
    return HeadUnit::current().displaySize();
}
