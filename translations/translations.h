#pragma once

#include <QString>

namespace production {

/**
 * Has the texts called @p name ("production-bench", or "qt" for Qt's own) appear in the user's
 * language, as far as they are translated. After the application object has been made, which owns
 * what is loaded.
 */
void loadTranslation(const QString &name);

} // namespace production
