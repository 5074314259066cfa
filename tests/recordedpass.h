#pragma once

#include "testunit.h"

#include "productionobject.h"

#include <QStringList>

/**
 * A pass in the test's own thread, so that everything it does stands in one order: the worker's
 * signals and its calls on the platform. Nothing happens between two events but what @p hook does.
 */
class RecordedPass
{
public:
    using Hook = std::function<void(ProductionObject &, const QString &event)>;

    /// Runs start(@p path) on the sticks that are plugged into @p unit.
    explicit RecordedPass(TestUnit &unit, const QString &path = {}, Hook hook = {});
    ~RecordedPass();

    /// What has happened so far, each as callText() has it. The signal of new backlight steps
    /// carries the steps that the platform has then.
    QStringList events;
    ProductionObject worker;

    /**
     * The events as lines: without the two messages that begin every pass, and with "synced" for
     * three times "sync".
     */
    QString transcript() const;

private:
    void note(const bench::Call &call);

    TestUnit &unit;
    Hook hook;
};
