#pragma once

#include "call.h"

#include <QCoreApplication>
#include <QFile>

namespace bench {

/**
 * A file with one line of JSON for everything that happens on the bench, in order.
 *
 * An observer of the head unit: write() is called in any thread, by one thread at a time. A line
 * is in the file when write() returns.
 */
class Journal
{
    Q_DECLARE_TR_FUNCTIONS(Journal)
    Q_DISABLE_COPY(Journal)

public:
    Journal() = default;
    /// Leaves no empty file behind that was not there before.
    ~Journal();

    /// Appends to @p path from now on; false with a sentence for the user when that is not
    /// possible.
    bool open(const QString &path, QString *error);

    void write(const Call &call);

private:
    QFile m_file;
    bool m_isNew = false;
};

} // namespace bench
