#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace bench {

/// A serial pool of a production file.
struct Pool
{
    QString group; ///< "SN" or "SK"
    QStringList entries; ///< sorted
};

/// The pools that the file has, SN before SK; none for a file that cannot be read.
QVector<Pool> readPools(const QString &configurationFile);

/// The file on @p stick that a pass would take; empty when there is none.
QString configurationFileOn(const QString &stick);

} // namespace bench
