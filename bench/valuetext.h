#pragma once

#include "unitdata.h"

#include <QStringList>

namespace bench {

/// Text as it is, a list with commas; what the module stores holds no deeper nesting than this.
QString plainText(const QVariant &value);

/// Whether @p value is the list of factory settings, which is shown in several lines.
bool isSettingsList(const UnitValue &value);

/// What people read of @p value: one line, or one for each factory setting.
QStringList valueLines(const UnitValue &value);

} // namespace bench
