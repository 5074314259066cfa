#pragma once

#include <QString>

/// The head unit's pop-up messages, which are all that the operator on the line sees.
class TipDialog
{
public:
    /**
     * Shows a pop-up and returns at once. UI thread.
     *
     * @p text may be empty: the platform words the codes 13, 15, 23 and 24 itself. @p type is the
     * message type code. The module always passes false as @p flag.
     */
    static void showMessage(const QString &text, int type, bool flag);
};
