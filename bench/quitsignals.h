#pragma once

#include <QObject>

namespace bench {

/**
 * Ctrl-C, and whatever else asks the process to end, as a signal of Qt's: a unit that is cut off by
 * hand still leaves no folder behind. The same asked again ends the process at once.
 *
 * Lives in the main thread, once in a process.
 */
class QuitSignals : public QObject
{
    Q_OBJECT

public:
    explicit QuitSignals(QObject *parent = nullptr);

signals:
    void received();
};

} // namespace bench
