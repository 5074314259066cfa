#pragma once

#include <QDebug>
#include <QLoggingCategory>

/**
 * The module's one form of log line, at debug level: every line names class, function and line.
 *
 * Ends in a stream that takes the line's trailing items. Nothing is formatted while debug output
 * of the default category is off.
 */
#define PRODUCTION_LOG(classTag)                                                                   \
    for (bool enabled = QLoggingCategory::defaultCategory()->isDebugEnabled(); enabled;            \
         enabled = false)                                                                          \
    QMessageLogger(__FILE__, __LINE__, Q_FUNC_INFO).debug()                                        \
        << ""                                                                                      \
        << "[QT]" << (classTag) << "func:" << __func__ << "line:" << __LINE__

#define WORKER_LOG() PRODUCTION_LOG("[ProductionObject]")
