#include "valuetext.h"

namespace bench {

QString plainText(const QVariant &value)
{
    if (value.userType() != QMetaType::QVariantList && value.userType() != QMetaType::QStringList)
        return value.toString();
    return value.toStringList().join(QLatin1String(", "));
}

bool isSettingsList(const UnitValue &value)
{
    return value.area == Area::Factory && value.value.userType() == QMetaType::QVariantList;
}

QStringList valueLines(const UnitValue &value)
{
    if (!isSettingsList(value))
        return {plainText(value.value)};
    // The list holds a key, a value and an empty text for each setting.
    const QVariantList list = value.value.toList();
    QStringList lines;
    for (int i = 0; i + 1 < list.size(); i += 3)
        lines.append(plainText(list.at(i)) + QLatin1String(" = ") + plainText(list.at(i + 1)));
    return lines;
}

} // namespace bench
