#pragma once

#include <QString>

namespace bench {

/**
 * Lets the folder @p directory stand for the unit's flash, /media/flash/userdata, in this process
 * and its children: in a mount namespace of their own, so that nothing outside sees it.
 *
 * Needs root or a kernel that grants user namespaces. To be called before a second thread exists.
 * On failure returns false with a sentence for the user in @p error; the process may then already
 * be in the new namespace and should end.
 */
bool mountFlash(const QString &directory, QString *error);

} // namespace bench
