#include "configurationfiles.h"

namespace production {

QString systemFileName()
{
    return QStringLiteral("production_sys.ini");
}

QStringList configurationFileNames()
{
    return {systemFileName(), QStringLiteral("production.ini"),
            QStringLiteral("production_sn.ini")};
}

bool isSystemFile(const QString &path)
{
    return path.endsWith(systemFileName());
}

QString filePath(const QString &directory, const QString &name)
{
    return QStringLiteral("%1/%2").arg(directory, name);
}

QString completionMarkerName()
{
    return QStringLiteral("production_done.txt");
}

QString lockFilePath(const QString &configPath)
{
    return configPath + QLatin1String(".lock");
}

} // namespace production
